#include "DLG/TransformPositionDialog.h"

#include "DLG/DialogBaseImpl.h"

namespace DLG::TransformPosition {

namespace {

using zelui::controls::UI_NumberEdit;

struct Position {
    double x;
    double y;
};

class TransformPositionDialog : public DialogBaseImpl {
public:
    TransformPositionDialog(const UIF::Workspace& inWorkspace, const Position& inPosition)
        : DialogBaseImpl(L"TransformPositionDialog", inWorkspace), mPosition(inPosition)
    {
    }

    const Position& Result() const { return mPosition; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        if (const auto x = Bind<UI_NumberEdit>(L"xPositionTextEdit", mPosition.x)) {
            x->SelectAll();
        }
        Bind<UI_NumberEdit>(L"yPositionTextEdit", mPosition.y);
    }

    Position mPosition;
};

} // namespace

bool DoTransformPositionDialog(double& ioX, double& ioY)
{
    Position position{ioX, ioY};
    if (!RunScriptDialog<TransformPositionDialog>(L"TransformPositionDialog.vrel", position)) {
        return false;
    }
    ioX = position.x;
    ioY = position.y;
    return true;
}

} // namespace DLG::TransformPosition
