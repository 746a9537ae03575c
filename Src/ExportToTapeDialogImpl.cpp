#include "DLG/ExportToTapeDialogImpl.h"

#include <array>

#include "DLG/DialogBaseImpl.h"
#include "DLG/Module.h"
#include "DLG/ScriptLoader.h"
#include "DLG/TimeCtrl.h"
#include "DLG/TimecodeInfo.h"
#include "zelcore/Error.h"

namespace DLG {

namespace {

using zelui::controls::UI_Button;
using zelui::controls::UI_CheckBox;
using zelui::controls::UI_NumberEdit;
using zelui::controls::UI_StaticText;

constexpr unsigned int kIdleStatusText = 11250;
constexpr unsigned int kIdleButtonText = 11251;

// Status and button texts of states 1 to 9.
constexpr std::array<std::pair<unsigned int, unsigned int>, 9> kStateTexts = {{{11252, 11253},
                                                                              {11254, 11253},
                                                                              {11255, 11256},
                                                                              {11260, 11251},
                                                                              {11257, 11251},
                                                                              {11258, 11251},
                                                                              {11260, 11251},
                                                                              {11259, 11251},
                                                                              {11261, 11251}}};

constexpr double kMaximumFrames = 1'000'000'000.0;
constexpr double kMaximumAbortAfter = 999.0;

struct Values {
    std::array<KOR::Timecode, 3> timecodes;
    KOR::Time assembleTime;
    bool activate = false;
    bool assembleAtTimecode = false;
    bool delayMovieStart = false;
    bool preroll = false;
    bool abortAfter = false;
    bool renderAudio = false;
    bool reportDroppedFrames = false;
    std::uint32_t delayFrames = 0;
    std::uint32_t prerollFrames = 0;
    std::uint32_t abortAfterCount = 1;
};

// A check box that is mixed reads as clear: only a checked one says yes.
bool IsOn(const UI_CheckBox& inBox) { return inBox.GetCheckValue() == UI_CheckBox::kCheck_Checked; }

std::uint32_t NumberOf(const UI_NumberEdit& inEdit) { return static_cast<std::uint32_t>(inEdit.GetValue()); }

// With no project open, the assemble time shows as 30 fps timecode.
UIF::TimecodeControlInfo AssembleTimecodeInfo()
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

} // namespace

std::pair<unsigned int, unsigned int> ExportStateTextIDs(std::uint32_t inState)
{
    if (inState >= 1 && inState <= kStateTexts.size()) {
        return kStateTexts[inState - 1];
    }
    return {kIdleStatusText, kIdleButtonText};
}

class ExportToTapeDialogImpl::Impl : public DialogBaseImpl {
public:
    Impl(const std::wstring& inScriptName, const zelui::drawbot::SupplierInterface* inSupplier,
         zelui::ui::UI_Node* inParent, bool inHasDeviceController,
         boost::shared_ptr<ControlChangedFunction> inCallback)
        : DialogBaseImpl(inScriptName, inSupplier, inParent), mHasDeviceController(inHasDeviceController),
          mCallback(std::move(inCallback))
    {
        ScriptLoader loader(inScriptName + L".vrel");
        mScriptRead = loader.GetStream(mScript);
    }

    bool RunDialog()
    {
        if (!mScriptRead) {
            return false;
        }
        Run(mScript);
        ReleaseControls();
        return !WasCancelled();
    }

    bool IsRunning() const { return GetDialogView() != nullptr; }

    void SetValues(const Values& inValues)
    {
        mValues = inValues;
        mValues.activate = mValues.activate && mHasDeviceController;
        if (IsRunning()) {
            ShowValues();
        }
    }

    Values CurrentValues() const
    {
        Values values = mValues;
        if (!IsRunning()) {
            return values;
        }
        if (mTimeCtrl) {
            values.assembleTime = mTimeCtrl->GetTime();
        }
        const std::pair<const boost::intrusive_ptr<UI_CheckBox>&, bool&> boxes[] = {
            {mActivateBox, values.activate},       {mAssembleBox, values.assembleAtTimecode},
            {mDelayBox, values.delayMovieStart},   {mPrerollBox, values.preroll},
            {mAbortAfterBox, values.abortAfter},   {mRenderAudioBox, values.renderAudio},
            {mReportDroppedBox, values.reportDroppedFrames}};
        for (const auto& [box, value] : boxes) {
            if (box) {
                value = IsOn(*box);
            }
        }
        const std::pair<const boost::intrusive_ptr<UI_NumberEdit>&, std::uint32_t&> edits[] = {
            {mDelayEdit, values.delayFrames}, {mPrerollEdit, values.prerollFrames},
            {mAbortAfterEdit, values.abortAfterCount}};
        for (const auto& [edit, value] : edits) {
            if (edit) {
                value = NumberOf(*edit);
            }
        }
        return values;
    }

    void SetExportState(std::uint32_t inState)
    {
        mState = inState;
        if (!IsRunning()) {
            return;
        }
        const auto [statusText, buttonText] = ExportStateTextIDs(inState);
        if (mStatusText) {
            mStatusText->SetText(LoadString(statusText));
        }
        if (mRecordButton) {
            SetButtonText(LoadString(buttonText));
        }
    }

    void SetActionButtonString(const std::wstring& inText)
    {
        ZEL_INPUT_CONTRACT(mRecordButton != nullptr);
        SetButtonText(inText);
    }

    void SetDroppedFramesString(const std::wstring& inText)
    {
        ZEL_INPUT_CONTRACT(mDroppedFramesText != nullptr);
        mDroppedFramesText->SetText(inText);
    }

    void UpdateProgressTimecodes(const KOR::Timecode& inStart, const KOR::Timecode& inEnd,
                                 const KOR::Timecode& inCurrent)
    {
        ZEL_INPUT_CONTRACT(mStartText != nullptr && mEndText != nullptr && mCurrentText != nullptr);
        ShowTimecodes(inStart, inEnd, inCurrent);
    }

    void Close()
    {
        if (zelui::ui::UI_Dialog* view = GetDialogView()) {
            mValues = CurrentValues();
            SetCancelled(false);
            view->EndDialog(zelui::ui::UI_Dialog::kResponse_Accept);
        }
    }

private:
    // Enter never ends this dialog: the export controller ends it with CloseDialog and the user
    // with Cancel, so a stray Enter during an export neither confirms nor stops it.
    bool ValidateControls() override { return false; }

    void BindControls() override
    {
        BindOkAndCancel();
        mRecordButton = GetUINodePtr<UI_Button>(L"recordButton");
        mStatusText = GetUINodePtr<UI_StaticText>(L"statusText");
        mDroppedFramesText = GetUINodePtr<UI_StaticText>(L"numDroppedFrames");
        mStartText = GetUINodePtr<UI_StaticText>(L"startTimecodeText");
        mEndText = GetUINodePtr<UI_StaticText>(L"endTimecodeText");
        mCurrentText = GetUINodePtr<UI_StaticText>(L"currentTimecodeText");
        BindTimeControl();
        mActivateBox = BindNotifying<UI_CheckBox>(L"activateRecordingBoxCheckbox");
        mAssembleBox = BindNotifying<UI_CheckBox>(L"assembleAtTimecodeCheckbox");
        mDelayBox = BindNotifying<UI_CheckBox>(L"delayMovieStartByCheckbox");
        mPrerollBox = BindNotifying<UI_CheckBox>(L"prerollCheckbox");
        mAbortAfterBox = BindNotifying<UI_CheckBox>(L"abortAfterCheckbox");
        mRenderAudioBox = BindNotifying<UI_CheckBox>(L"renderAudioBeforeExportCheckbox");
        mReportDroppedBox = BindNotifying<UI_CheckBox>(L"reportDroppedFramesCheckbox");
        mDelayEdit = BindNotifying<UI_NumberEdit>(L"framesTextEdit");
        mPrerollEdit = BindNotifying<UI_NumberEdit>(L"prerollTextEdit");
        mAbortAfterEdit = BindNotifying<UI_NumberEdit>(L"abortAfterTextEdit");
        BindNotifying<UI_Button>(L"recordButton");
        if (mActivateBox && !mHasDeviceController) {
            mActivateBox->SetEnabled(false);
        }
        ShowValues();
        SetExportState(mState);
    }

    // The time field of the script is replaced by a time control that shows the project's timecode.
    void BindTimeControl()
    {
        const auto scripted = GetUINodePtr<zelui::controls::UI_HotTextNumber>(L"timecodeControl");
        if (!scripted) {
            return;
        }
        mTimeCtrl = new TimeCtrl(*scripted, AssembleTimecodeInfo());
        scripted->SetVisible(false);
        mTimeCtrl->SetVisible(true);
        mTimeCtrl->SetEnabled(true);
        mTimeCtrl->NotifyWhenChanged([this] { Forward(L"timecodeControl"); });
    }

    template <class Control>
    boost::intrusive_ptr<Control> BindNotifying(const std::wstring& inName)
    {
        return OnChange<Control>(inName, [this, inName] { Forward(inName); });
    }

    // Only the user's changes reach the host: the number edits report the dialog's own settings too.
    void Forward(const std::wstring& inName)
    {
        if (!mShowingValues && mCallback && *mCallback) {
            (*mCallback)(inName);
        }
    }

    // The window and its widgets are gone once a run ends; the setters then see no controls.
    void ReleaseControls()
    {
        mRecordButton.reset();
        for (auto* text : {&mStatusText, &mDroppedFramesText, &mStartText, &mEndText, &mCurrentText}) {
            text->reset();
        }
        for (auto* box : {&mActivateBox, &mAssembleBox, &mDelayBox, &mPrerollBox, &mAbortAfterBox, &mRenderAudioBox,
                          &mReportDroppedBox}) {
            box->reset();
        }
        for (auto* edit : {&mDelayEdit, &mPrerollEdit, &mAbortAfterEdit}) {
            edit->reset();
        }
        mTimeCtrl.reset();
    }

    static void SetLimits(const boost::intrusive_ptr<UI_NumberEdit>& ioEdit, double inMinimum, double inMaximum)
    {
        if (ioEdit) {
            ioEdit->SetDecimalPlaces(0);
            ioEdit->SetRange(inMinimum, inMaximum);
        }
    }

    void ShowValues()
    {
        mShowingValues = true;
        if (mStartText && mEndText && mCurrentText) {
            ShowTimecodes(mValues.timecodes[0], mValues.timecodes[1], mValues.timecodes[2]);
        }
        SetLimits(mDelayEdit, 0.0, kMaximumFrames);
        SetLimits(mPrerollEdit, 0.0, kMaximumFrames);
        SetLimits(mAbortAfterEdit, 1.0, kMaximumAbortAfter);
        if (mTimeCtrl) {
            mTimeCtrl->SetTime(mValues.assembleTime);
        }
        const std::pair<const boost::intrusive_ptr<UI_CheckBox>&, bool> boxes[] = {
            {mActivateBox, mValues.activate},       {mAssembleBox, mValues.assembleAtTimecode},
            {mDelayBox, mValues.delayMovieStart},   {mPrerollBox, mValues.preroll},
            {mAbortAfterBox, mValues.abortAfter},   {mRenderAudioBox, mValues.renderAudio},
            {mReportDroppedBox, mValues.reportDroppedFrames}};
        for (const auto& [box, value] : boxes) {
            if (box) {
                box->SetChecked(value);
            }
        }
        const std::pair<const boost::intrusive_ptr<UI_NumberEdit>&, std::uint32_t> edits[] = {
            {mDelayEdit, mValues.delayFrames}, {mPrerollEdit, mValues.prerollFrames},
            {mAbortAfterEdit, mValues.abortAfterCount}};
        for (const auto& [edit, value] : edits) {
            if (edit) {
                edit->SetValue(static_cast<double>(value));
            }
        }
        mShowingValues = false;
    }

    void ShowTimecodes(const KOR::Timecode& inStart, const KOR::Timecode& inEnd, const KOR::Timecode& inCurrent)
    {
        mStartText->SetText(inStart.GetString());
        mEndText->SetText(inEnd.GetString());
        mCurrentText->SetText(inCurrent.GetString());
    }

    void SetButtonText(const std::wstring& inText)
    {
        if (mRecordButton) {
            mRecordButton->SetLabel(inText);
        }
    }

    bool mHasDeviceController;
    boost::shared_ptr<ControlChangedFunction> mCallback;
    std::stringstream mScript;
    bool mScriptRead = false;
    bool mShowingValues = false;
    Values mValues;
    std::uint32_t mState = 0;
    boost::intrusive_ptr<UI_Button> mRecordButton;
    boost::intrusive_ptr<UI_StaticText> mStatusText;
    boost::intrusive_ptr<UI_StaticText> mDroppedFramesText;
    boost::intrusive_ptr<UI_StaticText> mStartText;
    boost::intrusive_ptr<UI_StaticText> mEndText;
    boost::intrusive_ptr<UI_StaticText> mCurrentText;
    boost::intrusive_ptr<TimeCtrl> mTimeCtrl;
    boost::intrusive_ptr<UI_CheckBox> mActivateBox;
    boost::intrusive_ptr<UI_CheckBox> mAssembleBox;
    boost::intrusive_ptr<UI_CheckBox> mDelayBox;
    boost::intrusive_ptr<UI_CheckBox> mPrerollBox;
    boost::intrusive_ptr<UI_CheckBox> mAbortAfterBox;
    boost::intrusive_ptr<UI_CheckBox> mRenderAudioBox;
    boost::intrusive_ptr<UI_CheckBox> mReportDroppedBox;
    boost::intrusive_ptr<UI_NumberEdit> mDelayEdit;
    boost::intrusive_ptr<UI_NumberEdit> mPrerollEdit;
    boost::intrusive_ptr<UI_NumberEdit> mAbortAfterEdit;
};

ExportToTapeDialogImpl::ExportToTapeDialogImpl(const std::wstring& inScriptName,
                                               const zelui::drawbot::SupplierInterface* inSupplier,
                                               zelui::ui::UI_Node* inParent, bool inHasDeviceController,
                                               boost::shared_ptr<ControlChangedFunction> inCallback)
    : mImpl(std::make_unique<Impl>(inScriptName, inSupplier, inParent, inHasDeviceController, std::move(inCallback)))
{
}

ExportToTapeDialogImpl::~ExportToTapeDialogImpl() = default;

bool ExportToTapeDialogImpl::DoModal() { return mImpl->RunDialog(); }

void ExportToTapeDialogImpl::SetControlValues(const KOR::Timecode& inFirst, const KOR::Timecode& inSecond,
                                              const KOR::Timecode& inThird, KOR::Time inAssembleTime,
                                              bool inActivateRecordingDevice, bool inAssembleAtTimecode,
                                              bool inDelayMovieStart, bool inPreroll, bool inAbortAfter,
                                              bool inRenderAudioBeforeExport, bool inReportDroppedFrames,
                                              std::uint32_t inDelayFrames, std::uint32_t inPrerollFrames,
                                              std::uint32_t inAbortAfterCount)
{
    Values values;
    values.timecodes = {inFirst, inSecond, inThird};
    values.assembleTime = inAssembleTime;
    values.activate = inActivateRecordingDevice;
    values.assembleAtTimecode = inAssembleAtTimecode;
    values.delayMovieStart = inDelayMovieStart;
    values.preroll = inPreroll;
    values.abortAfter = inAbortAfter;
    values.renderAudio = inRenderAudioBeforeExport;
    values.reportDroppedFrames = inReportDroppedFrames;
    values.delayFrames = inDelayFrames;
    values.prerollFrames = inPrerollFrames;
    values.abortAfterCount = inAbortAfterCount;
    mImpl->SetValues(values);
}

void ExportToTapeDialogImpl::GetControlValues(KOR::Time& outAssembleTime, bool& outAssembleAtTimecode,
                                              bool& outDelayMovieStart, bool& outPreroll, bool& outAbortAfter,
                                              bool& outRenderAudioBeforeExport, bool& outReportDroppedFrames,
                                              bool& outActivateRecordingDevice, std::uint32_t& outDelayFrames,
                                              std::uint32_t& outPrerollFrames, std::uint32_t& outAbortAfterCount) const
{
    const Values values = mImpl->CurrentValues();
    outAssembleTime = values.assembleTime;
    outAssembleAtTimecode = values.assembleAtTimecode;
    outDelayMovieStart = values.delayMovieStart;
    outPreroll = values.preroll;
    outAbortAfter = values.abortAfter;
    outRenderAudioBeforeExport = values.renderAudio;
    outReportDroppedFrames = values.reportDroppedFrames;
    outActivateRecordingDevice = values.activate;
    outDelayFrames = values.delayFrames;
    outPrerollFrames = values.prerollFrames;
    outAbortAfterCount = values.abortAfterCount;
}

void ExportToTapeDialogImpl::SetExportState(std::uint32_t inState) { mImpl->SetExportState(inState); }

void ExportToTapeDialogImpl::SetActionButtonString(const std::wstring& inText) { mImpl->SetActionButtonString(inText); }

void ExportToTapeDialogImpl::SetDroppedFramesString(const std::wstring& inText)
{
    mImpl->SetDroppedFramesString(inText);
}

void ExportToTapeDialogImpl::UpdateProgressTimecodes(const KOR::Timecode& inStart, const KOR::Timecode& inEnd,
                                                     const KOR::Timecode& inCurrent)
{
    mImpl->UpdateProgressTimecodes(inStart, inEnd, inCurrent);
}

void ExportToTapeDialogImpl::CloseDialog() { mImpl->Close(); }

} // namespace DLG
