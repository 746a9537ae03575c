#include "DemoDialogs.h"

#include <QDir>
#include <QFileInfo>

#include <cmath>
#include <stdexcept>

#include "BE/Project.h"
#include "ColorPicker/ColorPickerDialog.h"
#include "DLG/ClipGainDialog.h"
#include "DLG/ClipSpeedDialogImpl.h"
#include "DLG/DeleteMediaDialog.h"
#include "DLG/FitClipDialog.h"
#include "DLG/FontSizeDialog.h"
#include "DLG/GenericListErrorDialog.h"
#include "DLG/GenericTextErrorDialog.h"
#include "DLG/HideShowTracksDialog.h"
#include "DLG/KeysetDialogs.h"
#include "DLG/Module.h"
#include "DLG/NewTapeNameDialog.h"
#include "DLG/ProgressDialog.h"
#include "DLG/ProjectMakeOfflineFileDialog.h"
#include "DLG/RenameClipDialog.h"
#include "DLG/RenderProgressDialog.h"
#include "DLG/SaveProject.h"
#include "DLG/SequenceZeroPointDialog.h"
#include "DLG/SetNumberedMarkerDialog.h"
#include "DLG/ShortcutsDialog.h"
#include "DLG/TestVrelDialog.h"
#include "DLG/TransformOpacityDialog.h"
#include "DLG/TransformPositionDialog.h"
#include "DLG/TransformRotationDialog.h"
#include "DLG/TransformScaleDialog.h"
#include "HostQt/Workspace.h"
#include "KOR/Services.h"
#include "UIF/ShortcutManager.h"
#include "ScriptedUser.h"
#include "SerialDemo.h"
#include "StartupDemo.h"
#include "ImportDemo.h"
#include "RelinkDemo.h"
#include "ProjectManagerDemo.h"

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

QString YesNo(bool inValue) { return inValue ? QStringLiteral("yes") : QStringLiteral("no"); }

QString Quoted(const std::wstring& inText) { return QStringLiteral("\"%1\"").arg(QString::fromStdWString(inText)); }

QString OpenTransformScale(DemoState& ioState, HostQt::Workspace&)
{
    const bool confirmed = DLG::TransformScale::DoTransformScaleDialog(
        ioState.uniformScale, ioState.horizontalScale, ioState.verticalScale, ioState.uniformScaling);
    return Returned(confirmed) + QStringLiteral("; uniform %1 %, horizontal %2 %, vertical %3 %, %4")
                                     .arg(ioState.uniformScale)
                                     .arg(ioState.horizontalScale)
                                     .arg(ioState.verticalScale)
                                     .arg(ioState.uniformScaling ? QStringLiteral("uniform") : QStringLiteral("non-uniform"));
}

QString OpenTransformRotation(DemoState& ioState, HostQt::Workspace&)
{
    const bool confirmed = DLG::TransformRotation::DoTransformRotationDialog(ioState.rotation);
    return Returned(confirmed) + QStringLiteral("; rotation = %1 degrees").arg(ioState.rotation);
}

QString OpenTransformOpacity(DemoState& ioState, HostQt::Workspace&)
{
    const bool confirmed = DLG::TransformOpacity::DoTransformOpacityDialog(ioState.opacity);
    return Returned(confirmed) + QStringLiteral("; opacity = %1").arg(ioState.opacity);
}

QString OpenFontSize(DemoState& ioState, HostQt::Workspace&)
{
    const bool confirmed = DLG::FontSize::DoFontSizeDialog(ioState.fontSize);
    return Returned(confirmed) + QStringLiteral("; font size = %1 pt").arg(ioState.fontSize);
}

QString OpenRenameClip(DemoState& ioState, HostQt::Workspace&)
{
    const bool confirmed = DLG::DoRenameClipDialog(ioState.clipName);
    return Returned(confirmed) + QStringLiteral("; clip name = ") + Quoted(ioState.clipName);
}

QString OpenNewTapeName(DemoState& ioState, HostQt::Workspace&)
{
    const bool confirmed = DLG::DoNewTapeNameDialog(L"Tape 001", ioState.tapeName);
    return Returned(confirmed) + QStringLiteral("; tape name = ") + Quoted(ioState.tapeName);
}

QString OpenSetNumberedMarker(DemoState& ioState, HostQt::Workspace&)
{
    const bool confirmed = DLG::SetNumberedMarker::DoSetNumberedMarkerDialog(ioState.markerNumber, ioState.markerName);
    return Returned(confirmed) + QStringLiteral("; marker %1 named ").arg(ioState.markerNumber) + Quoted(ioState.markerName);
}

QString OpenDeleteMedia(DemoState& ioState, HostQt::Workspace&)
{
    const bool confirmed = DLG::DeleteMedia::DoDeleteMediaDialog(ioState.deleteMedia);
    return Returned(confirmed) + QStringLiteral("; delete media: ") + YesNo(ioState.deleteMedia);
}

QString OpenProjectMakeOffline(DemoState& ioState, HostQt::Workspace&)
{
    const bool confirmed = DLG::DoProjectMakeOfflineFileDialog(ioState.deleteOfflineFiles);
    return Returned(confirmed) + QStringLiteral("; delete files: ") + YesNo(ioState.deleteOfflineFiles);
}

QString OpenFitClip(DemoState& ioState, HostQt::Workspace&)
{
    const bool confirmed = DLG::DoFitClipDialog(ioState.fitClipOptions, ioState.fitClipChoice);
    return Returned(confirmed) + QStringLiteral("; choice = 0x%1").arg(ioState.fitClipChoice, 0, 16);
}

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
                                     .arg(YesNo(clip.reverse), YesNo(clip.maintainPitch),
                                          clip.ganged ? QStringLiteral("duration follows speed")
                                                      : QStringLiteral("duration kept"));
}

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

QString OpenHideShowTracks(DemoState& ioState, HostQt::Workspace&)
{
    const bool confirmed = DLG::DoHideShowTracksDialog(ioState.trackNames, ioState.tracksShown);
    QStringList shown;
    for (std::size_t i = 0; i < ioState.trackNames.size(); ++i) {
        if (ioState.tracksShown[i]) {
            shown << QString::fromStdWString(ioState.trackNames[i]);
        }
    }
    return Returned(confirmed) + QStringLiteral("; shown: %1").arg(shown.join(QStringLiteral(", ")));
}

QString OpenGenericTextError(DemoState&, HostQt::Workspace&)
{
    return Returned(DLG::DoGenericTextErrorDialog(
        {L"Harbour at dawn.mov: the file uses a codec that is not installed.",
         L"Interview B.mov: the file is offline (/media/old drive/Interview B.mov).",
         L"Gulls ambience.wav: the file is empty."},
        L"Some Files Could Not Be Imported"));
}

QString OpenGenericListError(DemoState&, HostQt::Workspace&)
{
    return Returned(DLG::DoGenericListErrorDialog(
        {{L"Interview B.mov", L"The frame size differs from the clip's (1280x720, not 1920x1080)."},
         {L"Narration take 3.wav", L"The file has 1 audio channel; the clip has 2."}},
        L"These files could not be linked to their clips:", L"File", L"Problem"));
}

// The sample project's ambience clip, or its first clip with audio.
BE::AudioClipRef DemoAudioClip()
{
    const BE::ProjectRef project = DLG::GetCurrentProject();
    const std::vector<BE::AudioClipRef> clips = project ? project->GetAudioClips() : std::vector<BE::AudioClipRef>();
    for (const BE::AudioClipRef& clip : clips) {
        if (clip->GetName() == L"Gulls ambience.wav") {
            return clip;
        }
    }
    return clips.empty() ? BE::AudioClipRef() : clips.front();
}

QString OpenClipGain(DemoState& ioState, HostQt::Workspace&)
{
    const BE::AudioClipRef clip = DemoAudioClip();
    const bool confirmed = DLG::DoClipGainDialog(clip, ioState.clipGain);
    return Returned(confirmed) + QStringLiteral("; gain of \"%1\" = %2 (%3 dB)")
                                     .arg(clip ? QString::fromStdWString(clip->GetName()) : QStringLiteral("no clip"))
                                     .arg(ioState.clipGain)
                                     .arg(20.0 * std::log10(ioState.clipGain), 0, 'f', 1);
}

QString HexOf(const KOR::ParamColor<unsigned long>& inColor)
{
    return QStringLiteral("#%1%2%3")
        .arg(inColor.Red(), 2, 16, QLatin1Char('0'))
        .arg(inColor.Green(), 2, 16, QLatin1Char('0'))
        .arg(inColor.Blue(), 2, 16, QLatin1Char('0'))
        .toUpper();
}

// Picks a new colour for the project's colour matte named inName; the matte changes on OK only.
QString PickMatteColor(const std::wstring& inName)
{
    const BE::ProjectRef project = DLG::GetCurrentProject();
    BE::ColorMatteRef matte;
    for (const BE::ColorMatteRef& candidate : project ? project->GetColorMattes() : std::vector<BE::ColorMatteRef>()) {
        if (candidate->GetName() == inName) {
            matte = candidate;
        }
    }
    if (!matte) {
        return QStringLiteral("the project has no color matte \"%1\"").arg(QString::fromStdWString(inName));
    }
    const KOR::ParamColor<unsigned long> before = matte->GetColor();
    KOR::ParamColor<unsigned long> chosen = before;
    const bool confirmed = DLG::ColorPickerDialog::PickColor(before, chosen);
    if (confirmed) {
        matte->SetColor(chosen);
    }
    return Returned(confirmed) + QStringLiteral("; matte \"%1\" is %2 (was %3)")
                                     .arg(QString::fromStdWString(inName), HexOf(matte->GetColor()), HexOf(before));
}

QString OpenColorPicker(DemoState&, HostQt::Workspace&) { return PickMatteColor(L"Title Background"); }
QString OpenColorPickerUnsafe(DemoState&, HostQt::Workspace&) { return PickMatteColor(L"Alarm Red"); }

// A copy of the project in the demo's data folder, the project staying where it was.
QString SaveProjectCopy(DemoState& ioState, const QString& inRelativePath)
{
    QDir().mkpath(ioState.dataDirectory);
    const QString path = QDir(ioState.dataDirectory).filePath(inRelativePath);
    const long result = DLG::SaveProject(DLG::GetCurrentProject(), path.toStdWString(), true, true);
    const QString outcome = result == BE::kSave_OK
                                ? QStringLiteral("; saved to \"%1\" (%2 bytes)").arg(path).arg(QFileInfo(path).size())
                                : QStringLiteral("; \"%1\" not saved").arg(path);
    return QStringLiteral("returned 0x%1").arg(static_cast<std::uint32_t>(result), 8, 16, QLatin1Char('0')) + outcome;
}

QString OpenSaveProject(DemoState& ioState, HostQt::Workspace&)
{
    return SaveProjectCopy(ioState, QStringLiteral("Harbour Documentary copy.tvx"));
}

QString OpenSaveProjectToMissingFolder(DemoState& ioState, HostQt::Workspace&)
{
    return SaveProjectCopy(ioState, QStringLiteral("No such folder/Harbour Documentary.tvx"));
}

// Saves the current shortcuts under a new name, starting from the second preset.
QString OpenSaveKeysetAs(DemoState&, HostQt::Workspace&)
{
    UIF::ShortcutManager* shortcuts = KOR::Services().shortcuts;
    if (!shortcuts) {
        return QStringLiteral("no shortcut manager");
    }
    DLG::KeysetList list = DLG::ListKeysets(*shortcuts);
    list.selected = 1;
    const bool saved = DLG::SaveKeysetAs(*shortcuts, list);
    return Returned(saved) + QStringLiteral("; %1 sets, selected ").arg(list.names.size()) +
           Quoted(list.names[list.selected]);
}

QString OpenShortcuts(DemoState& ioState, HostQt::Workspace&)
{
    UIF::ShortcutManager* shortcuts = KOR::Services().shortcuts;
    if (!shortcuts) {
        return QStringLiteral("no shortcut manager");
    }
    const bool confirmed = DLG::DoShortcutsDialog(shortcuts, ioState.keySetPath);
    return Returned(confirmed) + QStringLiteral("; key set ") +
           Quoted(ioState.keySetPath.substr(ioState.keySetPath.find_last_of(L"/\\") + 1)) +
           QStringLiteral(", Undo on ") + Quoted(shortcuts->GetKey(L"edit.undo"));
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
        {QStringLiteral("Transform scale"), QStringLiteral("TransformScaleDialog"), &OpenTransformScale,
         [](TestSupport::Step& ioStep) {
             ioStep.Click(QStringLiteral("Non-Uniform"))
                 .Retype(QStringLiteral("horScaleNumberEdit"), QStringLiteral("120"))
                 .Press(Qt::Key_Return);
         }},
        {QStringLiteral("Transform rotation"), QStringLiteral("TransformRotationDialog"), &OpenTransformRotation,
         [](TestSupport::Step& ioStep) { ioStep.Type(QStringLiteral("degreesNumberEdit"), QStringLiteral("-12.5")).Press(Qt::Key_Return); }},
        {QStringLiteral("Transform opacity"), QStringLiteral("TransformOpacityDialog"), &OpenTransformOpacity,
         [](TestSupport::Step& ioStep) { ioStep.Type(QStringLiteral("opacityNumberEdit"), QStringLiteral("75")).Press(Qt::Key_Return); }},
        {QStringLiteral("Font size"), QStringLiteral("FontSizeDialog"), &OpenFontSize,
         [](TestSupport::Step& ioStep) { ioStep.Type(QStringLiteral("sizeNumberEdit"), QStringLiteral("36")).Press(Qt::Key_Return); }},
        {QStringLiteral("Rename clip"), QStringLiteral("RenameClipDialog"), &OpenRenameClip,
         [](TestSupport::Step& ioStep) { ioStep.Type(QStringLiteral("clipNameTextEdit"), QStringLiteral("Interview, take 2")).Press(Qt::Key_Return); }},
        {QStringLiteral("New tape name"), QStringLiteral("NewTapeNameDialog"), &OpenNewTapeName,
         [](TestSupport::Step& ioStep) { ioStep.Press(Qt::Key_Return); }},
        {QStringLiteral("Set numbered marker"), QStringLiteral("SetNumberedMarkerDialog"), &OpenSetNumberedMarker,
         [](TestSupport::Step& ioStep) { ioStep.Type(QStringLiteral("markerNameTextEdit"), QStringLiteral("Verse")).Press(Qt::Key_Return); }},
        {QStringLiteral("Delete media (cleared, then cancelled)"), QStringLiteral("DeleteMediaDialog"), &OpenDeleteMedia,
         [](TestSupport::Step& ioStep) { ioStep.Click(QStringLiteral("deleteMediaCheckbox")).Press(Qt::Key_Escape); }},
        {QStringLiteral("Make offline"), QStringLiteral("ProjectMakeOfflineFileDialog"), &OpenProjectMakeOffline,
         [](TestSupport::Step& ioStep) { ioStep.Click(QStringLiteral("deleteRadioButton")).Press(Qt::Key_Return); }},
        {QStringLiteral("Fit clip"), QStringLiteral("FitClipDialog"), &OpenFitClip,
         [](TestSupport::Step& ioStep) { ioStep.Click(QStringLiteral("trimClipsTailRadioButton")).Press(Qt::Key_Return); }},
        {QStringLiteral("Clip speed"), QStringLiteral("ClipSpeedDialog"), &OpenClipSpeed,
         [](TestSupport::Step& ioStep) {
             ioStep.Type(QStringLiteral("clipSpeedReplacement"), QStringLiteral("50"))
                 .Press(Qt::Key_Return)
                 .Press(Qt::Key_Return);
         }},
        {QStringLiteral("Render sample media"), QStringLiteral("RenderProgressDialog"), &OpenRenderMedia, {}},
        {QStringLiteral("Verify media"), QStringLiteral("ProgressDialog"), &OpenVerifyMedia, {}},
        {QStringLiteral("Show and hide tracks"), QStringLiteral("HideShowTracksDialog"), &OpenHideShowTracks,
         [](TestSupport::Step& ioStep) {
             ioStep.Press(Qt::Key_Down).Press(Qt::Key_Space).Click(QStringLiteral("okButton"));
         }},
        {QStringLiteral("Text error"), QStringLiteral("genericTextErrorDialog"), &OpenGenericTextError,
         [](TestSupport::Step& ioStep) { ioStep.Press(Qt::Key_Return); }},
        {QStringLiteral("List error"), QStringLiteral("genericListErrorDialog"), &OpenGenericListError,
         [](TestSupport::Step& ioStep) { ioStep.Press(Qt::Key_Return); }},
        {QStringLiteral("Clip gain"), QStringLiteral("ClipGain"), &OpenClipGain,
         [](TestSupport::Step& ioStep) {
             ioStep.Click(QStringLiteral("normalizeButton")).Click(QStringLiteral("okButton"));
         }},
        {QStringLiteral("Welcome screen"), QStringLiteral("ZELWelcomeDlog"), &OpenWelcomeScreen,
         [](TestSupport::Step& ioStep) { ioStep.Press(Qt::Key_Return); }},
        {QStringLiteral("About"), QStringLiteral("aboutDialog"), &OpenAbout,
         [](TestSupport::Step& ioStep) { ioStep.Press(Qt::Key_Return); }},
        {QStringLiteral("Color picker: Title Background matte"), QStringLiteral("ColorPickerDialog"), &OpenColorPicker,
         [](TestSupport::Step& ioStep) {
             ioStep.Retype(QStringLiteral("Hex"), QStringLiteral("2a4d7f")).Press(Qt::Key_Return);
         }},
        {QStringLiteral("Color picker: Alarm Red matte made broadcast-safe"), QStringLiteral("ColorPickerDialog"),
         &OpenColorPickerUnsafe,
         [](TestSupport::Step& ioStep) { ioStep.Click(QStringLiteral("NTSCButton")).Click(QStringLiteral("okButton")); },
         QStringLiteral("ColorPickerDialog-NotBroadcastSafe")},
        {QStringLiteral("Save a copy of the project"), QString(), &OpenSaveProject, nullptr},
        {QStringLiteral("Save a copy into a missing folder"), QStringLiteral("MessageBox"),
         &OpenSaveProjectToMissingFolder, [](TestSupport::Step& ioStep) { ioStep.Press(Qt::Key_Return); },
         QStringLiteral("SaveProjectErrorDialog")},
        {QStringLiteral("Save key set as"), QStringLiteral("KeysetNameDialog"), &OpenSaveKeysetAs,
         [](TestSupport::Step& ioStep) {
             ioStep.Retype(QStringLiteral("keysetNameTextEdit"), QStringLiteral("Edit Bay")).Press(Qt::Key_Return);
         }},
        // Undo, the first command, gets the Down key by pressing it in the key field.
        {QStringLiteral("Shortcuts"), QStringLiteral("ShortcutsDialog"), &OpenShortcuts,
         [](TestSupport::Step& ioStep) {
             ioStep.Click(QStringLiteral("keyCaptureTextEdit"))
                 .Press(Qt::Key_Down)
                 .Click(QStringLiteral("okButton"));
         }},
        // Pictured by the gallery in each state of its panel.
        {QStringLiteral("Import files"), QStringLiteral("ImportFileDialog"), &OpenImportFiles, {}},
        // The user finds one moved file; the others in its folder are linked without asking.
        {QStringLiteral("Relink offline media"), QStringLiteral("RelinkFileDialog"), &RelinkOfflineMedia, {}},
        // The user finds the title; its layer and the shared logo follow at their relative places.
        {QStringLiteral("Relink moved title files"), QStringLiteral("RelinkFileDialog"), &RelinkTitleFiles, {}},
        // The user chooses a folder, then collects or trims the sample project with its real media.
        {QStringLiteral("Project manager"), QStringLiteral("ProjectManagerDialog"), &OpenProjectManager,
         [](TestSupport::Step& ioStep) { ioStep.Click(QStringLiteral("cancelButton")); }},
        SerialSetupDemo(1),
        SerialSetupDemo(16),
        SerialExportOptionsDemo(),
        ExportToTapeIdleDemo(),
        ExportToTapeToTheEndDemo(),
        ExportToTapeAbortedDemo(),
        SerialExportStatusDemo(),
    };
    return dialogs;
}

const DemoDialog& FindDemoDialog(const QString& inWindow)
{
    for (const DemoDialog& dialog : DemoDialogs()) {
        if (dialog.window == inWindow) {
            return dialog;
        }
    }
    throw std::out_of_range("no demo dialog named " + inWindow.toStdString());
}

} // namespace Demo
