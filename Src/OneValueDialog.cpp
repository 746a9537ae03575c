#include "DLG/OneValueDialog.h"

#include "DLG/DialogBaseImpl.h"
#include "DLG/Module.h"
#include "UIF/MessageBox.h"

namespace DLG {

namespace {

using zelui::controls::UI_NumberEdit;
using zelui::controls::UI_TextEdit;

class NumberDialog : public DialogBaseImpl {
public:
    NumberDialog(const UIF::Workspace& inWorkspace, const std::wstring& inNodeName, std::wstring inEditName,
                 double inValue)
        : DialogBaseImpl(inNodeName, inWorkspace), mEditName(std::move(inEditName)), mValue(inValue)
    {
    }

    double Result() const { return mValue; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        if (const auto edit = Bind<UI_NumberEdit>(mEditName, mValue)) {
            edit->SelectAll();
        }
    }

    std::wstring mEditName;
    double mValue;
};

class NameDialog : public DialogBaseImpl {
public:
    NameDialog(const UIF::Workspace& inWorkspace, const std::wstring& inNodeName, std::wstring inEditName,
               std::wstring inName, EmptyNameMessage inRefusal)
        : DialogBaseImpl(inNodeName, inWorkspace), mEditName(std::move(inEditName)), mName(std::move(inName)),
          mRefusal(inRefusal)
    {
    }

    const std::wstring& Result() const { return mName; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        mEdit = Bind<UI_TextEdit>(mEditName, mName);
        if (mEdit) {
            mEdit->SelectAll();
        }
    }

    bool ValidateControls() override
    {
        if (mRefusal.text == 0 || !mEdit || !mEdit->GetText().empty()) {
            return true;
        }
        UIF::MessageBoxW(LoadString(mRefusal.text), LoadString(mRefusal.caption), UIF::kMessageBox_OK,
                         UIF::kMessageBoxIcon_Error, 0);
        mEdit->SelectAll();
        return false;
    }

    std::wstring mEditName;
    std::wstring mName;
    EmptyNameMessage mRefusal;
    boost::intrusive_ptr<UI_TextEdit> mEdit;
};

} // namespace

bool RunNumberDialog(const std::wstring& inNodeName, const std::wstring& inEditName, double& ioValue)
{
    std::stringstream script;
    const UIF::Workspace* workspace = PrepareScriptDialog(inNodeName + L".vrel", script);
    if (!workspace) {
        return false;
    }
    NumberDialog dialog(*workspace, inNodeName, inEditName, ioValue);
    dialog.Run(script);
    if (dialog.WasCancelled()) {
        return false;
    }
    ioValue = dialog.Result();
    return true;
}

bool RunNameDialog(const std::wstring& inNodeName, const std::wstring& inEditName, std::wstring& ioName,
                   EmptyNameMessage inRefusal)
{
    std::stringstream script;
    const UIF::Workspace* workspace = PrepareScriptDialog(inNodeName + L".vrel", script);
    if (!workspace) {
        return false;
    }
    NameDialog dialog(*workspace, inNodeName, inEditName, ioName, inRefusal);
    dialog.Run(script);
    if (dialog.WasCancelled()) {
        return false;
    }
    ioName = dialog.Result();
    return true;
}

} // namespace DLG
