#pragma once

#include <string>

#include <boost/intrusive_ptr.hpp>

#include "KOR/HostAPI.h"
#include "KOR/Platform.h"

namespace zelui::controls {
class UI_Button;
class UI_CheckBox;
class UI_StaticText;
} // namespace zelui::controls

namespace UIF {

enum class FileChooserMode { kOpen, kSave, kFolder };

// The chooser's flags are the system dialog's (OFN_*); the host reads these.
inline constexpr unsigned long kFileChooserFlag_AllowMultiSelect = 0x200;

// What the module asks the chooser for.
struct FileChooserRequest {
    FileChooserMode mode = FileChooserMode::kOpen;
    std::wstring windowName; // the chooser window's name (its object name on Qt)
    std::wstring title;
    std::wstring initialDirectory; // empty: the chooser's own choice
    std::wstring initialName;
    // Description and pattern pairs, each ended by a zero character, the whole ended by one more:
    // L"Stills\0*.png;*.jpg\0All files\0*\0" (the literal adds the last zero).
    std::wstring filter;
    std::wstring defaultExtension; // without the dot; added to a saved name that has none
    unsigned long flags = 0;
    unsigned long filterIndex = 0; // 1-based; 0 is the first
    HWND owner = nullptr;
};

// What the chooser answers. The selection has the system's buffer form: one item's full path,
// or for several items the folder followed by each name, all separated by zero characters.
struct FileChooserResult {
    bool confirmed = false;
    std::wstring selection;
    unsigned long filterIndex = 0; // 1-based, the type shown when the chooser closed
};

// The chooser's new client size, as a resize reports it.
struct FileChooserSize {
    int width = 0;
    int height = 0;
};
// How the chooser was resized: the system's size types.
inline constexpr unsigned int kFileChooserSize_Restored = 0;
inline constexpr unsigned int kFileChooserSize_Minimized = 1;
inline constexpr unsigned int kFileChooserSize_Maximized = 2;

// A list item as the list filter sees it.
enum class FileChooserItemKind { kFile, kFolder, kLink };

// The running chooser, as its customiser reaches it during the notifications.
class HOST_API FileChooserWindow {
public:
    virtual ~FileChooserWindow();

    // The full path of the item selected in the list; empty when none is.
    virtual std::wstring GetFilePath() const = 0;
    // The text of the file-name box; several selected names show there each in double quotes.
    virtual std::wstring GetFileNameText() const = 0;
    // The file type shown, 0 for the first.
    virtual int GetTypeIndex() const = 0;
    // Closes the chooser as Cancel does.
    virtual void CloseAsCancelled() = 0;
    // Asks the list filter again about every item of the folder shown.
    virtual void RefilterList() = 0;
    virtual void CenterOverMainWindow() = 0;
    // Places the extension panel's controls for the chooser's size now, not at the next layout pass.
    virtual void RepositionPanel() = 0;
    // Controls of the extension panel under the standard ones, named inName, in the order added.
    virtual boost::intrusive_ptr<zelui::controls::UI_CheckBox> AddCheckBox(const std::wstring& inName,
                                                                           const std::wstring& inLabel) = 0;
    virtual boost::intrusive_ptr<zelui::controls::UI_Button> AddButton(const std::wstring& inName,
                                                                       const std::wstring& inLabel) = 0;
    virtual boost::intrusive_ptr<zelui::controls::UI_StaticText> AddText(const std::wstring& inName) = 0;
};

// What a module adds to a chooser: it is told of each step and may filter the list. The handlers
// answer as a system dialog's hook does (0, and 1 from OnFileOK); the host does not act on it.
class HOST_API FileChooserCustomizer {
public:
    virtual ~FileChooserCustomizer();

    // The chooser is built, not shown yet: the place to add the panel's controls.
    virtual long OnInitDialog(FileChooserWindow& ioWindow);
    // The chooser is on screen.
    virtual long OnInitDone(FileChooserWindow& ioWindow);
    virtual long OnSelChange(FileChooserWindow& ioWindow);
    // Also once after OnInitDone, for the first folder shown.
    virtual void OnFolderChange(FileChooserWindow& ioWindow);
    // The user confirmed; the chooser closes after this.
    virtual int OnFileOK(FileChooserWindow& ioWindow);
    virtual void OnTypeChange(FileChooserWindow& ioWindow);
    // The chooser was resized: inSizeType is one of kFileChooserSize_*.
    virtual long OnSize(unsigned int inSizeType, FileChooserSize inNewSize);
    // Whether the list shows an item, by its name and kind. Asked for every item of every
    // folder shown, so it must be quick.
    virtual bool KeepListItem(const std::wstring& inName, FileChooserItemKind inKind) const;
};

class HOST_API FileChooserService {
public:
    virtual ~FileChooserService();
    // Runs the chooser modally; inCustomizer may be null.
    virtual FileChooserResult Run(const FileChooserRequest& inRequest, FileChooserCustomizer* inCustomizer) = 0;
};

class HOST_API FileChooser {
public:
    // Runs the installed chooser; throws the null-interface error when the host has none.
    static FileChooserResult Run(const FileChooserRequest& inRequest, FileChooserCustomizer* inCustomizer);
};

} // namespace UIF
