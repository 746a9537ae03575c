#include "DLG/FileDialogs.h"

#include <algorithm>

#include "BE/Backend.h"
#include "KOR/Paths.h"
#include "UIF/PlayerControl.h"
#include "UIF/Windows.h"
#include "zelcore/Error.h"
#include "zelui/UI_Node.h"

namespace DLG {

namespace {

// Remembers the folder of a confirmed choice, when the first path is one the system could hold.
void RememberFolderOf(const std::wstring& inPath)
{
    BE::Backend* backend = BE::GetBackend();
    if (backend && KOR::PathUtils::IsValidPath(inPath)) {
        backend->SetStringProperty(BE::kLastUsedDirectoryKey, KOR::PathUtils::GetFullDirectoryPart(inPath));
    }
}

// The one-file forms and the many-file form share this run; false unless confirmed. Players stop
// and capture ends before the remembered folder is read, and the parent is disabled after it.
bool AskFiles(UIF::FileChooserMode inMode, const std::wstring& inTitle, const std::wstring& inInitialName,
              const std::wstring& inInitialDirectory, const std::wstring& inFilter, unsigned long inFlags,
              HWND inParent, std::vector<std::wstring>& outPaths)
{
    class Dialog : public CustomFileDialog {
    public:
        using CustomFileDialog::CustomFileDialog;
        bool Run(const std::wstring& inTitle, const std::wstring& inDirectory, HWND inParent)
        {
            StopPlayersAndEndCapture();
            mRequest.title = inTitle;
            mRequest.initialDirectory = InitialDirectory(inDirectory);
            mRequest.windowName = mRequest.mode == UIF::FileChooserMode::kSave ? L"SaveFileDialog" : L"OpenFileDialog";
            DisableOwner(inParent);
            std::uint32_t failure = 0;
            return RunChooser(failure) == 1;
        }
    } dialog(inMode, L"", inInitialName, inFlags, inFilter);
    if (!dialog.Run(inTitle, inInitialDirectory, inParent)) {
        return false;
    }
    outPaths = dialog.GetFilePaths();
    if (!outPaths.empty()) {
        RememberFolderOf(outPaths.front());
    }
    return true;
}

// The one-file forms, open and save.
bool AskOneFile(UIF::FileChooserMode inMode, const std::wstring& inTitle, std::wstring& ioPath,
                const std::wstring& inInitialDirectory, const std::wstring& inFilter, unsigned long inFlags,
                HWND inParent)
{
    ZEL_INPUT_CONTRACT(!(inFlags & kDialogFlag_AllowMultiSelect));
    std::vector<std::wstring> paths;
    if (!AskFiles(inMode, inTitle, ioPath, inInitialDirectory, inFilter, inFlags, inParent, paths) || paths.empty()) {
        return false;
    }
    ioPath = paths.front();
    return true;
}

} // namespace

std::size_t FileBufferChars(unsigned long inFlags)
{
    return inFlags & kDialogFlag_AllowMultiSelect ? kMultiFileBufferChars : kFileBufferChars;
}

std::wstring FitInitialName(const std::wstring& inName, std::size_t inBufferChars)
{
    return inName.substr(0, inBufferChars - 1);
}

// The buffer ends in one zero after a single path and in two after a folder and its names.
bool SelectionFits(const std::wstring& inSelection, std::size_t inBufferChars)
{
    const bool several = inSelection.find(L'\0') != std::wstring::npos;
    return inSelection.size() + (several ? 2 : 1) <= inBufferChars;
}

// The list ends at the first empty string, as the system's buffer does: what follows is stale.
std::vector<std::wstring> SplitSelection(const std::wstring& inSelection)
{
    std::vector<std::wstring> parts;
    for (std::size_t start = 0; start < inSelection.size();) {
        const std::size_t end = std::min(inSelection.find(L'\0', start), inSelection.size());
        if (end == start) {
            break;
        }
        parts.push_back(inSelection.substr(start, end - start));
        start = end + 1;
    }
    if (parts.size() < 2) {
        return parts;
    }
    // The folder keeps the separator it is written with; a root folder already ends in one.
    const std::wstring& folder = parts.front();
    const bool backslashes = folder.find(L'\\') != std::wstring::npos && folder.find(L'/') == std::wstring::npos;
    const std::wstring joint = folder.back() == L'\\' || folder.back() == L'/' ? L"" : backslashes ? L"\\" : L"/";
    std::vector<std::wstring> paths;
    for (std::size_t name = 1; name < parts.size(); ++name) {
        paths.push_back(folder + joint + parts[name]);
    }
    return paths;
}

std::wstring InitialDirectory(const std::wstring& inGiven)
{
    if (!inGiven.empty()) {
        return inGiven;
    }
    const BE::Backend* backend = BE::GetBackend();
    const std::wstring remembered = backend ? backend->GetStringProperty(BE::kLastUsedDirectoryKey, L"") : L"";
    return KOR::PathUtils::IsDirectory(remembered) ? remembered : L"";
}

CustomFileDialog::CustomFileDialog(UIF::FileChooserMode inMode, const std::wstring& inDefaultExtension,
                                   const std::wstring& inInitialName, unsigned long inFlags,
                                   const std::wstring& inFilter, std::size_t inBufferChars)
    : mBufferChars(inBufferChars > 0                            ? inBufferChars
                   : inMode == UIF::FileChooserMode::kOpen ? FileBufferChars(inFlags)
                                                            : kFileBufferChars)
{
    mRequest.mode = inMode;
    mRequest.defaultExtension = inDefaultExtension;
    mRequest.initialName = FitInitialName(inInitialName, mBufferChars);
    mRequest.flags = inFlags;
    mRequest.filter = inFilter;
}

CustomFileDialog::~CustomFileDialog() = default;

std::vector<std::wstring> CustomFileDialog::GetFilePaths() const { return SplitSelection(mFileBuffer); }

void CustomFileDialog::StopPlayersAndEndCapture()
{
    UIF::PlayerControl::StopAllPlayers();
    if (zelui::ui::UI_NodeManager* manager = zelui::ui::UI_NodeManager::Get()) {
        manager->EndInputCapture(false);
    }
}

void CustomFileDialog::DisableOwner(HWND inOwner)
{
    if (!mRequest.owner) {
        mRequest.owner = inOwner;
    }
    mDisabler.emplace(mRequest.owner);
}

void CustomFileDialog::BeginModal(HWND inOwner)
{
    DisableOwner(inOwner);
    StopPlayersAndEndCapture();
}

int CustomFileDialog::RunChooser(std::uint32_t& outFailure)
{
    const UIF::FileChooserResult result = UIF::FileChooser::Run(mRequest, this);
    mDisabler.reset();
    outFailure = 0;
    if (!result.confirmed) {
        return 0;
    }
    if (!SelectionFits(result.selection, mBufferChars)) {
        outFailure = kFileDialogError_BufferTooSmall;
        return 0;
    }
    mFileBuffer = result.selection;
    mRequest.filterIndex = result.filterIndex;
    return 1;
}

bool AskOpenFile(const std::wstring& inTitle, std::wstring& ioPath, const std::wstring& inInitialDirectory,
                 const std::wstring& inFilter, unsigned long inFlags, HWND inParent)
{
    return AskOneFile(UIF::FileChooserMode::kOpen, inTitle, ioPath, inInitialDirectory, inFilter, inFlags, inParent);
}

// The paths are checked before the caller's vector takes them, so a broken contract leaves it as it was.
bool AskOpenFile(const std::wstring& inTitle, std::vector<std::wstring>& ioPaths,
                 const std::wstring& inInitialDirectory, const std::wstring& inFilter, unsigned long inFlags,
                 HWND inParent)
{
    std::vector<std::wstring> outPaths;
    const std::wstring initialName = ioPaths.empty() ? L"" : ioPaths.front();
    if (!AskFiles(UIF::FileChooserMode::kOpen, inTitle, initialName, inInitialDirectory, inFilter, inFlags, inParent,
                  outPaths)) {
        return false;
    }
    ZEL_OUTPUT_CONTRACT(!outPaths.empty());
    ioPaths = std::move(outPaths);
    return true;
}

bool AskSaveFile(const std::wstring& inTitle, std::wstring& ioPath, const std::wstring& inInitialDirectory,
                 const std::wstring& inFilter, unsigned long inFlags, HWND inParent)
{
    return AskOneFile(UIF::FileChooserMode::kSave, inTitle, ioPath, inInitialDirectory, inFilter, inFlags, inParent);
}

// The chosen folder is itself remembered: it is where the next dialog should open.
bool AskFolderChooser(const std::wstring& inTitle, std::wstring& ioFolder, const std::wstring& inInitialDirectory,
                      const std::wstring& inFilter, unsigned long inFlags, HWND inParent)
{
    class Dialog : public CustomFileDialog {
    public:
        using CustomFileDialog::CustomFileDialog;
        bool Run(const std::wstring& inTitle, const std::wstring& inDirectory, HWND inParent)
        {
            StopPlayersAndEndCapture();
            mRequest.title = inTitle;
            mRequest.initialDirectory = InitialDirectory(inDirectory);
            mRequest.windowName = L"FolderChooserDialog";
            DisableOwner(inParent);
            std::uint32_t failure = 0;
            return RunChooser(failure) == 1;
        }
    } dialog(UIF::FileChooserMode::kFolder, L"", L"", inFlags & ~kDialogFlag_AllowMultiSelect, inFilter);
    if (!dialog.Run(inTitle, inInitialDirectory.empty() ? ioFolder : inInitialDirectory, inParent)) {
        return false;
    }
    const std::vector<std::wstring> paths = dialog.GetFilePaths();
    if (paths.empty()) {
        return false;
    }
    ioFolder = paths.front();
    if (BE::Backend* backend = BE::GetBackend(); backend && KOR::PathUtils::IsValidPath(ioFolder)) {
        backend->SetStringProperty(BE::kLastUsedDirectoryKey, ioFolder);
    }
    return true;
}

} // namespace DLG
