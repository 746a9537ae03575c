// The key set name and replace dialogs, the save-as sequence that runs them
// against the reference host's shortcut manager, and the file name rule the
// sequence checks names with.

#include <QDir>
#include <QFile>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTreeWidget>

#include <filesystem>
#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CheckedUser.h"
#include "DLG/KeysetDialogs.h"
#include "DLG/Module.h"
#include "DLG/ShortcutsDialog.h"
#include "DLG/StringIDs.h"
#include "HostQt/ShortcutManager.h"
#include "KOR/Application.h"
#include "KOR/Paths.h"
#include "KOR/Services.h"
#include "TestHost.h"
#include "UIF/ShortcutManager.h"

namespace {

using TestSupport::CheckedUser;
using TestSupport::Step;
using TestSupport::TestHost;

std::wstring Text(unsigned int inID) { return DLG::LoadString(inID); }
QString QText(unsigned int inID) { return QString::fromStdWString(Text(inID)); }

UIF::ShortcutManager& Shortcuts() { return *KOR::Services().shortcuts; }

std::wstring DocumentsPath(const std::wstring& inName)
{
    return KOR::PathUtils::AddTrailingSlash(KOR::DirectoryRegistry::FindDirectory(L"lumoradocuments")) + inName +
           Text(DLG::kStr_KeysetFileSuffix);
}

QByteArray Contents(const std::wstring& inPath)
{
    QFile file(QString::fromStdWString(inPath));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The list with the entry at inPath selected.
DLG::KeysetList ListSelecting(const std::wstring& inPath)
{
    DLG::KeysetList list = DLG::ListKeysets(Shortcuts());
    const auto found = std::find(list.paths.begin(), list.paths.end(), inPath);
    EXPECT_NE(found, list.paths.end());
    list.selected = static_cast<std::size_t>(found - list.paths.begin());
    return list;
}

// Checks that the name dialog proposes inName, all of it selected.
std::function<void(QWidget&)> Proposes(const QString& inName)
{
    return [inName](QWidget& inWindow) {
        const auto* field = inWindow.findChild<QLineEdit*>(QStringLiteral("keysetNameTextEdit"));
        ASSERT_NE(field, nullptr);
        EXPECT_EQ(field->text(), inName);
        EXPECT_EQ(field->selectedText(), inName);
    };
}

struct ValidNameCase {
    const char* label;
    std::wstring name;
    bool valid;
};

class ValidFileName : public testing::TestWithParam<ValidNameCase> {};

TEST_P(ValidFileName, FollowsTheRulesOfEverySystem)
{
    EXPECT_EQ(KOR::PathUtils::IsValidFileName(GetParam().name), GetParam().valid) << GetParam().label;
}

INSTANTIATE_TEST_SUITE_P(
    Names, ValidFileName,
    testing::Values(ValidNameCase{"Plain", L"Edit Bay", true}, ValidNameCase{"InnerDot", L"v1.2 keys", true},
                    ValidNameCase{"LeadingBlank", L" Edit", true}, ValidNameCase{"Accented", L"Montage é", true},
                    ValidNameCase{"DeviceNameInside", L"CONSOLE", true}, ValidNameCase{"Com0", L"COM0", true},
                    ValidNameCase{"Lpt10", L"LPT10", true},
                    ValidNameCase{"ExactlyTheLimit", std::wstring(255, L'a'), true},
                    ValidNameCase{"TwoByteCharactersAtTheLimit", std::wstring(127, L'\u00e9') + L"a", true},
                    ValidNameCase{"Empty", L"", false}, ValidNameCase{"Blanks", L"   ", false},
                    ValidNameCase{"Slash", L"a/b", false}, ValidNameCase{"Backslash", L"a\\b", false},
                    ValidNameCase{"Less", L"a<b", false}, ValidNameCase{"Greater", L"a>b", false},
                    ValidNameCase{"Colon", L"a:b", false}, ValidNameCase{"Quote", L"a\"b", false},
                    ValidNameCase{"Bar", L"a|b", false}, ValidNameCase{"Question", L"a?", false},
                    ValidNameCase{"Star", L"*", false}, ValidNameCase{"Tab", L"a\tb", false},
                    ValidNameCase{"ControlCharacter", L"a\x01", false}, ValidNameCase{"Con", L"CON", false},
                    ValidNameCase{"NulLowerCase", L"nul", false}, ValidNameCase{"AuxWithExtension", L"Aux.txt", false},
                    ValidNameCase{"Prn", L"PRN", false}, ValidNameCase{"Com9", L"COM9", false},
                    ValidNameCase{"Lpt1WithExtension", L"lpt1.keyset", false},
                    ValidNameCase{"TrailingDot", L"Edit.", false}, ValidNameCase{"TrailingBlank", L"Edit ", false},
                    ValidNameCase{"OverTheLimit", std::wstring(256, L'a'), false},
                    ValidNameCase{"TwoByteCharactersOverTheLimit", std::wstring(128, L'\u00e9'), false}),
    [](const auto& inInfo) { return std::string(inInfo.param.label); });

// What the name dialog proposes for the selected set.
struct ProposalCase {
    const char* label;
    std::size_t setIndex;
    std::function<QString()> proposal;
    bool replaces; // the proposal names a set that exists
};

class Proposal : public testing::TestWithParam<ProposalCase> {};

TEST_P(Proposal, ComesFromTheSelectedSet)
{
    TestHost host;
    Shortcuts().SaveSet(DocumentsPath(L"Late Night"));
    DLG::KeysetList list = DLG::ListKeysets(Shortcuts());
    ASSERT_GT(list.paths.size(), GetParam().setIndex);
    list.selected = GetParam().setIndex;
    const QString expected = GetParam().proposal();
    CheckedUser user;
    user.On("KeysetNameDialog").Inspect(Proposes(expected)).Press(Qt::Key_Return);
    if (GetParam().replaces) {
        user.On("keysetReplaceConfirmDialog").Click("okButton");
    }
    ASSERT_TRUE(DLG::SaveKeysetAs(Shortcuts(), list));
    EXPECT_EQ(QString::fromStdWString(list.names[list.selected]), expected);
    EXPECT_TRUE(KOR::PathUtils::ExistsOnDisk(DocumentsPath(expected.toStdWString())));
}

INSTANTIATE_TEST_SUITE_P(
    Sets, Proposal,
    testing::Values(ProposalCase{"FirstPreset", 0, [] { return QText(DLG::kStr_KeysetPreset1Name); }, false},
                    ProposalCase{"SecondPreset", 1, [] { return QText(DLG::kStr_KeysetPreset2Name); }, false},
                    ProposalCase{"ThirdPreset", 2, [] { return QText(DLG::kStr_KeysetPreset3Name); }, false},
                    ProposalCase{"UserSet", 3, [] { return QText(DLG::kStr_KeysetUserSetProposal); }, false},
                    ProposalCase{"SavedSetByItsName", 4, [] { return QStringLiteral("Late Night"); }, true}),
    [](const auto& inInfo) { return std::string(inInfo.param.label); });

TEST(KeysetSaveAs, ANewNameAddsAndSelectsOneEntryHoldingTheCurrentKeys)
{
    TestHost host;
    Shortcuts().SetKey(L"edit.undo", L"Ctrl+Alt+U");
    DLG::KeysetList list = DLG::ListKeysets(Shortcuts());
    const std::size_t before = list.paths.size();
    CheckedUser user;
    user.On("KeysetNameDialog").Retype("keysetNameTextEdit", "Edit Bay").Click("saveButton");
    ASSERT_TRUE(DLG::SaveKeysetAs(Shortcuts(), list));
    ASSERT_EQ(list.paths.size(), before + 1);
    EXPECT_EQ(list.selected, before);
    EXPECT_EQ(list.names.back(), L"Edit Bay");
    EXPECT_EQ(list.paths.back(), DocumentsPath(L"Edit Bay"));
    Shortcuts().SetKey(L"edit.undo", L"");
    ASSERT_TRUE(Shortcuts().LoadSet(list.paths.back()));
    EXPECT_EQ(Shortcuts().GetKey(L"edit.undo"), L"Ctrl+Alt+U");
}

// Cancelling after a refused name ends the command: the refusal saved nothing
// on its way.
TEST(KeysetSaveAs, CancellingAfterAnInvalidNameSavesNothing)
{
    TestHost host;
    DLG::KeysetList list = DLG::ListKeysets(Shortcuts());
    const DLG::KeysetList before = list;
    CheckedUser user;
    user.On("KeysetNameDialog").Retype("keysetNameTextEdit", "Cut/Paste").Press(Qt::Key_Return);
    user.On("MessageBox").Press(Qt::Key_Return);
    user.On("KeysetNameDialog").Inspect(Proposes(QStringLiteral("Cut/Paste"))).Press(Qt::Key_Escape);
    EXPECT_FALSE(DLG::SaveKeysetAs(Shortcuts(), list));
    EXPECT_EQ(list.paths, before.paths);
    EXPECT_EQ(list.selected, before.selected);
    const QDir documents(QString::fromStdWString(KOR::DirectoryRegistry::FindDirectory(L"lumoradocuments")));
    EXPECT_THAT(documents.entryList(QDir::Files), testing::IsEmpty());
    const auto boxes = host.Counts().messageBoxes;
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, Text(DLG::kStr_KeysetInvalidName));
    EXPECT_EQ(boxes[0].caption, KOR::Application::Instance()->GetName());
}

TEST(KeysetSaveAs, TheRefusalIsCaptionedApplicationWithoutAnApplication)
{
    TestHost host;
    KOR::Services().application = nullptr;
    DLG::KeysetList list = DLG::ListKeysets(Shortcuts());
    CheckedUser user;
    user.On("KeysetNameDialog").Retype("keysetNameTextEdit", "CON").Press(Qt::Key_Return);
    user.On("MessageBox").Press(Qt::Key_Return);
    user.On("KeysetNameDialog").Retype("keysetNameTextEdit", "Console").Press(Qt::Key_Return);
    EXPECT_TRUE(DLG::SaveKeysetAs(Shortcuts(), list));
    const auto boxes = host.Counts().messageBoxes;
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].caption, L"Application");
    EXPECT_EQ(list.names[list.selected], L"Console");
}

// Saving under an existing set's name asks first; confirmed, it rewrites that
// file and selects its entry; refused, the file stays as it was.
struct ReplaceCase {
    const char* label;
    const char* answer;
    bool saved;
};

class Replace : public testing::TestWithParam<ReplaceCase> {};

TEST_P(Replace, AsksAndKeepsOneEntry)
{
    TestHost host;
    const std::wstring existing = DocumentsPath(L"Mine");
    ASSERT_TRUE(Shortcuts().SaveSet(existing));
    const QByteArray old = Contents(existing);
    Shortcuts().SetKey(L"play.toggle", L"F5");
    DLG::KeysetList list = ListSelecting(Shortcuts().GetSetFullPath(0));
    const std::size_t entries = list.paths.size();
    CheckedUser user;
    user.On("KeysetNameDialog").Retype("keysetNameTextEdit", "Mine").Press(Qt::Key_Return);
    user.On("keysetReplaceConfirmDialog")
        .Inspect([](QWidget& inWindow) {
            const auto* name = inWindow.findChild<QLabel*>(QStringLiteral("fileNameStaticText"));
            ASSERT_NE(name, nullptr);
            EXPECT_EQ(name->text(), QStringLiteral("Mine") + QText(DLG::kStr_KeysetFileSuffix));
        })
        .Click(GetParam().answer);
    EXPECT_EQ(DLG::SaveKeysetAs(Shortcuts(), list), GetParam().saved);
    EXPECT_EQ(list.paths.size(), entries) << "never a second entry";
    EXPECT_EQ(std::count(list.names.begin(), list.names.end(), L"Mine"), 1);
    if (GetParam().saved) {
        EXPECT_EQ(list.paths[list.selected], existing);
        EXPECT_NE(Contents(existing), old);
    } else {
        EXPECT_EQ(list.selected, 0u);
        EXPECT_EQ(Contents(existing), old);
    }
}

INSTANTIATE_TEST_SUITE_P(Answers, Replace,
                         testing::Values(ReplaceCase{"Confirmed", "okButton", true},
                                         ReplaceCase{"Refused", "cancelButton", false}),
                         [](const auto& inInfo) { return std::string(inInfo.param.label); });

// A case-insensitive file system finds "MINE" as the set stored as "Mine". A
// second link to the same file stands in for that here: both names resolve to
// one file, as they would there.
TEST(KeysetSaveAs, NamesThatTheFileSystemResolvesToOneFileAreOneSet)
{
    TestHost host;
    const std::wstring stored = DocumentsPath(L"Mine");
    ASSERT_TRUE(Shortcuts().SaveSet(stored));
    DLG::KeysetList list = ListSelecting(Shortcuts().GetSetFullPath(0));
    const std::size_t entries = list.paths.size();
    std::filesystem::create_hard_link(std::filesystem::path(stored), std::filesystem::path(DocumentsPath(L"MINE")));
    CheckedUser user;
    user.On("KeysetNameDialog").Retype("keysetNameTextEdit", "MINE").Press(Qt::Key_Return);
    user.On("keysetReplaceConfirmDialog")
        .Inspect([](QWidget& inWindow) {
            const auto* name = inWindow.findChild<QLabel*>(QStringLiteral("fileNameStaticText"));
            ASSERT_NE(name, nullptr);
            EXPECT_EQ(name->text(), QStringLiteral("Mine") + QText(DLG::kStr_KeysetFileSuffix)) << "the stored name";
        })
        .Click("okButton");
    ASSERT_TRUE(DLG::SaveKeysetAs(Shortcuts(), list));
    EXPECT_EQ(list.paths.size(), entries);
    EXPECT_EQ(list.paths[list.selected], stored);
}

TEST(KeysetDialogs, AnswerFalseWithoutAWorkspace)
{
    TestHost host;
    KOR::Services().workspace = nullptr;
    std::wstring name = L"Kept";
    EXPECT_FALSE(DLG::AskKeysetName(name));
    EXPECT_EQ(name, L"Kept");
    EXPECT_FALSE(DLG::ConfirmKeysetReplace(L"Kept.keyset"));
}

TEST(KeysetDialogs, TheNameIsWrittenOnlyWhenSaved)
{
    TestHost host;
    CheckedUser user;
    user.On("KeysetNameDialog").Retype("keysetNameTextEdit", "Changed").Click("cancelButton");
    user.On("KeysetNameDialog").Retype("keysetNameTextEdit", "Changed").Press(Qt::Key_Return);
    std::wstring name = L"Kept";
    EXPECT_FALSE(DLG::AskKeysetName(name));
    EXPECT_EQ(name, L"Kept");
    EXPECT_TRUE(DLG::AskKeysetName(name));
    EXPECT_EQ(name, L"Changed");
}

// Replacing a set copies the old file aside first and drops the copy only once
// the new file is complete; a write that fails leaves the old set and its copy.
class KeysetBackup : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(mDirectory.isValid());
        mPath = mDirectory.filePath(QStringLiteral("Set.keyset"));
        mBackup = mPath + QLatin1Char('~');
        ASSERT_TRUE(HostQt::ShortcutManager::WriteFile(mPath, "old"));
    }

    bool Write(bool inSucceeds)
    {
        return HostQt::ShortcutManager::WriteWithBackup(
            mPath, "new", [&](const QString& inPath, const QByteArray& inData) {
                QFile backup(mBackup);
                EXPECT_TRUE(backup.open(QIODevice::ReadOnly));
                EXPECT_EQ(backup.readAll(), QByteArray("old")) << "the old set is kept while the new one is written";
                return inSucceeds && HostQt::ShortcutManager::WriteFile(inPath, inData);
            });
    }

    QTemporaryDir mDirectory;
    QString mPath;
    QString mBackup;
};

TEST_F(KeysetBackup, IsDroppedOnceTheNewSetIsWritten)
{
    ASSERT_TRUE(Write(true));
    EXPECT_EQ(Contents(mPath.toStdWString()), QByteArray("new"));
    EXPECT_FALSE(QFile::exists(mBackup));
}

TEST_F(KeysetBackup, StaysWhenTheWriteFails)
{
    EXPECT_FALSE(Write(false));
    EXPECT_EQ(Contents(mPath.toStdWString()), QByteArray("old"));
    EXPECT_EQ(Contents(mBackup.toStdWString()), QByteArray("old"));
}

TEST(ShortcutManager, AKeyHasOneCommandAndSetsRoundTrip)
{
    QTemporaryDir directory;
    HostQt::ShortcutManager manager(directory.filePath(QStringLiteral("Presets")),
                                    directory.filePath(QStringLiteral("Docs")));
    ASSERT_EQ(manager.GetSetCount(), 4u) << "three presets and the user's set";
    EXPECT_TRUE(manager.IsPreset(manager.GetSetFullPath(2)));
    EXPECT_FALSE(manager.IsPreset(manager.GetSetFullPath(3)));
    const std::wstring undo = manager.GetKey(L"edit.undo");
    ASSERT_FALSE(undo.empty());
    manager.SetKey(L"edit.redo", undo);
    EXPECT_EQ(manager.FindCommandWithKey(undo), L"edit.redo");
    EXPECT_TRUE(manager.GetKey(L"edit.undo").empty()) << "the key moved";
    const std::wstring path = directory.filePath(QStringLiteral("Docs/Trim.keyset")).toStdWString();
    ASSERT_TRUE(manager.SaveSet(path));
    EXPECT_EQ(manager.GetSetFullPath(4), path);
    ASSERT_TRUE(manager.LoadSet(manager.GetSetFullPath(0)));
    EXPECT_EQ(manager.GetKey(L"edit.undo"), undo);
    ASSERT_TRUE(manager.LoadSet(path));
    EXPECT_EQ(manager.FindCommandWithKey(undo), L"edit.redo");
}

// The shortcuts editor's window: selects the command in row inRow as a click would.
std::function<void(QWidget&)> SelectCommand(int inRow)
{
    return [inRow](QWidget& inWindow) {
        auto* list = inWindow.findChild<QTreeWidget*>(QStringLiteral("commandsListBox"));
        ASSERT_NE(list, nullptr);
        list->setCurrentItem(list->topLevelItem(inRow));
    };
}

QString KeyShown(QWidget& inWindow, int inRow)
{
    auto* list = inWindow.findChild<QTreeWidget*>(QStringLiteral("commandsListBox"));
    return list && list->topLevelItem(inRow) ? list->topLevelItem(inRow)->text(1) : QString();
}

QString ConflictShown(QWidget& inWindow)
{
    auto* label = inWindow.findChild<QLabel*>(QStringLiteral("conflictStaticText"));
    return label ? label->text() : QStringLiteral("<no conflict text>");
}

constexpr int kUndoRow = 0;
constexpr int kRedoRow = 1;

TEST(ShortcutsDialog, AFreeKeyIsTheCommandsAtOnceAndOkKeepsItAsTheUsersSet)
{
    TestHost host;
    CheckedUser user;
    user.On("ShortcutsDialog")
        .Inspect(SelectCommand(kRedoRow))
        .Click("keyCaptureTextEdit")
        .Press(Qt::Key_F7, Qt::ShiftModifier)
        .Inspect([](QWidget& inWindow) {
            EXPECT_EQ(KeyShown(inWindow, kRedoRow), QStringLiteral("Shift+F7"));
            EXPECT_TRUE(ConflictShown(inWindow).isEmpty());
        })
        .Click("okButton");
    std::wstring setPath = Shortcuts().GetSetFullPath(0);
    ASSERT_TRUE(DLG::DoShortcutsDialog(&Shortcuts(), setPath));
    EXPECT_EQ(Shortcuts().GetKey(L"edit.redo"), L"Shift+F7");
    EXPECT_EQ(setPath, Shortcuts().GetSetFullPath(3)) << "edited keys are the user's own set";
    Shortcuts().SetKey(L"edit.redo", L"");
    ASSERT_TRUE(Shortcuts().LoadSet(setPath));
    EXPECT_EQ(Shortcuts().GetKey(L"edit.redo"), L"Shift+F7");
}

// A key that another command has is only offered: the conflict names both commands, Reassign moves
// the key, and cancelling the editor puts every key back.
TEST(ShortcutsDialog, ATakenKeyIsAConflictUntilReassignedAndCancelPutsKeysBack)
{
    TestHost host;
    const std::wstring undo = Shortcuts().GetKey(L"edit.undo");
    const std::wstring redo = Shortcuts().GetKey(L"edit.redo");
    ASSERT_EQ(undo, L"Ctrl+Z");
    CheckedUser user;
    user.On("ShortcutsDialog")
        .Inspect(SelectCommand(kRedoRow))
        .Click("keyCaptureTextEdit")
        .Press(Qt::Key_Z, Qt::ControlModifier)
        .Inspect([](QWidget& inWindow) {
            const QString conflict = ConflictShown(inWindow);
            EXPECT_TRUE(conflict.contains(QStringLiteral("Undo"))) << conflict.toStdString();
            EXPECT_TRUE(conflict.contains(QStringLiteral("Redo"))) << conflict.toStdString();
            EXPECT_TRUE(inWindow.findChild<QWidget*>(QStringLiteral("reassignButton"))->isEnabled());
            EXPECT_EQ(Shortcuts().GetKey(L"edit.undo"), L"Ctrl+Z") << "nothing moves before Reassign";
        })
        .Click("reassignButton")
        .Inspect([](QWidget& inWindow) {
            EXPECT_EQ(KeyShown(inWindow, kRedoRow), QStringLiteral("Ctrl+Z"));
            EXPECT_TRUE(KeyShown(inWindow, kUndoRow).isEmpty());
            EXPECT_TRUE(ConflictShown(inWindow).isEmpty());
        })
        .Click("cancelButton");
    std::wstring setPath = Shortcuts().GetSetFullPath(0);
    EXPECT_FALSE(DLG::DoShortcutsDialog(&Shortcuts(), setPath));
    EXPECT_EQ(Shortcuts().GetKey(L"edit.undo"), undo);
    EXPECT_EQ(Shortcuts().GetKey(L"edit.redo"), redo);
    EXPECT_EQ(setPath, Shortcuts().GetSetFullPath(0));
}

// Enter and Escape are keys a command can have, so the field takes them instead of ending the
// dialog; Tab still leaves it, so the keyboard is not trapped there.
TEST(ShortcutsDialog, TheKeyFieldTakesEscapeAndLetsTabMoveOn)
{
    TestHost host;
    CheckedUser user;
    user.On("ShortcutsDialog")
        .Inspect(SelectCommand(kUndoRow))
        .Click("keyCaptureTextEdit")
        .Press(Qt::Key_Shift, Qt::ShiftModifier)
        .Inspect([](QWidget& inWindow) { EXPECT_EQ(KeyShown(inWindow, kUndoRow), QStringLiteral("Ctrl+Z")); })
        .Press(Qt::Key_Escape)
        .Inspect([](QWidget& inWindow) { EXPECT_EQ(KeyShown(inWindow, kUndoRow), QStringLiteral("Esc")); })
        .Press(Qt::Key_Tab)
        .Inspect([](QWidget& inWindow) {
            EXPECT_EQ(inWindow.focusWidget(), inWindow.findChild<QWidget*>(QStringLiteral("clearButton")));
        })
        .Click("okButton");
    std::wstring setPath;
    ASSERT_TRUE(DLG::DoShortcutsDialog(&Shortcuts(), setPath));
    EXPECT_EQ(Shortcuts().GetKey(L"edit.undo"), L"Esc");
}

TEST(ShortcutsDialog, ChoosingASetLoadsItsKeys)
{
    TestHost host;
    CheckedUser user;
    user.On("ShortcutsDialog")
        .Inspect([](QWidget& inWindow) { inWindow.findChild<QWidget*>(QStringLiteral("keysetPopup"))->setFocus(); })
        .Press(Qt::Key_Down)
        .Inspect([](QWidget& inWindow) { EXPECT_EQ(KeyShown(inWindow, kRedoRow), QStringLiteral("Ctrl+Y")); })
        .Click("okButton");
    std::wstring setPath = Shortcuts().GetSetFullPath(0);
    ASSERT_TRUE(DLG::DoShortcutsDialog(&Shortcuts(), setPath));
    EXPECT_EQ(setPath, Shortcuts().GetSetFullPath(1));
    EXPECT_EQ(Shortcuts().GetKey(L"edit.redo"), L"Ctrl+Y");
    EXPECT_FALSE(KOR::PathUtils::ExistsOnDisk(Shortcuts().GetSetFullPath(3))) << "no edit, nothing written";
}

TEST(ShortcutsDialog, SaveAsAddsTheNewSetToThePopupAndSelectsIt)
{
    TestHost host;
    CheckedUser user;
    user.On("ShortcutsDialog").Click("saveAsButton");
    user.On("KeysetNameDialog").Retype("keysetNameTextEdit", "Night").Press(Qt::Key_Return);
    user.On("ShortcutsDialog")
        .Inspect([](QWidget& inWindow) {
            auto* popup = inWindow.findChild<QComboBox*>(QStringLiteral("keysetPopup"));
            ASSERT_NE(popup, nullptr);
            EXPECT_EQ(popup->count(), 5);
            EXPECT_EQ(popup->currentText(), QStringLiteral("Night"));
        })
        .Click("okButton");
    std::wstring setPath = Shortcuts().GetSetFullPath(0);
    ASSERT_TRUE(DLG::DoShortcutsDialog(&Shortcuts(), setPath));
    EXPECT_EQ(setPath, DocumentsPath(L"Night"));
}

} // namespace
