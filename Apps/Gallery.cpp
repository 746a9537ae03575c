#include "Gallery.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QDir>
#include <QFile>
#include <QTest>
#include <QTextStream>

#include "DemoWindow.h"
#include "ScriptedUser.h"
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

std::vector<GalleryEntry> Entries(DemoState& ioState, HostQt::Workspace& inWorkspace)
{
    std::vector<GalleryEntry> entries;
    for (const DemoDialog& dialog : DemoDialogs()) {
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
    const DemoDialog& matte = DemoDialogs()[1];
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
