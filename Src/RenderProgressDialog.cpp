#include "DLG/RenderProgressDialog.h"

#include <cmath>
#include <memory>

#include "DLG/Module.h"
#include "DLG/ProgressDialogImpl.h"
#include "DLG/StringIDs.h"
#include "KOR/Clock.h"
#include "UIF/Workspace.h"
#include "zelcore/Error.h"
#include "zelui/UI_Timer.h"

namespace DLG {

namespace {

// The elapsed time moves on between messages too; twice a second keeps its seconds steady.
constexpr int kElapsedRefreshMs = 500;
// An operation's first estimates can be wild; beyond a year it is no estimate at all (and would
// not fit the seconds count).
constexpr double kLongestTimeLeftSeconds = 366.0 * 24 * 3600;

class RenderProgressDialog : public ProgressDialogImpl {
public:
    RenderProgressDialog(KOR::InterfaceRef<KOR::IBatchOperation> inOperation, const UIF::Workspace& inWorkspace,
                         zelui::ui::UI_Node* inParent)
        : ProgressDialogImpl(L"RenderProgressDialog", LoadString(kStr_RenderProgressTitle), std::move(inOperation),
                             inWorkspace.GetDrawSupplier(), inParent)
    {
    }

private:
    void BindControls() override
    {
        ProgressDialogImpl::BindControls();
        mDisclosure = GetUINodePtr<zelui::controls::UI_CheckBox>(L"disclosureTriangle");
        mDetails = FindNode(L"detailsGroupBox");
        mElapsedText = GetUINodePtr<zelui::controls::UI_StaticText>(L"timeElapsedStaticTextRight");
        mTimeLeftText = GetUINodePtr<zelui::controls::UI_StaticText>(L"timeLeftStaticTextRight");
        if (mDisclosure) {
            mDisclosure->NotifyWhenChanged([this] { ShowDetails(mDisclosure->IsChecked()); });
        }
        ShowDetails(mDisclosure && mDisclosure->IsChecked());
        if (mTimeLeftText) {
            mTimeLeftText->SetText(LoadString(kStr_RenderProgressTimeLeftUnknown));
        }
        RefreshElapsed();
        mElapsedTimer = std::make_unique<zelui::ui::UI_Timer>(kElapsedRefreshMs, [this] { RefreshElapsed(); });
        mElapsedTimer->Start();
    }

    void OnTimeLeft(double inSecondsLeft) override
    {
        if (!mTimeLeftText) {
            return;
        }
        mTimeLeftText->SetText(inSecondsLeft >= 0.0 && inSecondsLeft <= kLongestTimeLeftSeconds
                                   ? FormatDuration(static_cast<std::int64_t>(std::ceil(inSecondsLeft)))
                                   : LoadString(kStr_RenderProgressTimeLeftUnknown));
    }

    void OnMessageHandled() override { RefreshElapsed(); }

    void ShowDetails(bool inShow)
    {
        if (mDetails) {
            mDetails->SetVisible(inShow);
        }
    }

    void RefreshElapsed()
    {
        if (mElapsedText) {
            mElapsedText->SetText(FormatDuration((KOR::Clock::GetMilliseconds() - BindClock()) / 1000));
        }
    }

    boost::intrusive_ptr<zelui::controls::UI_CheckBox> mDisclosure;
    zelui::ui::UI_NodePtr mDetails;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> mElapsedText;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> mTimeLeftText;
    std::unique_ptr<zelui::ui::UI_Timer> mElapsedTimer;
};

std::wstring TwoDigits(std::int64_t inValue) { return (inValue < 10 ? L"0" : L"") + std::to_wstring(inValue); }

} // namespace

std::wstring FormatDuration(std::int64_t inSeconds)
{
    const std::int64_t seconds = inSeconds < 0 ? 0 : inSeconds;
    const std::int64_t hours = seconds / 3600;
    const std::int64_t minutes = seconds / 60 % 60;
    if (hours > 0) {
        return std::to_wstring(hours) + L":" + TwoDigits(minutes) + L":" + TwoDigits(seconds % 60);
    }
    return std::to_wstring(minutes) + L":" + TwoDigits(seconds % 60);
}

namespace RenderProgress {

bool DoRenderProgressDialog(KOR::InterfaceRef<KOR::IBatchOperation> inBatchOperation)
{
    ZEL_INPUT_CONTRACT(inBatchOperation != NULL);
    std::stringstream script;
    const UIF::Workspace* workspace = PrepareScriptDialog(L"RenderProgressDialog.vrel", script);
    if (!workspace) {
        inBatchOperation->RequestCancel();
        return false;
    }
    const zelui::ui::UI_NodePtr parent = ProgressDialogParent(*workspace, nullptr);
    RenderProgressDialog dialog(std::move(inBatchOperation), *workspace, parent.get());
    dialog.Run(script);
    return dialog.Succeeded();
}

} // namespace RenderProgress

} // namespace DLG
