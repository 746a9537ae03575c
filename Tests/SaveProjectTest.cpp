// Saving a project: the error messages, the contracts, and real saves of the host's project.

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BE/ProjectSettings.h"
#include "DLG/Module.h"
#include "DLG/SaveProject.h"
#include "DLG/StringIDs.h"
#include "HostQt/ReferenceHost.h"
#include "KOR/Timecode.h"
#include "CheckedUser.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using TestSupport::CheckedUser;
using testing::ElementsAre;
using testing::IsEmpty;

struct MessageCase {
    long code;
    unsigned int text;
};

// Host codes reach the module sign-extended from 32 bits, or as they are written in hex.
TEST(SaveProjectErrorDialog, ChoosesTheMessageByTheCodeAndAppendsTheHint)
{
    TestSupport::TestHost host;
    const MessageCase cases[] = {
        {static_cast<std::int32_t>(0xA00F0003), DLG::kStr_SaveErrorPathNotFound},
        {0xA00F0003L, DLG::kStr_SaveErrorPathNotFound},
        {static_cast<std::int32_t>(0xA00F0002), DLG::kStr_SaveErrorAccessDenied},
        {static_cast<std::int32_t>(0xA00C00CE), DLG::kStr_SaveErrorDiskFull},
        {0xA00F0005L, DLG::kStr_SaveErrorDiskFull},
        {static_cast<std::int32_t>(0xA00C00CD), DLG::kStr_SaveErrorFileReadOnly},
        {static_cast<std::int32_t>(0xA00F0004), DLG::kStr_SaveErrorOther},
        {0x100000000L + static_cast<std::int32_t>(0xA00F0003), DLG::kStr_SaveErrorPathNotFound},
        {-1, DLG::kStr_SaveErrorOther},
    };
    for (const MessageCase& c : cases) {
        for (const bool hint : {false, true}) {
            CheckedUser user;
            user.On(QStringLiteral("MessageBox")).Press(Qt::Key_Return);
            DLG::SaveProjectErrorDialog(c.code, hint);
            ASSERT_EQ(user.MessageBoxes().size(), 1u);
            const std::wstring expected = DLG::LoadString(c.text) + (hint ? DLG::LoadString(DLG::kStr_SaveErrorHint) : L"");
            EXPECT_EQ(user.MessageBoxes()[0].text.toStdWString(), expected) << std::hex << c.code << " hint " << hint;
            EXPECT_EQ(user.MessageBoxes()[0].caption.toStdWString(), DLG::LoadString(DLG::kStr_SaveErrorCaption));
        }
    }
    const TestSupport::HostCounts counts = host.Counts();
    ASSERT_EQ(counts.messageBoxes.size(), 2 * std::size(cases));
    EXPECT_EQ(counts.messageBoxes[0].buttons, 1u);
    EXPECT_EQ(counts.messageBoxes[0].icon, 0x80u);
    for (unsigned int id = DLG::kStr_SaveErrorCaption; id <= DLG::kStr_SaveErrorHint; ++id) {
        EXPECT_EQ(DLG::LoadString(id).find(L"<string"), std::wstring::npos) << id << " has no text";
    }
}

// A project whose save answers a fixed code.
class Answering : public KOR::RefCounted<BE::IProject> {
public:
    explicit Answering(long inAnswer) : mAnswer(inAnswer) {}
    std::wstring GetName() const override { return L"Answering"; }
    std::wstring GetFilePath() const override { return L"/tmp/Answering.tvx"; }
    KOR::InterfaceRef<BE::IProjectSettings> GetProjectSettings() const override { return {}; }
    std::vector<BE::AudioClipRef> GetAudioClips() const override { return {}; }
    long SaveToFile(const std::wstring& inFilePath, bool inAsCopy) override
    {
        mSaves.emplace_back(inFilePath, inAsCopy);
        return mAnswer;
    }
    long mAnswer;
    std::vector<std::pair<std::wstring, bool>> mSaves;
};

TEST(SaveProject, ANullProjectOrAnEmptyPathBreaksTheContract)
{
    TestSupport::TestHost host;
    KOR::InterfaceRef<Answering> project(new Answering(0));
    EXPECT_THROW(DLG::SaveProject(nullptr, L"/tmp/x.tvx", true, false), zelcore::Error);
    EXPECT_THROW(DLG::SaveProject(project, L"", true, false), zelcore::Error);
    EXPECT_THAT(host.Counts().contractsFailed, ElementsAre("inProject != NULL", "!inFilePath.empty()"));
    EXPECT_TRUE(project->mSaves.empty());
}

TEST(SaveProject, ACancellationIsNeverReportedAndCodesComeBackAs32BitValues)
{
    TestSupport::TestHost host;
    KOR::InterfaceRef<Answering> cancelled(new Answering(0xA00F0007L));
    EXPECT_EQ(DLG::SaveProject(cancelled, L"/tmp/a.tvx", true, false), BE::kSaveError_Cancelled);
    EXPECT_THAT(cancelled->mSaves, ElementsAre(std::pair<std::wstring, bool>(L"/tmp/a.tvx", false)));
    KOR::InterfaceRef<Answering> failed(new Answering(0xA00F0002L));
    EXPECT_EQ(DLG::SaveProject(failed, L"/tmp/b.tvx", false, true), BE::kSaveError_AccessDenied);
    EXPECT_THAT(failed->mSaves, ElementsAre(std::pair<std::wstring, bool>(L"/tmp/b.tvx", true)));
    EXPECT_THAT(host.Counts().messageBoxes, IsEmpty()) << "the caller reports errors itself";
}

// The host's own project, read from the demo's sample file, saved in a scratch folder.
class SaveHostProject : public testing::Test {
protected:
    void SetUp() override
    {
        QFile sample(QStringLiteral(TARVIX_SOURCE_DIR "/Apps/SampleProject.json"));
        ASSERT_TRUE(sample.open(QIODevice::ReadOnly));
        mSample = sample.readAll();
        mProject = HostQt::LoadProject(mSample, QStringLiteral("/media/projects/Harbour.tvx"));
    }

    QString Path(const QString& inName) const { return QDir(mHost.ScratchDirectory()).filePath(inName); }

    long Save(const QString& inPath, bool inReport = true, bool inAsCopy = false)
    {
        return DLG::SaveProject(mProject, inPath.toStdWString(), inReport, inAsCopy);
    }

    static QByteArray Contents(const QString& inPath)
    {
        QFile file(inPath);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::wstring ShownError() const
    {
        const auto boxes = mHost.Counts().messageBoxes;
        return boxes.empty() ? std::wstring() : boxes.back().text;
    }

    TestSupport::TestHost mHost;
    QByteArray mSample;
    BE::ProjectRef mProject;
};

TEST_F(SaveHostProject, ASavedProjectReadsBackAsItWas)
{
    mProject->GetProjectSettings()->SetTimeDisplayFormat(KOR::kTimecodeFormat_SMPTE25);
    const QString path = Path(QStringLiteral("Harbour saved.tvx"));
    EXPECT_EQ(Save(path), BE::kSave_OK);
    EXPECT_EQ(mProject->GetFilePath(), path.toStdWString()) << "the project is now the saved one";
    EXPECT_THAT(mHost.Counts().messageBoxes, IsEmpty());

    const BE::ProjectRef reread = HostQt::LoadProject(Contents(path), path);
    EXPECT_EQ(reread->GetName(), L"Harbour Documentary");
    EXPECT_EQ(reread->GetProjectSettings()->GetTimeDisplayFormat(), KOR::kTimecodeFormat_SMPTE25);
    EXPECT_EQ(reread->GetProjectSettings()->GetVideoSettings()->GetFrameRate(), KOR::FrameRate(30000, 1001));
    ASSERT_EQ(reread->GetAudioClips().size(), mProject->GetAudioClips().size());
    for (std::size_t i = 0; i < reread->GetAudioClips().size(); ++i) {
        EXPECT_EQ(reread->GetAudioClips()[i]->GetName(), mProject->GetAudioClips()[i]->GetName());
        EXPECT_EQ(reread->GetAudioClips()[i]->GetPeakAmplitude(), mProject->GetAudioClips()[i]->GetPeakAmplitude());
    }
    const QJsonObject before = QJsonDocument::fromJson(mSample).object();
    const QJsonObject after = QJsonDocument::fromJson(Contents(path)).object();
    EXPECT_EQ(after.value(QStringLiteral("sequences")), before.value(QStringLiteral("sequences")))
        << "what the model does not hold is kept";
    EXPECT_THAT(QDir(mHost.ScratchDirectory()).entryList(QDir::Files), ElementsAre(QStringLiteral("Harbour saved.tvx")))
        << "no temporary file is left";
}

TEST_F(SaveHostProject, ACopyLeavesTheProjectAtItsOwnPath)
{
    const QString path = Path(QStringLiteral("Copy.tvx"));
    EXPECT_EQ(Save(path, true, true), BE::kSave_OK);
    EXPECT_TRUE(QFileInfo::exists(path));
    EXPECT_EQ(mProject->GetFilePath(), L"/media/projects/Harbour.tvx");
}

struct FailedSave {
    const char* path; // in the scratch folder
    bool asCopy;
    long code;
    unsigned int message;
};

// Each failure is reported, with the hint unless the save was a copy, and leaves the project at its
// own path. Root may write in a read-only folder: that row says nothing then.
TEST_F(SaveHostProject, AFailureIsReportedAndLeavesTheProjectWhereItWas)
{
    const QString locked = Path(QStringLiteral("Locked"));
    ASSERT_TRUE(QDir().mkdir(locked) && QDir().mkdir(Path(QStringLiteral("Taken.tvx"))));
    QFile::setPermissions(locked, QFile::ReadOwner | QFile::ExeOwner);
    for (const FailedSave& c : {FailedSave{"No such folder/Harbour.tvx", false, BE::kSaveError_PathNotFound,
                                           DLG::kStr_SaveErrorPathNotFound},
                                FailedSave{"Taken.tvx", true, BE::kSaveError_Failed, DLG::kStr_SaveErrorOther},
                                FailedSave{"Locked/Harbour.tvx", false, BE::kSaveError_AccessDenied,
                                           DLG::kStr_SaveErrorAccessDenied}}) {
        if (c.code == BE::kSaveError_AccessDenied && geteuid() == 0) {
            continue;
        }
        CheckedUser user;
        user.On(QStringLiteral("MessageBox")).Press(Qt::Key_Return);
        EXPECT_EQ(Save(Path(QString::fromUtf8(c.path)), true, c.asCopy), c.code) << c.path;
        const std::wstring hint = c.asCopy ? std::wstring() : DLG::LoadString(DLG::kStr_SaveErrorHint);
        EXPECT_EQ(ShownError(), DLG::LoadString(c.message) + hint) << c.path;
        EXPECT_EQ(mProject->GetFilePath(), L"/media/projects/Harbour.tvx");
    }
    QFile::setPermissions(locked, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_TRUE(QFileInfo(Path(QStringLiteral("Taken.tvx"))).isDir());
    const std::size_t shown = mHost.Counts().messageBoxes.size();
    EXPECT_EQ(Save(Path(QStringLiteral("No such folder/Harbour.tvx")), false), BE::kSaveError_PathNotFound);
    EXPECT_EQ(mHost.Counts().messageBoxes.size(), shown) << "not reported when the caller reports";
}

// Replacing a project keeps what the file was: its permissions, its owner and group, and the
// file behind a link; a name in any script is saved under that name.
TEST_F(SaveHostProject, ReplacingAFileKeepsItsModeOwnerAndLink)
{
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root may give a file to another user";
    }
    const QString path = Path(QStringLiteral("Hafen Ünïcødé 港口.tvx"));
    ASSERT_EQ(Save(path, false, true), BE::kSave_OK);
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
    const QByteArray native = QFile::encodeName(path);
    ASSERT_EQ(chown(native.constData(), 4321, 8765), 0);
    const QString link = Path(QStringLiteral("Current.tvx"));
    ASSERT_TRUE(QFile::link(path, link));

    mProject->GetProjectSettings()->SetTimeDisplayFormat(KOR::kTimecodeFormat_SMPTE25);
    EXPECT_EQ(Save(link, false, true), BE::kSave_OK);
    struct stat saved{};
    ASSERT_EQ(stat(native.constData(), &saved), 0);
    EXPECT_EQ(saved.st_uid, 4321u);
    EXPECT_EQ(saved.st_gid, 8765u);
    EXPECT_EQ(saved.st_mode & 07777, 0640u);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(HostQt::LoadProject(Contents(path), path)->GetProjectSettings()->GetTimeDisplayFormat(),
              KOR::kTimecodeFormat_SMPTE25);
}

// The process may write no more than a few bytes to any file: the write fails part way, as on a
// failing disk, whoever runs the test.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t inBytes)
    {
        mOldHandler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &mOld);
        rlimit limit = mOld;
        limit.rlim_cur = inBytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &mOld);
        std::signal(SIGXFSZ, mOldHandler);
    }

private:
    rlimit mOld{};
    void (*mOldHandler)(int);
};

TEST_F(SaveHostProject, AFailedWriteLeavesThePreviousFileIntact)
{
    const QString path = Path(QStringLiteral("Harbour.tvx"));
    ASSERT_EQ(Save(path), BE::kSave_OK);
    const QByteArray previous = Contents(path);
    mProject->GetProjectSettings()->SetTimeDisplayFormat(KOR::kTimecodeFormat_SMPTE25);

    CheckedUser user;
    user.On(QStringLiteral("MessageBox")).Press(Qt::Key_Return);
    long result = 0;
    {
        const FileSizeLimit limit(64);
        result = DLG::SaveProject(mProject, path.toStdWString(), false, false);
    }
    EXPECT_EQ(result, BE::kSaveError_WriteFault);
    DLG::SaveProjectErrorDialog(result, true);
    EXPECT_EQ(ShownError(), DLG::LoadString(DLG::kStr_SaveErrorDiskFull) + DLG::LoadString(DLG::kStr_SaveErrorHint));
    EXPECT_EQ(Contents(path), previous);
    EXPECT_THAT(QDir(mHost.ScratchDirectory()).entryList(QDir::Files), ElementsAre(QStringLiteral("Harbour.tvx")));
}

} // namespace
