#include "DemoDialogs.h"

#include "DLG/Module.h"
#include "DLG/ProgressDialog.h"
#include "DLG/RenderProgressDialog.h"
#include "DLG/SequenceZeroPointDialog.h"
#include "DLG/TestVrelDialog.h"
#include "DLG/TransformPositionDialog.h"
#include "HostQt/Workspace.h"
#include "ScriptedUser.h"

namespace Demo {

namespace {

QString Returned(bool inResult) { return inResult ? QStringLiteral("returned true") : QStringLiteral("returned false"); }

QString OpenTransformPosition(DemoState& ioState, HostQt::Workspace&)
{
    const bool confirmed = DLG::TransformPosition::DoTransformPositionDialog(ioState.x, ioState.y);
    return Returned(confirmed) + QStringLiteral("; x = %1, y = %2").arg(ioState.x).arg(ioState.y);
}

QString OpenColorMatteName(DemoState& ioState, HostQt::Workspace& inWorkspace)
{
    const std::wstring before = ioState.matte->GetName();
    const bool known = DLG::DispatchDialog(DLG::kColorMatteNameDialogID,
                                           KOR::InterfaceRef<KOR::KORUnknown>(ioState.matte.Get()),
                                           inWorkspace.GetDrawSupplier(), inWorkspace.GetMainTopLevelWindow());
    const std::wstring after = ioState.matte->GetName();
    return (known ? QStringLiteral("dispatched") : QStringLiteral("not dispatched")) +
           (after == before ? QStringLiteral("; name unchanged (\"%1\")") : QStringLiteral("; name set to \"%1\""))
               .arg(QString::fromStdWString(after));
}

QString OpenSequenceZeroPoint(DemoState& ioState, HostQt::Workspace&)
{
    const bool confirmed = DLG::DoSequenceZeroPointDialog(ioState.zeroPoint);
    return Returned(confirmed) + QStringLiteral("; zero point = %1 s").arg(ioState.zeroPoint.Seconds(), 0, 'f', 3);
}

QString OpenTestVrel(DemoState&, HostQt::Workspace&) { return Returned(DLG::DoTestVrelDialog()); }

QString OpenRenderMedia(DemoState& ioState, HostQt::Workspace&)
{
    const KOR::InterfaceRef<RenderMediaOperation> operation(
        new RenderMediaOperation(ioState.mediaFolder, ioState.renderSeconds, std::exchange(ioState.pause, nullptr)));
    operation->Start();
    const bool finished = DLG::RenderProgress::DoRenderProgressDialog(operation);
    return Returned(finished) + QStringLiteral("; ") + operation->Report().join(QStringLiteral("; "));
}

QString OpenVerifyMedia(DemoState& ioState, HostQt::Workspace& inWorkspace)
{
    const KOR::InterfaceRef<VerifyMediaOperation> operation(
        new VerifyMediaOperation(ioState.mediaFolder, std::exchange(ioState.pause, nullptr)));
    operation->Start();
    const bool finished = DLG::ProgressDialog::DoProgressDialog(
        L"Verifying media", operation, KOR::HWNDFromNode(inWorkspace.GetMainTopLevelWindow()));
    return Returned(finished) + QStringLiteral("; ") + operation->Report().join(QStringLiteral("; "));
}

} // namespace

const std::vector<DemoDialog>& DemoDialogs()
{
    static const std::vector<DemoDialog> dialogs = {
        {QStringLiteral("Transform position"), QStringLiteral("TransformPositionDialog"), &OpenTransformPosition,
         [](TestSupport::Step& ioStep) { ioStep.Type(QStringLiteral("xPositionTextEdit"), QStringLiteral("1280")).Press(Qt::Key_Return); }},
        {QStringLiteral("Color matte name"), QStringLiteral("ColorMatteNameDialog"), &OpenColorMatteName,
         [](TestSupport::Step& ioStep) { ioStep.Type(QStringLiteral("matteNameTextEdit"), QStringLiteral("Sunset Orange")).Click(QStringLiteral("okButton")); }},
        {QStringLiteral("Sequence zero point"), QStringLiteral("SequenceZeroPointDialog"), &OpenSequenceZeroPoint,
         [](TestSupport::Step& ioStep) {
             ioStep.Type(QStringLiteral("timecodeControlReplacement"), QStringLiteral("1:00:00;00"))
                 .Press(Qt::Key_Return)
                 .Press(Qt::Key_Return);
         }},
        {QStringLiteral("Layout script test"), QStringLiteral("TestVrelDialog"), &OpenTestVrel,
         [](TestSupport::Step& ioStep) { ioStep.Press(Qt::Key_Escape); }},
        {QStringLiteral("Render sample media"), QStringLiteral("RenderProgressDialog"), &OpenRenderMedia, {}},
        {QStringLiteral("Verify media"), QStringLiteral("ProgressDialog"), &OpenVerifyMedia, {}},
    };
    return dialogs;
}

} // namespace Demo
