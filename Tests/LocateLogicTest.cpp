// The relink logic on real folders: remembered folders, moves, the automatic search with its
// reuse of relative places, skipping, and the check of a chosen file.

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QTemporaryDir>
#include <QTreeWidget>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CheckedUser.h"
#include "DLG/LocateFileDialogLogic.h"
#include "HostQt/ReferenceHost.h"
#include "KOR/Application.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using DLG::DependencyRelinker;
using DLG::FileRelinkerRef;
using testing::ElementsAre;

// A missing file whose relinks are written down, in order.
struct Item {
    Item(const std::wstring& inOldPath, std::vector<std::wstring>& ioLinks)
        : relinker(new DependencyRelinker(inOldPath, L"", [&ioLinks, inOldPath](const std::wstring& inNew) {
              ioLinks.push_back(inOldPath + L" -> " + inNew);
          }))
    {
    }
    FileRelinkerRef relinker;
};

class Relink : public testing::Test {
protected:
    std::wstring At(const QString& inRelative) const { return mRoot.filePath(inRelative).toStdWString(); }
    std::wstring Folder(const QString& inRelative) const { return At(inRelative); }
    void Touch(const QString& inRelative) const
    {
        QDir().mkpath(QFileInfo(mRoot.filePath(inRelative)).path());
        QFile file(mRoot.filePath(inRelative));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    std::vector<FileRelinkerRef> Items(const std::vector<std::wstring>& inOldPaths)
    {
        std::vector<FileRelinkerRef> items;
        for (const std::wstring& path : inOldPaths) {
            items.push_back(Item(path, mLinks).relinker);
        }
        return items;
    }

    // Media of a project, offline at inOldPaths; a media without video when inAudioOnly.
    static std::vector<BE::MediaRef> Media(const std::vector<std::wstring>& inOldPaths, bool inAudioOnly = true)
    {
        QJsonArray media;
        for (const std::wstring& path : inOldPaths) {
            media.append(QJsonObject{{"name", QString::fromStdWString(path)}, {"path", QString::fromStdWString(path)},
                                     {"video", !inAudioOnly}});
        }
        return HostQt::LoadProject(QJsonDocument(QJsonObject{{"media", media}}).toJson(), "/p/Media.tvx")->GetMedia();
    }

    QTemporaryDir mRoot;
    std::vector<std::wstring> mLinks;
};

TEST_F(Relink, ALinkRemembersItsFolderAndTheMoveAndFindsTheOthersThere)
{
    Touch("new/a.mov");
    Touch("new/b.wav");
    Touch("new/sub/c.wav");
    DLG::LocateLogic logic(true);
    const auto items = Items({L"/old/a.mov", L"/old/b.wav", L"/elsewhere/c.wav", L"/old/gone.wav"});
    logic.Link(items[0], At("new/a.mov"));
    EXPECT_THAT(logic.RememberedFolders(), ElementsAre(Folder("new")));
    EXPECT_EQ(logic.Moves().at(L"/old/a.mov"), At("new/a.mov"));

    logic.LocateOthers(items, 1);
    EXPECT_THAT(mLinks, ElementsAre(L"/old/a.mov -> " + At("new/a.mov"), L"/old/b.wav -> " + At("new/b.wav")));
    EXPECT_EQ(logic.Moves().at(L"/old/b.wav"), At("new/b.wav"));
}

TEST_F(Relink, TwoFilesOfTheSameNameAreLeftToTheUser)
{
    Touch("x/take.wav");
    Touch("y/take.wav");
    Touch("y/other.wav");
    DLG::LocateLogic logic(true);
    const auto items = Items({L"/old/other.wav", L"/old/take.wav"});
    logic.Link(Items({L"/old/first.wav"})[0], At("x/first.wav"));
    logic.Link(items[0], At("y/other.wav"));
    mLinks.clear();
    logic.LocateOthers(items, 1);
    EXPECT_TRUE(mLinks.empty());
    EXPECT_FALSE(logic.Moves().contains(L"/old/take.wav"));
}

TEST_F(Relink, FilesThatMovedTogetherAreFoundAtTheirRelativePlace)
{
    Touch("drive/project/title.png");
    Touch("drive/project/fonts/title.ttf");
    Touch("drive/shared/logo.png");
    DLG::LocateLogic logic(true);
    const auto items =
        Items({L"/old/project/title.png", L"/old/project/fonts/title.ttf", L"/old/shared/logo.png", L"/x/none.png"});
    logic.Link(items[0], At("drive/project/title.png"));
    logic.LocateOthers(items, 1);
    EXPECT_THAT(mLinks, ElementsAre(L"/old/project/title.png -> " + At("drive/project/title.png"),
                                    L"/old/project/fonts/title.ttf -> " + At("drive/project/fonts/title.ttf"),
                                    L"/old/shared/logo.png -> " + At("drive/shared/logo.png")))
        << "each item reaches the next from its own old place, ../shared included";
    EXPECT_THAT(logic.RememberedFolders(),
                ElementsAre(Folder("drive/project"), Folder("drive/project/fonts"), Folder("drive/shared")));
}

TEST_F(Relink, RelativePlacesAreNeverTriedFromTheStartOfTheList)
{
    Touch("drive/project/title.png");
    Touch("drive/project/fonts/title.ttf");
    DLG::LocateLogic logic(true);
    const auto items = Items({L"/old/project/title.png", L"/old/project/fonts/title.ttf"});
    logic.Link(items[0], At("drive/project/title.png"));
    mLinks.clear();
    logic.LocateOthers(items, 0);
    EXPECT_THAT(mLinks, ElementsAre(L"/old/project/title.png -> " + At("drive/project/title.png")))
        << "found by name again; the font is not reached";
}

TEST_F(Relink, ASkippedReferenceLendsNoPlaceAndSkippedItemsArePassedOver)
{
    Touch("drive/p/a.png");
    Touch("drive/p/sub/b.png");
    Touch("drive/p/c.png");
    DLG::LocateLogic logic(true);
    const auto items = Items({L"/old/p/a.png", L"/old/p/sub/b.png", L"/old/p/c.png"});
    logic.Link(items[0], At("drive/p/a.png"));
    logic.Skip(items[0]);
    logic.Skip(items[2]);
    mLinks.clear();
    logic.LocateOthers(items, 1);
    EXPECT_TRUE(mLinks.empty());

    DLG::LocateLogic withoutAutoLocate(false);
    withoutAutoLocate.Link(Items({L"/old/p/z.png"})[0], At("drive/p/z.png"));
    mLinks.clear();
    withoutAutoLocate.LocateOthers(items, 2);
    EXPECT_EQ(mLinks.size(), 1u) << "skip marks only count while the search is automatic";
}

// A linked media is online, so it never lends its old place; Skip All passes over media only.
TEST_F(Relink, MediaLendNoPlaceAndSkipAllPassesOverMediaOnly)
{
    Touch("drive/p/a.wav");
    Touch("drive/p/sub/b.png");
    DLG::LocateLogic logic(true);
    const std::vector<BE::MediaRef> media = Media({L"/old/p/a.wav", L"/old/p/m.wav"});
    const std::vector<FileRelinkerRef> items = {FileRelinkerRef(new DLG::MediaRelinker(media[0])),
                                                Items({L"/old/p/sub/b.png"})[0]};
    logic.Link(items[0], At("drive/p/a.wav"));
    logic.LocateOthers(items, 1);
    EXPECT_TRUE(mLinks.empty());

    Touch("drive/p/m.wav");
    Touch("drive/p/c.png");
    const std::vector<FileRelinkerRef> rest = {FileRelinkerRef(new DLG::MediaRelinker(media[1])),
                                               Items({L"/elsewhere/c.png"})[0]};
    logic.SkipAll();
    logic.LocateOthers(rest, 0);
    EXPECT_THAT(mLinks, ElementsAre(L"/elsewhere/c.png -> " + At("drive/p/c.png")));
    EXPECT_EQ(media[1]->GetFilePath(), L"/old/p/m.wav");
}

TEST_F(Relink, AnItemWithoutAnOldPathIsLinkedButTeachesNothing)
{
    DLG::LocateLogic logic(true);
    const auto items = Items({L""});
    logic.Link(items[0], At("new/a.mov"));
    EXPECT_THAT(mLinks, ElementsAre(L" -> " + At("new/a.mov")));
    EXPECT_TRUE(logic.RememberedFolders().empty());
    EXPECT_TRUE(logic.Moves().empty());
}

TEST_F(Relink, LinkChecksItsArguments)
{
    TestSupport::TestHost host;
    DLG::LocateLogic logic(true);
    EXPECT_THROW(logic.Link(Items({L"/old/a.mov"})[0], L""), zelcore::Error);
    EXPECT_THAT(host.Counts().contractsFailed, ElementsAre("!inFullPath.empty()"));
    EXPECT_THROW(logic.Link(nullptr, At("a.mov")), zelcore::Error);
}

TEST(RelinkDialogFlags, EditionFourOffersNeitherSkipAllNorTheSearch)
{
    struct Edition : KOR::Application {
        explicit Edition(int inType) : type(inType) {}
        std::wstring GetName() const override { return L"Edition"; }
        int GetApplicationType() const override { return type; }
        int type;
    };
    TestSupport::TestHost host;
    KOR::Application* previous = KOR::Services().application;
    for (const auto& [type, flags] : std::vector<std::pair<int, std::uint32_t>>{{0, 31}, {3, 31}, {4, 19}}) {
        Edition edition(type);
        KOR::Services().application = &edition;
        EXPECT_EQ(DLG::LocateLogic(true).GetDialogFlags(), flags) << type;
        EXPECT_EQ(DLG::LinkMediaLogic().GetDialogFlags(), 1u);
    }
    KOR::Services().application = previous;
}

TEST_F(Relink, AChosenFileIsOpenedAndAnUnusableOneReported)
{
    TestSupport::TestHost host;
    const QString wav = mRoot.filePath("tone.wav");
    TestSupport::WriteWav(wav, {HostQt::WavFormat::kInt16, 2, 48000}, std::vector<double>(9600, 0.25));
    Touch("notes.wav");
    DLG::LinkMediaLogic logic;
    const auto items = Items({L"/old/tone.wav"});

    EXPECT_TRUE(logic.ValidateAndLink(items[0], wav.toStdWString()));
    TestSupport::CheckedUser user;
    user.On(QStringLiteral("genericListErrorDialog"))
        .Inspect([](QWidget& inWindow) {
            auto* list = inWindow.findChild<QTreeWidget*>(QStringLiteral("errorListbox"));
            ASSERT_NE(list, nullptr);
            ASSERT_EQ(list->topLevelItemCount(), 1);
            EXPECT_EQ(list->topLevelItem(0)->text(0), QStringLiteral("notes.wav"));
            EXPECT_FALSE(list->topLevelItem(0)->text(1).isEmpty());
            EXPECT_EQ(list->headerItem()->text(0), QStringLiteral("File"));
        })
        .Click(QStringLiteral("okButton"));
    EXPECT_FALSE(logic.ValidateAndLink(items[0], At("notes.wav")));
    EXPECT_TRUE(mLinks.empty()) << "checking links nothing";

    // A clip with video cannot take a sound file.
    const FileRelinkerRef movie(new DLG::MediaRelinker(Media({L"/old/clip.mov"}, false)[0]));
    user.On(QStringLiteral("genericListErrorDialog")).Click(QStringLiteral("okButton"));
    EXPECT_FALSE(logic.ValidateAndLink(movie, wav.toStdWString()));
}

} // namespace
