// The project manager: its options and their preferences, the destination's validation, the run's
// sequence around the host's operation, and the dialog on its script.

#include <QAbstractButton>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QLabel>

#include <sstream>
#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BE/Backend.h"
#include "BE/ProjectSettings.h"
#include "DLG/Module.h"
#include "DLG/ProjectManagerDialog.h"
#include "DLG/StringIDs.h"
#include "KOR/DiskUtils.h"
#include "KOR/Paths.h"
#include "ML/ConformUtils.h"
#include "CheckedUser.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using namespace DLG::ProjectManager;
using TestSupport::CheckedUser;
using TL::ProjectManager::Options;
using testing::ElementsAre;
using testing::IsEmpty;

class VideoSettings : public KOR::RefCounted<BE::IVideoSettings> {
public:
    explicit VideoSettings(KOR::FrameRate inRate) : mRate(inRate) {}
    KOR::FrameRate GetFrameRate() const override { return mRate; }
    void SetFrameRate(KOR::FrameRate inRate) override { mRate = inRate; }

private:
    KOR::FrameRate mRate;
};

class Settings : public KOR::RefCounted<BE::IProjectSettings> {
public:
    explicit Settings(KOR::FrameRate inRate) : mVideo(new VideoSettings(inRate)) {}
    unsigned int GetTimeDisplayFormat() const override { return 0; }
    void SetTimeDisplayFormat(unsigned int) override {}
    unsigned int GetAudioTimeDisplayFormat() const override { return 0; }
    void SetAudioTimeDisplayFormat(unsigned int) override {}
    KOR::InterfaceRef<BE::IVideoSettings> GetVideoSettings() const override { return mVideo; }
    KOR::InterfaceRef<BE::IAudioSettings> GetAudioSettings() const override { return {}; }
    boost::signals2::connection ConnectSettingsChanged(const boost::function<void()>&) override { return {}; }

private:
    KOR::InterfaceRef<BE::IVideoSettings> mVideo;
};

// A project at a frame rate (none: no settings at all), saved or not, whose file is inFilePath.
class Project : public KOR::RefCounted<BE::IProject> {
public:
    Project(std::optional<KOR::FrameRate> inRate, std::wstring inFilePath, bool inUnsaved = false)
        : mFilePath(std::move(inFilePath)), mUnsaved(inUnsaved)
    {
        if (inRate) {
            mSettings = KOR::InterfaceRef<BE::IProjectSettings>(new Settings(*inRate));
        }
    }
    std::wstring GetName() const override { return L"Harbour"; }
    std::wstring GetFilePath() const override { return mFilePath; }
    KOR::InterfaceRef<BE::IProjectSettings> GetProjectSettings() const override { return mSettings; }
    std::vector<BE::AudioClipRef> GetAudioClips() const override { return {}; }
    bool HasUnsavedChanges() const override { return mUnsaved; }
    long SaveToFile(const std::wstring&, bool) override { return 0; }

private:
    std::wstring mFilePath;
    bool mUnsaved;
    KOR::InterfaceRef<BE::IProjectSettings> mSettings;
};

class Operation : public KOR::RefCounted<TL::ProjectManager::IProjectManagerOperation> {
public:
    std::wstring GetMessageStationName() const override { return L"test.projectManager"; }
    void RequestCancel() override { mCancelRequested = true; }
    bool IsCancelRequested() const override { return mCancelRequested; }
    bool Start() override { return mStartable; }
    long GetResult() const override { return mResult; }
    std::uint64_t GetOriginalSize() const override { return mOriginalSize; }
    std::uint64_t GetResultingSize() const override { return mResultingSize; }
    std::wstring GetFailureText() const override { return mFailureText; }
    std::wstring GetResultProjectPath() const override { return L""; }

    bool mStartable = true;
    bool mCancelRequested = false;
    long mResult = 0;
    std::uint64_t mOriginalSize = 0;
    std::uint64_t mResultingSize = 0;
    std::wstring mFailureText;
};

std::string Utf8(const std::wstring& inText) { return QString::fromStdWString(inText).toStdString(); }

// A progress title as the events name it: by its string ID.
std::string TitleEvent(const std::wstring& inTitle)
{
    for (const unsigned int id : {DLG::kStr_ProjectManagerRunningTitle, DLG::kStr_ProjectManagerCalculatingTitle}) {
        if (inTitle == DLG::LoadString(id)) {
            return "progress " + std::to_string(id);
        }
    }
    return "progress \"" + Utf8(inTitle) + "\"";
}

struct SeenBox {
    std::wstring text;
    std::wstring caption;
    unsigned long buttons;
    unsigned long icon;
};

// The host as the project manager sees it, recording each call in order. Pausing goes to the
// reference host's own workers, so that their state can be checked while the operation runs.
struct Recorder {
    std::vector<std::string> events;
    std::vector<SeenBox> boxes;
    std::vector<Options> created;
    long answer = kSaveAnswer;
    long saveResult = 0;
    bool conformed = true;
    bool progressShown = true; // false: no progress dialog could follow the operation
    KOR::InterfaceRef<Operation> operation{new Operation};
    std::function<void()> whileRunning = [] {};

    HostCalls Calls()
    {
        HostCalls calls;
        calls.createOperation = [this](const BE::ProjectRef&, const Options& inOptions, bool inCalculateOnly) {
            events.push_back(inCalculateOnly ? "calculate" : "create");
            created.push_back(inOptions);
            return TL::ProjectManager::ProjectManagerOperationRef(operation);
        };
        calls.conform = [this](const BE::ProjectRef&) {
            events.push_back("conform");
            return conformed;
        };
        calls.save = [this](const BE::ProjectRef&) {
            events.push_back("save");
            return saveResult;
        };
        calls.showSaveError = [this](long inError) { events.push_back("save error " + Hex(inError)); };
        calls.messageBox = [this](const std::wstring& inText, const std::wstring& inCaption, unsigned long inButtons,
                                  unsigned long inIcon, long) {
            events.push_back("message box");
            boxes.push_back({inText, inCaption, inButtons, inIcon});
            return answer;
        };
        calls.runProgress = [this](const std::wstring& inTitle, const KOR::InterfaceRef<KOR::IBatchOperation>&) {
            events.push_back(TitleEvent(inTitle) + (ML::AreWorkerThreadsPaused() ? ", paused" : ""));
            whileRunning();
            return progressShown && operation->mResult != TL::ProjectManager::kResult_Cancelled;
        };
        calls.pauseWorkerThreads = [this](bool inPause) {
            events.push_back(inPause ? "pause" : "resume");
            ML::PauseWorkerThreads(inPause);
        };
        return calls;
    }

    static std::string Hex(long inCode)
    {
        std::ostringstream text;
        text << std::hex << static_cast<std::uint32_t>(inCode);
        return text.str();
    }
};

BE::ProjectRef SavedProject(const std::wstring& inFilePath = L"/nowhere/Harbour.tvx")
{
    return BE::ProjectRef(new Project(KOR::kFrameRate_NTSC2997, inFilePath));
}

TEST(ProjectManagerDefaults, HandleFramesAreTheFrameRateRoundedHalfAwayFromZero)
{
    TestSupport::TestHost host;
    struct Case {
        std::optional<KOR::FrameRate> rate;
        int frames;
    };
    for (const Case& c : {Case{KOR::kFrameRate_NTSC2997, 30}, Case{KOR::kFrameRate_Film23976, 24},
                          Case{KOR::kFrameRate_PAL25, 25}, Case{KOR::kFrameRate_NTSC5994, 60},
                          Case{KOR::FrameRate(119, 2), 60}, Case{KOR::FrameRate(49, 2), 25},
                          Case{KOR::kFrameRate_Zero, 30}, Case{std::nullopt, 30}}) {
        Recorder recorder;
        ProjectManagerLogic logic(BE::ProjectRef(new Project(c.rate, L"/nowhere/Harbour.tvx")), recorder.Calls());
        EXPECT_EQ(logic.Options().handleFrames, c.frames)
            << (c.rate ? c.rate->Numerator() : -1) << "/" << (c.rate ? c.rate->Denominator() : -1);
    }
}

TEST(ProjectManagerDefaults, EveryOptionIsOnAndTheDestinationIsTheProjectsFolder)
{
    TestSupport::TestHost host;
    Recorder recorder;
    const ProjectManagerLogic logic(SavedProject(L"/media/projects/../edits/Harbour.tvx"), recorder.Calls());
    const Options& o = logic.Options();
    EXPECT_TRUE(o.createTrimmedProject && o.keepOnline && o.excludeUnusedClips && o.includeHandles &&
                o.includePreviews && o.includeConformedAudio && o.includeProxies && o.renameMediaToClipNames);
    EXPECT_EQ(o.destinationFolder, L"/media/edits");
    EXPECT_THAT(recorder.events, IsEmpty()) << "opening asks nothing of the operation";
}

TEST(ProjectManagerPreferences, StoredValuesReplaceTheDefaultsAndAreWrittenBack)
{
    TestSupport::TestHost host;
    BE::Backend& prefs = *BE::GetBackend();
    const std::pair<const wchar_t*, bool Options::*> flags[] = {
        {BE::kPrefsProjectManagerCreateTrimmed, &Options::createTrimmedProject},
        {BE::kPrefsProjectManagerOnline, &Options::keepOnline},
        {BE::kPrefsProjectManagerExcludeUnused, &Options::excludeUnusedClips},
        {BE::kPrefsProjectManagerIncludeHandles, &Options::includeHandles},
        {BE::kPrefsProjectManagerIncludePreviews, &Options::includePreviews},
        {BE::kPrefsProjectManagerIncludeConformedAudio, &Options::includeConformedAudio},
        {BE::kPrefsProjectManagerIncludeProxies, &Options::includeProxies},
        {BE::kPrefsProjectManagerRenameMedia, &Options::renameMediaToClipNames},
    };
    for (const auto& [key, field] : flags) {
        prefs.SetBoolProperty(key, false);
    }
    prefs.SetIntProperty(BE::kPrefsProjectManagerHandleAmount, 12);
    prefs.SetStringProperty(BE::kPrefsProjectManagerDestinationPath, L"/stored/folder");

    Recorder recorder;
    ProjectManagerLogic logic(SavedProject(), recorder.Calls());
    for (const auto& [key, field] : flags) {
        EXPECT_FALSE(logic.Options().*field) << Utf8(key);
        logic.Options().*field = true;
    }
    EXPECT_EQ(logic.Options().handleFrames, 12);
    EXPECT_EQ(logic.Options().destinationFolder, L"/stored/folder");

    logic.Options().handleFrames = 48;
    logic.Options().destinationFolder = L"/chosen/folder";
    logic.WritePreferences();
    for (const auto& [key, field] : flags) {
        EXPECT_TRUE(prefs.GetBoolProperty(key, false)) << Utf8(key);
    }
    EXPECT_EQ(prefs.GetIntProperty(BE::kPrefsProjectManagerHandleAmount, 0), 48);
    EXPECT_EQ(prefs.GetStringProperty(BE::kPrefsProjectManagerDestinationPath, L""), L"/chosen/folder");
}

// The destination as it was set, what is stored, and where the documents are.
class ProjectManagerDestination : public testing::Test {
protected:
    std::wstring Folder(const QString& inName) const
    {
        QDir(mHost.ScratchDirectory()).mkpath(inName);
        return QDir(mHost.ScratchDirectory()).filePath(inName).toStdWString();
    }
    std::wstring File(const QString& inName) const
    {
        QFile file(QDir(mHost.ScratchDirectory()).filePath(inName));
        file.open(QIODevice::WriteOnly);
        return file.fileName().toStdWString();
    }

    TestSupport::TestHost mHost;
};

TEST_F(ProjectManagerDestination, AnUnusableDestinationFallsBackOrIsClearedWithItsCode)
{
    // Not even the superuser may create a file in /proc.
    const std::wstring unwriteable = L"/proc";
    struct Case {
        const char* name;
        std::wstring destination;
        std::optional<std::wstring> stored;
        std::wstring documents;
        long code;
        std::wstring result;
    };
    const std::wstring documents = Folder(QStringLiteral("Documents"));
    const std::wstring chosen = Folder(QStringLiteral("Chosen"));
    const std::wstring file = File(QStringLiteral("Harbour.tvx"));
    const std::wstring missing = Folder(QStringLiteral("Gone")) + L"/deeper";
    const Case cases[] = {
        {"a writeable folder is kept", chosen, file, documents, 0, chosen},
        {"a file with a file stored", file, file, documents, kError_DestinationNotAFolder, L""},
        {"a file with a folder stored", file, chosen + L"/./", documents, 0, chosen},
        {"a missing folder with nothing stored", missing, std::nullopt, documents, 0, documents},
        {"an unwriteable folder stored", missing, unwriteable, documents, kError_DestinationNotWriteable, L""},
        {"nothing anywhere", L"", std::nullopt, L"", kError_DestinationNotWriteable, L""},
    };
    for (const Case& c : cases) {
        BE::GetBackend()->SetStringProperty(BE::kPrefsProjectManagerDestinationPath, c.stored.value_or(L""));
        KOR::DirectoryRegistry::RegisterDirectory(L"userdocuments", c.documents);
        Recorder recorder;
        ProjectManagerLogic logic(SavedProject(), recorder.Calls());
        logic.Options().destinationFolder = c.destination;
        EXPECT_EQ(logic.ValidateDestination(), c.code) << c.name;
        EXPECT_EQ(logic.Options().destinationFolder, c.result) << c.name;
    }
}

TEST_F(ProjectManagerDestination, WithNoStoredDestinationTheDocumentsFolderIsProposed)
{
    const std::wstring documents = Folder(QStringLiteral("My Documents"));
    KOR::DirectoryRegistry::RegisterDirectory(L"userdocuments", documents);
    Recorder recorder;
    // The project's own folder does not exist here.
    ProjectManagerLogic logic(SavedProject(L"/nowhere/Harbour.tvx"), recorder.Calls());
    EXPECT_EQ(logic.ValidateDestination(), 0);
    EXPECT_EQ(logic.Options().destinationFolder, documents);
    EXPECT_EQ(logic.FreeSpaceText(), KOR::DiskUtils::MakeDiskSpaceString(KOR::DiskUtils::GetFreeSpace(documents)));
}

struct RunCase {
    const char* name;
    bool unsaved;
    long answer;
    long saveResult;
    bool includeConformed;
    bool conformed;
    std::vector<std::string> events;
    std::optional<long> result;
};

class ProjectManagerRun : public testing::TestWithParam<RunCase> {};

TEST_P(ProjectManagerRun, GoesOnOnlyAfterASaveAndAConformAndRunsWithTheWorkersPaused)
{
    TestSupport::TestHost host;
    const RunCase& c = GetParam();
    Recorder recorder;
    recorder.answer = c.answer;
    recorder.saveResult = c.saveResult;
    recorder.conformed = c.conformed;
    ProjectManagerLogic logic(BE::ProjectRef(new Project(KOR::kFrameRate_PAL25, L"/nowhere/H.tvx", c.unsaved)),
                              recorder.Calls());
    logic.Options().includeConformedAudio = c.includeConformed;
    EXPECT_EQ(logic.Run(), c.result);
    EXPECT_EQ(recorder.events, c.events);
    EXPECT_FALSE(ML::AreWorkerThreadsPaused());
    if (c.unsaved) {
        ASSERT_FALSE(recorder.boxes.empty());
        EXPECT_EQ(recorder.boxes[0].text, DLG::LoadString(DLG::kStr_ProjectManagerSaveFirst));
        EXPECT_EQ(recorder.boxes[0].caption, DLG::LoadString(DLG::kStr_ProjectManagerSaveCaption));
        EXPECT_EQ(recorder.boxes[0].buttons, kSaveQuestionButtons);
        EXPECT_EQ(recorder.boxes[0].icon, kSaveQuestionIcon);
    }
    const bool written = BE::GetBackend()->GetIntProperty(BE::kPrefsProjectManagerHandleAmount, 0) == 25;
    EXPECT_EQ(written, c.result.has_value() || !c.conformed) << "the options are stored once the save is done";
}

const std::string kRunning = "progress 11214, paused";
const std::string kCalculating = "progress 11215";

INSTANTIATE_TEST_SUITE_P(
    Sequences, ProjectManagerRun,
    testing::Values(
        RunCase{"SavedAndConformed", false, 0, 0, true, true, {"conform", "pause", "create", kRunning, "resume"}, 0},
        RunCase{"WithoutConformedAudioNoConform", false, 0, 0, false, false,
                {"pause", "create", kRunning, "resume"}, 0},
        RunCase{"ConformDeclinedPausesNothing", false, 0, 0, true, false, {"conform"}, std::nullopt},
        RunCase{"UnsavedAndSaved", true, kSaveAnswer, 0, false, true,
                {"message box", "save", "pause", "create", kRunning, "resume"}, 0},
        RunCase{"SaveDeclinedRunsNothing", true, UIF::kMessageBoxResult_No, 0, true, true, {"message box"},
                std::nullopt},
        RunCase{"SaveQuestionClosedRunsNothing", true, UIF::kMessageBoxResult_Cancel, 0, true, true, {"message box"},
                std::nullopt},
        RunCase{"SaveFailedShowsItsErrorAndStops", true, kSaveAnswer, BE::kSaveError_AccessDenied, true, true,
                {"message box", "save", "save error a00f0002"}, std::nullopt},
        RunCase{"SaveFailedAsAWideCodeStops", true, kSaveAnswer, 0xA00C00CEL, true, true,
                {"message box", "save", "save error a00c00ce"}, std::nullopt},
        RunCase{"SaveCancelledStopsSilently", true, kSaveAnswer, BE::kSaveError_Cancelled, true, true,
                {"message box", "save"}, std::nullopt}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

// Every way the operation ends: the workers are let go, and only failures are told.
TEST(ProjectManagerRunOutcome, WorkersAreResumedAfterSuccessFailureCancelAndAnException)
{
    TestSupport::TestHost host;
    struct Case {
        const char* name;
        long result;
        bool startable;
        bool throws;
        std::size_t boxes;
        bool progressShown = true;
        long expected = 1; // 1: the operation's own result
    };
    for (const Case& c : {Case{"success", 0, true, false, 0},
                          Case{"failure", TL::ProjectManager::kError_DiskFull, true, false, 1},
                          Case{"cancel", TL::ProjectManager::kResult_Cancelled, true, false, 0},
                          Case{"not queued", 0, false, false, 1}, Case{"exception", 0, true, true, 0},
                          Case{"not followed", 0, true, false, 0, false, TL::ProjectManager::kResult_Cancelled}}) {
        Recorder recorder;
        recorder.progressShown = c.progressShown;
        recorder.operation->mResult = c.result;
        recorder.operation->mStartable = c.startable;
        if (c.throws) {
            recorder.whileRunning = [] { throw std::runtime_error("the media layer failed"); };
        }
        ProjectManagerLogic logic(SavedProject(), recorder.Calls());
        logic.Options().includeConformedAudio = false;
        if (c.throws) {
            EXPECT_THROW(logic.Run(), std::runtime_error) << c.name;
        } else {
            EXPECT_EQ(logic.Run(), c.expected != 1 ? c.expected : c.startable ? c.result : kError_NotStarted) << c.name;
        }
        EXPECT_EQ(recorder.events.front(), "pause") << c.name;
        EXPECT_EQ(recorder.events.back(), "resume") << c.name;
        EXPECT_FALSE(ML::AreWorkerThreadsPaused()) << c.name;
        EXPECT_EQ(recorder.boxes.size(), c.boxes) << c.name;
    }
}

TEST(ProjectManagerRunOutcome, AFailureIsToldByItsCodeWithTheFailingItemInPlaceOfTheFirstPercentS)
{
    TestSupport::TestHost host;
    struct Case {
        long code;
        unsigned int text;
    };
    const Case cases[] = {
        {static_cast<std::int32_t>(0xA00F0003), DLG::kStr_ProjectManagerFileNotFound},
        {static_cast<std::int32_t>(0xA00F0004), DLG::kStr_ProjectManagerFileNotFound},
        {static_cast<std::int32_t>(0xA011000E), DLG::kStr_ProjectManagerNothingUsed},
        {static_cast<std::int32_t>(0xA00F0002), DLG::kStr_ProjectManagerCannotWrite},
        {static_cast<std::int32_t>(0xA00F0005), DLG::kStr_ProjectManagerCannotWrite},
        {static_cast<std::int32_t>(0xA00701F5), DLG::kStr_ProjectManagerCannotWrite},
        {static_cast<std::int32_t>(0xA00701FB), DLG::kStr_ProjectManagerCannotWrite},
        {static_cast<std::int32_t>(0xA0070070), DLG::kStr_ProjectManagerCannotWrite},
        {static_cast<std::int32_t>(0xA00701F6), DLG::kStr_ProjectManagerNoSpaceOrExists},
        {static_cast<std::int32_t>(0xA00F0006), DLG::kStr_ProjectManagerNoSpaceOrExists},
        {0xA00F0006L, DLG::kStr_ProjectManagerNoSpaceOrExists},
        {TL::ProjectManager::kError_TrimFailed, DLG::kStr_ProjectManagerFailed},
        {-1, DLG::kStr_ProjectManagerFailed},
    };
    const std::wstring item = L"/media/footage/Harbour at dawn.mov";
    for (const Case& c : cases) {
        Recorder recorder;
        recorder.operation->mResult = c.code;
        recorder.operation->mFailureText = item;
        ProjectManagerLogic logic(SavedProject(), recorder.Calls());
        logic.Options().includeConformedAudio = false;
        logic.Run();
        ASSERT_EQ(recorder.boxes.size(), 1u) << std::hex << c.code;
        std::wstring expected = DLG::LoadString(c.text);
        if (const std::size_t at = expected.find(L"%s"); at != std::wstring::npos) {
            expected.replace(at, 2, item);
        }
        EXPECT_EQ(recorder.boxes[0].text, expected) << std::hex << c.code;
        EXPECT_EQ(recorder.boxes[0].caption, DLG::LoadString(DLG::kStr_ProjectManagerFailedCaption));
        EXPECT_EQ(recorder.boxes[0].buttons, kFailureButtons);
        EXPECT_EQ(recorder.boxes[0].icon, kFailureIcon);
    }
}

TEST(ProjectManagerRunOutcome, OnlyTheFirstPercentSIsReplacedAndATextWithoutOneStaysAsItIs)
{
    EXPECT_EQ(SubstituteFailureText(L"Could not write %s; %s.", L"a.mov"), L"Could not write a.mov; %s.");
    EXPECT_EQ(SubstituteFailureText(L"Nothing is used.", L"a.mov"), L"Nothing is used.");
    EXPECT_EQ(SubstituteFailureText(L"%s", L""), L"");
    TestSupport::TestHost host;
    for (const unsigned int id : {DLG::kStr_ProjectManagerFailed, DLG::kStr_ProjectManagerNothingUsed}) {
        EXPECT_EQ(DLG::LoadString(id).find(L"%s"), std::wstring::npos) << id;
    }
    for (const unsigned int id : {DLG::kStr_ProjectManagerFileNotFound, DLG::kStr_ProjectManagerCannotWrite,
                                  DLG::kStr_ProjectManagerNoSpaceOrExists}) {
        EXPECT_NE(DLG::LoadString(id).find(L"%s"), std::wstring::npos) << id;
    }
}

TEST(ProjectManagerCalculate, ShowsBothSizesTheFailureTextOrNothingWhenCancelled)
{
    TestSupport::TestHost host;
    struct Case {
        long result;
        std::optional<std::wstring> original;
        std::optional<std::wstring> resulting;
    };
    const std::uint64_t original = 1536ULL << 20;
    const std::uint64_t resulting = 300ULL << 20;
    for (const Case& c :
         {Case{0, KOR::DiskUtils::MakeDiskSpaceString(original), KOR::DiskUtils::MakeDiskSpaceString(resulting)},
          Case{TL::ProjectManager::kError_SourceMissing, std::nullopt,
               DLG::LoadString(DLG::kStr_ProjectManagerCalculateFailed)},
          Case{TL::ProjectManager::kResult_Cancelled, std::nullopt, std::nullopt}}) {
        Recorder recorder;
        recorder.operation->mResult = c.result;
        recorder.operation->mOriginalSize = original;
        recorder.operation->mResultingSize = resulting;
        ProjectManagerLogic logic(SavedProject(), recorder.Calls());
        logic.Options().handleFrames = 7;
        const CalculatedSizes sizes = logic.Calculate();
        EXPECT_EQ(sizes.original, c.original) << std::hex << c.result;
        EXPECT_EQ(sizes.resulting, c.resulting) << std::hex << c.result;
        EXPECT_THAT(recorder.events, ElementsAre("calculate", kCalculating));
        ASSERT_EQ(recorder.created.size(), 1u);
        EXPECT_EQ(recorder.created[0].handleFrames, 7);
        EXPECT_THAT(recorder.boxes, IsEmpty());
    }
}

TEST(ProjectManagerEntry, ANullProjectBreaksTheContract)
{
    TestSupport::TestHost host;
    EXPECT_THROW(DisplayProjectManager(nullptr), zelcore::Error);
    EXPECT_THAT(host.Counts().contractsFailed, ElementsAre("inProject != 0"));
}

// The dialog on its script, worked by a user: every control is found by its name, shows the
// options, and hands the user's choices to the operation.
class ProjectManagerWindow : public testing::Test {
protected:
    void SetUp() override
    {
        mDocuments = QDir(mHost.ScratchDirectory()).filePath(QStringLiteral("Documents"));
        QDir().mkpath(mDocuments);
        KOR::DirectoryRegistry::RegisterDirectory(L"userdocuments", mDocuments.toStdWString());
    }

    std::optional<long> Open(ProjectManagerLogic& ioLogic)
    {
        std::stringstream script;
        const UIF::Workspace* workspace = DLG::PrepareScriptDialog(L"ProjectManagerDialog.vrel", script);
        if (!workspace) {
            ADD_FAILURE() << "no script";
            return std::nullopt;
        }
        DLG::ProjectManagerDlg dialog(*workspace, ioLogic);
        dialog.Run(script);
        return dialog.WasCancelled() ? std::nullopt : dialog.Result();
    }

    static QString Text(QWidget& inWindow, const char* inName)
    {
        const auto* label = inWindow.findChild<QLabel*>(QString::fromLatin1(inName));
        return label ? label->text() : QStringLiteral("<missing>");
    }

    TestSupport::TestHost mHost;
    QString mDocuments;
};

TEST_F(ProjectManagerWindow, ShowsTheOptionsAndRunsWithWhatTheUserChose)
{
    Recorder recorder;
    recorder.operation->mOriginalSize = 5ULL << 30;
    recorder.operation->mResultingSize = 700ULL << 20;
    ProjectManagerLogic logic(SavedProject(), recorder.Calls());
    logic.Options().includeConformedAudio = false;
    CheckedUser user;
    user.On(QStringLiteral("ProjectManagerDialog"))
        .Inspect([this](QWidget& inWindow) {
            for (const char* name :
                 {"createNewTrimmedProjectRadioButton", "collectFilesAndCopyToNewLocationRadioButton",
                  "excludeUnusedClips", "makeOffline", "includeHandles", "framesNumber", "includePreviewFiles",
                  "includeAudioConformFiles", "renameMediaFilesToMatchClipNames", "pathStaticText", "browseButton",
                  "diskSpaceAvailableStaticText", "originalProjectSizeStaticText",
                  "resultingProjectSizeStaticText", "calculateButton", "okButton", "cancelButton"}) {
                EXPECT_NE(inWindow.findChild<QWidget*>(QString::fromLatin1(name)), nullptr) << name;
            }
            const auto checked = [&](const char* inName) {
                const auto* button = inWindow.findChild<QAbstractButton*>(QString::fromLatin1(inName));
                return button && button->isChecked();
            };
            EXPECT_TRUE(checked("createNewTrimmedProjectRadioButton"));
            EXPECT_FALSE(checked("collectFilesAndCopyToNewLocationRadioButton"));
            EXPECT_FALSE(checked("makeOffline")) << "the new project stays online by default";
            EXPECT_FALSE(checked("includeAudioConformFiles"));
            EXPECT_TRUE(checked("renameMediaFilesToMatchClipNames"));
            EXPECT_EQ(inWindow.findChild<QDoubleSpinBox*>(QStringLiteral("framesNumber"))->value(), 30.0);
            EXPECT_EQ(Text(inWindow, "pathStaticText"), mDocuments) << "the project's folder does not exist";
            EXPECT_EQ(Text(inWindow, "diskSpaceAvailableStaticText").toStdWString(),
                      KOR::DiskUtils::MakeDiskSpaceString(KOR::DiskUtils::GetFreeSpace(mDocuments.toStdWString())));
        })
        .Click(QStringLiteral("calculateButton"))
        .Inspect([](QWidget& inWindow) {
            EXPECT_EQ(Text(inWindow, "originalProjectSizeStaticText").toStdWString(),
                      KOR::DiskUtils::MakeDiskSpaceString(5ULL << 30));
            EXPECT_EQ(Text(inWindow, "resultingProjectSizeStaticText").toStdWString(),
                      KOR::DiskUtils::MakeDiskSpaceString(700ULL << 20));
        })
        .Click(QStringLiteral("collectFilesAndCopyToNewLocationRadioButton"))
        .Inspect([](QWidget& inWindow) {
            EXPECT_TRUE(Text(inWindow, "resultingProjectSizeStaticText").isEmpty()) << "calculated for other options";
        })
        .Click(QStringLiteral("makeOffline"))
        .Retype(QStringLiteral("framesNumber"), QStringLiteral("12"))
        .Click(QStringLiteral("includeHandles"))
        .Inspect([](QWidget& inWindow) {
            EXPECT_FALSE(inWindow.findChild<QWidget*>(QStringLiteral("framesNumber"))->isEnabled());
        })
        .Click(QStringLiteral("okButton"));
    EXPECT_EQ(Open(logic), 0);
    ASSERT_EQ(recorder.created.size(), 2u);
    const Options& run = recorder.created[1];
    EXPECT_FALSE(run.createTrimmedProject);
    EXPECT_FALSE(run.keepOnline) << "make offline checked";
    EXPECT_FALSE(run.includeHandles);
    EXPECT_EQ(run.handleFrames, 12);
    EXPECT_EQ(run.destinationFolder, mDocuments.toStdWString());
    EXPECT_THAT(recorder.events, ElementsAre("calculate", kCalculating,
                                             "pause", "create", kRunning, "resume"));
}

// A failed run stays in the dialog with its message; the user can then close it.
TEST_F(ProjectManagerWindow, AFailedRunKeepsTheDialogOpen)
{
    Recorder recorder;
    recorder.operation->mResult = TL::ProjectManager::kError_NothingToKeep;
    ProjectManagerLogic logic(SavedProject(), recorder.Calls());
    logic.Options().includeConformedAudio = false;
    CheckedUser user;
    user.On(QStringLiteral("ProjectManagerDialog"))
        .Click(QStringLiteral("okButton"))
        .Click(QStringLiteral("cancelButton"));
    EXPECT_EQ(Open(logic), std::nullopt);
    ASSERT_EQ(recorder.boxes.size(), 1u);
    EXPECT_EQ(recorder.boxes[0].text, DLG::LoadString(DLG::kStr_ProjectManagerNothingUsed));
}

// Browse chooses the destination in a folder chooser; the path and its free space follow. A
// destination that became a file meanwhile is refused at OK with its message, and nothing runs.
TEST_F(ProjectManagerWindow, BrowseChoosesTheDestinationAndOkRefusesOneThatIsNoFolder)
{
    const QString chosen = QDir(mHost.ScratchDirectory()).filePath(QStringLiteral("Collected"));
    QDir().mkpath(chosen);
    Recorder recorder;
    ProjectManagerLogic logic(SavedProject(), recorder.Calls());
    CheckedUser user;
    user.On(QStringLiteral("ProjectManagerDialog")).Click(QStringLiteral("browseButton"));
    user.On(QStringLiteral("FolderChooserDialog")).SelectItems({QStringLiteral("Collected")}).Confirm();
    user.On(QStringLiteral("ProjectManagerDialog"))
        .Inspect([chosen](QWidget& inWindow) {
            EXPECT_EQ(Text(inWindow, "pathStaticText"), chosen);
            EXPECT_EQ(Text(inWindow, "diskSpaceAvailableStaticText").toStdWString(),
                      KOR::DiskUtils::MakeDiskSpaceString(KOR::DiskUtils::GetFreeSpace(chosen.toStdWString())));
            // The folder, also the stored one, becomes a file before OK.
            QDir(chosen).removeRecursively();
            QFile file(chosen);
            file.open(QIODevice::WriteOnly);
            BE::GetBackend()->SetStringProperty(BE::kPrefsProjectManagerDestinationPath, chosen.toStdWString());
        })
        .Click(QStringLiteral("okButton"));
    user.On(QStringLiteral("MessageBox")).Press(Qt::Key_Return);
    user.On(QStringLiteral("ProjectManagerDialog"))
        .Inspect([](QWidget& inWindow) {
            EXPECT_TRUE(Text(inWindow, "pathStaticText").isEmpty()) << "cleared, so that the user chooses again";
        })
        .Click(QStringLiteral("cancelButton"));
    // The chooser opens on the destination.
    BE::GetBackend()->SetStringProperty(BE::kPrefsProjectManagerDestinationPath,
                                        mHost.ScratchDirectory().toStdWString());
    EXPECT_EQ(Open(logic), std::nullopt);
    ASSERT_EQ(user.MessageBoxes().size(), 1u);
    EXPECT_EQ(user.MessageBoxes()[0].text.toStdWString(), DLG::LoadString(DLG::kStr_ProjectManagerNotAFolder));
    EXPECT_THAT(recorder.events, IsEmpty());
}

// A folder that cannot be written is refused as soon as it is chosen; the destination stays.
TEST_F(ProjectManagerWindow, BrowseRefusesAFolderThatCannotBeWritten)
{
    // The chooser opens on the destination; the root's "proc" takes no files.
    if (!KOR::Directory::ConstructDirectory(L"/").IsDirectoryWriteable()) {
        GTEST_SKIP() << "the root folder must be writeable to start from it";
    }
    BE::GetBackend()->SetStringProperty(BE::kPrefsProjectManagerDestinationPath, L"/");
    Recorder recorder;
    ProjectManagerLogic logic(SavedProject(), recorder.Calls());
    CheckedUser user;
    user.On(QStringLiteral("ProjectManagerDialog")).Click(QStringLiteral("browseButton"));
    user.On(QStringLiteral("FolderChooserDialog")).SelectItems({QStringLiteral("proc")}).Confirm();
    user.On(QStringLiteral("MessageBox")).Press(Qt::Key_Return);
    user.On(QStringLiteral("ProjectManagerDialog"))
        .Inspect([](QWidget& inWindow) { EXPECT_EQ(Text(inWindow, "pathStaticText"), QStringLiteral("/")); })
        .Click(QStringLiteral("cancelButton"));
    EXPECT_EQ(Open(logic), std::nullopt);
    ASSERT_EQ(user.MessageBoxes().size(), 1u);
    EXPECT_EQ(user.MessageBoxes()[0].text.toStdWString(), DLG::LoadString(DLG::kStr_ProjectManagerNotWriteable));
}

} // namespace
