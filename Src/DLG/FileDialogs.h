#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "DLG/Export.h"
#include "KOR/Platform.h"
#include "UIF/FileChooser.h"
#include "UIF/Windows.h"

namespace DLG {

// The system dialog's flag for choosing several files.
inline constexpr unsigned long kDialogFlag_AllowMultiSelect = 0x200;
// The file-name buffer: one path, or the folder and the names of several files.
inline constexpr std::size_t kFileBufferChars = 260;
inline constexpr std::size_t kMultiFileBufferChars = 32767;
// The system's extended error when the chosen names do not fit the buffer.
inline constexpr std::uint32_t kFileDialogError_BufferTooSmall = 0x3003;

// The file dialogs take the title, the path or paths, the initial folder (empty: the folder of
// the file chosen last, while it exists), the filter (description and pattern pairs in the
// system's zero-separated form), the system dialog's flags and the parent window. True when the
// user confirmed; on cancel the outputs keep what they held.
DLG_API bool AskOpenFile(const std::wstring& inTitle, std::wstring& ioPath, const std::wstring& inInitialDirectory,
                         const std::wstring& inFilter, unsigned long inFlags, HWND inParent);
DLG_API bool AskOpenFile(const std::wstring& inTitle, std::vector<std::wstring>& ioPaths,
                         const std::wstring& inInitialDirectory, const std::wstring& inFilter, unsigned long inFlags,
                         HWND inParent);
DLG_API bool AskSaveFile(const std::wstring& inTitle, std::wstring& ioPath, const std::wstring& inInitialDirectory,
                         const std::wstring& inFilter, unsigned long inFlags, HWND inParent);
// ioFolder receives the chosen folder; the filter is not used by a folder chooser.
DLG_API bool AskFolderChooser(const std::wstring& inTitle, std::wstring& ioFolder,
                              const std::wstring& inInitialDirectory, const std::wstring& inFilter,
                              unsigned long inFlags, HWND inParent);

// The size of the file-name buffer for an open or save with inFlags.
std::size_t FileBufferChars(unsigned long inFlags);
// What of an initial name fits a buffer of inBufferChars with its terminating zero.
std::wstring FitInitialName(const std::wstring& inName, std::size_t inBufferChars);
// Whether a selection in the buffer form fits a buffer of inBufferChars with its zeros.
bool SelectionFits(const std::wstring& inSelection, std::size_t inBufferChars);
// The full paths in a selection: one path as it is; a folder and names as folder, separator, name.
std::vector<std::wstring> SplitSelection(const std::wstring& inSelection);
// The folder that a dialog opens in: the given one, else the remembered one while it exists.
std::wstring InitialDirectory(const std::wstring& inGiven);

// The system file dialog that the module customises: one object serves one run. Subclasses hear
// the chooser's notifications and may filter its list.
class DLG_API CustomFileDialog : public UIF::FileChooserCustomizer {
public:
    // inBufferChars 0: the buffer that the mode and flags give.
    CustomFileDialog(UIF::FileChooserMode inMode, const std::wstring& inDefaultExtension,
                     const std::wstring& inInitialName, unsigned long inFlags, const std::wstring& inFilter,
                     std::size_t inBufferChars = 0);
    ~CustomFileDialog() override;

    // The chosen names in the buffer form, and as full paths.
    const std::wstring& GetFileBuffer() const { return mFileBuffer; }
    std::vector<std::wstring> GetFilePaths() const;

protected:
    // Stops all players and ends the host's input capture.
    static void StopPlayersAndEndCapture();
    // Disables the owner (inOwner unless the request names one) and the windows it owns until
    // the chooser closes.
    void DisableOwner(HWND inOwner);
    // The first steps of a modal run before anything is read: the owner disabled, all players
    // stopped, input capture ended.
    void BeginModal(HWND inOwner);
    // Runs the chooser and enables the owner again: 1 when confirmed, 0 when not, with outFailure
    // the extended error (0: the user cancelled).
    int RunChooser(std::uint32_t& outFailure);

    UIF::FileChooserRequest mRequest;

private:
    std::size_t mBufferChars;
    std::wstring mFileBuffer;
    std::optional<UIF::Windows::ParentAndChildWindowDisabler> mDisabler;
};

} // namespace DLG
