#include "DLG/TransformPositionDialog.h"

#include "DLG/DialogBaseImpl.h"
#include "UIF/Workspace.h"
#include "zelui/Controls.h"

namespace DLG::TransformPosition {

namespace {

using zelui::controls::UI_NumberEdit;

class TransformPositionDialog : public DialogBaseImpl {
public:
    TransformPositionDialog(const UIF::Workspace& inWorkspace, double inX, double inY)
        : DialogBaseImpl(L"TransformPositionDialog", inWorkspace.GetDrawSupplier(),
                         inWorkspace.GetMainTopLevelWindow()),
          mX(inX), mY(inY)
    {
    }

    double X() const { return mX; }
    double Y() const { return mY; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        mXEdit = GetUINodePtr<UI_NumberEdit>(L"xPositionTextEdit");
        mYEdit = GetUINodePtr<UI_NumberEdit>(L"yPositionTextEdit");
        if (mXEdit) {
            mXEdit->SetValue(mX);
            mXEdit->SelectAll();
        }
        if (mYEdit) {
            mYEdit->SetValue(mY);
        }
    }

    void ReadControls() override
    {
        if (mXEdit) {
            mX = mXEdit->GetValue();
        }
        if (mYEdit) {
            mY = mYEdit->GetValue();
        }
    }

    double mX;
    double mY;
    boost::intrusive_ptr<UI_NumberEdit> mXEdit;
    boost::intrusive_ptr<UI_NumberEdit> mYEdit;
};

} // namespace

bool DoTransformPositionDialog(double& ioX, double& ioY)
{
    std::stringstream script;
    const UIF::Workspace* workspace = PrepareScriptDialog(L"TransformPositionDialog.vrel", script);
    if (!workspace) {
        return false;
    }
    TransformPositionDialog dialog(*workspace, ioX, ioY);
    dialog.Run(script);
    if (dialog.WasCancelled()) {
        return false;
    }
    ioX = dialog.X();
    ioY = dialog.Y();
    return true;
}

} // namespace DLG::TransformPosition
