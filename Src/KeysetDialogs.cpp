#include "DLG/KeysetDialogs.h"

#include <algorithm>

#include "DLG/DialogBaseImpl.h"
#include "DLG/Module.h"
#include "DLG/StringIDs.h"
#include "KOR/Application.h"
#include "KOR/Paths.h"
#include "UIF/MessageBox.h"
#include "UIF/ShortcutManager.h"

namespace DLG {

namespace {

using zelui::controls::UI_Button;
using zelui::controls::UI_StaticText;
using zelui::controls::UI_TextEdit;

constexpr std::size_t kPresetCount = 3;
constexpr std::size_t kUserSetIndex = 3;
constexpr unsigned int kPresetNames[kPresetCount] = {kStr_KeysetPreset1Name, kStr_KeysetPreset2Name,
                                                     kStr_KeysetPreset3Name};

class KeysetNameDialog : public DialogBaseImpl {
public:
    KeysetNameDialog(const UIF::Workspace& inWorkspace, std::wstring inName)
        : DialogBaseImpl(L"KeysetNameDialog", inWorkspace), mName(std::move(inName))
    {
    }

    const std::wstring& Result() const { return mName; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        // "saveButton" is this dialog's OK button: Enter presses it.
        if (const auto save = GetUINodePtr<UI_Button>(L"saveButton")) {
            save->NotifyWhenChanged([this] { Accept(); });
            GetDialogView()->SetOkButton(save.get());
        }
        if (const auto edit = Bind<UI_TextEdit>(L"keysetNameTextEdit", mName)) {
            edit->SelectAll();
        }
    }

    std::wstring mName;
};

class KeysetReplaceConfirmDialog : public DialogBaseImpl {
public:
    KeysetReplaceConfirmDialog(const UIF::Workspace& inWorkspace, std::wstring inFileName)
        : DialogBaseImpl(L"keysetReplaceConfirmDialog", inWorkspace), mFileName(std::move(inFileName))
    {
    }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        if (const auto text = GetUINodePtr<UI_StaticText>(L"fileNameStaticText")) {
            text->SetText(mFileName);
        }
    }

    std::wstring mFileName;
};

// The file name without the set suffix, as the user names a set.
std::wstring SetName(const std::wstring& inPath)
{
    std::wstring name = KOR::PathUtils::GetFilePart(inPath);
    const std::wstring suffix = LoadString(kStr_KeysetFileSuffix);
    if (!suffix.empty() && name.size() > suffix.size() && name.ends_with(suffix)) {
        name.resize(name.size() - suffix.size());
    }
    return name;
}

std::wstring ProposedName(const UIF::ShortcutManager& inManager, const std::wstring& inPath)
{
    if (inManager.IsPreset(inPath)) {
        for (std::size_t index = 0; index < kPresetCount; ++index) {
            if (inManager.GetSetFullPath(index) == inPath) {
                return LoadString(kPresetNames[index]);
            }
        }
        return SetName(inPath);
    }
    if (inPath == inManager.GetSetFullPath(kUserSetIndex)) {
        return LoadString(kStr_KeysetUserSetProposal);
    }
    return SetName(inPath);
}

std::wstring ApplicationName()
{
    const KOR::Application* application = KOR::Application::Instance();
    return application ? application->GetName() : L"Application";
}

// Asks until the user gives a name that can be a file's, with the set suffix too (which makes a
// name near the length limit too long), or cancels (false).
bool AskValidName(std::wstring& ioName)
{
    while (AskKeysetName(ioName)) {
        if (KOR::PathUtils::IsValidFileName(ioName) &&
            KOR::PathUtils::IsValidFileName(ioName + LoadString(kStr_KeysetFileSuffix))) {
            return true;
        }
        UIF::MessageBoxW(LoadString(kStr_KeysetInvalidName), ApplicationName(), UIF::kMessageBox_OK,
                         UIF::kMessageBoxIcon_Error, 0);
    }
    return false;
}

// The entry of the list that names the file at inPath as the file system
// resolves it, or npos.
std::size_t FindEntry(const KeysetList& inList, const std::wstring& inPath)
{
    for (std::size_t entry = 0; entry < inList.paths.size(); ++entry) {
        if (inList.paths[entry] == inPath || KOR::PathUtils::IsSameFile(inList.paths[entry], inPath)) {
            return entry;
        }
    }
    return std::wstring::npos;
}

} // namespace

bool AskKeysetName(std::wstring& ioName)
{
    return RunScriptDialog<KeysetNameDialog>(L"KeySetNameDialog.vrel", ioName);
}

bool ConfirmKeysetReplace(const std::wstring& inFileName)
{
    std::wstring fileName = inFileName;
    return RunScriptDialog<KeysetReplaceConfirmDialog>(L"KeySetReplaceConfirmDialog.vrel", fileName);
}

std::wstring KeysetDisplayName(const UIF::ShortcutManager& inManager, std::size_t inIndex)
{
    return inIndex < kPresetCount ? LoadString(kPresetNames[inIndex]) : SetName(inManager.GetSetFullPath(inIndex));
}

KeysetList ListKeysets(const UIF::ShortcutManager& inManager)
{
    KeysetList list;
    for (std::size_t index = 0; index < inManager.GetSetCount(); ++index) {
        list.paths.push_back(inManager.GetSetFullPath(index));
        list.names.push_back(KeysetDisplayName(inManager, index));
    }
    return list;
}

bool SaveKeysetAs(UIF::ShortcutManager& ioManager, KeysetList& ioList)
{
    if (ioList.selected >= ioList.paths.size()) {
        return false;
    }
    const std::wstring selectedPath = ioList.paths[ioList.selected];
    std::wstring name = KOR::PathUtils::GetFilePart(ProposedName(ioManager, selectedPath));
    if (!AskValidName(name)) {
        return false;
    }
    std::wstring path = KOR::PathUtils::AddTrailingSlash(KOR::DirectoryRegistry::FindDirectory(L"lumoradocuments")) +
                        name + LoadString(kStr_KeysetFileSuffix);
    const bool existed = KOR::PathUtils::ExistsOnDisk(path);
    // A set already there keeps the name the file system stores it under.
    const std::size_t existing = existed ? FindEntry(ioList, path) : std::wstring::npos;
    if (existing != std::wstring::npos) {
        path = ioList.paths[existing];
    }
    if (existed && !ConfirmKeysetReplace(KOR::PathUtils::GetFilePart(path))) {
        return false;
    }
    if (!ioManager.SaveSet(path)) {
        return false;
    }
    if (existing != std::wstring::npos) {
        ioList.selected = existing;
    } else if (const std::size_t entry = FindEntry(ioList, path); entry != std::wstring::npos) {
        ioList.selected = entry;
    } else if (!existed && path != selectedPath) {
        ioList.paths.push_back(path);
        ioList.names.push_back(name);
        ioList.selected = ioList.paths.size() - 1;
    } else if (const auto named = std::find(ioList.names.begin(), ioList.names.end(), name);
               named != ioList.names.end()) {
        // A file the list did not show: the entry of that name, if any, stands for it.
        ioList.selected = static_cast<std::size_t>(named - ioList.names.begin());
    }
    return true;
}

} // namespace DLG
