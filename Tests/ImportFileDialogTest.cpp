// The import file dialog: its numbered-name, list filter and numbered-run rules on tables, and
// the real chooser window driven by the scripted user through every outcome the host reads.

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QTemporaryDir>

#include <cwctype>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BE/Backend.h"
#include "CheckedUser.h"
#include "DLG/ImportFileDialog.h"
#include "HostQt/NodePeer.h"
#include "HostQt/ReferenceHost.h"
#include "KOR/Services.h"
#include "ML/ImportableFileTypes.h"
#include "TestHost.h"
#include "zelcore/Error.h"
#include "zelui/Controls.h"

namespace {

using namespace std::string_literals;
using TestSupport::CheckedUser;
using TestSupport::Step;
using TestSupport::TestHost;
using testing::ElementsAre;
using Kind = UIF::FileChooserItemKind;

struct NameCase {
    std::wstring name;
    bool numbered;
};

TEST(ImportRules, NumberedNameNeedsADigitBeforeTheLastDot)
{
    const NameCase cases[] = {
        {L"clip001.tga", true}, {L"clip.tga", false},      {L"001", false},      {L".5", false},
        {L"clip1.tga.bak", false}, {L"a.1.tga", true},    {L"7.png", true},     {L"frame_0001.PNG", true},
        {L"", false},           {L"shot 2 final.mov", false}, {L"9.", true},
    };
    for (const NameCase& c : cases) {
        EXPECT_EQ(DLG::IsIncrementalName(c.name), c.numbered) << std::string(c.name.begin(), c.name.end());
    }
}

struct ListCase {
    const char* label;
    std::wstring name;
    Kind kind;
    bool kept;
};

TEST(ImportRules, ListFilterHidesOnlyPlainFilesOfOtherTypes)
{
    const std::set<std::wstring> supported{L"PNG", L"MOV", L"WAV"};
    const ListCase cases[] = {
        {"a supported file", L"shot.png", Kind::kFile, true},
        {"upper and lower case mixed", L"Shot.MoV", Kind::kFile, true},
        {"another type", L"notes.abc", Kind::kFile, false},
        {"no extension", L"README", Kind::kFile, false},
        {"a dot file", L".hidden", Kind::kFile, false},
        {"only the last extension counts", L"shot.png.abc", Kind::kFile, false},
        {"a folder named like a file", L"x.abc", Kind::kFolder, true},
        {"a link to another type", L"notes link.abc", Kind::kLink, true},
        {"a shortcut file", L"notes.lnk", Kind::kFile, true},
    };
    for (const ListCase& c : cases) {
        EXPECT_EQ(DLG::KeepInImportList(c.name, c.kind, supported), c.kept) << c.label;
    }
}

struct RunCase {
    const char* label;
    std::wstring selected;
    std::vector<std::wstring> folder;
    std::wstring first;
    std::wstring last;
    std::int64_t span;
    std::int64_t missing;
};

// f_098.png to f_999.png and then f_1000.png, f_1001.png: a padded run that outgrows its width.
std::vector<std::wstring> OutgrownRun()
{
    std::vector<std::wstring> names;
    for (int number = 98; number <= 1001; ++number) {
        const std::wstring digits = std::to_wstring(number);
        names.push_back(L"f_" + std::wstring(digits.size() < 3 ? 3 - digits.size() : 0, L'0') + digits + L".png");
    }
    return names;
}

TEST(ImportRules, NumberedRunSpansTheNeighboursOfTheSelectedName)
{
    const RunCase cases[] = {
        {"an outgrown padded run from a padded name", L"f_098.png", OutgrownRun(), L"f_098.png", L"f_1001.png", 904,
         0},
        {"an outgrown padded run from its middle", L"f_500.png", OutgrownRun(), L"f_098.png", L"f_1001.png", 904, 0},
        {"an outgrown padded run from beyond its width", L"f_1000.png", OutgrownRun(), L"f_098.png", L"f_1001.png",
         904, 0},
        {"padded names wider than the selected one are another run", L"s_999.png",
         {L"s_0999.png", L"s_0100.png", L"s_999.png", L"s_1000.png"}, L"s_999.png", L"s_1000.png", 2, 0},
        {"padded with a gap", L"frame_0003.png",
         {L"frame_0001.png", L"frame_0002.png", L"frame_0003.png", L"frame_0005.png", L"clip.png"},
         L"frame_0001.png", L"frame_0005.png", 5, 1},
        {"other widths and prefixes are others' runs", L"f_07.png",
         {L"f_06.png", L"f_07.png", L"f_008.png", L"g_08.png", L"f_09.png"}, L"f_06.png", L"f_09.png", 4, 1},
        {"unpadded, any digit count", L"shot9.tga", {L"shot8.tga", L"shot9.tga", L"shot10.tga", L"shot11.tga"},
         L"shot8.tga", L"shot11.tga", 4, 0},
        {"a padded run picked at a number without a leading zero", L"img100.png",
         {L"img098.png", L"img099.png", L"img100.png", L"img0100.png"}, L"img098.png", L"img100.png", 3, 0},
        {"starting at zero", L"0.png", {L"0.png", L"1.png", L"3.png"}, L"0.png", L"3.png", 4, 1},
        {"the extension must match", L"a1.png", {L"a1.png", L"a2.jpg", L"a3.png"}, L"a1.png", L"a3.png", 3, 1},
        {"alone", L"take7.png", {L"take7.png", L"take.png"}, L"take7.png", L"take7.png", 1, 0},
        {"a selected name not yet on disk", L"s2.png", {L"s1.png"}, L"s1.png", L"s2.png", 2, 0},
    };
    for (const RunCase& c : cases) {
        const std::optional<DLG::NumberedRun> run = DLG::FindNumberedRun(c.selected, c.folder);
        ASSERT_TRUE(run.has_value()) << c.label;
        EXPECT_EQ(run->firstName, c.first) << c.label;
        EXPECT_EQ(run->lastName, c.last) << c.label;
        EXPECT_EQ(run->Span(), c.span) << c.label;
        EXPECT_EQ(run->Missing(), c.missing) << c.label;
    }
    EXPECT_FALSE(DLG::FindNumberedRun(L"clip.png", {L"clip.png"}).has_value());
}

struct LineCase {
    const char* label;
    DLG::NumberedRun run;
    std::wstring line;
};

TEST(ImportRules, TheRunLineKeepsNamesAsTheyAre)
{
    TestHost host;
    const LineCase cases[] = {
        {"with gaps", {L"f_01.png", L"f_05.png", 1, 5, 3}, L"f_01.png to f_05.png: 5 frames, 2 missing"},
        {"complete", {L"f_01.png", L"f_05.png", 1, 5, 5}, L"f_01.png to f_05.png: 5 frames"},
        {"alone", {L"f_01.png", L"f_01.png", 1, 1, 1}, L"f_01.png: no numbered neighbours"},
        {"names holding markers", {L"a^2^4_1.png", L"a^1^3_9.png", 1, 9, 9}, L"a^2^4_1.png to a^1^3_9.png: 9 frames"},
    };
    for (const LineCase& c : cases) {
        EXPECT_EQ(DLG::DescribeNumberedRun(c.run), c.line) << c.label;
    }
}

// A folder of media: a numbered run with frame 4 missing, a plain still, a file of another type,
// a folder named like such a file and a link to that file.
class ImportFixture : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(mMedia.isValid());
        for (const char* name : {"frame_0001.png", "frame_0002.png", "frame_0003.png", "frame_0005.png", "clip.png",
                                 "notes.notmedia"}) {
            QFile file(Path(name));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        }
        ASSERT_TRUE(QDir(mMedia.path()).mkdir(QStringLiteral("x.notmedia")));
        ASSERT_TRUE(QFile::link(Path("notes.notmedia"), Path("shortcut.notmedia")));
        BE::GetBackend()->SetStringProperty(BE::kLastUsedDirectoryKey, mMedia.path().toStdWString());
    }
    QString Path(const char* inName) const { return mMedia.filePath(QString::fromLatin1(inName)); }
    std::wstring WPath(const char* inName) const { return Path(inName).toStdWString(); }

    struct Outcome {
        int result;
        bool cancelled;
        bool directory;
        bool numbered;
        std::vector<std::wstring> paths;
        std::wstring directoryPath;
        std::uint32_t failure;
    };

    Outcome Run(const std::function<void(Step&)>& inScript, bool inPreset = false)
    {
        DLG::ImportFileDialog dialog(L"", DLG::kDialogFlag_AllowMultiSelect, L"All Supported Media\0*\0All Files\0*\0",
                                     ML::ImportableFileTypeUtils::GetImportableFileExtensions(), L"Import");
        dialog.SetNumberedStills(inPreset);
        CheckedUser user;
        inScript(user.On(QStringLiteral("ImportFileDialog")));
        const int result = dialog.DoModal(nullptr);
        return {result, dialog.WasDialogCancelled(), dialog.IsDirectory(), dialog.IsNumberedStills(),
                dialog.GetFilePaths(), dialog.GetDirectoryPath(), dialog.GetDialogFailure()};
    }

    TestHost mHost{true};
    QTemporaryDir mMedia;
};

std::function<void(QWidget&)> Panel(bool inBoxEnabled, bool inBoxChecked, bool inButtonEnabled, QString inRun = {})
{
    return [=](QWidget& inWindow) {
        const auto* box = inWindow.findChild<QCheckBox*>(QStringLiteral("numberedStillsCheckbox"));
        const auto* button = inWindow.findChild<QPushButton*>(QStringLiteral("importFolderButton"));
        const auto* run = inWindow.findChild<QLabel*>(QStringLiteral("numberedRunStaticText"));
        ASSERT_TRUE(box && button && run);
        EXPECT_EQ(box->isEnabled(), inBoxEnabled);
        EXPECT_EQ(box->isChecked(), inBoxChecked);
        EXPECT_EQ(button->isEnabled(), inButtonEnabled);
        EXPECT_EQ(run->text(), inRun);
    };
}

QStringList Listed(QWidget& inWindow)
{
    const auto* list = inWindow.findChild<QListView*>(QStringLiteral("listView"));
    QStringList names;
    for (int row = 0; list && row < list->model()->rowCount(list->rootIndex()); ++row) {
        names << list->model()->index(row, 0, list->rootIndex()).data().toString();
    }
    names.sort();
    return names;
}

struct WindowCase {
    const char* label;
    std::function<void(Step&)> script;
    bool preset;
    int result;
    bool cancelled;
    bool directory;
    bool numbered;
    std::vector<const char*> files;
    const char* directoryPath; // the item selected last; null: not looked at
};

TEST_F(ImportFixture, EachWayOutGivesTheHostItsOutcome)
{
    const QString run = QStringLiteral("frame_0001.png to frame_0005.png: 5 frames, 1 missing");
    const WindowCase cases[] = {
        {"one file",
         [](Step& s) { s.SelectItems({QStringLiteral("clip.png")}).Confirm(); },
         false,
         1,
         false,
         false,
         false,
         {"clip.png"},
         "clip.png"},
        {"three files",
         [](Step& s) {
             s.SelectItems(
                  {QStringLiteral("frame_0001.png"), QStringLiteral("clip.png"), QStringLiteral("frame_0005.png")})
                 .Inspect(Panel(false, false, false))
                 .Confirm();
         },
         false,
         1,
         false,
         false,
         false,
         {"clip.png", "frame_0001.png", "frame_0005.png"},
         "frame_0005.png"},
        {"numbered stills checked",
         [&run](Step& s) {
             s.SelectItems({QStringLiteral("frame_0003.png")})
                 .Inspect(Panel(true, false, false, run))
                 .Click(QStringLiteral("numberedStillsCheckbox"))
                 .Confirm();
         },
         false,
         1,
         false,
         false,
         true,
         {"frame_0003.png"},
         "frame_0003.png"},
        {"checked, then a name that is not numbered",
         [](Step& s) {
             s.SelectItems({QStringLiteral("frame_0002.png")})
                 .Click(QStringLiteral("numberedStillsCheckbox"))
                 .SelectItems({QStringLiteral("clip.png")})
                 .Inspect(Panel(false, true, false))
                 .Confirm();
         },
         false,
         1,
         false,
         false,
         true,
         {"clip.png"},
         "clip.png"},
        {"two quoted names typed",
         [](Step& s) {
             s.Type(QStringLiteral("fileNameEdit"), QStringLiteral("\"frame_0001.png\" \"frame_0002.png\""))
                 .Inspect(Panel(false, false, false))
                 .Confirm();
         },
         false,
         1,
         false,
         false,
         false,
         {"frame_0001.png", "frame_0002.png"},
         nullptr},
        {"the import-folder button",
         [](Step& s) {
             s.SelectItems({QStringLiteral("x.notmedia")})
                 .Inspect(Panel(false, false, true))
                 .Click(QStringLiteral("importFolderButton"));
         },
         false,
         2,
         false,
         true,
         false,
         {},
         "x.notmedia"},
        {"cancelled on a folder",
         [](Step& s) { s.SelectItems({QStringLiteral("x.notmedia")}).Press(Qt::Key_Escape); },
         true,
         2,
         true,
         true,
         true,
         {},
         "x.notmedia"},
        {"cancelled at once", [](Step& s) { s.Press(Qt::Key_Escape); }, false, 2, true, false, false, {}, ""},
    };
    for (const WindowCase& c : cases) {
        const Outcome outcome = Run(c.script, c.preset);
        EXPECT_EQ(outcome.result, c.result) << c.label;
        EXPECT_EQ(outcome.cancelled, c.cancelled) << c.label;
        EXPECT_EQ(outcome.directory, c.directory) << c.label;
        EXPECT_EQ(outcome.numbered, c.numbered) << c.label;
        std::vector<std::wstring> files;
        for (const char* name : c.files) {
            files.push_back(WPath(name));
        }
        std::vector<std::wstring> chosen = outcome.paths;
        std::sort(chosen.begin(), chosen.end());
        EXPECT_EQ(chosen, files) << c.label;
        if (c.directoryPath) {
            EXPECT_EQ(outcome.directoryPath, *c.directoryPath ? WPath(c.directoryPath) : L"") << c.label;
        }
        EXPECT_EQ(outcome.failure, 0u) << c.label;
    }
}

TEST_F(ImportFixture, OnlyTheFirstTypeHidesOtherFilesAndFoldersAndLinksStay)
{
    const QStringList all{QStringLiteral("clip.png"),          QStringLiteral("frame_0001.png"),
                          QStringLiteral("frame_0002.png"),    QStringLiteral("frame_0003.png"),
                          QStringLiteral("frame_0005.png"),    QStringLiteral("notes.notmedia"),
                          QStringLiteral("shortcut.notmedia"), QStringLiteral("x.notmedia")};
    QStringList filtered = all;
    filtered.removeAll(QStringLiteral("notes.notmedia"));
    QStringList seen[3];
    Run([&](Step& s) {
        s.SelectItems({QStringLiteral("clip.png")})
            .Inspect([&](QWidget& w) { seen[0] = Listed(w); })
            .ChooseType(1)
            .SelectItems({QStringLiteral("notes.notmedia")})
            .Inspect([&](QWidget& w) { seen[1] = Listed(w); })
            .ChooseType(0)
            .Inspect([&](QWidget& w) { seen[2] = Listed(w); })
            .Press(Qt::Key_Escape);
    });
    EXPECT_EQ(seen[0], filtered);
    EXPECT_EQ(seen[1], all);
    EXPECT_EQ(seen[2], filtered);
}

TEST_F(ImportFixture, FolderAndTypeAreRememberedOnlyWhenConfirmed)
{
    QTemporaryDir elsewhere;
    BE::Backend& backend = *BE::GetBackend();
    backend.SetStringProperty(BE::kLastUsedDirectoryKey, elsewhere.path().toStdWString());
    backend.SetIntProperty(DLG::ImportFileDialog::kLastUsedFilterIndexProperty, 0x102); // read as 2: 8 bits wide
    Run([&](Step& s) {
        s.Inspect([&](QWidget& w) {
             EXPECT_EQ(qobject_cast<QFileDialog*>(&w)->directory().absolutePath(),
                       QDir(elsewhere.path()).absolutePath());
             EXPECT_EQ(w.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"))->currentIndex(), 1);
         })
            .ChangeFolder(mMedia.path())
            .SelectItems({QStringLiteral("notes.notmedia")})
            .Press(Qt::Key_Escape);
    });
    EXPECT_EQ(backend.GetStringProperty(BE::kLastUsedDirectoryKey, L""), elsewhere.path().toStdWString());
    EXPECT_EQ(backend.GetIntProperty(DLG::ImportFileDialog::kLastUsedFilterIndexProperty, -1), 0x102);

    Run([&](Step& s) { s.ChangeFolder(mMedia.path()).SelectItems({QStringLiteral("notes.notmedia")}).Confirm(); });
    EXPECT_EQ(backend.GetStringProperty(BE::kLastUsedDirectoryKey, L""), mMedia.path().toStdWString());
    EXPECT_EQ(backend.GetIntProperty(DLG::ImportFileDialog::kLastUsedFilterIndexProperty, -1), 2);
}

struct RememberCase {
    const char* label;
    QStringList selected;
};

// The folder of the files is stored: the first string of several, the folder of one.
TEST_F(ImportFixture, ConfirmedFilesStoreTheirFolder)
{
    const RememberCase cases[] = {
        {"one file", {QStringLiteral("clip.png")}},
        {"three files",
         {QStringLiteral("frame_0001.png"), QStringLiteral("clip.png"), QStringLiteral("frame_0005.png")}},
    };
    for (const RememberCase& c : cases) {
        QTemporaryDir elsewhere;
        BE::GetBackend()->SetStringProperty(BE::kLastUsedDirectoryKey, elsewhere.path().toStdWString());
        const Outcome outcome = Run([&](Step& s) { s.ChangeFolder(mMedia.path()).SelectItems(c.selected).Confirm(); });
        EXPECT_EQ(outcome.paths.size(), static_cast<std::size_t>(c.selected.size())) << c.label;
        EXPECT_EQ(BE::GetBackend()->GetStringProperty(BE::kLastUsedDirectoryKey, L""), mMedia.path().toStdWString())
            << c.label;
    }
}

// A chooser that keeps the folder it was asked to open in, and cancels.
class FolderNotingChooser : public UIF::FileChooserService {
public:
    UIF::FileChooserResult Run(const UIF::FileChooserRequest& inRequest, UIF::FileChooserCustomizer*) override
    {
        mInitialDirectory = inRequest.initialDirectory;
        return {};
    }
    std::wstring mInitialDirectory = L"not asked";
};

// Qt's dialog shows some other folder for one that is gone, so the request itself is looked at.
TEST_F(ImportFixture, ARememberedFolderIsUsedOnlyWhileItExists)
{
    QTemporaryDir gone;
    const std::wstring gonePath = gone.path().toStdWString();
    ASSERT_TRUE(gone.remove());
    const std::wstring kept = mMedia.path().toStdWString();
    const struct {
        const char* label;
        std::wstring remembered;
        std::wstring opened;
    } cases[] = {
        {"a folder that exists", kept, kept},
        {"a folder that went", gonePath, L""},
        {"a file", WPath("clip.png"), L""},
    };
    for (const auto& c : cases) {
        BE::GetBackend()->SetStringProperty(BE::kLastUsedDirectoryKey, c.remembered);
        FolderNotingChooser chooser;
        UIF::FileChooserService* real = std::exchange(KOR::Services().fileChooser, &chooser);
        DLG::ImportFileDialog dialog(nullptr, 0, nullptr, {}, nullptr);
        EXPECT_EQ(dialog.DoModal(nullptr), 2) << c.label;
        KOR::Services().fileChooser = real;
        EXPECT_EQ(chooser.mInitialDirectory, c.opened) << c.label;
        EXPECT_EQ(BE::GetBackend()->GetStringProperty(BE::kLastUsedDirectoryKey, L""), c.remembered) << c.label;
    }
}

TEST_F(ImportFixture, NamesBeyondTheBufferFailTheDialogAndWriteNothing)
{
    const QString crowded = mMedia.filePath(QStringLiteral("crowded"));
    ASSERT_TRUE(QDir().mkpath(crowded));
    QStringList names; // 300 names of 117 characters: more than 32,767 with the folder and zeros
    for (int index = 0; index < 300; ++index) {
        names << QStringLiteral("%1_%2.png").arg(QString(109, QLatin1Char('n'))).arg(index, 3, 10, QLatin1Char('0'));
        QFile file(QDir(crowded).filePath(names.back()));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    const std::wstring before = BE::GetBackend()->GetStringProperty(BE::kLastUsedDirectoryKey, L"");
    const Outcome outcome = Run([&](Step& s) { s.ChangeFolder(crowded).SelectItems(names).Confirm(); });
    EXPECT_EQ(outcome.result, 2);
    EXPECT_TRUE(outcome.cancelled);
    EXPECT_EQ(outcome.failure, DLG::kFileDialogError_BufferTooSmall);
    EXPECT_TRUE(outcome.paths.empty());
    EXPECT_EQ(BE::GetBackend()->GetStringProperty(BE::kLastUsedDirectoryKey, L""), before);
    EXPECT_EQ(BE::GetBackend()->GetIntProperty(DLG::ImportFileDialog::kLastUsedFilterIndexProperty, -1), -1);
}

// A chooser that confirms one path as it stands, as a system dialog may confirm a folder typed by name.
class ConfirmingChooser : public UIF::FileChooserService {
public:
    explicit ConfirmingChooser(std::wstring inPath) : mPath(std::move(inPath)) {}
    UIF::FileChooserResult Run(const UIF::FileChooserRequest&, UIF::FileChooserCustomizer*) override
    {
        return {true, mPath, 1};
    }

private:
    std::wstring mPath;
};

TEST_F(ImportFixture, AFolderConfirmedByNameIsADirectoryResult)
{
    ConfirmingChooser chooser(WPath("x.notmedia"));
    UIF::FileChooserService* real = std::exchange(KOR::Services().fileChooser, &chooser);
    DLG::ImportFileDialog dialog(nullptr, 0, nullptr, {}, nullptr);
    EXPECT_EQ(dialog.DoModal(nullptr), 1);
    KOR::Services().fileChooser = real;
    EXPECT_TRUE(dialog.IsDirectory());
    EXPECT_EQ(dialog.GetDirectoryPath(), WPath("x.notmedia"));
    EXPECT_EQ(BE::GetBackend()->GetStringProperty(BE::kLastUsedDirectoryKey, L""), WPath("x.notmedia"));
}

// A chooser that notes whether the main window was disabled while it ran, and cancels.
class OwnerWatchingChooser : public UIF::FileChooserService {
public:
    explicit OwnerWatchingChooser(TestHost& ioHost) : mHost(ioHost) {}
    UIF::FileChooserResult Run(const UIF::FileChooserRequest&, UIF::FileChooserCustomizer*) override
    {
        mHost.Record(mHost.MainWindow()->isEnabled() ? "chooser, owner enabled" : "chooser, owner disabled");
        return {};
    }

private:
    TestHost& mHost;
};

TEST_F(ImportFixture, PlayersStopAndTheOwnerIsDisabledBeforeTheSettingsAreRead)
{
    OwnerWatchingChooser chooser(mHost);
    UIF::FileChooserService* real = std::exchange(KOR::Services().fileChooser, &chooser);
    BE::Backend* backend = std::exchange(KOR::Services().backend, nullptr);
    {
        DLG::ImportFileDialog dialog(nullptr, 0, nullptr, {}, nullptr);
        EXPECT_THROW(dialog.DoModal(nullptr), zelcore::Error);
    }
    KOR::Services().backend = backend;
    EXPECT_THAT(mHost.Counts().sequence, ElementsAre("stop players", "end input capture"));
    EXPECT_TRUE(mHost.MainWindow()->isEnabled());

    DLG::ImportFileDialog dialog(nullptr, 0, nullptr, {}, nullptr);
    EXPECT_EQ(dialog.DoModal(nullptr), 2);
    KOR::Services().fileChooser = real;
    EXPECT_THAT(mHost.Counts().sequence, ElementsAre("stop players", "end input capture", "stop players",
                                                     "end input capture", "chooser, owner disabled"));
    EXPECT_TRUE(mHost.MainWindow()->isEnabled());
}

// The chooser as the notifications see it, without a window: a name in the file-name box.
class TypedName : public UIF::FileChooserWindow {
public:
    explicit TypedName(std::wstring inNameText) : mNameText(std::move(inNameText)) {}
    std::wstring GetFilePath() const override { return {}; }
    std::wstring GetFileNameText() const override { return mNameText; }
    int GetTypeIndex() const override { return 0; }
    void CloseAsCancelled() override {}
    void RefilterList() override {}
    void CenterOverMainWindow() override {}
    void RepositionPanel() override {}
    boost::intrusive_ptr<zelui::controls::UI_CheckBox> AddCheckBox(const std::wstring&,
                                                                   const std::wstring& inLabel) override
    {
        return Owned(new zelui::controls::UI_CheckBox(nullptr, nullptr, inLabel));
    }
    boost::intrusive_ptr<zelui::controls::UI_Button> AddButton(const std::wstring&,
                                                               const std::wstring& inLabel) override
    {
        return Owned(new zelui::controls::UI_Button(nullptr, nullptr, inLabel));
    }
    boost::intrusive_ptr<zelui::controls::UI_StaticText> AddText(const std::wstring&) override
    {
        return Owned(new zelui::controls::UI_StaticText(nullptr, nullptr, L""));
    }

private:
    template <class Node>
    boost::intrusive_ptr<Node> Owned(Node* inNode)
    {
        HostQt::PeerWidget<QWidget>(inNode)->setParent(&mPanel);
        return inNode;
    }

    std::wstring mNameText;
    QWidget mPanel;
};

// A chooser whose panel was never built (no OnInitDialog) still hears selection changes.
TEST_F(ImportFixture, NoticesWithoutAPanelLeaveThePanelAlone)
{
    DLG::ImportFileDialog dialog(nullptr, 0, nullptr, {}, nullptr);
    TypedName numbered(L"frame_0001.png");
    EXPECT_EQ(dialog.OnSelChange(numbered), 0);
    EXPECT_EQ(dialog.OnFileOK(numbered), 1);
    EXPECT_FALSE(dialog.IsNumberedStills());
}

TEST_F(ImportFixture, MissingRegistryOrBackendRaisesTheNullInterfaceError)
{
    DLG::ImportFileDialog dialog(nullptr, 0, nullptr, {}, nullptr);
    TypedName numbered(L"frame_0001.png");
    dialog.OnInitDialog(numbered);
    const KOR::ClassFactory registry = KOR::RegisterClassFactory(ML::kImporterRegistryClassID, {});
    EXPECT_THROW(dialog.OnSelChange(numbered), zelcore::Error);
    KOR::RegisterClassFactory(ML::kImporterRegistryClassID, registry);
    EXPECT_NO_THROW(dialog.OnSelChange(numbered));

    BE::Backend* backend = std::exchange(KOR::Services().backend, nullptr);
    EXPECT_THROW(dialog.DoModal(nullptr), zelcore::Error);
    KOR::Services().backend = backend;
}

struct ImporterCase {
    std::wstring name;
    bool importable;
    bool still;
};

// The reference host asks Qt and FFmpeg; WAV and AIFF files name no extension in their demuxers,
// text and subtitle formats that FFmpeg also reads are not media, and FFmpeg's image readers
// add stills that Qt has no reader for.
TEST(ImporterRegistry, TakesWhatQtAndFFmpegCanOpen)
{
    TestHost host;
    const std::set<std::wstring> importable = ML::ImportableFileTypeUtils::GetImportableFileExtensions();
    const auto registry =
        KOR::InterfaceRef<ML::IImporterRegistry>::Query(KOR::CreateClassInstanceRef(ML::kImporterRegistryClassID));
    ASSERT_TRUE(registry);
    const ImporterCase cases[] = {
        {L"shot.png", true, true},     {L"Shot.JPG", true, true},   {L"clip.mov", true, false},
        {L"clip.mp4", true, false},    {L"take.wav", true, false},  {L"take.aiff", true, false},
        {L"music.mp3", true, false},   {L"notes.notmedia", false, false}, {L"README", false, false},
        {L"reel.mxf", true, false},    {L"notes.txt", false, false}, {L"read.nfo", false, false},
        {L"lyrics.js", false, false},  {L"dump.bin", false, false},  {L"talk.srt", false, false},
        {L"song.lrc", false, false},   {L"plate.exr", true, true},   {L"scan.dpx", true, true},
    };
    for (const ImporterCase& c : cases) {
        const std::string label(c.name.begin(), c.name.end());
        const std::size_t dot = c.name.find_last_of(L'.');
        std::wstring extension = dot == std::wstring::npos ? L"" : c.name.substr(dot + 1);
        for (wchar_t& character : extension) {
            character = static_cast<wchar_t>(std::towupper(character));
        }
        EXPECT_EQ(importable.count(extension) > 0, c.importable) << label;
        EXPECT_EQ(registry->IsStillImporterAvailable(c.name), c.still) << label;
    }
}

// Imported media outlive the project file: they are written and read back in their order.
TEST(ProjectMedia, AddedMediaAreSavedAndLoadedAgain)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Imports.tvx"));
    const BE::ProjectRef project =
        HostQt::LoadProject(R"({"name": "Imports", "media": [{"name": "Gulls.wav", "path": "/m/Gulls.wav"}]})", path);
    ASSERT_EQ(project->GetMedia().size(), 1u);
    ASSERT_TRUE(project->AddMedia(L"f_001.png to f_120.png", L"/m/f_001.png", 118));
    ASSERT_EQ(project->SaveToFile(path.toStdWString(), false), BE::kSave_OK);

    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const std::vector<BE::MediaRef> media = HostQt::LoadProject(file.readAll(), path)->GetMedia();
    ASSERT_EQ(media.size(), 2u);
    EXPECT_EQ(media[0]->GetName(), L"Gulls.wav");
    EXPECT_EQ(media[0]->GetStillCount(), 0);
    EXPECT_EQ(media[1]->GetName(), L"f_001.png to f_120.png");
    EXPECT_EQ(media[1]->GetFilePath(), L"/m/f_001.png");
    EXPECT_EQ(media[1]->GetStillCount(), 118);
}

} // namespace
