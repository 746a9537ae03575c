#include "DLG/ShortcutsDialog.h"

#include <map>

#include "DLG/DialogBaseImpl.h"
#include "DLG/KeysetDialogs.h"
#include "DLG/Module.h"
#include "DLG/StringIDs.h"
#include "UIF/ShortcutManager.h"
#include "zelcore/Error.h"
#include "zelui/ShortcutControls.h"

namespace DLG {

namespace {

using zelui::controls::UI_Button;
using zelui::controls::UI_KeyCaptureEdit;
using zelui::controls::UI_ListBox;
using zelui::controls::UI_Popup;
using zelui::controls::UI_StaticText;

constexpr std::size_t kUserSetIndex = 3;

using KeyMap = std::map<std::wstring, std::wstring>; // command -> key

KeyMap CurrentKeys(const UIF::ShortcutManager& inManager)
{
    KeyMap keys;
    for (const UIF::ShortcutCommand& command : inManager.GetCommands()) {
        keys[command.id] = inManager.GetKey(command.id);
    }
    return keys;
}

// Every key is taken away first, so that giving one back never moves it off another command.
void RestoreKeys(UIF::ShortcutManager& ioManager, const KeyMap& inKeys)
{
    for (const auto& entry : inKeys) {
        ioManager.SetKey(entry.first, L"");
    }
    for (const auto& [command, key] : inKeys) {
        ioManager.SetKey(command, key);
    }
}

// The text of inID with "^1", "^2" ... replaced by inValues in order.
std::wstring Format(unsigned int inID, const std::vector<std::wstring>& inValues)
{
    std::wstring text = LoadString(inID);
    for (std::size_t index = 0; index < inValues.size(); ++index) {
        const std::wstring marker = L"^" + std::to_wstring(index + 1);
        if (const std::size_t at = text.find(marker); at != std::wstring::npos) {
            text.replace(at, marker.size(), inValues[index]);
        }
    }
    return text;
}

std::size_t SetIndexOf(const KeysetList& inSets, const std::wstring& inPath)
{
    for (std::size_t entry = 0; entry < inSets.paths.size(); ++entry) {
        if (inSets.paths[entry] == inPath) {
            return entry;
        }
    }
    return 0;
}

class ShortcutsDialog : public DialogBaseImpl {
public:
    ShortcutsDialog(const UIF::Workspace& inWorkspace, UIF::ShortcutManager& ioManager, const std::wstring& inSetPath)
        : DialogBaseImpl(L"ShortcutsDialog", inWorkspace), mManager(ioManager), mSets(ListKeysets(ioManager)),
          mCommands(ioManager.GetCommands())
    {
        mSets.selected = SetIndexOf(mSets, inSetPath);
    }

    bool Edited() const { return mEdited; }
    std::wstring SelectedSetPath() const { return mSets.paths[mSets.selected]; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        mSetPopup = OnChange<UI_Popup>(L"keysetPopup", [this] { ChooseSet(); });
        OnChange<UI_Button>(L"saveAsButton", [this] { SaveAs(); });
        mCommandList = OnChange<UI_ListBox>(L"commandsListBox", [this] { ShowCommand(); });
        mKeyEdit = OnChange<UI_KeyCaptureEdit>(L"keyCaptureTextEdit", [this] { TakeKey(); });
        mClearButton = OnChange<UI_Button>(L"clearButton", [this] { GiveKey(L""); });
        mReassignButton = OnChange<UI_Button>(L"reassignButton", [this] { GiveKey(mPendingKey); });
        mConflictText = GetUINodePtr<UI_StaticText>(L"conflictStaticText");
        FillSets();
        FillCommands();
        if (mCommandList && !mCommands.empty()) {
            mCommandList->SelectRow(0);
        }
        ShowCommand();
    }

    void FillSets()
    {
        if (!mSetPopup) {
            return;
        }
        mSetPopup->Clear();
        for (const std::wstring& name : mSets.names) {
            mSetPopup->AddItem(name);
        }
        mSetPopup->SelectItem(static_cast<int>(mSets.selected));
    }

    void FillCommands()
    {
        if (!mCommandList) {
            return;
        }
        const int selected = mCommandList->GetSelectedRow();
        mCommandList->Clear();
        for (const UIF::ShortcutCommand& command : mCommands) {
            mCommandList->AddRow({command.name, mManager.GetKey(command.id)});
        }
        mCommandList->SelectRow(selected);
    }

    const UIF::ShortcutCommand* SelectedCommand() const
    {
        const int row = mCommandList ? mCommandList->GetSelectedRow() : -1;
        return row >= 0 && row < static_cast<int>(mCommands.size()) ? &mCommands[static_cast<std::size_t>(row)]
                                                                    : nullptr;
    }

    std::wstring CommandName(const std::wstring& inID) const
    {
        for (const UIF::ShortcutCommand& command : mCommands) {
            if (command.id == inID) {
                return command.name;
            }
        }
        return inID;
    }

    void ShowConflict(const std::wstring& inText, bool inCanReassign)
    {
        if (mConflictText) {
            mConflictText->SetText(inText);
        }
        if (mReassignButton) {
            mReassignButton->SetEnabled(inCanReassign);
        }
    }

    void ShowCommand()
    {
        const UIF::ShortcutCommand* command = SelectedCommand();
        const std::wstring key = command ? mManager.GetKey(command->id) : std::wstring();
        if (mKeyEdit) {
            mKeyEdit->SetKey(key);
            mKeyEdit->SetEnabled(command != nullptr);
        }
        if (mClearButton) {
            mClearButton->SetEnabled(!key.empty());
        }
        mPendingKey.clear();
        ShowConflict(L"", false);
    }

    // A free key is the command's at once; one that another command has waits for Reassign.
    void TakeKey()
    {
        const UIF::ShortcutCommand* command = SelectedCommand();
        if (!command || !mKeyEdit) {
            return;
        }
        const std::wstring key = mKeyEdit->GetKey();
        const std::wstring holder = mManager.FindCommandWithKey(key);
        if (holder.empty() || holder == command->id) {
            GiveKey(key);
            return;
        }
        mPendingKey = key;
        ShowConflict(Format(kStr_ShortcutKeyTaken, {key, CommandName(holder), command->name}), true);
    }

    void GiveKey(const std::wstring& inKey)
    {
        const UIF::ShortcutCommand* command = SelectedCommand();
        if (!command) {
            return;
        }
        if (mManager.GetKey(command->id) != inKey) {
            mManager.SetKey(command->id, inKey);
            mEdited = true;
        }
        FillCommands();
        ShowCommand();
    }

    void ChooseSet()
    {
        const int chosen = mSetPopup->GetSelectedItem();
        if (chosen < 0 || !mManager.LoadSet(mSets.paths[static_cast<std::size_t>(chosen)])) {
            mSetPopup->SelectItem(static_cast<int>(mSets.selected));
            return;
        }
        mSets.selected = static_cast<std::size_t>(chosen);
        mEdited = false;
        FillCommands();
        ShowCommand();
    }

    void SaveAs()
    {
        if (SaveKeysetAs(mManager, mSets)) {
            mEdited = false;
        }
        FillSets();
    }

    UIF::ShortcutManager& mManager;
    KeysetList mSets;
    std::vector<UIF::ShortcutCommand> mCommands;
    bool mEdited = false;
    std::wstring mPendingKey;
    boost::intrusive_ptr<UI_Popup> mSetPopup;
    boost::intrusive_ptr<UI_ListBox> mCommandList;
    boost::intrusive_ptr<UI_KeyCaptureEdit> mKeyEdit;
    boost::intrusive_ptr<UI_Button> mClearButton;
    boost::intrusive_ptr<UI_Button> mReassignButton;
    boost::intrusive_ptr<UI_StaticText> mConflictText;
};

} // namespace

bool DoShortcutsDialog(UIF::ShortcutManager* inManager, std::wstring& ioSetPath)
{
    ZEL_INPUT_CONTRACT(inManager != nullptr);
    std::stringstream script;
    const UIF::Workspace* workspace = PrepareScriptDialog(L"ShortcutsDialog.vrel", script);
    if (!workspace) {
        return false;
    }
    const KeyMap before = CurrentKeys(*inManager);
    ShortcutsDialog dialog(*workspace, *inManager, ioSetPath);
    dialog.Run(script);
    if (dialog.WasCancelled()) {
        RestoreKeys(*inManager, before);
        return false;
    }
    ioSetPath = dialog.SelectedSetPath();
    if (dialog.Edited()) {
        const std::wstring userSet = inManager->GetSetFullPath(kUserSetIndex);
        if (inManager->SaveSet(userSet)) {
            ioSetPath = userSet;
        }
    }
    return true;
}

} // namespace DLG
