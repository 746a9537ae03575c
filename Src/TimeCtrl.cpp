#include "DLG/TimeCtrl.h"

#include <algorithm>
#include <cmath>

#include "KOR/Stations.h"
#include "UIF/KeyFilter.h"
#include "zelcore/Error.h"

namespace DLG {

namespace {

constexpr double kFontSize = 11.0;
// Ten thousand hours: longer than any sequence, far inside what a time holds.
constexpr KOR::Time kDefaultMaximumTime = KOR::Time::FromSeconds(36000000);
constexpr int kMaxDelimiters = 3;
constexpr int kMaxDigits = 8;
constexpr int kMaxAudioDigits = 11;

bool IsAudioTimeFormat(unsigned int inFormat)
{
    return inFormat == KOR::kTimecodeFormat_AudioSamples || inFormat == KOR::kTimecodeFormat_Milliseconds;
}

bool NeedsFrameRate(unsigned int inFormat)
{
    return inFormat == KOR::kTimecodeFormat_Frames || inFormat == KOR::kTimecodeFormat_FeetFrames35mm;
}

} // namespace

TimeCtrl::TimeCtrl(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
                   const UIF::TimecodeControlInfo& inInfo)
    : UI_HotTextNumber(inSupplier, inParent)
{
    Initialize(inInfo, std::wstring());
}

TimeCtrl::TimeCtrl(zelui::controls::UI_HotTextNumber& inReplaced, const UIF::TimecodeControlInfo& inInfo,
                   const std::wstring& inStationName)
    : UI_HotTextNumber(inReplaced)
{
    SetLocalRect(inReplaced.GetLocalRect());
    Initialize(inInfo, inStationName);
}

TimeCtrl::~TimeCtrl() { KOR::StationRegistry::DisposeStation(mStation); }

void TimeCtrl::Initialize(const UIF::TimecodeControlInfo& inInfo, const std::wstring& inStationName)
{
    mStation = inStationName.empty() ? KOR::StationRegistry::RegisterUniqueStation()
                                     : KOR::StationRegistry::RegisterStation(inStationName);
    mMaximumTime = kDefaultMaximumTime;
    SetFontSize(kFontSize);
    SetMinimum(0.0);
    UpdateNumberRange();
    SetFormatFlags(zelui::controls::kNumberFormat_Plain);
    SetWantsKeyboardFocus(true);
    SetEnabled(false);
    ApplyProjectInfo(inInfo);
    SetInteractiveChangeHandler(
        [this](int inMessage, bool inCancelled) { mRelay.Relay(*this, inMessage, inCancelled); });
    mNotifier = inInfo.notifier;
    if (mNotifier) {
        mNotifierConnection =
            mNotifier->Connect([this](const UIF::TimecodeInfo& inChanged) { ApplyProjectInfo(inChanged); });
    }
}

void TimeCtrl::ApplyProjectInfo(const UIF::TimecodeInfo& inInfo)
{
    mPrimary = {inInfo.displayFormat, inInfo.videoFrameRate};
    mAlternate = {inInfo.audioDisplayFormat, inInfo.audioRate};
    SetUseAlternateDisplay(mUseAlternate);
}

void TimeCtrl::SetUseAlternateDisplay(bool inUseAlternate)
{
    mUseAlternate = inUseAlternate;
    const Display wanted = mUseAlternate ? mAlternate : mPrimary;
    // The format first, so that a zero rate can still turn a frame count into milliseconds.
    SetDisplayFormat(wanted.format);
    SetFrameRate(wanted.rate);
}

void TimeCtrl::StoreCurrentDisplay() { (mUseAlternate ? mAlternate : mPrimary) = {mFormat, mRate}; }

// With no rate the number counts what the format shows on its own (its frames, or milliseconds).
KOR::FrameRate TimeCtrl::CountingRate() const
{
    if (!mRate.IsZero()) {
        return mRate;
    }
    const KOR::FrameRate own = KOR::Timecode::CountingRate(mFormat, mRate);
    return own.IsZero() ? KOR::FrameRate(1000) : own;
}

void TimeCtrl::SetNumberFromTime(KOR::Time inTime)
{
    mExactTime = inTime;
    mExactNumber = static_cast<double>(inTime.ToFrame64(CountingRate()));
    SetValue(mExactNumber);
}

void TimeCtrl::SetTime(KOR::Time inTime)
{
    mTimecode.SetTime(inTime);
    SetNumberFromTime(inTime);
    UpdateStringFromValue();
}

KOR::Time TimeCtrl::GetTime() const
{
    if (GetValue() == mExactNumber) {
        return Clamped(mExactTime);
    }
    return Clamped(KOR::Time(static_cast<std::int64_t>(std::trunc(GetValue())), CountingRate()));
}

// Drags and arrow keys stop at the limits: the number's range is the limits' frames.
void TimeCtrl::UpdateNumberRange()
{
    const KOR::FrameRate rate = CountingRate();
    const std::int64_t lowest = mMinimumTime.ToFrame64(rate);
    const bool onFrame = KOR::Time(lowest, rate) == mMinimumTime;
    SetMinimum(static_cast<double>(onFrame ? lowest : lowest + 1));
    SetMaximum(std::max(GetMinimum(), static_cast<double>(mMaximumTime.ToFrame64(rate))));
}

void TimeCtrl::SetDisplayFormat(unsigned int inFormat)
{
    mFormat = inFormat;
    mTimecode.SetFormat(mFormat, mRate);
    StoreCurrentDisplay();
    UpdateStringFromValue();
    // A drag always steps one frame per pixel.
    SetIsShiftModifierAFactor(false);
    SetIsCmdModifierAFactor(false);
}

void TimeCtrl::SetFrameRate(KOR::FrameRate inRate)
{
    const KOR::Time time = GetTime();
    mRate = inRate;
    mTimecode.SetFormat(mFormat, mRate);
    UpdateNumberRange();
    SetNumberFromTime(time);
    if (mRate == KOR::kFrameRate_Zero && NeedsFrameRate(mFormat)) {
        SetDisplayFormat(KOR::kTimecodeFormat_Milliseconds);
    }
    StoreCurrentDisplay();
    UpdateStringFromValue();
}

void TimeCtrl::SetMinimumTime(KOR::Time inTime)
{
    mMinimumTime = inTime;
    UpdateNumberRange();
    UpdateStringFromValue();
}

void TimeCtrl::SetMaximumTime(KOR::Time inTime)
{
    mMaximumTime = inTime;
    UpdateNumberRange();
    UpdateStringFromValue();
}

// Above the maximum shows the maximum; below the minimum the minimum, which wins when they cross.
KOR::Time TimeCtrl::Clamped(KOR::Time inTime) const
{
    if (inTime > mMaximumTime) {
        inTime = mMaximumTime;
    }
    if (inTime < mMinimumTime) {
        inTime = mMinimumTime;
    }
    return inTime;
}

void TimeCtrl::UpdateStringFromValue()
{
    mTimecode.SetTime(GetTime());
    SetText(mTimecode.GetString());
}

bool TimeCtrl::IsAcceptableEntry(const std::wstring& inText) const
{
    int delimiters = 0;
    int digits = 0;
    for (const wchar_t c : inText) {
        if (UIF::KeyFilterStandard::AcceptTimecodeDelimiter(c)) {
            ++delimiters;
        } else if (UIF::KeyFilterStandard::AcceptUnsignedInteger(c)) {
            ++digits;
        }
    }
    return delimiters <= kMaxDelimiters && digits <= (IsAudioTimeFormat(mFormat) ? kMaxAudioDigits : kMaxDigits);
}

void TimeCtrl::CommitInPlaceText()
{
    auto* field = dynamic_cast<zelui::controls::UI_TextEdit*>(GetFirstChild());
    if (!field) {
        zelcore::config::ThrowError(zelcore::messages::kInvalidTypeConversion);
    }
    std::wstring text = field->GetText();
    int sign = 0;
    if (!text.empty() && (text[0] == L'+' || text[0] == L'-')) {
        sign = text[0] == L'+' ? 1 : -1;
        text.erase(0, 1);
    }
    const KOR::Time current = GetTime();
    if (!IsAcceptableEntry(text)) {
        UpdateStringFromValue();
        return;
    }
    const KOR::Time parsed = KOR::Timecode::StringToTime(text, mTimecode.GetStyle(), mFormat);
    if (parsed == KOR::kTime_Invalid) {
        UpdateStringFromValue();
        return;
    }
    const KOR::Time entered = sign > 0 ? current + parsed : sign < 0 ? current - parsed : parsed;
    SetNumberFromTime(Clamped(entered));
    UpdateStringFromValue();
    BroadcastChange();
}

// Option-click belongs to the control: it starts no typing.
bool TimeCtrl::UI_DoMouseEvent(zelui::ui::UI_Node*, const zelui::ui::MouseEvent& inEvent)
{
    return inEvent.type == zelui::ui::MouseEvent::Type::kClick && inEvent.button == 1 &&
           (inEvent.modifiers & zelui::ui::kModifier_Option) != 0;
}

} // namespace DLG
