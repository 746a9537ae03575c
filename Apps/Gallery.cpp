#include "Gallery.h"

#include <QApplication>
#include <QCoreApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QDir>
#include <QFile>
#include <QTest>
#include <QTextStream>

#include <algorithm>

#include "DemoWindow.h"
#include "ImportDemo.h"
#include "RelinkDemo.h"
#include "ProjectManagerDemo.h"
#include "HostQt/SimulatedDeck.h"
#include "ScriptedUser.h"
#include "SerialDemo.h"
#include "zelcore/Error.h"

namespace Demo {

namespace {

struct GalleryEntry {
    QString title;
    std::function<void(TestSupport::ScriptedUser&, const QDir&)> script;
    std::function<QString()> open;
};

QString Attempt(const std::function<QString()>& inOpen)
{
    try {
        return inOpen();
    } catch (const zelcore::Error& error) {
        return QStringLiteral("raised \"%1\"").arg(QString::fromStdWString(error.Message()));
    } catch (const std::exception& error) {
        return QStringLiteral("raised \"%1\"").arg(QString::fromLocal8Bit(error.what()));
    }
}

const DemoDialog& FindDialog(const QString& inTitle)
{
    const auto& dialogs = DemoDialogs();
    return *std::find_if(dialogs.begin(), dialogs.end(),
                         [&](const DemoDialog& inDialog) { return inDialog.title == inTitle; });
}

// Waits until the operation holds at its pause point and the dialog has shown what it posted
// before it stopped.
void UntilHeld(const std::shared_ptr<PauseGate>& inPause)
{
    if (!QTest::qWaitFor([&] { return inPause->IsHolding(); }, 30000)) {
        qWarning("The operation never reached its pause point; its picture shows it elsewhere.");
    }
    QCoreApplication::processEvents();
}

// The operations' dialogs pictured half-way through their real work: the worker holds at 40 %
// until the picture is taken. The render comes first, so that there is media to verify.
void AddOperationEntries(std::vector<GalleryEntry>& ioEntries, DemoState& ioState, HostQt::Workspace& inWorkspace)
{
    constexpr float kHalfWay = 0.4f;
    for (const char* title : {"Render sample media", "Verify media"}) {
        const DemoDialog& dialog = FindDialog(QString::fromLatin1(title));
        ioEntries.push_back({dialog.title,
                             [&dialog, &ioState, kHalfWay](TestSupport::ScriptedUser& ioUser, const QDir& inDir) {
                                 auto pause = std::make_shared<PauseGate>(kHalfWay);
                                 ioState.pause = pause;
                                 TestSupport::Step& step = ioUser.On(dialog.window);
                                 if (dialog.window == QLatin1String("RenderProgressDialog")) {
                                     step.Click(QStringLiteral("disclosureTriangle"));
                                 }
                                 step.Inspect([pause](QWidget&) { UntilHeld(pause); })
                                     .Grab(inDir.filePath(dialog.window + QStringLiteral(".png")))
                                     .Inspect([pause](QWidget&) { pause->Release(); });
                             },
                             [&dialog, &ioState, &inWorkspace] { return dialog.open(ioState, inWorkspace); }});
    }
}

// The picker in each of its twelve modes (cancelled each time), and with the web-safe box ticked.
void AddColorPickerEntries(std::vector<GalleryEntry>& ioEntries, DemoState& ioState, HostQt::Workspace& inWorkspace)
{
    const DemoDialog& picker = FindDemoDialog(QStringLiteral("ColorPickerDialog"));
    static const char* const kModes[] = {"Hue",   "Saturation", "Brightness", "Red",   "Green", "Blue",
                                         "HSL_H", "HSL_S",      "HSL_L",      "YUV_Y", "YUV_U", "YUV_V"};
    for (const char* mode : kModes) {
        const QString radio = QString::fromLatin1(mode);
        ioEntries.push_back({QStringLiteral("Color picker in mode %1, cancelled").arg(radio),
                             [radio](TestSupport::ScriptedUser& ioUser, const QDir& inDir) {
                                 ioUser.On(QStringLiteral("ColorPickerDialog"))
                                     .Click(radio)
                                     .Grab(inDir.filePath(QStringLiteral("ColorPickerDialog-%1.png").arg(radio)))
                                     .Press(Qt::Key_Escape);
                             },
                             [&picker, &ioState, &inWorkspace] { return picker.open(ioState, inWorkspace); }});
    }
    ioEntries.push_back({QStringLiteral("Color picker, web colors only"),
                         [](TestSupport::ScriptedUser& ioUser, const QDir& inDir) {
                             ioUser.On(QStringLiteral("ColorPickerDialog"))
                                 .Click(QStringLiteral("WebSafeCheckbox"))
                                 .Grab(inDir.filePath(QStringLiteral("ColorPickerDialog-WebSafe.png")))
                                 .Press(Qt::Key_Return);
                         },
                         [&picker, &ioState, &inWorkspace] { return picker.open(ioState, inWorkspace); }});
}

// The import dialog: one file, several, a numbered still sequence with its run described, and a
// folder by the import-folder button; each into the sample project.
void AddImportEntries(std::vector<GalleryEntry>& ioEntries, DemoState& ioState, HostQt::Workspace& inWorkspace)
{
    using Script = std::function<void(TestSupport::Step&, const QDir&)>;
    const auto grab = [](const QDir& inDir, const char* inName) { return inDir.filePath(QString::fromLatin1(inName)); };
    const std::pair<const char*, Script> entries[] = {
        {"Import one file",
         [grab](TestSupport::Step& ioStep, const QDir& inDir) {
             ioStep.SelectItems({QStringLiteral("Title card.png")}).Grab(grab(inDir, "ImportFileDialog.png")).Confirm();
         }},
        {"Import several files",
         [](TestSupport::Step& ioStep, const QDir&) {
             ioStep.SelectItems({QStringLiteral("Interview.wav"), QStringLiteral("Title card.png")}).Confirm();
         }},
        {"Import a numbered still sequence",
         [grab](TestSupport::Step& ioStep, const QDir& inDir) {
             ioStep.SelectItems({QStringLiteral("Harbour_0007.png")})
                 .Click(QStringLiteral("numberedStillsCheckbox"))
                 .Grab(grab(inDir, "ImportFileDialog-NumberedStills.png"))
                 .Confirm();
         }},
        {"Import a folder",
         [grab](TestSupport::Step& ioStep, const QDir& inDir) {
             ioStep.SelectItems({QStringLiteral("Stills folder")})
                 .Grab(grab(inDir, "ImportFileDialog-Folder.png"))
                 .Click(QStringLiteral("importFolderButton"));
         }},
    };
    for (const auto& [title, script] : entries) {
        ioEntries.push_back({QString::fromLatin1(title),
                             [script](TestSupport::ScriptedUser& ioUser, const QDir& inDir) {
                                 script(ioUser.On(QStringLiteral("ImportFileDialog")), inDir);
                             },
                             [&ioState, &inWorkspace] { return OpenImportFiles(ioState, inWorkspace); }});
    }
}

// The locate dialog over the project's offline media: one file found by the user, the rest of
// its folder by the automatic search.
void AddRelinkEntry(std::vector<GalleryEntry>& ioEntries, DemoState& ioState, HostQt::Workspace& inWorkspace)
{
    ioEntries.push_back({QStringLiteral("Relink offline media"),
                         [&ioState](TestSupport::ScriptedUser& ioUser, const QDir& inDir) {
                             ioUser.On(QStringLiteral("RelinkFileDialog"))
                                 .ChangeFolder(RelinkMovedFolder(ioState))
                                 .SelectItems({QStringLiteral("Interview B.mov")})
                                 .Grab(inDir.filePath(QStringLiteral("RelinkFileDialog.png")))
                                 .Confirm();
                         },
                         [&ioState, &inWorkspace] { return RelinkOfflineMedia(ioState, inWorkspace); }});
    ioEntries.push_back({QStringLiteral("Relink moved title files"),
                         [&ioState](TestSupport::ScriptedUser& ioUser, const QDir&) {
                             ioUser.On(QStringLiteral("RelinkFileDialog"))
                                 .ChangeFolder(QDir(RelinkMovedFolder(ioState)).filePath(QStringLiteral("Titles")))
                                 .SelectItems({QStringLiteral("Opening title.png")})
                                 .Confirm();
                         },
                         [&ioState, &inWorkspace] { return RelinkTitleFiles(ioState, inWorkspace); }});
}

// The project manager run for real on the sample project: the user chooses a new folder and trims
// the project into it, after calculating the sizes; the project's audio is conformed first. The
// progress and conform windows close by themselves; their steps only expect them. (A progress
// window shows only for work that lasts; collecting the small sample media may finish before.)
void AddProjectManagerEntry(std::vector<GalleryEntry>& ioEntries, DemoState& ioState, HostQt::Workspace& inWorkspace)
{
    const DemoDialog& manager = FindDemoDialog(QStringLiteral("ProjectManagerDialog"));
    ioEntries.push_back(
        {QStringLiteral("Project manager, trimmed into a new folder"),
         [&ioState](TestSupport::ScriptedUser& ioUser, const QDir& inDir) {
             const QString folder = QDir(ProjectManagerFolder(ioState)).filePath(QStringLiteral("Trimmed copy"));
             QDir().mkpath(folder);
             ioUser.On(QStringLiteral("ProjectManagerDialog")).Click(QStringLiteral("browseButton"));
             // A folder typed into the chooser's name box and entered is the one chosen.
             ioUser.On(QStringLiteral("FolderChooserDialog")).ChangeFolder(folder);
             ioUser.On(QStringLiteral("ProjectManagerDialog")).Click(QStringLiteral("calculateButton"));
             ioUser.On(QStringLiteral("ProgressDialog"));
             ioUser.On(QStringLiteral("ProjectManagerDialog"))
                 .Grab(inDir.filePath(QStringLiteral("ProjectManagerDialog-Calculated.png")))
                 .Click(QStringLiteral("okButton"));
             ioUser.On(QStringLiteral("ConformDialog"));
             ioUser.On(QStringLiteral("ProgressDialog"));
         },
         [&manager, &ioState, &inWorkspace] { return manager.open(ioState, inWorkspace); }});
}

std::vector<GalleryEntry> Entries(DemoState& ioState, HostQt::Workspace& inWorkspace)
{
    std::vector<GalleryEntry> entries;
    for (const DemoDialog& dialog : DemoDialogs()) {
        // A window without an answer is pictured its own way (the operations, below).
        if (!dialog.galleryAnswer && !dialog.window.isEmpty()) {
            continue;
        }
        entries.push_back({dialog.title,
                           [&dialog](TestSupport::ScriptedUser& ioUser, const QDir& inDir) {
                               if (dialog.window.isEmpty()) {
                                   return;
                               }
                               TestSupport::Step& step = ioUser.On(dialog.window);
                               const QString picture = dialog.picture.isEmpty() ? dialog.window : dialog.picture;
                               step.Grab(inDir.filePath(picture + QStringLiteral(".png")));
                               dialog.galleryAnswer(step);
                           },
                           [&dialog, &ioState, &inWorkspace] { return dialog.open(ioState, inWorkspace); }});
    }
    // How a refused value looks: the colour matte dialog asked to take an empty name.
    const DemoDialog& matte = FindDemoDialog(QStringLiteral("ColorMatteNameDialog"));
    entries.push_back({QStringLiteral("Color matte name, empty name refused"),
                       [](TestSupport::ScriptedUser& ioUser, const QDir& inDir) {
                           ioUser.On(QStringLiteral("ColorMatteNameDialog"))
                               .Retype(QStringLiteral("matteNameTextEdit"), QString())
                               .Click(QStringLiteral("okButton"));
                           ioUser.On(QStringLiteral("MessageBox"))
                               .Grab(inDir.filePath(QStringLiteral("ColorMatteNameDialog-EmptyName.png")))
                               .Press(Qt::Key_Return);
                           ioUser.On(QStringLiteral("ColorMatteNameDialog")).Press(Qt::Key_Escape);
                       },
                       [&matte, &ioState, &inWorkspace] { return matte.open(ioState, inWorkspace); }});
    // The clip speed dialog unlinked: a new speed leaves the duration as it was.
    const DemoDialog& clipSpeed = FindDemoDialog(QStringLiteral("ClipSpeedDialog"));
    entries.push_back({QStringLiteral("Clip speed, unlinked"),
                       [](TestSupport::ScriptedUser& ioUser, const QDir& inDir) {
                           ioUser.On(QStringLiteral("ClipSpeedDialog"))
                               .Click(QStringLiteral("gangSubView"))
                               .Type(QStringLiteral("clipSpeedReplacement"), QStringLiteral("200"))
                               .Press(Qt::Key_Return)
                               .Grab(inDir.filePath(QStringLiteral("ClipSpeedDialog-Unlinked.png")))
                               .Press(Qt::Key_Return);
                       },
                       [&clipSpeed, &ioState, &inWorkspace] { return clipSpeed.open(ioState, inWorkspace); }});
    // Saving a key set under the name just used asks before replacing it.
    const DemoDialog& keysetName = FindDemoDialog(QStringLiteral("KeysetNameDialog"));
    entries.push_back({QStringLiteral("Save key set as, replacing one"),
                       [](TestSupport::ScriptedUser& ioUser, const QDir& inDir) {
                           ioUser.On(QStringLiteral("KeysetNameDialog"))
                               .Retype(QStringLiteral("keysetNameTextEdit"), QStringLiteral("Edit Bay"))
                               .Press(Qt::Key_Return);
                           ioUser.On(QStringLiteral("keysetReplaceConfirmDialog"))
                               .Grab(inDir.filePath(QStringLiteral("KeysetReplaceConfirmDialog.png")))
                               .Click(QStringLiteral("okButton"));
                       },
                       [&keysetName, &ioState, &inWorkspace] { return keysetName.open(ioState, inWorkspace); }});
    // A key that another command has: the editor names both and offers Reassign.
    const DemoDialog& shortcuts = FindDemoDialog(QStringLiteral("ShortcutsDialog"));
    entries.push_back({QStringLiteral("Shortcuts, a taken key, cancelled"),
                       [](TestSupport::ScriptedUser& ioUser, const QDir& inDir) {
                           ioUser.On(QStringLiteral("ShortcutsDialog"))
                               .Click(QStringLiteral("commandsListBox"))
                               .Click(QStringLiteral("keyCaptureTextEdit"))
                               .Press(Qt::Key_X, Qt::ControlModifier)
                               .Grab(inDir.filePath(QStringLiteral("ShortcutsDialog-KeyTaken.png")))
                               .Click(QStringLiteral("cancelButton"));
                       },
                       [&shortcuts, &ioState, &inWorkspace] { return shortcuts.open(ioState, inWorkspace); }});
    // The about dialog's notices, opened from its button.
    const DemoDialog& about = FindDemoDialog(QStringLiteral("aboutDialog"));
    entries.push_back({QStringLiteral("About, patent and legal notices"),
                       [](TestSupport::ScriptedUser& ioUser, const QDir& inDir) {
                           ioUser.On(QStringLiteral("aboutDialog"))
                               .Click(QStringLiteral("legalNoticesButton"))
                               .Click(QStringLiteral("okButton"));
                           ioUser.On(QStringLiteral("PatentAndLegalNotices"))
                               .Grab(inDir.filePath(QStringLiteral("PatentAndLegalNotices.png")))
                               .Click(QStringLiteral("okButton"));
                       },
                       [&about, &ioState, &inWorkspace] { return about.open(ioState, inWorkspace); }});
    // The export to tape on the simulated deck, pictured recording and finished, and its status dialog.
    const auto& dialogs = DemoDialogs();
    for (const DemoDialog& dialog : dialogs) {
        if (dialog.title == QLatin1String("Export to tape (simulated deck), run to the end")) {
            entries.push_back({dialog.title,
                               [](TestSupport::ScriptedUser& ioUser, const QDir& inDir) {
                                   ioUser.On(QStringLiteral("ExportToTapeDialog"))
                                       .Click(QStringLiteral("recordButton"))
                                       .Inspect(UntilDeckState(HostQt::SimulatedDeck::kDoneWithDroppedFrames))
                                       .Grab(inDir.filePath(QStringLiteral("ExportToTapeDialog-Finished.png")))
                                       .Press(Qt::Key_Escape);
                               },
                               [&dialog, &ioState, &inWorkspace] { return dialog.open(ioState, inWorkspace); }});
        } else if (dialog.title == QLatin1String("Export to tape (simulated deck), aborted after dropped frames")) {
            entries.push_back({dialog.title,
                               [](TestSupport::ScriptedUser& ioUser, const QDir& inDir) {
                                   ioUser.On(QStringLiteral("ExportToTapeDialog"))
                                       .Click(QStringLiteral("recordButton"))
                                       .Inspect(UntilDeckState(HostQt::SimulatedDeck::kRecording))
                                       .Grab(inDir.filePath(QStringLiteral("ExportToTapeDialog-Recording.png")))
                                       .Inspect(UntilDeckState(HostQt::SimulatedDeck::kAbortedForDroppedFrames))
                                       .Press(Qt::Key_Escape);
                               },
                               [&dialog, &ioState, &inWorkspace] { return dialog.open(ioState, inWorkspace); }});
        } else if (dialog.window == QLatin1String("SerialExportStatusDialog")) {
            entries.push_back({dialog.title,
                               [](TestSupport::ScriptedUser& ioUser, const QDir& inDir) {
                                   ioUser.On(QStringLiteral("SerialExportStatusDialog"))
                                       .Inspect(UntilStatusDialogState(HostQt::SimulatedDeck::kRecording))
                                       .Grab(inDir.filePath(QStringLiteral("SerialExportStatusDialog.png")))
                                       .Click(QStringLiteral("2"));
                               },
                               [&dialog, &ioState, &inWorkspace] { return dialog.open(ioState, inWorkspace); }});
        }
    }
    AddColorPickerEntries(entries, ioState, inWorkspace);
    AddOperationEntries(entries, ioState, inWorkspace);
    AddImportEntries(entries, ioState, inWorkspace);
    AddRelinkEntry(entries, ioState, inWorkspace);
    AddProjectManagerEntry(entries, ioState, inWorkspace);
    return entries;
}

// Drags the gain up twelve steps, types a position and switches the project's time display.
void UseControls(DemoWindow& ioWindow, QTextStream& outReport)
{
    auto* gain = ioWindow.findChild<QWidget*>(QStringLiteral("gainHotTextNumber"));
    auto* position = ioWindow.findChild<QWidget*>(QStringLiteral("positionTimecodeControl"));
    auto* formats = ioWindow.findChild<QComboBox*>(QStringLiteral("timeDisplayPopup"));
    if (!gain || !position || !formats) {
        outReport << "Controls: PROBLEM: the controls panel is missing\n";
        return;
    }
    TestSupport::DragAcross(gain, QPoint(6, 8), 12);
    QTest::mouseClick(position, Qt::LeftButton);
    if (auto* field = position->findChild<QLineEdit*>()) {
        QTest::keyClicks(field, QStringLiteral("+1:00"));
        QTest::keyClick(field, Qt::Key_Return);
    }
    formats->setFocus();
    QTest::keyClick(formats, Qt::Key_Down);
    outReport << "Controls: gain dragged 12 px, position +1:00, time display " << formats->currentText() << "\n";
}

} // namespace

int RenderGallery(const QString& inDirectory, DemoWindow& ioWindow, DemoState& ioState,
                  HostQt::Workspace& inWorkspace)
{
    const QDir dir(inDirectory);
    QDir().mkpath(inDirectory);

    QFile reportFile(dir.filePath(QStringLiteral("report.txt")));
    reportFile.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text);
    QTextStream report(&reportFile);
    int failed = 0;
    for (const GalleryEntry& entry : Entries(ioState, inWorkspace)) {
        TestSupport::ScriptedUser user;
        entry.script(user, dir);
        const QString result = Attempt(entry.open);
        const QStringList problems = user.Finish();
        report << entry.title << ": " << result << "\n";
        for (const TestSupport::SeenMessageBox& box : user.MessageBoxes()) {
            report << "    message box \"" << box.caption << "\": " << box.text << "\n";
        }
        for (const QString& problem : problems) {
            report << "    PROBLEM: " << problem << "\n";
        }
        failed += problems.isEmpty() ? 0 : 1;
        ioWindow.Log(entry.title + QStringLiteral(": ") + result);
    }
    UseControls(ioWindow, report);
    ioWindow.grab().save(dir.filePath(QStringLiteral("MainWindow.png")));
    return failed;
}

} // namespace Demo
