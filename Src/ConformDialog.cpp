#include "DLG/ConformDialog.h"

#include <exception>

#include "DLG/Module.h"
#include "DLG/ProgressDialogImpl.h"
#include "DLG/StringIDs.h"
#include "ML/ConformUtils.h"
#include "UIF/MessageBox.h"
#include "UIF/Workspace.h"
#include "zelcore/Error.h"

namespace DLG {

namespace {

constexpr KOR::MessageID kStartedMessageID =
    KOR::HashMessageTypeNameToMessageID(ML::AudioConformationStarted::kTypeName);
constexpr KOR::MessageID kProgressMessageID =
    KOR::HashMessageTypeNameToMessageID(ML::AudioConformationProgress::kTypeName);
constexpr KOR::MessageID kFinishedMessageID =
    KOR::HashMessageTypeNameToMessageID(ML::AudioConformationFinished::kTypeName);
constexpr KOR::MessageID kCompleteMessageID =
    KOR::HashMessageTypeNameToMessageID(KOR::OperationCompleteMessage::kTypeName);
constexpr int kConformWorkPriority = 3;

bool RunConformDialog(ConformScope inScope)
{
    if (!NeedsConform(inScope, false, L"", nullptr)) {
        return true;
    }
    std::stringstream script;
    const UIF::Workspace* workspace = PrepareScriptDialog(L"ConformDialog.vrel", script);
    if (!workspace) {
        return false;
    }
    ConformDialog dialog(std::move(inScope), *workspace);
    dialog.Run(script);
    return !dialog.WasCancelled();
}

} // namespace

bool NeedsConform(const ConformScope& inScope, bool inConform, const std::wstring& inStation,
                  const KOR::InterfaceRef<MF::IAbort>& inAbort)
{
    using ML::ConformUtils::NeedsConform;
    if (inScope.sequence) {
        return NeedsConform(inScope.sequence, inConform, inStation, inAbort);
    }
    if (inScope.childClip) {
        return NeedsConform(inScope.childClip, inConform, inStation, inAbort);
    }
    if (inScope.clip) {
        return NeedsConform(inScope.clip, inConform, inStation, inAbort);
    }
    if (inScope.masterClip) {
        return NeedsConform(inScope.masterClip, inConform, inStation, inAbort);
    }
    if (inScope.trackItems) {
        return NeedsConform(inScope.trackItems, inConform, inStation, inAbort);
    }
    if (inScope.projectItems) {
        return NeedsConform(inScope.projectItems, inConform, inStation, inAbort);
    }
    if (inScope.project) {
        return NeedsConform(inScope.project, inConform, inStation, inAbort);
    }
    return false;
}

// Registered again should a host have dropped it: the flag alone would then name a dead station.
const std::wstring& ConformDialogStation()
{
    static bool sRegistered = false;
    static std::wstring sStation = L"DLG.ConformAudioDlgStation";
    if (!sRegistered || !KOR::StationRegistry::IsRegistered(sStation)) {
        sStation = KOR::StationRegistry::RegisterStation(L"DLG.ConformAudioDlgStation");
        sRegistered = true;
    }
    return sStation;
}

// {5C0F7A31-9E42-4B7D-8A61-3D2E94B6C0F8}
const KOR::InterfaceID ConformDialogOperation::kIID = {0x5C, 0x0F, 0x7A, 0x31, 0x9E, 0x42, 0x4B, 0x7D,
                                                       0x8A, 0x61, 0x3D, 0x2E, 0x94, 0xB6, 0xC0, 0xF8};

// The scope is copied: a worker never reaches into a dialog, which may go while it runs.
ConformDialogOperation::ConformDialogOperation(const ConformDialog* inDialog)
{
    if (inDialog) {
        mScope = inDialog->Scope();
    }
}

ConformDialogOperation::~ConformDialogOperation() = default;

std::uint32_t ConformDialogOperation::AddRef() { return mRefs.fetch_add(1, std::memory_order_relaxed) + 1; }

std::uint32_t ConformDialogOperation::Release()
{
    const std::uint32_t left = mRefs.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) {
        delete this;
    }
    return left;
}

bool ConformDialogOperation::QueryInterface(const KOR::InterfaceID& inID, void** outObject)
{
    *outObject = nullptr;
    if (inID == KOR::KORUnknown::kIID || inID == KOR::IBatchOperation::kIID) {
        *outObject = static_cast<KOR::IBatchOperation*>(this);
    } else if (inID == KOR::IThreadedQueueRequest::kIID) {
        *outObject = static_cast<KOR::IThreadedQueueRequest*>(this);
    } else if (inID == MF::IAbort::kIID) {
        *outObject = static_cast<MF::IAbort*>(this);
    } else if (inID == kIID) {
        *outObject = static_cast<void*>(this);
    } else {
        return false;
    }
    AddRef();
    return true;
}

std::wstring ConformDialogOperation::GetName() const { return LoadString(kStr_ConformOperationName); }

bool ConformDialogOperation::Start()
{
    ZEL_INPUT_CONTRACT(!mStarted);
    KOR::ThreadedWorkQueue& queue = KOR::SharedThreadedWorkQueue::Instance().RetrieveOrCreate(kConformWorkPriority);
    mStarted = queue.QueueRequest(KOR::InterfaceRef<KOR::IThreadedQueueRequest>(this));
    return mStarted;
}

KOR::InterfaceRef<ConformDialogOperation> ConformDialogOperation::GetSelf()
{
    return KOR::InterfaceRef<ConformDialogOperation>(this);
}

// A dialog waiting for the end hears it even when the utility throws: the completion message
// follows whatever the utility posted.
void ConformDialogOperation::Run()
{
    if (!mScope) {
        return;
    }
    RunToCompletion(
        [this] { NeedsConform(*mScope, true, GetMessageStationName(), KOR::InterfaceRef<MF::IAbort>(this)); });
}

ConformDialog::ConformDialog(ConformScope inScope, const UIF::Workspace& inWorkspace)
    : DialogBaseImpl(L"ConformDialog", inWorkspace), mScope(std::move(inScope))
{
    StopInsteadOfClosing([this] { RequestCancel(); });
}

// A dialog that goes before its operation finished (an error in a handler) asks it to stop: the
// worker holds the operation and its copy of the scope, so nothing it uses goes with the dialog.
ConformDialog::~ConformDialog()
{
    KOR::StationUtils::RemoveListener(ConformDialogStation(), this);
    if (mOperation) {
        KOR::StationUtils::RemoveListener(mOperationStation, this);
        if (!mFinished) {
            mOperation->RequestCancel();
        }
    }
}

void ConformDialog::BindControls()
{
    mMediaText = GetUINodePtr<zelui::controls::UI_StaticText>(L"mediaNameStaticText");
    mProgressBar = GetUINodePtr<zelui::controls::UI_ProgressBar>(L"progressBar");
    mCancelButton = GetUINodePtr<zelui::controls::UI_Button>(L"cancelButton");
    GetDialogView()->SetTitle(LoadString(kStr_ConformTitle));
    if (mMediaText) {
        mMediaText->SetText(LoadString(kStr_ConformPreparing));
    }
    if (mProgressBar) {
        mProgressBar->SetRange(0, kProgressBarTotal);
        mProgressBar->SetValue(0);
    }
    if (mCancelButton) {
        mCancelButton->NotifyWhenChanged([this] { RequestCancel(); });
        GetDialogView()->SetCancelButton(mCancelButton.get());
        mCancelButton->SetFocus();
    }

    mOperation = KOR::InterfaceRef<ConformDialogOperation>(new ConformDialogOperation(this));
    mOperationStation = mOperation->GetMessageStationName();
    KOR::StationUtils::AddListener(ConformDialogStation(), this);
    KOR::StationUtils::AddListener(mOperationStation, this);
    mOperation->Start();
}

// Progress from either station is shown; only the operation's own end closes the dialog.
void ConformDialog::ListenerMessageHandler(const std::wstring& inStation, const KOR::Message& inMessage)
{
    const KOR::MessageID id = inMessage.GetID();
    if (const auto* started = dynamic_cast<const ML::AudioConformationStarted*>(&inMessage);
        started && id == kStartedMessageID) {
        ShowProgress(L"", 0.0f);
    } else if (const auto* progress = dynamic_cast<const ML::AudioConformationProgress*>(&inMessage);
               progress && id == kProgressMessageID) {
        ShowProgress(progress->GetMediaName(), progress->GetFraction());
    } else if (inStation != mOperationStation) {
        return;
    } else if (const auto* finished = dynamic_cast<const ML::AudioConformationFinished*>(&inMessage);
               finished && id == kFinishedMessageID) {
        Finish(finished->IsCompleted(), finished->GetFailure());
    } else if (id == kCompleteMessageID) {
        // The work ended without its Finished message: it stopped on an error of its own.
        Finish(false, LoadString(kStr_ConformEndedEarly));
    }
}

void ConformDialog::ShowProgress(const std::wstring& inMediaName, float inFraction)
{
    if (mMediaText && !WasCancelled() && !inMediaName.empty()) {
        mMediaText->SetText(LoadStringWith(kStr_ConformMediaName, inMediaName));
    }
    if (mProgressBar) {
        mProgressBar->SetValue(ProgressBarValue(inFraction));
    }
}

// Confirmed only when everything was conformed and nobody asked to stop. A failure is told
// before the dialog goes; a stop the user asked for is not.
void ConformDialog::Finish(bool inCompleted, const std::wstring& inFailure)
{
    if (mFinished) {
        return;
    }
    mFinished = true;
    KOR::StationUtils::RemoveListener(mOperationStation, this);
    KOR::StationUtils::RemoveListener(ConformDialogStation(), this);
    const bool confirmed = inCompleted && !WasCancelled();
    if (!inFailure.empty() && !WasCancelled()) {
        UIF::MessageBoxW(LoadStringWith(kStr_ConformFailed, inFailure), LoadString(kStr_ConformTitle), UIF::kMessageBox_OK,
                         UIF::kMessageBoxIcon_Error, 0);
    }
    SetCancelled(!confirmed);
    if (zelui::ui::UI_Dialog* view = GetDialogView()) {
        if (confirmed && mProgressBar) {
            mProgressBar->SetValue(mProgressBar->GetMaximum());
        }
        view->EndDialog(confirmed ? zelui::ui::UI_Dialog::kResponse_Accept : zelui::ui::UI_Dialog::kResponse_Dismiss);
    }
}

void ConformDialog::RequestCancel()
{
    if (WasCancelled() || mFinished) {
        return;
    }
    SetCancelled(true);
    mOperation->RequestCancel();
    if (mMediaText) {
        mMediaText->SetText(LoadString(kStr_ConformStopping));
    }
    if (mCancelButton) {
        mCancelButton->SetEnabled(false);
    }
}

bool DoConformDialog(KOR::InterfaceRef<BE::IProject> inProject)
{
    return RunConformDialog({.project = std::move(inProject)});
}

bool DoConformDialog(KOR::InterfaceRef<BE::ITrackItemSelection> inSelection)
{
    return RunConformDialog({.trackItems = std::move(inSelection)});
}

bool DoConformDialog(KOR::InterfaceRef<BE::IClip> inClip) { return RunConformDialog({.clip = std::move(inClip)}); }

bool DoConformDialog(KOR::InterfaceRef<BE::ISequence> inSequence)
{
    return RunConformDialog({.sequence = std::move(inSequence)});
}

bool DoConformDialog(KOR::InterfaceRef<BE::IChildClip> inChildClip)
{
    return RunConformDialog({.childClip = std::move(inChildClip)});
}

bool DoConformDialog(KOR::InterfaceRef<BE::IProjectItemSelection> inSelection)
{
    return RunConformDialog({.projectItems = std::move(inSelection)});
}

bool DoConformDialog(KOR::InterfaceRef<BE::IMasterClip> inMasterClip)
{
    return RunConformDialog({.masterClip = std::move(inMasterClip)});
}

} // namespace DLG
