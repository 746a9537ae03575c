#include "DLG/SequenceZeroPointDialog.h"

#include "DLG/DialogBaseImpl.h"
#include "DLG/Module.h"
#include "DLG/TimeCtrl.h"
#include "DLG/TimecodeInfo.h"
#include "UIF/Workspace.h"

namespace DLG {

namespace {

// With no project open, times show as 30 fps timecode.
UIF::TimecodeControlInfo CurrentTimecodeInfo()
{
    if (const KOR::InterfaceRef<BE::IProject> project = GetCurrentProject()) {
        return CreateNotifyingTimecodeControlInfo(project);
    }
    UIF::TimecodeControlInfo info;
    info.displayFormat = KOR::kTimecodeFormat_SMPTE30;
    info.videoFrameRate = KOR::kFrameRate_Video30;
    info.audioDisplayFormat = KOR::kTimecodeFormat_AudioSamples;
    info.audioRate = KOR::kFrameRate_Audio48000;
    return info;
}

class SequenceZeroPointDialog : public DialogBaseImpl {
public:
    SequenceZeroPointDialog(const UIF::Workspace& inWorkspace, KOR::Time inZeroPoint)
        : DialogBaseImpl(L"SequenceZeroPointDialog", inWorkspace.GetDrawSupplier(),
                         inWorkspace.GetMainTopLevelWindow()),
          mZeroPoint(inZeroPoint)
    {
    }

    KOR::Time ZeroPoint() const { return mZeroPoint; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        const auto scripted = GetUINodePtr<zelui::controls::UI_HotTextNumber>(L"timecodeControl");
        if (!scripted) {
            return;
        }
        mTimeCtrl = new TimeCtrl(*scripted, CurrentTimecodeInfo());
        scripted->SetVisible(false);
        mTimeCtrl->SetVisible(true);
        mTimeCtrl->SetTime(mZeroPoint);
        mTimeCtrl->SetEnabled(true);
        mTimeCtrl->SetFocus();
    }

    void ReadControls() override
    {
        if (mTimeCtrl) {
            mZeroPoint = mTimeCtrl->GetTime();
        }
    }

    KOR::Time mZeroPoint;
    boost::intrusive_ptr<TimeCtrl> mTimeCtrl;
};

} // namespace

bool DoSequenceZeroPointDialog(KOR::Time& ioZeroPoint)
{
    std::stringstream script;
    const UIF::Workspace* workspace = PrepareScriptDialog(L"SequenceZeroPointDialog.vrel", script);
    if (!workspace) {
        return false;
    }
    SequenceZeroPointDialog dialog(*workspace, ioZeroPoint);
    dialog.Run(script);
    if (dialog.WasCancelled()) {
        return false;
    }
    ioZeroPoint = dialog.ZeroPoint();
    return true;
}

} // namespace DLG
