// Relinking through real chooser windows: a file chosen, an unusable one reported, skip, skip
// all, cancel, and the automatic search linking the rest without asking.

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CheckedUser.h"
#include "DLG/LinkMediaDialog.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using TestSupport::CheckedUser;
using testing::ElementsAre;

class LocateFile : public testing::Test {
protected:
    void SetUp() override
    {
        QDir().mkpath(Moved());
        for (const char* name : {"Interview A.wav", "Interview B.wav"}) {
            TestSupport::WriteWav(QDir(Moved()).filePath(name), {HostQt::WavFormat::kInt16, 1, 48000},
                                  std::vector<double>(4800, 0.25));
        }
        QFile notes(QDir(Moved()).filePath("Notes.wav"));
        ASSERT_TRUE(notes.open(QIODevice::WriteOnly));
        notes.write("Shot list, not sound.\n");
    }

    QString Moved() const { return mRoot.filePath("moved"); }
    std::wstring Old(const char* inName) const { return mRoot.filePath(QStringLiteral("old/") + inName).toStdWString(); }

    // A project with offline media at the old places.
    BE::ProjectRef Project(const std::vector<const char*>& inNames) const
    {
        QJsonArray media;
        for (const char* name : inNames) {
            media.append(QJsonObject{{"name", name}, {"path", QString::fromStdWString(Old(name))}, {"video", false}});
        }
        return HostQt::LoadProject(QJsonDocument(QJsonObject{{"name", "Relink"}, {"media", media}}).toJson(),
                                   mRoot.filePath("Relink.tvx"));
    }

    static std::vector<std::wstring> Paths(const BE::ProjectRef& inProject)
    {
        std::vector<std::wstring> paths;
        for (const BE::MediaRef& media : inProject->GetMedia()) {
            paths.push_back(media->GetFilePath());
        }
        return paths;
    }

    std::wstring InMoved(const char* inName) const { return QDir(Moved()).filePath(inName).toStdWString(); }

    QTemporaryDir mRoot;
    TestSupport::TestHost mHost;
};

TEST_F(LocateFile, AnUnusableFileIsReportedTheFoundOneLinksItsNeighboursAndASkipStaysOnTheMedia)
{
    const BE::ProjectRef project = Project({"Interview A.wav", "Interview B.wav", "Gone.wav"});
    {
        CheckedUser user;
        user.On(QStringLiteral("RelinkFileDialog"))
            .Inspect([](QWidget& inWindow) {
                EXPECT_EQ(inWindow.windowTitle(), QStringLiteral("Where Is \u201cInterview A.wav\u201d?"));
            })
            .ChangeFolder(Moved())
            .SelectItems({QStringLiteral("Notes.wav")})
            .Confirm();
        user.On(QStringLiteral("genericListErrorDialog")).Click(QStringLiteral("okButton"));
        user.On(QStringLiteral("RelinkFileDialog")).SelectItems({QStringLiteral("Interview A.wav")}).Confirm();
        user.On(QStringLiteral("RelinkFileDialog"))
            .Inspect([](QWidget& inWindow) {
                EXPECT_EQ(inWindow.windowTitle(), QStringLiteral("Where Is \u201cGone.wav\u201d?"))
                    << "Interview B was found beside Interview A and not asked for";
            })
            .Click(QStringLiteral("skipButton"));
        EXPECT_TRUE(DLG::LocateFile::DoLocateFileDialog(project, project->GetMedia(), true));
    }
    EXPECT_THAT(Paths(project), ElementsAre(InMoved("Interview A.wav"), InMoved("Interview B.wav"), Old("Gone.wav")));
    EXPECT_EQ(project->GetMedia()[0]->GetState(), BE::kMediaState_Online);
    EXPECT_EQ(project->GetMedia()[2]->GetState(), BE::kMediaState_Offline);
    EXPECT_TRUE(project->GetMedia()[2]->GetPropertyBag()->GetBoolProperty(L"DLG.MediaRelinker.ItemSkipped", false));

}

// The mark of an earlier skip keeps the automatic search away, yet the user is asked again.
TEST_F(LocateFile, AMediaSkippedBeforeIsAskedForButNotSearchedFor)
{
    const BE::ProjectRef project = Project({"Interview A.wav", "Interview B.wav"});
    project->GetMedia()[1]->GetPropertyBag()->SetBoolProperty(L"DLG.MediaRelinker.ItemSkipped", true);
    CheckedUser user;
    user.On(QStringLiteral("RelinkFileDialog")).ChangeFolder(Moved()).SelectItems({QStringLiteral("Interview A.wav")}).Confirm();
    user.On(QStringLiteral("RelinkFileDialog"))
        .Inspect([](QWidget& inWindow) {
            EXPECT_EQ(inWindow.windowTitle(), QStringLiteral("Where Is \u201cInterview B.wav\u201d?"));
        })
        .Press(Qt::Key_Escape);
    EXPECT_FALSE(DLG::LocateFile::DoLocateFileDialog(project, project->GetMedia(), true));
    EXPECT_THAT(Paths(project), ElementsAre(InMoved("Interview A.wav"), Old("Interview B.wav")));
}

// Paths beyond the system's usual 260 characters are read from the chooser's own text.
TEST_F(LocateFile, ALongPathIsLinked)
{
    const QString deep = QDir(Moved()).filePath(QString(120, QLatin1Char('d')) + QLatin1Char('/') + QString(120, QLatin1Char('e')));
    ASSERT_TRUE(QDir().mkpath(deep));
    const QString longName = QString(100, QLatin1Char('n')) + QStringLiteral(".wav");
    ASSERT_TRUE(QFile::copy(QDir(Moved()).filePath("Interview A.wav"), QDir(deep).filePath(longName)));
    ASSERT_GT(QDir(deep).filePath(longName).size(), 300);
    const BE::ProjectRef project = Project({"Interview A.wav"});
    CheckedUser user;
    user.On(QStringLiteral("RelinkFileDialog")).ChangeFolder(deep).SelectItems({longName}).Confirm();
    EXPECT_TRUE(DLG::LocateFile::DoLocateFileDialog(project, project->GetMedia(), false));
    EXPECT_THAT(Paths(project), ElementsAre(QDir(deep).filePath(longName).toStdWString()));
}

TEST_F(LocateFile, WithoutAutoLocateEveryItemIsAskedFor)
{
    const BE::ProjectRef project = Project({"Interview A.wav", "Interview B.wav"});
    CheckedUser user;
    user.On(QStringLiteral("RelinkFileDialog")).ChangeFolder(Moved()).SelectItems({QStringLiteral("Interview A.wav")}).Confirm();
    user.On(QStringLiteral("RelinkFileDialog")).SelectItems({QStringLiteral("Interview B.wav")}).Confirm();
    EXPECT_TRUE(DLG::LocateFile::DoLocateFileDialog(project, project->GetMedia(), false));
    EXPECT_THAT(Paths(project), ElementsAre(InMoved("Interview A.wav"), InMoved("Interview B.wav")));
}

TEST_F(LocateFile, SkipAllPassesOverTheRestAndCancelEndsTheWalk)
{
    const BE::ProjectRef skipped = Project({"One.wav", "Two.wav", "Three.wav"});
    const BE::ProjectRef cancelled = Project({"One.wav", "Two.wav"});
    CheckedUser user;
    user.On(QStringLiteral("RelinkFileDialog")).Click(QStringLiteral("skipAllButton"));
    user.On(QStringLiteral("RelinkFileDialog")).Press(Qt::Key_Escape);
    EXPECT_TRUE(DLG::LocateFile::DoLocateFileDialog(skipped, skipped->GetMedia(), true));
    EXPECT_FALSE(DLG::LocateFile::DoLocateFileDialog(cancelled, cancelled->GetMedia(), true));
    EXPECT_THAT(Paths(cancelled), ElementsAre(Old("One.wav"), Old("Two.wav")));
}

TEST_F(LocateFile, LinkMediaKeepsTheItemsStillUnlinkedOnlyWhenCompleted)
{
    struct Item : KOR::RefCounted<BE::IProjectItem> {
        explicit Item(BE::MediaRef inMedia) : media(std::move(inMedia)) {}
        std::wstring GetName() const override { return media->GetName(); }
        BE::MediaRef GetMedia() const override { return media; }
        BE::MediaRef media;
    };
    const BE::ProjectRef project = Project({"Interview A.wav", "Interview B.wav"});
    std::vector<BE::ProjectItemRef> items = {BE::ProjectItemRef(new Item(project->GetMedia()[0])),
                                             BE::ProjectItemRef(new Item(project->GetMedia()[1]))};
    const std::vector<BE::ProjectItemRef> given = items;
    CheckedUser user;
    user.On(QStringLiteral("RelinkFileDialog"))
        .Inspect([](QWidget& inWindow) {
            EXPECT_EQ(inWindow.findChild<QWidget*>(QStringLiteral("skipButton")), nullptr) << "linking offers no skip";
        })
        .ChangeFolder(Moved())
        .SelectItems({QStringLiteral("Interview A.wav")})
        .Confirm();
    user.On(QStringLiteral("RelinkFileDialog")).Press(Qt::Key_Escape);
    EXPECT_FALSE(DLG::LinkMedia::DoLinkMediaDialog(project, items));
    EXPECT_EQ(items, given) << "a cancelled dialog leaves the caller's list alone";
    EXPECT_EQ(project->GetMedia()[0]->GetFilePath(), InMoved("Interview A.wav"));

    user.On(QStringLiteral("RelinkFileDialog")).ChangeFolder(Moved()).SelectItems({QStringLiteral("Interview B.wav")}).Confirm();
    std::vector<BE::ProjectItemRef> rest = {items[1]};
    EXPECT_TRUE(DLG::LinkMedia::DoLinkMediaDialog(project, rest));
    EXPECT_TRUE(rest.empty());
}

TEST_F(LocateFile, EntriesCheckTheirArguments)
{
    const BE::ProjectRef project = Project({"One.wav"});
    std::vector<BE::ProjectItemRef> noItems;
    EXPECT_THROW(DLG::LocateFile::DoLocateFileDialog(nullptr, project->GetMedia(), true), zelcore::Error);
    EXPECT_THROW(DLG::LocateFile::DoLocateFileDialog(project, std::vector<BE::MediaRef>{}, true), zelcore::Error);
    EXPECT_THROW(DLG::LinkMedia::DoLinkMediaDialog(project, noItems), zelcore::Error);
    // A media is no relinker: the list is refused before any chooser opens.
    const std::vector<KOR::InterfaceRef<KOR::KORUnknown>> notRelinkers = {project->GetMedia()[0]};
    EXPECT_THROW(DLG::LocateFile::DoLocateFileDialog(project, notRelinkers, true), zelcore::Error);
    EXPECT_THAT(mHost.Counts().contractsFailed,
                ElementsAre("inProject != NULL", "inItems.size() > 0", "inItems.size() > 0", "relinker != NULL"));
}

TEST(MediaRelinker, AnswersFromItsMediaAndNeutrallyWithout)
{
    TestSupport::TestHost host;
    const BE::ProjectRef project = HostQt::LoadProject(
        R"({"name": "P", "media": [{"name": "", "path": "/gone/take 7.mov"}]})", QStringLiteral("/tmp/P.tvx"));
    DLG::MediaRelinker relinker(project->GetMedia()[0]);
    EXPECT_EQ(relinker.GetDisplayName(), L"take 7.mov") << "a media without a name shows its file's";
    EXPECT_TRUE(relinker.IsOffline());
    EXPECT_TRUE(relinker.IsExcludedFromReuse()) << "a media never lends its place to the next item";
    EXPECT_TRUE(relinker.CheckLinkImplementation());

    DLG::MediaRelinker empty(nullptr);
    EXPECT_EQ(empty.GetFilePath(), L"");
    EXPECT_EQ(empty.GetDisplayName(), L"");
    EXPECT_FALSE(empty.IsSkipped() || empty.IsOffline() || empty.IsSkipAllTarget() || empty.CheckLinkImplementation());
    EXPECT_EQ(empty.GetFileDescriptor(), DLG::FileDescriptor{});
}

} // namespace
