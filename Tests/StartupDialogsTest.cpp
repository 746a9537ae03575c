// The welcome screen and the about dialog through their entry functions, on real windows.

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DLG/AboutDialog.h"
#include "DLG/Module.h"
#include "DLG/QuickStartDialog.h"
#include "KOR/Paths.h"
#include "KOR/Services.h"
#include "TL/HelpCenter.h"
#include "UIF/ColorManager.h"
#include "CheckedUser.h"
#include "TestHost.h"
#include "zelui/OS_ResourceManager.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::CheckedUser;

const QString kWelcome = QStringLiteral("ZELWelcomeDlog");

// Records the pages asked for instead of opening a viewer.
class RecordingHelp : public TL::HelpService {
public:
    RecordingHelp() : mPrevious(std::exchange(KOR::Services().help, this)) {}
    ~RecordingHelp() override { KOR::Services().help = mPrevious; }
    bool OpenHelpPage(const std::wstring& inPage) override
    {
        mPages.push_back(inPage);
        return true;
    }
    std::vector<std::wstring> mPages;

private:
    TL::HelpService* mPrevious;
};

QStringList ListTexts(QWidget& inWindow)
{
    QStringList texts;
    auto* list = inWindow.findChild<QListWidget*>(QStringLiteral("recentProjectsList"));
    for (int row = 0; list && row < list->count(); ++row) {
        texts << list->item(row)->text();
    }
    return texts;
}

TEST(DisplayStringFromPath, IsTheFilePartWithoutItsExtension)
{
    const std::vector<std::pair<std::wstring, std::wstring>> cases = {
        {L"/projects/Harbour Cut.tvproj", L"Harbour Cut"},
        {L"C:\\Projects\\Gulls.v2.tvproj", L"Gulls.v2"},
        {L"D:\\mixed/slashes\\Reel 3.tvproj", L"Reel 3"},
        {L"/folder.with.dots/Untitled", L"Untitled"},
        {L"/projects/.hidden", L".hidden"},
        {L"Plain.tvproj", L"Plain"},
    };
    for (const auto& [path, display] : cases) {
        EXPECT_EQ(KOR::PathUtils::GetDisplayStringFromPath(path), display)
            << QString::fromStdWString(path).toStdString();
    }
}

TEST(QuickStart, TheModuleHoldsTheFiveImagesOfTheScreen)
{
    TestSupport::TestHost host;
    const zelui::utility::OS_ResourceManager resources(DLG::GetModule().GetNativeModule());
    for (const wchar_t* name : {L"kResDLGQuickStartDialogTop", L"kResDLGQuickStartDialogBottom",
                                L"kResDLGQuickStartNew", L"kResDLGQuickStartOpen", L"kResDLGQuickStartHelp"}) {
        EXPECT_TRUE(resources.HasImage(name)) << QString::fromWCharArray(name).toStdString();
    }
    EXPECT_FALSE(resources.HasImage(L"kResDLGQuickStartMissing"));
}

TEST(QuickStart, ShowsTheDisplayTextsAndImagesOverTheMainWindow)
{
    TestSupport::TestHost host(true);
    CheckedUser user;
    user.On(kWelcome)
        .Inspect([&host](QWidget& inWindow) {
            EXPECT_EQ(ListTexts(inWindow), QStringList({QStringLiteral("Harbour"), QStringLiteral("Gulls")}));
            EXPECT_EQ(inWindow.parentWidget(), host.MainWindow());
            for (const QString& image : {QStringLiteral("topImage"), QStringLiteral("bottomImage")}) {
                auto* label = inWindow.findChild<QLabel*>(image);
                ASSERT_NE(label, nullptr);
                EXPECT_FALSE(label->pixmap().isNull()) << image.toStdString();
            }
            for (auto* button : inWindow.findChildren<QPushButton*>()) {
                EXPECT_FALSE(button->icon().isNull()) << button->objectName().toStdString();
            }
        })
        .Press(Qt::Key_Escape);
    int chosen = -1;
    EXPECT_EQ(DLG::QuickStart::DoQuickStartDialog({L"/p/Harbour.tvproj", L"C:\\p\\Gulls.tvproj"}, chosen), 4);
    EXPECT_EQ(chosen, 0);
}

// The screen's own buttons and keys, with what each returns and whether help opens.
TEST(QuickStart, ButtonsAndKeysGiveTheirResults)
{
    struct Case {
        const char* name;
        std::function<void(TestSupport::Step&)> act;
        int result;
        bool helpOpened;
    };
    const std::vector<Case> cases = {
        {"new project", [](TestSupport::Step& ioStep) { ioStep.Click(QStringLiteral("newProjectButton")); }, 1, false},
        {"open project", [](TestSupport::Step& ioStep) { ioStep.Click(QStringLiteral("openProjectButton")); }, 2,
         false},
        {"help", [](TestSupport::Step& ioStep) { ioStep.Click(QStringLiteral("helpButton")); }, 3, true},
        {"Escape", [](TestSupport::Step& ioStep) { ioStep.Press(Qt::Key_Escape); }, 4, false},
        {"closed", [](TestSupport::Step& ioStep) { ioStep.Close(); }, 4, false},
        {"Tab to the buttons, Right, Enter",
         [](TestSupport::Step& ioStep) { ioStep.Press(Qt::Key_Tab).Press(Qt::Key_Right).Press(Qt::Key_Return); }, 2,
         false},
        {"Tab, Right twice, Left, Enter",
         [](TestSupport::Step& ioStep) {
             ioStep.Press(Qt::Key_Tab)
                 .Press(Qt::Key_Right)
                 .Press(Qt::Key_Right)
                 .Press(Qt::Key_Left)
                 .Press(Qt::Key_Return);
         },
         2, false},
    };
    for (const Case& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        TestSupport::TestHost host(true);
        RecordingHelp help;
        CheckedUser user;
        testCase.act(user.On(kWelcome));
        int chosen = -1;
        EXPECT_EQ(DLG::QuickStart::DoQuickStartDialog({L"/p/Harbour.tvproj"}, chosen), testCase.result);
        EXPECT_EQ(chosen, 0);
        EXPECT_EQ(help.mPages,
                  testCase.helpOpened ? std::vector<std::wstring>{TL::kHelpHomePage} : std::vector<std::wstring>{});
    }
}

// Rows are chosen with the arrows and Enter; equal display texts resolve to the first.
TEST(QuickStart, ARecentProjectGivesFiveAndTheFirstEqualDisplayText)
{
    const std::vector<std::wstring> paths = {L"/a/Harbour.tvproj", L"C:\\b\\Gulls.tvproj", L"/c/Harbour.tvproj",
                                             L"/d/Reel.tvproj"};
    struct Case {
        int downPresses;
        int chosenIndex;
    };
    for (const Case& testCase : std::vector<Case>{{0, 0}, {1, 1}, {2, 0}, {3, 3}}) {
        SCOPED_TRACE(testCase.downPresses);
        TestSupport::TestHost host(true);
        CheckedUser user;
        TestSupport::Step& step = user.On(kWelcome);
        for (int press = 0; press < testCase.downPresses; ++press) {
            step.Press(Qt::Key_Down);
        }
        step.Press(Qt::Key_Return);
        int chosen = -1;
        EXPECT_EQ(DLG::QuickStart::DoQuickStartDialog(paths, chosen), 5);
        EXPECT_EQ(chosen, testCase.chosenIndex);
    }
}

TEST(QuickStart, AnEmptyRecentListStillShowsTheScreen)
{
    TestSupport::TestHost host(true);
    CheckedUser user;
    user.On(kWelcome)
        .Inspect([](QWidget& inWindow) {
            EXPECT_THAT(ListTexts(inWindow), IsEmpty());
            EXPECT_EQ(inWindow.focusWidget(), inWindow.findChild<QWidget*>(QStringLiteral("newProjectButton")));
        })
        .Press(Qt::Key_Return);
    int chosen = -1;
    EXPECT_EQ(DLG::QuickStart::DoQuickStartDialog({}, chosen), 1);
}

TEST(QuickStart, ClosingFromOutsideReturnsFour)
{
    TestSupport::TestHost host(true);
    EXPECT_FALSE(DLG::QuickStart::IsDialogEnabled());
    DLG::QuickStart::CloseQuickStartDialog(); // nothing runs: no effect
    bool enabledWhileShown = false;
    CheckedUser user;
    user.On(kWelcome).Inspect([&](QWidget&) {
        enabledWhileShown = DLG::QuickStart::IsDialogEnabled();
        DLG::QuickStart::CloseQuickStartDialog();
    });
    int chosen = -1;
    EXPECT_EQ(DLG::QuickStart::DoQuickStartDialog({L"/p/Harbour.tvproj"}, chosen), 4);
    EXPECT_TRUE(enabledWhileShown);
    EXPECT_FALSE(DLG::QuickStart::IsDialogEnabled());
}

TEST(QuickStart, NoWorkspaceReturnsFourWithoutAWindow)
{
    TestSupport::TestHost host;
    KOR::Services().workspace = nullptr;
    const int brightness = UIF::ColorManager::GetBrightness();
    CheckedUser user;
    int chosen = 9;
    EXPECT_EQ(DLG::QuickStart::DoQuickStartDialog({L"/p/Harbour.tvproj"}, chosen), 4);
    EXPECT_EQ(chosen, 0);
    EXPECT_EQ(UIF::ColorManager::GetBrightness(), brightness);
}

TEST(QuickStart, ShowsAtBrightnessFiftyAndPutsTheUsersBack)
{
    TestSupport::TestHost host(true);
    const int original = UIF::ColorManager::GetBrightness();
    for (const int users : {80, 20, 50}) {
        SCOPED_TRACE(users);
        UIF::ColorManager::SetBrightness(users);
        const QColor usersWindowColour = QApplication::palette().color(QPalette::Window);
        CheckedUser user;
        user.On(kWelcome)
            .Inspect([](QWidget& inWindow) {
                EXPECT_EQ(UIF::ColorManager::GetBrightness(), 50);
                EXPECT_NEAR(inWindow.palette().color(QPalette::Window).lightness(), 128, 1);
            })
            .Click(QStringLiteral("openProjectButton"));
        int chosen = -1;
        EXPECT_EQ(DLG::QuickStart::DoQuickStartDialog({}, chosen), 2);
        EXPECT_EQ(UIF::ColorManager::GetBrightness(), users);
        EXPECT_EQ(QApplication::palette().color(QPalette::Window), usersWindowColour);
    }
    UIF::ColorManager::SetBrightness(original);
}

// The reference help centre opens only a page it has; these never reach a viewer.
TEST(HelpCenter, OpensNothingWithoutAServiceFolderOrPage)
{
    TestSupport::TestHost host;
    const std::wstring registered = KOR::DirectoryRegistry::FindDirectory(L"help.pages");
    KOR::DirectoryRegistry::RegisterDirectory(L"help.pages", L"");
    EXPECT_FALSE(TL::TarvixHelpCenter::OpenHelpPage(TL::kHelpHomePage)) << "no folder registered";
    KOR::DirectoryRegistry::RegisterDirectory(L"help.pages", host.ScratchDirectory().toStdWString());
    EXPECT_FALSE(TL::TarvixHelpCenter::OpenHelpPage(TL::kHelpHomePage)) << "the folder lacks home.html";
    KOR::Services().help = nullptr;
    EXPECT_FALSE(TL::TarvixHelpCenter::OpenHelpPage(TL::kHelpHomePage)) << "the host offers no help";
    KOR::DirectoryRegistry::RegisterDirectory(L"help.pages", registered);
}

// Whatever the files say, read as they are.
QString FileText(const QString& inPath)
{
    QFile file(inPath);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

TEST(AboutDialog, VersionLineIsTheProjectVersionAndTheHostBuild)
{
    TestSupport::TestHost host;
    EXPECT_EQ(DLG::AboutVersionLine(L"Build 2026.11 x64"),
              QStringLiteral("Version " TARVIX_EXPECTED_VERSION " (Build 2026.11 x64)").toStdWString());
    EXPECT_EQ(std::count(DLG::kLibraryVersion.begin(), DLG::kLibraryVersion.end(), L'.'), 2);
}

TEST(AboutDialog, ShowsItsTextsAndOpensTheNoticesOfEveryFile)
{
    TestSupport::TestHost host(true);
    const QDir notices(QStringLiteral(TARVIX_SOURCE_DIR "/Strings/Notices"));
    const QStringList files = notices.entryList({QStringLiteral("*.txt")}, QDir::Files, QDir::Name);
    ASSERT_EQ(files,
              QStringList({QStringLiteral("Boost.txt"), QStringLiteral("FFmpeg.txt"), QStringLiteral("Qt.txt")}));
    CheckedUser user;
    user.On(QStringLiteral("aboutDialog"))
        .Inspect([](QWidget& inWindow) {
            EXPECT_EQ(inWindow.windowTitle(), QStringLiteral("About Tarvix Studio"));
            EXPECT_EQ(inWindow.findChild<QLabel*>(QStringLiteral("productNameStaticText"))->text(),
                      QStringLiteral("Tarvix Studio"));
            EXPECT_EQ(inWindow.findChild<QLabel*>(QStringLiteral("versionStaticText"))->text(),
                      QStringLiteral("Version " TARVIX_EXPECTED_VERSION " (Build 512)"));
            EXPECT_EQ(inWindow.findChild<QLabel*>(QStringLiteral("licenseeStaticText"))->text(),
                      QStringLiteral("Licensed to: Harbour Films"));
            EXPECT_EQ(inWindow.findChild<QLabel*>(QStringLiteral("copyrightStaticText"))->text(),
                      QString::fromUtf8("Copyright \u00a9 2026 Tarvix Systems. All rights reserved."));
        })
        .Click(QStringLiteral("legalNoticesButton"))
        .Click(QStringLiteral("okButton"));
    user.On(QStringLiteral("PatentAndLegalNotices"))
        .Inspect([&](QWidget& inWindow) {
            auto* text = inWindow.findChild<QPlainTextEdit*>(QStringLiteral("noticesTextEdit"));
            ASSERT_NE(text, nullptr);
            EXPECT_TRUE(text->isReadOnly());
            const QString shown = text->toPlainText();
            for (const QString& name : files) {
                const QString fileText = FileText(notices.filePath(name));
                ASSERT_FALSE(fileText.isEmpty()) << name.toStdString();
                EXPECT_TRUE(shown.contains(fileText)) << name.toStdString();
            }
            EXPECT_TRUE(shown.contains(QStringLiteral("GNU LESSER GENERAL PUBLIC LICENSE")));
            EXPECT_TRUE(shown.contains(QStringLiteral("Boost Software License - Version 1.0")));
        })
        .Click(QStringLiteral("okButton"));
    DLG::DoAboutDialog(L"Tarvix Studio", L"Build 512", L"Harbour Films", 2026);
}

TEST(AboutDialog, NoticesAreTheTextFilesInNameOrder)
{
    TestSupport::TestHost host;
    const QDir scratch(host.ScratchDirectory());
    const std::vector<std::pair<QString, QByteArray>> files = {
        {QStringLiteral("b.txt"), "Second component\nLicence B"},
        {QStringLiteral("a.txt"), "First component \xc2\xa9 2020\nLicence A"},
        {QStringLiteral("c.md"), "not a notice"},
    };
    for (const auto& [name, contents] : files) {
        QFile file(scratch.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }
    KOR::DirectoryRegistry::RegisterDirectory(L"legal.notices", host.ScratchDirectory().toStdWString());
    EXPECT_EQ(DLG::LegalNoticesText(), L"First component \u00a9 2020\nLicence A\n\nSecond component\nLicence B\n\n");
    KOR::DirectoryRegistry::RegisterDirectory(L"legal.notices",
                                              (host.ScratchDirectory() + QStringLiteral("/none")).toStdWString());
    EXPECT_EQ(DLG::LegalNoticesText(), L"");
}

} // namespace
