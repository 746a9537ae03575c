#include "DLG/ProjectManagerDialog.h"

#include <algorithm>
#include <cmath>

#include "BE/Backend.h"
#include "BE/ProjectSettings.h"
#include "DLG/ConformDialog.h"
#include "DLG/FileDialogs.h"
#include "DLG/Module.h"
#include "DLG/ProgressDialog.h"
#include "DLG/SaveProject.h"
#include "DLG/StringIDs.h"
#include "KOR/DiskUtils.h"
#include "KOR/Paths.h"
#include "MF/MemoryManager.h"
#include "ML/ConformUtils.h"
#include "UIF/Workspace.h"
#include "zelcore/Error.h"

namespace DLG::ProjectManager {

namespace {

using TL::ProjectManager::kResult_Cancelled;
using TL::ProjectManager::Options;

constexpr int kHandleFramesWithoutRate = 30;
// Empties the media caches before the copy starts, so that it reads the files afresh.
constexpr std::uint64_t kPurgeBytes = 4000000000ULL;
constexpr int kPurgeUrgency = 0;
constexpr const wchar_t* kDocumentsFolder = L"userdocuments";

// The host's codes as 32-bit values, however the caller widened them.
long As32Bits(long inCode) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(inCode)); }

bool IsUsableFolder(const std::wstring& inPath)
{
    return !inPath.empty() && KOR::PathUtils::IsDirectory(inPath) &&
           KOR::Directory::ConstructDirectory(inPath).IsDirectoryWriteable();
}

// Holds the host's media workers for the life of a run, whatever ends it.
class PausedWorkers {
public:
    explicit PausedWorkers(const std::function<void(bool)>& inPause) : mPause(inPause) { mPause(true); }
    ~PausedWorkers() { mPause(false); }
    PausedWorkers(const PausedWorkers&) = delete;
    PausedWorkers& operator=(const PausedWorkers&) = delete;

private:
    const std::function<void(bool)>& mPause;
};

} // namespace

int DefaultHandleFrames(const BE::IProject& inProject)
{
    const KOR::InterfaceRef<BE::IProjectSettings> settings = inProject.GetProjectSettings();
    const KOR::InterfaceRef<BE::IVideoSettings> video = settings ? settings->GetVideoSettings() : nullptr;
    const KOR::FrameRate rate = video ? video->GetFrameRate() : KOR::kFrameRate_Zero;
    if (rate.IsZero()) {
        return kHandleFramesWithoutRate;
    }
    // Numerator / denominator to the nearest whole number, halves up: exact for every rational rate.
    return static_cast<int>((2 * rate.Numerator() + rate.Denominator()) / (2 * rate.Denominator()));
}

Options DefaultOptions(const BE::IProject& inProject)
{
    Options options;
    options.handleFrames = DefaultHandleFrames(inProject);
    const std::wstring projectFile = inProject.GetFilePath();
    if (!projectFile.empty()) {
        options.destinationFolder =
            KOR::PathUtils::ToNormalizedPath(KOR::PathUtils::GetFullDirectoryPart(projectFile));
    }
    return options;
}

unsigned int FailureMessageID(long inResult)
{
    switch (static_cast<std::uint32_t>(inResult)) {
    case 0xA00F0003:
    case 0xA00F0004: return kStr_ProjectManagerFileNotFound;
    case 0xA011000E: return kStr_ProjectManagerNothingUsed;
    case 0xA00F0002:
    case 0xA00F0005:
    case 0xA00701F5:
    case 0xA00701FB:
    case 0xA0070070: return kStr_ProjectManagerCannotWrite;
    case 0xA00701F6:
    case 0xA00F0006: return kStr_ProjectManagerNoSpaceOrExists;
    default: return kStr_ProjectManagerFailed;
    }
}

std::wstring SubstituteFailureText(std::wstring inText, const std::wstring& inFailureText)
{
    if (const std::size_t at = inText.find(L"%s"); at != std::wstring::npos) {
        inText.replace(at, 2, inFailureText);
    }
    return inText;
}

// The host's functions are wrapped in lambdas: a plain function pointer kept in a std::function would
// export the type information of its signature from the module.
HostCalls DefaultHostCalls()
{
    HostCalls host;
    host.createOperation = [](const BE::ProjectRef& inProject, const Options& inOptions, bool inCalculateOnly) {
        return TL::ProjectManager::CreateProjectManagerOperation(inProject, inOptions, inCalculateOnly);
    };
    host.conform = [](const BE::ProjectRef& inProject) { return DoConformDialog(inProject); };
    // A project that was never saved asks for its file first; declining that is a cancelled save.
    host.save = [](const BE::ProjectRef& inProject) {
        std::wstring path = inProject->GetFilePath();
        if (path.empty() && !AskSaveFile(LoadString(kStr_SaveErrorCaption), path, L"", L"", 0, nullptr)) {
            return kResult_Cancelled;
        }
        return SaveProject(inProject, path, false, false);
    };
    host.showSaveError = [](long inError) { SaveProjectErrorDialog(inError, true); };
    host.messageBox = [](const std::wstring& inText, const std::wstring& inCaption, unsigned long inButtons,
                         unsigned long inIcon, long inDefault) {
        return UIF::MessageBoxW(inText, inCaption, inButtons, inIcon, inDefault);
    };
    host.runProgress = [](const std::wstring& inTitle, const KOR::InterfaceRef<KOR::IBatchOperation>& inOperation) {
        return ProgressDialog::DoProgressDialog(inTitle, inOperation, nullptr);
    };
    host.pauseWorkerThreads = [](bool inPause) { ML::PauseWorkerThreads(inPause); };
    return host;
}

ProjectManagerLogic::ProjectManagerLogic(BE::ProjectRef inProject, HostCalls inHost)
    : mProject(std::move(inProject)), mHost(std::move(inHost))
{
    ZEL_INPUT_CONTRACT(mProject != nullptr);
    mOptions = DefaultOptions(*mProject);
    MF::MM::Purge(kPurgeBytes, kPurgeUrgency);
    ReadPreferences();
}

void ProjectManagerLogic::ReadPreferences()
{
    const BE::Backend* prefs = BE::GetBackend();
    if (!prefs) {
        return;
    }
    TL::ProjectManager::Options& o = mOptions;
    o.createTrimmedProject = prefs->GetBoolProperty(BE::kPrefsProjectManagerCreateTrimmed, o.createTrimmedProject);
    o.keepOnline = prefs->GetBoolProperty(BE::kPrefsProjectManagerOnline, o.keepOnline);
    o.excludeUnusedClips = prefs->GetBoolProperty(BE::kPrefsProjectManagerExcludeUnused, o.excludeUnusedClips);
    o.includeHandles = prefs->GetBoolProperty(BE::kPrefsProjectManagerIncludeHandles, o.includeHandles);
    o.handleFrames = static_cast<int>(prefs->GetIntProperty(BE::kPrefsProjectManagerHandleAmount, o.handleFrames));
    o.includePreviews = prefs->GetBoolProperty(BE::kPrefsProjectManagerIncludePreviews, o.includePreviews);
    o.includeConformedAudio =
        prefs->GetBoolProperty(BE::kPrefsProjectManagerIncludeConformedAudio, o.includeConformedAudio);
    o.includeProxies = prefs->GetBoolProperty(BE::kPrefsProjectManagerIncludeProxies, o.includeProxies);
    o.renameMediaToClipNames = prefs->GetBoolProperty(BE::kPrefsProjectManagerRenameMedia, o.renameMediaToClipNames);
    o.destinationFolder = prefs->GetStringProperty(BE::kPrefsProjectManagerDestinationPath, o.destinationFolder);
}

void ProjectManagerLogic::WritePreferences() const
{
    BE::Backend* prefs = BE::GetBackend();
    if (!prefs) {
        return;
    }
    const TL::ProjectManager::Options& o = mOptions;
    prefs->SetBoolProperty(BE::kPrefsProjectManagerCreateTrimmed, o.createTrimmedProject);
    prefs->SetBoolProperty(BE::kPrefsProjectManagerOnline, o.keepOnline);
    prefs->SetBoolProperty(BE::kPrefsProjectManagerExcludeUnused, o.excludeUnusedClips);
    prefs->SetBoolProperty(BE::kPrefsProjectManagerIncludeHandles, o.includeHandles);
    prefs->SetIntProperty(BE::kPrefsProjectManagerHandleAmount, o.handleFrames);
    prefs->SetBoolProperty(BE::kPrefsProjectManagerIncludePreviews, o.includePreviews);
    prefs->SetBoolProperty(BE::kPrefsProjectManagerIncludeConformedAudio, o.includeConformedAudio);
    prefs->SetBoolProperty(BE::kPrefsProjectManagerIncludeProxies, o.includeProxies);
    prefs->SetBoolProperty(BE::kPrefsProjectManagerRenameMedia, o.renameMediaToClipNames);
    prefs->SetStringProperty(BE::kPrefsProjectManagerDestinationPath, o.destinationFolder);
}

long ProjectManagerLogic::ValidateDestination()
{
    std::wstring& path = mOptions.destinationFolder;
    if (IsUsableFolder(path)) {
        return 0;
    }
    const BE::Backend* prefs = BE::GetBackend();
    path = prefs ? prefs->GetStringProperty(BE::kPrefsProjectManagerDestinationPath, L"") : L"";
    if (path.empty()) {
        path = KOR::DirectoryRegistry::FindDirectory(kDocumentsFolder);
    }
    path = KOR::PathUtils::ToNormalizedPath(path);
    if (!path.empty() && !KOR::PathUtils::IsDirectory(path)) {
        path.clear();
        return kError_DestinationNotAFolder;
    }
    if (!KOR::Directory::ConstructDirectory(path).IsDirectoryWriteable()) {
        path.clear();
        return kError_DestinationNotWriteable;
    }
    return 0;
}

std::wstring ProjectManagerLogic::FreeSpaceText() const
{
    if (mOptions.destinationFolder.empty()) {
        return L"";
    }
    return KOR::DiskUtils::MakeDiskSpaceString(KOR::DiskUtils::GetFreeSpace(mOptions.destinationFolder));
}

long ProjectManagerLogic::RunOperation(const TL::ProjectManager::ProjectManagerOperationRef& inOperation,
                                       unsigned int inTitleID)
{
    if (!inOperation || !inOperation->Start()) {
        const long result = inOperation ? As32Bits(inOperation->GetResult()) : 0;
        return result < 0 ? result : kError_NotStarted;
    }
    // Without a progress dialog to follow it to its end, the operation was asked to stop and its
    // result may not be final: only a failure it already reported counts, otherwise it was cancelled.
    if (!mHost.runProgress(LoadString(inTitleID), inOperation)) {
        const long result = As32Bits(inOperation->GetResult());
        return result < 0 ? result : kResult_Cancelled;
    }
    return As32Bits(inOperation->GetResult());
}

CalculatedSizes ProjectManagerLogic::Calculate()
{
    const TL::ProjectManager::ProjectManagerOperationRef operation = mHost.createOperation(mProject, mOptions, true);
    const long result = RunOperation(operation, kStr_ProjectManagerCalculatingTitle);
    if (result == kResult_Cancelled) {
        return {};
    }
    if (result < 0) {
        return {std::nullopt, LoadString(kStr_ProjectManagerCalculateFailed)};
    }
    return {KOR::DiskUtils::MakeDiskSpaceString(operation->GetOriginalSize()),
            KOR::DiskUtils::MakeDiskSpaceString(operation->GetResultingSize())};
}

bool ProjectManagerLogic::SaveIfChanged()
{
    if (!mProject->HasUnsavedChanges()) {
        return true;
    }
    const long answer = mHost.messageBox(LoadString(kStr_ProjectManagerSaveFirst),
                                         LoadString(kStr_ProjectManagerSaveCaption), kSaveQuestionButtons,
                                         kSaveQuestionIcon, kSaveAnswer);
    if (answer != kSaveAnswer) {
        return false;
    }
    const long saved = As32Bits(mHost.save(mProject));
    if (saved == kResult_Cancelled) {
        return false;
    }
    if (saved < 0) {
        mHost.showSaveError(saved);
        return false;
    }
    return true;
}

void ProjectManagerLogic::ReportFailure(long inResult, const std::wstring& inFailureText) const
{
    mHost.messageBox(SubstituteFailureText(LoadString(FailureMessageID(inResult)), inFailureText),
                     LoadString(kStr_ProjectManagerFailedCaption), kFailureButtons, kFailureIcon, 0);
}

long ProjectManagerLogic::RunWithWorkersPaused()
{
    const PausedWorkers paused(mHost.pauseWorkerThreads);
    const TL::ProjectManager::ProjectManagerOperationRef operation = mHost.createOperation(mProject, mOptions, false);
    const long result = RunOperation(operation, kStr_ProjectManagerRunningTitle);
    if (result < 0 && result != kResult_Cancelled) {
        ReportFailure(result, operation ? operation->GetFailureText() : std::wstring());
    }
    return result;
}

std::optional<long> ProjectManagerLogic::Run()
{
    if (!SaveIfChanged()) {
        return std::nullopt;
    }
    WritePreferences();
    if (mOptions.includeConformedAudio && !mHost.conform(mProject)) {
        return std::nullopt;
    }
    return RunWithWorkersPaused();
}

} // namespace DLG::ProjectManager

namespace DLG {

namespace {

using zelui::controls::UI_Button;
using zelui::controls::UI_CheckBox;
using zelui::controls::UI_NumberEdit;
using zelui::controls::UI_RadioButton;
using zelui::controls::UI_StaticText;

void SetText(const boost::intrusive_ptr<UI_StaticText>& ioControl, const std::wstring& inText)
{
    if (ioControl) {
        ioControl->SetText(inText);
    }
}

void SetChecked(const boost::intrusive_ptr<UI_CheckBox>& ioControl, bool inChecked)
{
    if (ioControl) {
        ioControl->SetChecked(inChecked);
    }
}

bool CheckedOr(const boost::intrusive_ptr<UI_CheckBox>& inControl, bool inOtherwise)
{
    return inControl ? inControl->IsChecked() : inOtherwise;
}

} // namespace

ProjectManagerDlg::ProjectManagerDlg(const UIF::Workspace& inWorkspace, ProjectManager::ProjectManagerLogic& ioLogic)
    : DialogBaseImpl(L"ProjectManagerDialog", inWorkspace), mLogic(ioLogic)
{
}

void ProjectManagerDlg::BindControls()
{
    // OK runs the whole sequence and closes the dialog only after a written copy; Cancel closes.
    if (const auto ok = OnChange<UI_Button>(L"okButton", [this] { Ok(); })) {
        GetDialogView()->SetOkButton(ok.get());
    }
    if (const auto cancel = OnChange<UI_Button>(L"cancelButton", [this] { Dismiss(); })) {
        GetDialogView()->SetCancelButton(cancel.get());
    }
    BindOptions();
    BindSizes();
    ShowOptions();
    mLogic.ValidateDestination();
    ShowDestination();
}

void ProjectManagerDlg::BindOptions()
{
    mMode.Add(GetUINodePtr<UI_RadioButton>(L"createNewTrimmedProjectRadioButton"), Mode::kTrimmed);
    mMode.Add(GetUINodePtr<UI_RadioButton>(L"collectFilesAndCopyToNewLocationRadioButton"), Mode::kCollected);
    // A size calculated for other options no longer holds once one changes.
    mMode.OnChoose([this](Mode) { ForgetResultingSize(); });
    const auto forget = [this] { ForgetResultingSize(); };
    mExcludeUnused = OnChange<UI_CheckBox>(L"excludeUnusedClips", forget);
    mMakeOffline = OnChange<UI_CheckBox>(L"makeOffline", forget);
    mIncludeHandles = OnChange<UI_CheckBox>(L"includeHandles", [this] {
        EnableHandleFrames();
        ForgetResultingSize();
    });
    mHandleFrames = OnChange<UI_NumberEdit>(L"framesNumber", forget);
    mIncludePreviews = OnChange<UI_CheckBox>(L"includePreviewFiles", forget);
    mIncludeConformed = OnChange<UI_CheckBox>(L"includeAudioConformFiles", forget);
    mRename = OnChange<UI_CheckBox>(L"renameMediaFilesToMatchClipNames", forget);
    OnChange<UI_Button>(L"browseButton", [this] { Browse(); });
}

void ProjectManagerDlg::BindSizes()
{
    mPath = GetUINodePtr<UI_StaticText>(L"pathStaticText");
    mFreeSpace = GetUINodePtr<UI_StaticText>(L"diskSpaceAvailableStaticText");
    mOriginalSize = GetUINodePtr<UI_StaticText>(L"originalProjectSizeStaticText");
    mResultingSize = GetUINodePtr<UI_StaticText>(L"resultingProjectSizeStaticText");
    OnChange<UI_Button>(L"calculateButton", [this] { Calculate(); });
}

// "makeOffline" is the opposite of keeping the new project online: checked, the media are not
// copied and the new project's clips stay offline.
void ProjectManagerDlg::ShowOptions()
{
    const TL::ProjectManager::Options& options = mLogic.Options();
    mMode.Check(options.createTrimmedProject ? Mode::kTrimmed : Mode::kCollected);
    SetChecked(mExcludeUnused, options.excludeUnusedClips);
    SetChecked(mMakeOffline, !options.keepOnline);
    SetChecked(mIncludeHandles, options.includeHandles);
    if (mHandleFrames) {
        mHandleFrames->SetValue(options.handleFrames);
    }
    SetChecked(mIncludePreviews, options.includePreviews);
    SetChecked(mIncludeConformed, options.includeConformedAudio);
    SetChecked(mRename, options.renameMediaToClipNames);
    EnableHandleFrames();
}

void ProjectManagerDlg::ShowDestination()
{
    SetText(mPath, mLogic.Options().destinationFolder);
    SetText(mFreeSpace, mLogic.FreeSpaceText());
}

void ProjectManagerDlg::ForgetResultingSize() { SetText(mResultingSize, L""); }

void ProjectManagerDlg::EnableHandleFrames()
{
    if (mHandleFrames) {
        mHandleFrames->SetEnabled(CheckedOr(mIncludeHandles, true));
    }
}

void ProjectManagerDlg::ReadOptions()
{
    TL::ProjectManager::Options& options = mLogic.Options();
    options.createTrimmedProject = !mMode.IsChecked(Mode::kCollected);
    options.excludeUnusedClips = CheckedOr(mExcludeUnused, options.excludeUnusedClips);
    options.keepOnline = !CheckedOr(mMakeOffline, !options.keepOnline);
    options.includeHandles = CheckedOr(mIncludeHandles, options.includeHandles);
    if (mHandleFrames) {
        options.handleFrames = static_cast<int>(std::lround(std::max(0.0, mHandleFrames->GetValue())));
    }
    options.includePreviews = CheckedOr(mIncludePreviews, options.includePreviews);
    options.includeConformedAudio = CheckedOr(mIncludeConformed, options.includeConformedAudio);
    options.renameMediaToClipNames = CheckedOr(mRename, options.renameMediaToClipNames);
}

void ProjectManagerDlg::Browse()
{
    std::wstring folder = mLogic.Options().destinationFolder;
    if (!AskFolderChooser(LoadString(kStr_ProjectManagerChooseFolder), folder, folder, L"", 0, nullptr)) {
        return;
    }
    // A folder that cannot take the copy is refused here, so that OK never falls back to another.
    if (!ProjectManager::IsUsableFolder(folder)) {
        ReportInvalidDestination(ProjectManager::kError_DestinationNotWriteable);
        return;
    }
    mLogic.Options().destinationFolder = KOR::PathUtils::ToNormalizedPath(folder);
    ShowDestination();
    ForgetResultingSize();
}

void ProjectManagerDlg::ReportInvalidDestination(long inCode) const
{
    const unsigned int text = inCode == ProjectManager::kError_DestinationNotAFolder ? kStr_ProjectManagerNotAFolder
                                                                                     : kStr_ProjectManagerNotWriteable;
    UIF::MessageBoxW(LoadString(text), LoadString(kStr_ProjectManagerFailedCaption), UIF::kMessageBox_OK,
                     UIF::kMessageBoxIcon_Error, 0);
}

void ProjectManagerDlg::Calculate()
{
    ReadOptions();
    const long invalid = mLogic.ValidateDestination();
    ShowDestination();
    if (invalid != 0) {
        ReportInvalidDestination(invalid);
        return;
    }
    const ProjectManager::CalculatedSizes sizes = mLogic.Calculate();
    if (sizes.original) {
        SetText(mOriginalSize, *sizes.original);
    }
    if (sizes.resulting) {
        SetText(mResultingSize, *sizes.resulting);
    }
}

void ProjectManagerDlg::Ok()
{
    ReadOptions();
    const long invalid = mLogic.ValidateDestination();
    ShowDestination();
    if (invalid != 0) {
        ReportInvalidDestination(invalid);
        return;
    }
    mResult = mLogic.Run();
    if (mResult && *mResult >= 0) {
        SetCancelled(false);
        GetDialogView()->EndDialog(zelui::ui::UI_Dialog::kResponse_Accept);
    }
}

} // namespace DLG

namespace DLG::ProjectManager {

long DisplayProjectManager(KOR::InterfaceRef<BE::IProject> inProject)
{
    ZEL_INPUT_CONTRACT(inProject != 0);
    ProjectManagerLogic logic(std::move(inProject), DefaultHostCalls());
    std::stringstream script;
    const UIF::Workspace* workspace = PrepareScriptDialog(L"ProjectManagerDialog.vrel", script);
    if (!workspace) {
        return kResult_Cancelled;
    }
    ProjectManagerDlg dialog(*workspace, logic);
    dialog.Run(script);
    const std::optional<long> result = dialog.Result();
    return !dialog.WasCancelled() && result && *result >= 0 ? *result : kResult_Cancelled;
}

} // namespace DLG::ProjectManager
