// The generic text and list error dialogs through their entry functions, on real windows.

#include <QLabel>
#include <QPlainTextEdit>
#include <QTreeWidget>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DLG/GenericListErrorDialog.h"
#include "DLG/GenericTextErrorDialog.h"
#include "CheckedUser.h"
#include "TestHost.h"

namespace {

using TestSupport::CheckedUser;
using testing::ElementsAre;

TEST(GenericTextErrorDialog, EveryLineEndsWithCarriageReturnAndLineFeed)
{
    EXPECT_EQ(DLG::ErrorLinesText({L"first", L"", L"third"}), L"first\r\n\r\nthird\r\n");
    EXPECT_EQ(DLG::ErrorLinesText({}), L"");
}

TEST(GenericTextErrorDialog, ShowsTheLinesReadOnlyUnderTheTitle)
{
    TestSupport::TestHost host;
    CheckedUser user;
    user.On(QStringLiteral("genericTextErrorDialog"))
        .Inspect([](QWidget& inWindow) {
            EXPECT_EQ(inWindow.windowTitle(), QStringLiteral("Import Failed"));
            auto* text = inWindow.findChild<QPlainTextEdit*>(QStringLiteral("errorTextEdit"));
            ASSERT_NE(text, nullptr);
            EXPECT_TRUE(text->isReadOnly());
            EXPECT_EQ(text->blockCount(), 3) << "one line each, and the empty one after the last line end";
            EXPECT_EQ(text->toPlainText(), QStringLiteral("Harbour.mov: unsupported codec\nGulls.wav: file is empty\n"));
            EXPECT_EQ(inWindow.findChild<QWidget*>(QStringLiteral("cancelButton")), nullptr);
        })
        .Type(QStringLiteral("errorTextEdit"), QStringLiteral("typed"))
        .Inspect([](QWidget& inWindow) {
            EXPECT_FALSE(inWindow.findChild<QPlainTextEdit*>()->toPlainText().contains(QStringLiteral("typed")));
        })
        .Click(QStringLiteral("okButton"));
    EXPECT_TRUE(DLG::DoGenericTextErrorDialog({L"Harbour.mov: unsupported codec", L"Gulls.wav: file is empty"},
                                              L"Import Failed"));
}

TEST(GenericTextErrorDialog, EnterConfirmsEscapeDoesNot)
{
    TestSupport::TestHost host;
    CheckedUser user;
    user.On(QStringLiteral("genericTextErrorDialog"))
        .Inspect([](QWidget& inWindow) { EXPECT_EQ(inWindow.windowTitle(), QStringLiteral("Error")); })
        .Press(Qt::Key_Return);
    user.On(QStringLiteral("genericTextErrorDialog")).Press(Qt::Key_Escape);
    EXPECT_TRUE(DLG::DoGenericTextErrorDialog({L"line"}, L"")) << "an empty title keeps the script's";
    EXPECT_FALSE(DLG::DoGenericTextErrorDialog({L"line"}, L"Title"));
}

using Rows = std::vector<std::pair<std::wstring, std::wstring>>;

TEST(GenericListErrorDialog, ShowsTheMessageAndARowPerPairWithTheFirstSelected)
{
    TestSupport::TestHost host;
    CheckedUser user;
    user.On(QStringLiteral("genericListErrorDialog"))
        .Inspect([](QWidget& inWindow) {
            auto* message = inWindow.findChild<QLabel*>(QStringLiteral("errorMessageStaticText"));
            ASSERT_NE(message, nullptr);
            EXPECT_EQ(message->text(), QStringLiteral("These files could not be linked:"));
            auto* list = inWindow.findChild<QTreeWidget*>(QStringLiteral("errorListbox"));
            ASSERT_NE(list, nullptr);
            EXPECT_EQ(list->headerItem()->text(0), QStringLiteral("File"));
            EXPECT_EQ(list->headerItem()->text(1), QStringLiteral("Problem")) << "an empty title keeps the script's";
            ASSERT_EQ(list->topLevelItemCount(), 3);
            EXPECT_EQ(list->topLevelItem(1)->text(0), QStringLiteral("B.mov"));
            EXPECT_EQ(list->topLevelItem(1)->text(1), QStringLiteral("Frame size differs"));
            EXPECT_THAT(list->selectedItems(), ElementsAre(list->topLevelItem(0)));
            EXPECT_EQ(list->selectionMode(), QAbstractItemView::SingleSelection);
            EXPECT_TRUE(list->hasFocus());
            EXPECT_EQ(inWindow.findChild<QWidget*>(QStringLiteral("cancelButton")), nullptr);
        })
        .Press(Qt::Key_Down)
        .Press(Qt::Key_Down, Qt::ShiftModifier)
        .Inspect([](QWidget& inWindow) {
            auto* list = inWindow.findChild<QTreeWidget*>(QStringLiteral("errorListbox"));
            EXPECT_THAT(list->selectedItems(), ElementsAre(list->topLevelItem(2))) << "one row at a time";
        })
        .Press(Qt::Key_Return);
    EXPECT_TRUE(DLG::DoGenericListErrorDialog(
        Rows{{L"A.mov", L"Not a movie"}, {L"B.mov", L"Frame size differs"}, {L"C.wav", L"No audio"}},
        L"These files could not be linked:", L"File", L""));
}

TEST(GenericListErrorDialog, EscapeWithoutACancelButtonDismisses)
{
    TestSupport::TestHost host;
    CheckedUser user;
    user.On(QStringLiteral("genericListErrorDialog"))
        .Inspect([](QWidget& inWindow) {
            auto* list = inWindow.findChild<QTreeWidget*>(QStringLiteral("errorListbox"));
            EXPECT_EQ(list->topLevelItemCount(), 0);
            EXPECT_TRUE(list->selectedItems().isEmpty());
        })
        .Press(Qt::Key_Escape);
    EXPECT_FALSE(DLG::DoGenericListErrorDialog({}, L"Nothing", L"", L""));
}

} // namespace
