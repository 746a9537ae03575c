#include "DLG/SequenceZeroPointDialog.h"

#include "DLG/DialogBaseImpl.h"
#include "DLG/Module.h"
#include "DLG/TimeCtrl.h"
#include "DLG/TimecodeInfo.h"

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
        : DialogBaseImpl(L"SequenceZeroPointDialog", inWorkspace), mZeroPoint(inZeroPoint)
    {
    }

    KOR::Time Result() const { return mZeroPoint; }

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
        Bind(mTimeCtrl, mZeroPoint);
        mTimeCtrl->SetEnabled(true);
        mTimeCtrl->SetFocus();
    }

    KOR::Time mZeroPoint;
    boost::intrusive_ptr<TimeCtrl> mTimeCtrl;
};

} // namespace

bool DoSequenceZeroPointDialog(KOR::Time& ioZeroPoint)
{
    return RunScriptDialog<SequenceZeroPointDialog>(L"SequenceZeroPointDialog.vrel", ioZeroPoint);
}

} // namespace DLG
