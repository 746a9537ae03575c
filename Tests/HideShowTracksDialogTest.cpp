// The hide/show tracks dialog through its entry function, on real windows.

#include <QTreeWidget>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DLG/HideShowTracksDialog.h"
#include "CheckedUser.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using TestSupport::CheckedUser;
using TestSupport::Step;
using testing::ElementsAre;

struct TracksCase {
    const char* name;
    std::function<void(Step&)> actions;
    bool confirmed;
    std::vector<bool> expected;
    friend void PrintTo(const TracksCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class HideShowTracks : public testing::TestWithParam<TracksCase> {};

const std::vector<bool> kStartShown = {true, false, true, false};

// Four tracks, the first and third shown.
TEST_P(HideShowTracks, WritesTheFlagsOnlyWhenConfirmed)
{
    TestSupport::TestHost host;
    std::vector<std::wstring> names = {L"Video 1", L"Video 2", L"Audio 1", L"Audio 2"};
    std::vector<bool> shown = kStartShown;
    CheckedUser user;
    GetParam().actions(user.On(QStringLiteral("HideShowTracksDialog")));
    EXPECT_EQ(DLG::DoHideShowTracksDialog(names, shown), GetParam().confirmed);
    EXPECT_EQ(shown, GetParam().expected);
    EXPECT_THAT(names, ElementsAre(L"Video 1", L"Video 2", L"Audio 1", L"Audio 2"));
}

const QString kList = QStringLiteral("columnList");

INSTANTIATE_TEST_SUITE_P(
    Inputs, HideShowTracks,
    testing::Values(
        TracksCase{"EnterKeepsTheFlags", [](Step& s) { s.Press(Qt::Key_Return); }, true, kStartShown},
        TracksCase{"HideAll", [](Step& s) { s.Click("hideAllButton").Click("okButton"); }, true,
                   {false, false, false, false}},
        // Enter on a focused button presses it, not OK: Show All by keyboard, then OK.
        TracksCase{"EnterOnTheFocusedShowAllShowsAll",
                   [](Step& s) { s.Press(Qt::Key_Tab).Press(Qt::Key_Return).Press(Qt::Key_Tab).Press(Qt::Key_Tab).Press(Qt::Key_Return); },
                   true, {true, true, true, true}},
        TracksCase{"HideAllThenShowAll", [](Step& s) { s.Click("hideAllButton").Click("showAllButton").Click("okButton"); },
                   true, {true, true, true, true}},
        // The list has the focus with the first row current: Space toggles the current row.
        TracksCase{"SpaceTogglesTheCurrentRow",
                   [](Step& s) {
                       s.Press(Qt::Key_Space).Press(Qt::Key_Down).Press(Qt::Key_Space).Press(Qt::Key_Down).Press(
                           Qt::Key_Down);
                       s.Press(Qt::Key_Space).Press(Qt::Key_Return);
                   },
                   true, {false, true, true, true}},
        TracksCase{"HideAllThenCancel", [](Step& s) { s.Click("hideAllButton").Click("cancelButton"); }, false,
                   kStartShown}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

TEST(HideShowTracksDialog, ShowsARowPerTrackWithTheFirstSelectedAndFocused)
{
    TestSupport::TestHost host;
    std::vector<std::wstring> names = {L"Video 1", L"Audio 1"};
    std::vector<bool> shown = {false, true};
    CheckedUser user;
    user.On(QStringLiteral("HideShowTracksDialog"))
        .Inspect([](QWidget& inWindow) {
            auto* list = inWindow.findChild<QTreeWidget*>(kList);
            ASSERT_NE(list, nullptr);
            ASSERT_EQ(list->topLevelItemCount(), 2);
            EXPECT_EQ(list->topLevelItem(0)->text(0), QStringLiteral("Video 1"));
            EXPECT_EQ(list->topLevelItem(1)->text(0), QStringLiteral("Audio 1"));
            EXPECT_EQ(list->topLevelItem(0)->checkState(0), Qt::Unchecked);
            EXPECT_EQ(list->topLevelItem(1)->checkState(0), Qt::Checked);
            EXPECT_EQ(list->currentItem(), list->topLevelItem(0));
            EXPECT_THAT(list->selectedItems(), ElementsAre(list->topLevelItem(0)));
            EXPECT_TRUE(list->hasFocus());
            EXPECT_FALSE(list->accessibleName().isEmpty());
        })
        .Press(Qt::Key_Escape);
    EXPECT_FALSE(DLG::DoHideShowTracksDialog(names, shown));
}

TEST(HideShowTracksDialog, NamesAndFlagsOfDifferentLengthsBreakTheContract)
{
    TestSupport::TestHost host;
    std::vector<std::wstring> names = {L"Video 1", L"Audio 1"};
    std::vector<bool> shown = {true};
    EXPECT_THROW(DLG::DoHideShowTracksDialog(names, shown), zelcore::Error);
    EXPECT_THAT(host.Counts().contractsFailed, ElementsAre("inNames.size() == ioShown.size()"));
}

} // namespace
