#include "DemoDialogs.h"

#include "DLG/ClipSpeedDialogImpl.h"
#include "DLG/Module.h"
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

QString OnOff(bool inOn) { return inOn ? QStringLiteral("on") : QStringLiteral("off"); }

QString OpenClipSpeed(DemoState& ioState, HostQt::Workspace&)
{
    DemoClip& clip = ioState.clip;
    const bool confirmed = DLG::ClipSpeedDialog::DoClipSpeedDialog(
        nullptr, DLG::GetCurrentProject(), clip.speedPercent, clip.duration, clip.reference, clip.reverse,
        clip.maintainPitch, clip.ganged, true, true, true);
    return Returned(confirmed) + QStringLiteral("; \"%1\" at %2 %, %3 s, reverse %4, keep pitch %5, %6")
                                     .arg(QString::fromStdWString(clip.name))
                                     .arg(clip.speedPercent, 0, 'f', 2)
                                     .arg(clip.duration.Seconds(), 0, 'f', 3)
                                     .arg(OnOff(clip.reverse), OnOff(clip.maintainPitch),
                                          clip.ganged ? QStringLiteral("duration follows speed")
                                                      : QStringLiteral("duration kept"));
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
        {QStringLiteral("Clip speed"), QStringLiteral("ClipSpeedDialog"), &OpenClipSpeed,
         [](TestSupport::Step& ioStep) {
             ioStep.Type(QStringLiteral("clipSpeedReplacement"), QStringLiteral("50"))
                 .Press(Qt::Key_Return)
                 .Press(Qt::Key_Return);
         }},
    };
    return dialogs;
}

} // namespace Demo
