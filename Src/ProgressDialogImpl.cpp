#include "DLG/ProgressDialogImpl.h"

#include <algorithm>

#include "DLG/ProgressDialog.h"
#include "DLG/StringIDs.h"
#include "DLG/Module.h"
#include "KOR/Clock.h"
#include "UIF/Workspace.h"
#include "zelcore/Error.h"
#include "zelui/UI_Node.h"

namespace DLG {

namespace {

constexpr KOR::MessageID kCompleteMessageID =
    KOR::HashMessageTypeNameToMessageID(KOR::OperationCompleteMessage::kTypeName);
constexpr KOR::MessageID kProgressMessageID =
    KOR::HashMessageTypeNameToMessageID(KOR::UpdateOperationProgressMessage::kTypeName);
constexpr KOR::MessageID kDescriptionMessageID =
    KOR::HashMessageTypeNameToMessageID(KOR::UpdateOperationDescriptionMessage::kTypeName);
constexpr KOR::MessageID kTimeLeftMessageID =
    KOR::HashMessageTypeNameToMessageID(KOR::UpdateOperationTimeLeftMessage::kTypeName);

} // namespace

int ProgressBarValue(float inFraction)
{
    const double scaled = static_cast<double>(inFraction) * kProgressBarTotal;
    if (!(scaled > 0.0)) {
        return 0;
    }
    return scaled >= kProgressBarCeiling ? kProgressBarCeiling : static_cast<int>(scaled);
}

ProgressDialogImpl::ProgressDialogImpl(const std::wstring& inNodeName, std::wstring inTitle,
                                       KOR::InterfaceRef<KOR::IBatchOperation> inOperation,
                                       const zelui::drawbot::SupplierInterface* inSupplier,
                                       zelui::ui::UI_Node* inParent)
    : DialogBaseImpl(inNodeName, inSupplier, inParent), mOperation(std::move(inOperation)),
      mStation(mOperation->GetMessageStationName()), mTitle(std::move(inTitle))
{
    StopInsteadOfClosing([this] { RequestCancel(); });
}

// A dialog that ends before the operation completed (an error in a handler, a script that
// built nothing) asks it to stop: nobody follows it any more.
ProgressDialogImpl::~ProgressDialogImpl()
{
    KOR::StationUtils::RemoveListener(mStation, this);
    if (!mCompleted) {
        mOperation->RequestCancel();
    }
}

void ProgressDialogImpl::BindControls()
{
    mTitleText = GetUINodePtr<zelui::controls::UI_StaticText>(L"progressTitleText");
    mProgressBar = GetUINodePtr<zelui::controls::UI_ProgressBar>(L"progressBar");
    mCancelButton = GetUINodePtr<zelui::controls::UI_Button>(L"cancelButton");
    GetDialogView()->SetTitle(mTitle);
    if (mTitleText) {
        mTitleText->SetText(mTitle);
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

    KOR::StationUtils::AddListener(mStation, this);
    mBindClock = KOR::Clock::GetMilliseconds();
    mStartClock = mBindClock;
    mShowDeadline = mBindClock + kProgressShowDelayMs;
}

void ProgressDialogImpl::ListenerMessageHandler(const std::wstring&, const KOR::Message& inMessage)
{
    const KOR::MessageID id = inMessage.GetID();
    if (id == kCompleteMessageID) {
        HandleCompletion();
        return;
    }
    if (const auto* progress = dynamic_cast<const KOR::UpdateOperationProgressMessage*>(&inMessage);
        progress && id == kProgressMessageID) {
        HandleProgress(progress->GetFraction());
    } else if (const auto* description = dynamic_cast<const KOR::UpdateOperationDescriptionMessage*>(&inMessage);
               description && id == kDescriptionMessageID) {
        HandleDescription(description->GetDescription());
    } else if (const auto* timeLeft = dynamic_cast<const KOR::UpdateOperationTimeLeftMessage*>(&inMessage);
               timeLeft && id == kTimeLeftMessageID) {
        OnTimeLeft(timeLeft->GetSecondsLeft());
    }
    OnMessageHandled();
}

void ProgressDialogImpl::OnTimeLeft(double) {}

void ProgressDialogImpl::OnMessageHandled() {}

// The minimum time on screen counts from the first progress after the show deadline: a dialog
// that was up only briefly is not cut short the moment the work ends.
void ProgressDialogImpl::HandleProgress(float inFraction)
{
    const std::int64_t now = KOR::Clock::GetMilliseconds();
    if (!mShown && now > mShowDeadline) {
        mShown = true;
        mStartClock = now;
    }
    if (mProgressBar) {
        mProgressBar->SetValue(ProgressBarValue(inFraction));
    }
}

// After a cancel request the text says so until the operation confirms.
void ProgressDialogImpl::HandleDescription(const std::wstring& inDescription)
{
    if (mTitleText && !CancelRequested()) {
        mTitleText->SetText(inDescription);
    }
}

// A completion after a cancel request ends the dialog at once and counts as cancelled: the user
// asked to stop, so the caller must not take the work as done. Otherwise the full bar is painted
// before the wait, which blocks the UI thread: it is what the user sees in the last moments.
void ProgressDialogImpl::HandleCompletion()
{
    KOR::StationUtils::RemoveListener(mStation, this);
    mCompleted = true;
    zelui::ui::UI_Dialog::Response response = zelui::ui::UI_Dialog::kResponse_Dismiss;
    if (!CancelRequested()) {
        if (mProgressBar) {
            mProgressBar->SetValue(mProgressBar->GetMaximum());
            mProgressBar->RedrawNow();
        }
        const std::int64_t remaining = std::clamp<std::int64_t>(
            mStartClock + kProgressMinimumShownMs - KOR::Clock::GetMilliseconds(), 0, kProgressMinimumShownMs);
        KOR::Clock::SleepMilliseconds(remaining);
        response = zelui::ui::UI_Dialog::kResponse_Accept;
    }
    if (zelui::ui::UI_Dialog* view = GetDialogView()) {
        view->EndDialog(response);
    }
}

// The dialog stays until the operation confirms with its completion message, so that when the
// entry function returns no worker is still at work on the caller's data.
void ProgressDialogImpl::RequestCancel()
{
    if (CancelRequested() || mCompleted) {
        return;
    }
    SetCancelled(true);
    mOperation->RequestCancel();
    if (mTitleText) {
        mTitleText->SetText(LoadString(kStr_ProgressCancelling));
    }
    if (mCancelButton) {
        mCancelButton->SetEnabled(false);
    }
}

// A progress dialog opened from a dialog must stay in front of it.
zelui::ui::UI_NodePtr ProgressDialogParent(const UIF::Workspace& inWorkspace, HWND inParent)
{
    if (zelui::ui::UI_NodeManager* manager = zelui::ui::UI_NodeManager::Get(); manager && manager->HasModalWindow()) {
        if (zelui::ui::UI_NodePtr modal = manager->GetModalWindow()) {
            return modal;
        }
    }
    if (zelui::ui::UI_Node* main = inWorkspace.GetMainTopLevelWindow()) {
        return main;
    }
    return KOR::NodeFromHWND(inParent);
}

namespace ProgressDialog {

bool DoProgressDialog(const std::wstring& inTitle, KOR::InterfaceRef<KOR::IBatchOperation> inBatchOperation,
                      HWND inParent)
{
    ZEL_INPUT_CONTRACT(inBatchOperation != NULL);
    std::stringstream script;
    const UIF::Workspace* workspace = PrepareScriptDialog(L"ProgressDialog.vrel", script);
    if (!workspace) {
        inBatchOperation->RequestCancel();
        return false;
    }
    const zelui::ui::UI_NodePtr parent = ProgressDialogParent(*workspace, inParent);
    ProgressDialogImpl dialog(L"ProgressDialog", inTitle, std::move(inBatchOperation), workspace->GetDrawSupplier(),
                              parent.get());
    dialog.Run(script);
    return dialog.Succeeded();
}

} // namespace ProgressDialog

} // namespace DLG
