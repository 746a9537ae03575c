// The system file dialogs: the buffer rules, the contracts, and the real chooser window driven by
// the scripted user (remembered folder, multi-selection, disabled windows, stopped players).

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BE/Backend.h"
#include "CheckedUser.h"
#include "DLG/FileDialogs.h"
#include "KOR/Platform.h"
#include "KOR/Services.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using TestSupport::CheckedUser;
using TestSupport::TestHost;
using testing::ElementsAre;

struct FitCase {
    const char* label;
    unsigned long flags;
    std::size_t nameLength;
    std::size_t keptLength;
};

TEST(FileDialogRules, InitialNameIsCutToTheBufferLessItsZero)
{
    const FitCase cases[] = {
        {"300 characters, one file", 0, 300, 259},
        {"exactly the buffer", 0, 260, 259},
        {"one short of the buffer", 0, 259, 259},
        {"short", 0, 12, 12},
        {"300 characters, several files", DLG::kDialogFlag_AllowMultiSelect, 300, 300},
        {"40000 characters, several files", DLG::kDialogFlag_AllowMultiSelect, 40000, 32766},
    };
    for (const FitCase& c : cases) {
        const std::wstring name(c.nameLength, L'n');
        EXPECT_EQ(DLG::FitInitialName(name, DLG::FileBufferChars(c.flags)).size(), c.keptLength) << c.label;
    }
}

struct SplitCase {
    const char* label;
    std::wstring selection;
    std::vector<std::wstring> paths;
};

TEST(FileDialogRules, SelectionSplitsIntoFullPaths)
{
    using namespace std::string_literals;
    const SplitCase cases[] = {
        {"one path", L"/media/a.png"s, {L"/media/a.png"}},
        {"three names", L"/media\0a.png\0b.png\0c d.png"s, {L"/media/a.png", L"/media/b.png", L"/media/c d.png"}},
        {"a Windows folder", L"C:\\Clips\0a.avi\0b.avi"s, {L"C:\\Clips\\a.avi", L"C:\\Clips\\b.avi"}},
        {"the root", L"/\0a.png\0b.png"s, {L"/a.png", L"/b.png"}},
        {"a drive root", L"D:\\\0a.wav\0b.wav"s, {L"D:\\a.wav", L"D:\\b.wav"}},
        {"ended by zeros", L"/media\0a.png\0b.png\0\0"s, {L"/media/a.png", L"/media/b.png"}},
        {"nothing", L""s, {}},
        {"stale names after the end", L"/media\0\0stale.png"s, {L"/media"}},
        {"stale names after the last name", L"/media\0a.png\0b.png\0\0stale.png"s, {L"/media/a.png", L"/media/b.png"}},
        {"an empty buffer with stale names", L"\0stale.png"s, {}},
    };
    for (const SplitCase& c : cases) {
        EXPECT_EQ(DLG::SplitSelection(c.selection), c.paths) << c.label;
    }
}

struct FitsCase {
    const char* label;
    std::wstring selection;
    std::size_t buffer;
    bool fits;
};

TEST(FileDialogRules, SelectionFitsWithItsZeros)
{
    using namespace std::string_literals;
    const FitsCase cases[] = {
        {"259 characters and a zero", std::wstring(259, L'p'), 260, true},
        {"260 characters", std::wstring(260, L'p'), 260, false},
        {"several with two zeros", L"/m\0a"s, 6, true},
        {"several one short", L"/m\0a"s, 5, false},
    };
    for (const FitsCase& c : cases) {
        EXPECT_EQ(DLG::SelectionFits(c.selection, c.buffer), c.fits) << c.label;
    }
}

TEST(FileDialogContracts, OneFileFormsRefuseTheMultiSelectFlag)
{
    TestHost host;
    std::wstring path = L"/tmp/x";
    EXPECT_THROW(DLG::AskOpenFile(L"Open", path, L"", L"", DLG::kDialogFlag_AllowMultiSelect, nullptr), zelcore::Error);
    EXPECT_THROW(DLG::AskSaveFile(L"Save", path, L"", L"", DLG::kDialogFlag_AllowMultiSelect | 0x2, nullptr),
                 zelcore::Error);
    EXPECT_THAT(host.Counts().contractsFailed, ElementsAre("!(inFlags & kDialogFlag_AllowMultiSelect)",
                                                           "!(inFlags & kDialogFlag_AllowMultiSelect)"));
    EXPECT_EQ(path, L"/tmp/x");
}

// A chooser that confirms without naming anything.
class EmptyConfirmingChooser : public UIF::FileChooserService {
public:
    UIF::FileChooserResult Run(const UIF::FileChooserRequest&, UIF::FileChooserCustomizer*) override
    {
        return {true, L"", 1};
    }
};

TEST(FileDialogContracts, AConfirmedManyFileOpenWithoutPathsBreaksTheOutputContract)
{
    TestHost host;
    EmptyConfirmingChooser chooser;
    UIF::FileChooserService* real = std::exchange(KOR::Services().fileChooser, &chooser);
    std::vector<std::wstring> paths{L"/tmp/kept.png"};
    EXPECT_THROW(DLG::AskOpenFile(L"Open", paths, L"", L"", DLG::kDialogFlag_AllowMultiSelect, nullptr),
                 zelcore::Error);
    KOR::Services().fileChooser = real;
    EXPECT_THAT(host.Counts().contractsFailed, ElementsAre("!outPaths.empty()"));
    EXPECT_THAT(paths, ElementsAre(L"/tmp/kept.png"));
}

// A folder of media files that a test chooses from.
class ChooserFixture : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(mMedia.isValid());
        for (const char* name : {"a.png", "b.png", "c.png", "d.wav"}) {
            QFile file(mMedia.filePath(QString::fromLatin1(name)));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        }
        QDir(mMedia.path()).mkdir(QStringLiteral("Sub"));
    }
    std::wstring Media(const char* inName = nullptr) const
    {
        return (inName ? mMedia.filePath(QString::fromLatin1(inName)) : mMedia.path()).toStdWString();
    }
    std::wstring Remembered() const { return BE::GetBackend()->GetStringProperty(BE::kLastUsedDirectoryKey, L""); }

    TestHost mHost{true};
    QTemporaryDir mMedia;
};

std::function<void(QWidget&)> ShowsFolder(const QString& inFolder)
{
    return [inFolder](QWidget& inWindow) {
        auto* chooser = qobject_cast<QFileDialog*>(&inWindow);
        ASSERT_NE(chooser, nullptr);
        EXPECT_EQ(chooser->directory().absolutePath(), QDir(inFolder).absolutePath());
    };
}

TEST_F(ChooserFixture, ThreeFilesComeBackAsFullPathsAndTheirFolderIsReusedNextTime)
{
    int stopped = 0;
    mHost.Host().AddPlayer([&stopped] { ++stopped; });
    std::vector<std::wstring> paths;
    {
        CheckedUser user;
        user.On(QStringLiteral("OpenFileDialog"))
            .Inspect([this](QWidget&) { EXPECT_FALSE(mHost.MainWindow()->isEnabled()); })
            .SelectItems({QStringLiteral("a.png"), QStringLiteral("b.png"), QStringLiteral("d.wav")})
            .Confirm();
        EXPECT_TRUE(DLG::AskOpenFile(L"Import", paths, Media(), L"", DLG::kDialogFlag_AllowMultiSelect, nullptr));
    }
    EXPECT_THAT(paths, ElementsAre(Media("a.png"), Media("b.png"), Media("d.wav")));
    EXPECT_EQ(Remembered(), Media());
    EXPECT_TRUE(mHost.MainWindow()->isEnabled());
    EXPECT_EQ(stopped, 1);

    std::wstring one;
    CheckedUser user;
    user.On(QStringLiteral("OpenFileDialog"))
        .Inspect(ShowsFolder(mMedia.path()))
        .SelectItems({QStringLiteral("c.png")})
        .Confirm();
    EXPECT_TRUE(DLG::AskOpenFile(L"Open", one, L"", L"", 0, KOR::HWNDFromNode(nullptr)));
    EXPECT_EQ(one, Media("c.png"));
}

TEST_F(ChooserFixture, ARememberedFolderThatWentIsIgnored)
{
    QTemporaryDir gone;
    BE::GetBackend()->SetStringProperty(BE::kLastUsedDirectoryKey, gone.path().toStdWString());
    ASSERT_TRUE(gone.remove());
    std::wstring path = L"unchanged";
    CheckedUser user;
    user.On(QStringLiteral("OpenFileDialog"))
        .Inspect([&gone](QWidget& inWindow) {
            EXPECT_NE(qobject_cast<QFileDialog*>(&inWindow)->directory().absolutePath(), gone.path());
        })
        .Press(Qt::Key_Escape);
    EXPECT_FALSE(DLG::AskOpenFile(L"Open", path, L"", L"", 0, nullptr));
    EXPECT_EQ(path, L"unchanged");
    EXPECT_EQ(Remembered(), gone.path().toStdWString());
}

struct TypeCase {
    const char* label;
    std::wstring filter;
    QStringList listed;
};

// The list of a chooser with each filter: "*.*" takes files without an extension too.
TEST_F(ChooserFixture, TheTypeShownDecidesTheFilesListed)
{
    using namespace std::string_literals;
    QFile readme(mMedia.filePath(QStringLiteral("README")));
    ASSERT_TRUE(readme.open(QIODevice::WriteOnly));
    const QStringList all{QStringLiteral("README"), QStringLiteral("Sub"),   QStringLiteral("a.png"),
                          QStringLiteral("b.png"),  QStringLiteral("c.png"), QStringLiteral("d.wav")};
    const TypeCase cases[] = {
        {"all files as *.*", L"All Files\0*.*\0"s, all},
        {"all files as *", L"All Files\0*\0"s, all},
        {"stills and *.* together", L"Mixed\0*.png;*.*\0"s, all},
        {"sounds", L"Sounds\0*.wav\0"s, {QStringLiteral("Sub"), QStringLiteral("d.wav")}},
    };
    for (const TypeCase& c : cases) {
        QStringList listed;
        CheckedUser user;
        user.On(QStringLiteral("OpenFileDialog"))
            .Inspect([&listed](QWidget& inWindow) {
                const auto* list = inWindow.findChild<QListView*>(QStringLiteral("listView"));
                ASSERT_NE(list, nullptr);
                for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row) {
                    listed << list->model()->index(row, 0, list->rootIndex()).data().toString();
                }
            })
            .Press(Qt::Key_Escape);
        std::wstring path;
        EXPECT_FALSE(DLG::AskOpenFile(L"Open", path, Media(), c.filter, 0, nullptr)) << c.label;
        listed.sort();
        EXPECT_EQ(listed, c.listed) << c.label;
    }
}

TEST_F(ChooserFixture, A300CharacterInitialNameShows259)
{
    std::wstring path(300, L'n');
    CheckedUser user;
    user.On(QStringLiteral("OpenFileDialog"))
        .Inspect([](QWidget& inWindow) {
            const auto* name = inWindow.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            ASSERT_NE(name, nullptr);
            EXPECT_EQ(name->text(), QString(259, QLatin1Char('n')));
        })
        .Press(Qt::Key_Escape);
    EXPECT_FALSE(DLG::AskOpenFile(L"Open", path, Media(), L"", 0, nullptr));
    EXPECT_EQ(path.size(), 300u);
}

// The folder chooser remembers the chosen folder itself, not its parent, on purpose: the next
// folder chooser opens where the user chose.
TEST_F(ChooserFixture, SaveTakesATypedNameAndFolderChooserRemembersTheChosenFolderItself)
{
    std::wstring saved;
    std::wstring folder;
    {
        CheckedUser user;
        user.On(QStringLiteral("SaveFileDialog"))
            .Retype(QStringLiteral("fileNameEdit"), QStringLiteral("new.tvx"))
            .Confirm();
        EXPECT_TRUE(DLG::AskSaveFile(L"Save", saved, Media(), std::wstring(L"Projects\0*.tvx\0", 15), 0, nullptr));
    }
    EXPECT_EQ(saved, Media("new.tvx"));
    {
        CheckedUser user;
        user.On(QStringLiteral("FolderChooserDialog")).SelectItems({QStringLiteral("Sub")}).Confirm();
        EXPECT_TRUE(DLG::AskFolderChooser(L"Folder", folder, Media(), L"", 0, nullptr));
    }
    EXPECT_EQ(folder, Media("Sub"));
    EXPECT_EQ(Remembered(), Media("Sub"));
}

} // namespace
