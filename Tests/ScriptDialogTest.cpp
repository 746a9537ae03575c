// Script dialogs through their entry functions, on real windows answered by a scripted user.

#include <QApplication>
#include <QDoubleSpinBox>
#include <QLineEdit>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DLG/DialogBaseImpl.h"
#include "DLG/TestVrelDialog.h"
#include "DLG/TransformPositionDialog.h"
#include "HostQt/Workspace.h"
#include "CheckedUser.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using TestSupport::CheckedUser;
using TestSupport::TestHost;

struct EndingCase {
    const char* name;
    std::function<void(TestSupport::Step&)> end;
    bool confirmed;
    friend void PrintTo(const EndingCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class TestVrelEnding : public testing::TestWithParam<EndingCase> {};

TEST_P(TestVrelEnding, EnterConfirmsWhileEscapeAndClosingCancel)
{
    TestHost host;
    CheckedUser user;
    GetParam().end(user.On(QStringLiteral("TestVrelDialog")));
    EXPECT_EQ(DLG::DoTestVrelDialog(), GetParam().confirmed);
}

INSTANTIATE_TEST_SUITE_P(
    Responses, TestVrelEnding,
    testing::Values(EndingCase{"Enter", [](TestSupport::Step& s) { s.Press(Qt::Key_Return); }, true},
                    EndingCase{"KeypadEnter", [](TestSupport::Step& s) { s.Press(Qt::Key_Enter, Qt::KeypadModifier); }, true},
                    EndingCase{"Escape", [](TestSupport::Step& s) { s.Press(Qt::Key_Escape); }, false},
                    EndingCase{"Close", [](TestSupport::Step& s) { s.Close(); }, false}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

struct PositionCase {
    const char* name;
    std::function<void(TestSupport::Step&)> actions;
    bool confirmed;
    double x;
    double y;
    friend void PrintTo(const PositionCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class TransformPositionCases : public testing::TestWithParam<PositionCase> {};

TEST_P(TransformPositionCases, WritesBackOnlyWhatWasConfirmed)
{
    TestHost host(true);
    CheckedUser user;
    GetParam().actions(user.On(QStringLiteral("TransformPositionDialog")));
    double x = 12.345;
    double y = -7.0;
    EXPECT_EQ(DLG::TransformPosition::DoTransformPositionDialog(x, y), GetParam().confirmed);
    EXPECT_DOUBLE_EQ(x, GetParam().x);
    EXPECT_DOUBLE_EQ(y, GetParam().y);
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, TransformPositionCases,
    testing::Values(
        // x starts selected, so typing replaces it; values not touched come back exactly.
        PositionCase{"TypeOverXThenOk", [](auto& s) { s.Type("xPositionTextEdit", "640.5").Click("okButton"); }, true, 640.5, -7.0},
        PositionCase{"UntouchedKeepsAllDecimals", [](auto& s) { s.Press(Qt::Key_Return); }, true, 12.345, -7.0},
        PositionCase{"RetypeYThenEnter", [](auto& s) { s.Retype("yPositionTextEdit", "-20.25").Press(Qt::Key_Return); }, true, 12.345, -20.25},
        PositionCase{"TypeThenCancelButton", [](auto& s) { s.Type("xPositionTextEdit", "99").Click("cancelButton"); }, false, 12.345, -7.0}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

// The editor's top commander, noting when it becomes the command target.
class RecordingCommander : public UIF::Commander {
public:
    explicit RecordingCommander(TestHost& ioHost) : mHost(ioHost) {}
    UIF::Commander* GetSuperCommander() const override { return nullptr; }
    void SwitchTarget() override
    {
        mHost.Record("switch command target");
        mHost.Workspace().SetCommandTarget(this);
    }

private:
    TestHost& mHost;
};

TEST(ScriptDialogBase, PutsTheHostInItsModalStateInOrderAndUnblocksAutoSaveAfterwards)
{
    TestHost host(true);
    RecordingCommander editor(host);
    HostQt::TabView timeline(host.Workspace(), L"Timeline", &editor);
    host.Workspace().SetFocusedTabView(&timeline);
    bool playerStopped = false;
    host.Host().AddPlayer([&] { playerStopped = true; });

    CheckedUser user;
    TestSupport::HostCounts during;
    user.On(QStringLiteral("TestVrelDialog")).Inspect([&](QWidget& inWindow) {
        during = host.Counts();
        host.Record("dialog shown");
        EXPECT_EQ(inWindow.parentWidget(), host.MainWindow());
        EXPECT_TRUE(inWindow.isModal());
    }).Press(Qt::Key_Return);
    EXPECT_TRUE(DLG::DoTestVrelDialog());

    EXPECT_TRUE(during.autoSaveBlockedNow);
    EXPECT_TRUE(playerStopped);
    EXPECT_EQ(host.Workspace().CommandTarget(), &editor);
    EXPECT_THAT(host.Counts().sequence,
                testing::ElementsAre("switch command target", "stop players", "block auto-save", "end input capture",
                                     "dialog shown", "unblock auto-save"));
    EXPECT_FALSE(host.Counts().autoSaveBlockedNow);
}

// Responses other than dismissal and acceptance end the dialog but leave its flag alone.
class OtherResponseDialog : public DLG::DialogBaseImpl {
public:
    OtherResponseDialog() : DLG::DialogBaseImpl(L"TransformPositionDialog", nullptr, nullptr) { SetCancelled(true); }

private:
    void BindControls() override
    {
        mButton = GetUINodePtr<zelui::controls::UI_Button>(L"okButton");
        mButton->NotifyWhenChanged([this] { GetDialogView()->Respond(2); });
    }
    boost::intrusive_ptr<zelui::controls::UI_Button> mButton;
};

TEST(ScriptDialogBase, OtherResponseCodesLeaveTheCancelledFlagAlone)
{
    TestHost host;
    CheckedUser user;
    user.On(QStringLiteral("TransformPositionDialog")).Click(QStringLiteral("okButton"));
    std::stringstream script;
    ASSERT_NE(DLG::PrepareScriptDialog(L"TransformPositionDialog.vrel", script), nullptr);
    OtherResponseDialog dialog;
    dialog.Run(script);
    EXPECT_TRUE(dialog.WasCancelled());
}

TEST(ScriptDialogBase, NoWorkspaceShowsNothingAndCancels)
{
    TestHost host;
    KOR::Services().workspace = nullptr;
    CheckedUser user;
    double x = 1.0;
    double y = 2.0;
    EXPECT_FALSE(DLG::TransformPosition::DoTransformPositionDialog(x, y));
    EXPECT_EQ(x, 1.0);
    EXPECT_EQ(host.Counts().autoSaveBlocks, 0);
}

TEST(ScriptDialogBase, EmptyScriptShowsNoWindowAndCountsAsCancelled)
{
    TestHost host;
    host.UseScripts(host.ScratchDirectory());
    host.WriteScript(QStringLiteral("TestVrelDialog.vrel"), QByteArray());
    CheckedUser user;
    EXPECT_FALSE(DLG::DoTestVrelDialog());
    EXPECT_TRUE(host.Counts().messageBoxes.empty());
}

TEST(ScriptDialogBase, UnreadableScriptIsReportedAndCancels)
{
    TestHost host;
    host.UseScripts(host.ScratchDirectory());
    host.WriteScript(QStringLiteral("TestVrelDialog.vrel"), "<ui version=\"4.0\"><widget class=\"QDialog\"");
    CheckedUser user;
    user.On(QStringLiteral("MessageBox")).Press(Qt::Key_Escape);
    EXPECT_FALSE(DLG::DoTestVrelDialog());
    ASSERT_EQ(user.MessageBoxes().size(), 1u);
    EXPECT_TRUE(user.MessageBoxes()[0].text.contains(QStringLiteral("TestVrelDialog")));
}

// The position script without its OK button and y field: Enter still confirms, x is read, y is kept.
TEST(ScriptDialogBase, ScriptLackingControlsStillWorksWithWhatItHas)
{
    TestHost host;
    host.UseScripts(host.ScratchDirectory());
    QFile original(TestSupport::ScriptsDirectory() + QStringLiteral("/TransformPositionDialog.vrel"));
    ASSERT_TRUE(original.open(QIODevice::ReadOnly));
    QByteArray script = original.readAll();
    script.replace("name=\"okButton\"", "name=\"renamedButton\"");
    script.replace("name=\"yPositionTextEdit\"", "name=\"renamedEdit\"");
    host.WriteScript(QStringLiteral("TransformPositionDialog.vrel"), script);

    CheckedUser user;
    user.On(QStringLiteral("TransformPositionDialog")).Type("xPositionTextEdit", "5").Press(Qt::Key_Return);
    double x = 1.0;
    double y = 2.0;
    EXPECT_TRUE(DLG::TransformPosition::DoTransformPositionDialog(x, y));
    EXPECT_EQ(x, 5.0);
    EXPECT_EQ(y, 2.0);
}

// A dialog whose check of its controls fails on a null host object.
class FailingDialog : public DLG::DialogBaseImpl {
public:
    FailingDialog() : DLG::DialogBaseImpl(L"TransformPositionDialog", nullptr, nullptr) {}

private:
    void BindControls() override { BindOkAndCancel(); }
    bool ValidateControls() override { return !mProject->GetName().empty(); }
    BE::ProjectRef mProject;
};

// Through the OK button's handler, and through Enter in a script without an OK button.
TEST(ScriptDialogBase, ErrorInAHandlerLeavesTheEntryAfterTheDialogClosedAndUnblocksAutoSave)
{
    TestHost host;
    QFile original(TestSupport::ScriptsDirectory() + QStringLiteral("/TransformPositionDialog.vrel"));
    ASSERT_TRUE(original.open(QIODevice::ReadOnly));
    const QByteArray withoutOk = original.readAll().replace("name=\"okButton\"", "name=\"renamedButton\"");
    host.WriteScript(QStringLiteral("NoOkButton.vrel"), withoutOk);

    for (const bool viaEnter : {false, true}) {
        CheckedUser user;
        TestSupport::Step& step = user.On(QStringLiteral("TransformPositionDialog"));
        viaEnter ? step.Press(Qt::Key_Return) : step.Click(QStringLiteral("okButton"));
        host.UseScripts(viaEnter ? host.ScratchDirectory() : TestSupport::ScriptsDirectory());
        std::stringstream script;
        ASSERT_NE(DLG::PrepareScriptDialog(viaEnter ? L"NoOkButton.vrel" : L"TransformPositionDialog.vrel", script),
                  nullptr);
        EXPECT_THROW(
            {
                FailingDialog dialog;
                dialog.Run(script);
            },
            zelcore::Error);
    }
    EXPECT_EQ(host.Counts().autoSaveBlocks, 2);
    EXPECT_EQ(host.Counts().autoSaveUnblocks, 2);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

// The tests rely on the scripted user to notice a window they did not expect.
TEST(ScriptedUser, ReportsAndDismissesAWindowNoStepExpects)
{
    TestHost host;
    TestSupport::ScriptedUser user;
    user.On(QStringLiteral("SomeOtherDialog")).Press(Qt::Key_Return);
    EXPECT_FALSE(DLG::DoTestVrelDialog());
    const QStringList problems = user.Finish();
    ASSERT_EQ(problems.size(), 2);
    EXPECT_TRUE(problems[0].startsWith(QStringLiteral("unexpected modal window TestVrelDialog")));
    EXPECT_EQ(problems[1], QStringLiteral("the window SomeOtherDialog never opened"));
}

} // namespace
