#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <boost/intrusive_ptr.hpp>

#include "DLG/FileDialogs.h"

namespace zelui::controls {
class UI_Button;
class UI_CheckBox;
class UI_StaticText;
} // namespace zelui::controls

namespace DLG {

// The numbered-stills rule: the character before the name's last dot is a digit, and that dot
// is not the first character.
bool IsIncrementalName(const std::wstring& inName);
// Whether a list item stays while all supported types are shown: folders, links (and ".lnk"
// shortcuts) always; a plain file when its extension, upper case, is in inSupported.
bool KeepInImportList(const std::wstring& inName, UIF::FileChooserItemKind inKind,
                      const std::set<std::wstring>& inSupported);

// The numbered stills around a name in its folder: the names that differ from it only in the
// number before the last dot and write that number zero-padded to the run's width (the selected
// name's when it has a leading zero, else the widest padded neighbour's up to its own, else 1).
struct NumberedRun {
    std::wstring firstName;
    std::wstring lastName;
    std::int64_t firstNumber = 0;
    std::int64_t lastNumber = 0;
    std::int64_t present = 0;
    std::int64_t Span() const { return lastNumber - firstNumber + 1; }
    std::int64_t Missing() const { return Span() - present; }
};
DLG_API std::optional<NumberedRun> FindNumberedRun(const std::wstring& inName,
                                                   const std::vector<std::wstring>& inFolderNames);
// The panel's line for a run: "frame_0001.png to frame_0240.png: 240 frames, 2 missing".
std::wstring DescribeNumberedRun(const NumberedRun& inRun);

// The host's import file chooser: the Open dialog with a panel holding the numbered-stills check
// box and the import-folder button, and a list that shows only importable files while the first
// file type is chosen. The host constructs it, may preset the numbered-stills result, runs
// DoModal and reads the accessors and the file buffer.
class DLG_API ImportFileDialog : public CustomFileDialog {
public:
    static constexpr const wchar_t* kLastUsedFilterIndexProperty = L"FE.ImportFile.LastUsedFilterIndex";
    static constexpr int kResultConfirmed = 1;
    static constexpr int kResultClosed = 2;
    static constexpr int kImportFolderButtonID = 11164;
    static constexpr unsigned int kButtonClicked = 0;

    ImportFileDialog(const wchar_t* inDefaultExtension, std::uint32_t inFlags, const wchar_t* inFilter,
                     const std::set<std::wstring>& inSupportedExtensions, const wchar_t* inTitle);
    ~ImportFileDialog() override;

    // kResultConfirmed when names were confirmed, else kResultClosed.
    int DoModal(HWND inOwner);

    // The chooser's notices; each answers as the system dialog's hook does (0, OnFileOK 1).
    long OnInitDialog(UIF::FileChooserWindow& ioWindow) override;
    long OnInitDone(UIF::FileChooserWindow& ioWindow) override;
    long OnSelChange(UIF::FileChooserWindow& ioWindow) override;
    void OnFolderChange(UIF::FileChooserWindow& ioWindow) override;
    int OnFileOK(UIF::FileChooserWindow& ioWindow) override;
    void OnTypeChange(UIF::FileChooserWindow& ioWindow) override;
    long OnSize(unsigned int inSizeType, UIF::FileChooserSize inNewSize) override;
    bool KeepListItem(const std::wstring& inName, UIF::FileChooserItemKind inKind) const override;
    // The import-folder button's notice (a click: notify code 0, control kImportFolderButtonID):
    // closes the chooser with the selected folder.
    void OnImportFolder(unsigned int inNotifyCode, int inControlID, HWND inControl);

    bool IsNumberedStills() const { return mNumberedStills; }
    void SetNumberedStills(bool inNumberedStills) { mNumberedStills = inNumberedStills; }
    bool IsDirectory() const { return mIsDirectory; }
    const std::wstring& GetDirectoryPath() const { return mDirectoryPath; }
    std::uint32_t GetDialogFailure() const { return mFailure; }
    bool WasDialogCancelled() const { return mCancelled; }

private:
    void RepositionControls();
    void UpdateControls(bool inEnable);
    void FilterVisibleItems(UIF::FileChooserWindow& ioWindow);
    void DescribeRun(UIF::FileChooserWindow& ioWindow, const std::wstring& inName, bool inNumbered);
    bool IsIncremental(const std::wstring& inName) const { return IsIncrementalName(inName); }
    bool IsStillImporter(const std::wstring& inName) const;
    bool IsAllSupportedTypes(const UIF::FileChooserWindow& inWindow) const { return inWindow.GetTypeIndex() == 0; }
    const std::vector<std::wstring>& FolderNames(const std::wstring& inFolder, const std::wstring& inExtension);

    UIF::FileChooserWindow* mWindow = nullptr; // the chooser while DoModal runs it
    boost::intrusive_ptr<zelui::controls::UI_Button> mImportFolderButton;
    boost::intrusive_ptr<zelui::controls::UI_CheckBox> mNumberedStillsCheckbox;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> mRunStaticText;
    std::set<std::wstring> mSupportedExtensions;
    bool mNumberedStills = false;
    bool mIsDirectory = false;
    bool mCancelled = true;
    std::uint32_t mFailure = 0;
    std::wstring mDirectoryPath;
    bool mFilteringAllTypes = true; // what the list filter applies now
    std::map<std::wstring, std::vector<std::wstring>> mFolderNames; // by folder and extension, for one folder
};

} // namespace DLG
