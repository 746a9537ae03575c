#pragma once

#include <cstdint>
#include <string>

#include "DLG/DialogBaseImpl.h"
#include "KOR/BatchOperation.h"
#include "KOR/InterfaceRef.h"
#include "KOR/Platform.h"
#include "KOR/Stations.h"

namespace DLG {

inline constexpr int kProgressBarTotal = 10000;
// The bar stops here until the operation reports completion, so a full bar always means done.
inline constexpr int kProgressBarCeiling = 9600;
inline constexpr std::int64_t kProgressShowDelayMs = 1500;
inline constexpr std::int64_t kProgressMinimumShownMs = 750;

// The bar's value for a fraction reported before completion: out of kProgressBarTotal,
// truncated, kept between 0 and kProgressBarCeiling.
int ProgressBarValue(float inFraction);

// Where a progress dialog opens: over the window that is modal now, otherwise over the main
// window, otherwise over inParent.
zelui::ui::UI_NodePtr ProgressDialogParent(const UIF::Workspace& inWorkspace, HWND inParent);

// A modal dialog that follows a batch operation through the messages of its station: the
// description as its title text, the progress on "progressBar", and "cancelButton" to ask the
// operation to stop. It ends itself when the operation completes.
class ProgressDialogImpl : public DialogBaseImpl, public KOR::Listener {
public:
    ProgressDialogImpl(const std::wstring& inNodeName, std::wstring inTitle,
                       KOR::InterfaceRef<KOR::IBatchOperation> inOperation,
                       const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent);
    ~ProgressDialogImpl() override;

    // The operation completed and nobody asked it to stop.
    bool Succeeded() const { return mCompleted && !WasCancelled(); }

protected:
    void BindControls() override;
    void ListenerMessageHandler(const std::wstring& inStation, const KOR::Message& inMessage) override;

    // What dialogs that show more of the operation add; each runs after the base has handled
    // the message.
    virtual void OnTimeLeft(double inSecondsLeft);
    virtual void OnMessageHandled();

    // The clock when the controls were bound.
    std::int64_t BindClock() const { return mBindClock; }
    bool CancelRequested() const { return WasCancelled(); }

private:
    void HandleProgress(float inFraction);
    void HandleDescription(const std::wstring& inDescription);
    void HandleCompletion();
    void RequestCancel();

    KOR::InterfaceRef<KOR::IBatchOperation> mOperation;
    std::wstring mStation;
    std::wstring mTitle;
    std::int64_t mBindClock = 0;
    std::int64_t mStartClock = 0;
    std::int64_t mShowDeadline = 0;
    bool mShown = false;
    bool mCompleted = false;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> mTitleText;
    boost::intrusive_ptr<zelui::controls::UI_ProgressBar> mProgressBar;
    boost::intrusive_ptr<zelui::controls::UI_Button> mCancelButton;
};

} // namespace DLG
