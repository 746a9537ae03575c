#include "DLG/ClipSpeedDialogImpl.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "BE/Backend.h"
#include "DLG/Module.h"
#include "DLG/StringIDs.h"
#include "DLG/TimecodeInfo.h"
#include "UIF/Workspace.h"
#include "zelcore/Error.h"

namespace DLG::ClipSpeedDialog {

namespace {

__extension__ typedef __int128 Int128;

constexpr double kHundredthsPerPercent = 100.0;
constexpr double kHundredth = 0.01;
constexpr float kHundredthSingle = 0.01f;
constexpr double kFactorPerHundredth = 0.0001;
constexpr std::int64_t kHundredthsPerFactor = 10000;

// inNumerator / inDenominator to the nearest whole number, half to even; inDenominator > 0.
Int128 RoundedQuotient(Int128 inNumerator, Int128 inDenominator)
{
    const bool negative = inNumerator < 0;
    const Int128 magnitude = negative ? -inNumerator : inNumerator;
    Int128 quotient = magnitude / inDenominator;
    const Int128 twiceRemainder = 2 * (magnitude % inDenominator);
    if (twiceRemainder > inDenominator || (twiceRemainder == inDenominator && (quotient & 1) != 0)) {
        ++quotient;
    }
    return negative ? -quotient : quotient;
}

std::int64_t ToInt64(Int128 inValue)
{
    return static_cast<std::int64_t>(std::clamp<Int128>(inValue, std::numeric_limits<std::int64_t>::min(),
                                                         std::numeric_limits<std::int64_t>::max()));
}

// A clip's rate multiplier; one that is not a positive number counts as 1.
double ValidMultiplier(double inMultiplier)
{
    return std::isfinite(inMultiplier) && inMultiplier > 0.0 ? inMultiplier : 1.0;
}

// inTicks x inMultiplier x 10000 / inDivisor, rounded half to even. A double is an integer
// times a power of two, so the product is an exact fraction of 128-bit integers; only values far
// beyond any clip's length fall back to long double.
std::int64_t ScaledQuotient(std::int64_t inTicks, double inMultiplier, std::int64_t inDivisor)
{
    int exponent = 0;
    const double fraction = std::frexp(ValidMultiplier(inMultiplier), &exponent);
    auto mantissa = static_cast<std::int64_t>(std::ldexp(fraction, std::numeric_limits<double>::digits));
    exponent -= std::numeric_limits<double>::digits;
    while ((mantissa & 1) == 0) {
        mantissa >>= 1;
        ++exponent;
    }
    // multiplier = mantissa x 2^exponent: the power of two goes above or below the line.
    constexpr int kMaxShift = 62;
    Int128 numerator = 0;
    Int128 denominator = inDivisor;
    Int128& scaled = exponent > 0 ? numerator : denominator;
    const bool fits = std::abs(exponent) <= kMaxShift &&
                      !__builtin_mul_overflow(static_cast<Int128>(inTicks), static_cast<Int128>(mantissa), &numerator) &&
                      !__builtin_mul_overflow(numerator, static_cast<Int128>(kHundredthsPerFactor), &numerator) &&
                      !__builtin_mul_overflow(scaled, static_cast<Int128>(1) << std::abs(exponent), &scaled);
    if (fits) {
        return ToInt64(RoundedQuotient(numerator, denominator));
    }
    const long double exact = static_cast<long double>(inTicks) * ValidMultiplier(inMultiplier) *
                              kHundredthsPerFactor / static_cast<long double>(inDivisor);
    return static_cast<std::int64_t>(std::clamp<long double>(std::nearbyint(exact),
                                                             std::numeric_limits<std::int64_t>::min(),
                                                             std::numeric_limits<std::int64_t>::max()));
}

std::int32_t ClampToHundredths(std::int64_t inHundredths)
{
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(inHundredths, std::numeric_limits<std::int32_t>::min(),
                                                              std::numeric_limits<std::int32_t>::max()));
}

} // namespace

std::int32_t HundredthsFromPercent(double inPercent)
{
    if (std::isnan(inPercent)) {
        return 0;
    }
    // Symmetric, so that a negative speed can always be made positive.
    constexpr double kMost = std::numeric_limits<std::int32_t>::max();
    const double hundredths = std::clamp(inPercent * kHundredthsPerPercent, -kMost, kMost);
    return static_cast<std::int32_t>(std::nearbyint(hundredths));
}

double ShownPercent(std::int32_t inHundredths) { return inHundredths * static_cast<double>(kHundredthSingle); }

// The single-precision number nearest the percentage: 33.33f for 3333.
double KeptPercent(std::int32_t inHundredths) { return static_cast<float>(inHundredths * kHundredth); }

KOR::Time DurationAtSpeed(KOR::Time inReference, double inRateMultiplier, std::int32_t inHundredths)
{
    return KOR::Time(ScaledQuotient(inReference.Ticks(), inRateMultiplier, inHundredths));
}

std::int64_t HundredthsForDuration(KOR::Time inReference, double inRateMultiplier, KOR::Time inDuration)
{
    return ScaledQuotient(inReference.Ticks(), inRateMultiplier, inDuration.Ticks());
}

SpeedLink::SpeedLink(KOR::Time inReference, double inRateMultiplier, double inSpeedPercent, KOR::Time inDuration,
                     bool inGanged)
    : mReference(inReference), mRateMultiplier(ValidMultiplier(inRateMultiplier)), mHundredths(0), mFactor(0.0),
      mDuration(inDuration), mKeptSpeed(inSpeedPercent), mGanged(inGanged)
{
    SetHundredths(std::abs(HundredthsFromPercent(inSpeedPercent)));
}

void SpeedLink::SetHundredths(std::int32_t inHundredths)
{
    mHundredths = inHundredths;
    mFactor = mHundredths * kFactorPerHundredth;
    mFactorDuration.reset();
}

void SpeedLink::SetSpeedForDuration(KOR::Time inDuration, std::int32_t inHundredths)
{
    mHundredths = inHundredths;
    mFactor = static_cast<double>(mReference.Ticks()) * mRateMultiplier / static_cast<double>(inDuration.Ticks());
    mFactorDuration = inDuration;
}

bool SpeedLink::DeriveDuration()
{
    if (mHundredths == 0) {
        return false;
    }
    if (mFactorDuration) {
        mDuration = *mFactorDuration;
        return false;
    }
    mDuration = DurationAtSpeed(mReference, mRateMultiplier, mHundredths);
    if (mDuration <= kLongestDuration) {
        return false;
    }
    mDuration = kLongestDuration;
    SetSpeedForDuration(mDuration, ClampToHundredths(HundredthsForDuration(mReference, mRateMultiplier, mDuration)));
    return true;
}

SpeedLink::Update SpeedLink::Current(std::optional<double> inShownSpeed, bool inCheckReverse, bool inSpeedSet)
{
    if (inSpeedSet) {
        mKeptSpeed = KeptPercent(mHundredths);
    }
    return {inShownSpeed, inCheckReverse, mDuration, mKeptSpeed};
}

// A speed raised to meet the limit shows with its sign turned: negative when it was typed
// positive, positive when it was typed negative.
SpeedLink::Update SpeedLink::EnterSpeed(double inTypedPercent)
{
    const std::int32_t hundredths = HundredthsFromPercent(inTypedPercent);
    const bool typedNegative = hundredths < 0;
    std::optional<double> shown;
    SetHundredths(std::abs(hundredths));
    if (typedNegative) {
        shown = ShownPercent(mHundredths);
    }
    if (mGanged && DeriveDuration()) {
        shown = typedNegative ? ShownPercent(mHundredths) : -ShownPercent(mHundredths);
    }
    return Current(shown, typedNegative, true);
}

SpeedLink::Update SpeedLink::EnterDuration(KOR::Time inTyped, std::int32_t inMaxHundredths)
{
    mDuration = inTyped;
    if (!mGanged) {
        return Current(std::nullopt, false, false);
    }
    const std::int64_t wanted = inTyped.Ticks() > 0 ? HundredthsForDuration(mReference, mRateMultiplier, inTyped)
                                                    : std::numeric_limits<std::int64_t>::max();
    const std::int32_t allowed = ClampToHundredths(std::clamp<std::int64_t>(wanted, 1, std::max(inMaxHundredths, 1)));
    if (allowed == wanted && inTyped <= kLongestDuration) {
        SetSpeedForDuration(inTyped, allowed);
    } else {
        SetHundredths(allowed);
        DeriveDuration();
    }
    return Current(ShownPercent(mHundredths), false, true);
}

SpeedLink::Update SpeedLink::ToggleGang(bool inReversed)
{
    mGanged = !mGanged;
    const bool derived = mGanged && mHundredths != 0;
    std::optional<double> shown;
    if (derived && DeriveDuration()) {
        shown = inReversed ? -ShownPercent(mHundredths) : ShownPercent(mHundredths);
    }
    return Current(shown, false, derived);
}

} // namespace DLG::ClipSpeedDialog

namespace DLG {

namespace {

using ClipSpeedDialog::SpeedLink;
using zelui::controls::UI_CheckBox;
using zelui::controls::UI_HotTextNumber;

constexpr const wchar_t* kLinkedImage = L"GangLinked";
constexpr const wchar_t* kUnlinkedImage = L"GangUnlinked";
// The images are twice as high as wide.
constexpr int kImageAspect = 2;
constexpr double kRateMultiplier = 1.0;
// The speed in the same size as the time control's duration beside it.
constexpr double kFieldFontSize = 11.0;

void WriteGanged(bool inGanged)
{
    BE::Backend* backend = BE::GetBackend();
    if (!backend) {
        KOR::ThrowNullInterfaceDereference();
    }
    backend->SetBoolProperty(ClipSpeedDialog::kGangedProperty, inGanged);
}

bool ReadGanged()
{
    const BE::Backend* backend = BE::GetBackend();
    return backend ? backend->GetBoolProperty(ClipSpeedDialog::kGangedProperty, ClipSpeedDialog::kDefaultGanged)
                   : ClipSpeedDialog::kDefaultGanged;
}

// The largest rectangle of the images' proportions centred in inBounds, inset to leave room for
// the focus ring.
zelui::ui::Rect ImageRect(const zelui::ui::Rect& inBounds)
{
    constexpr int kInset = 3;
    const int width = std::max(0, std::min(inBounds.width - 2 * kInset, (inBounds.height - 2 * kInset) / kImageAspect));
    const int height = width * kImageAspect;
    return {inBounds.left + (inBounds.width - width) / 2, inBounds.top + (inBounds.height - height) / 2, width, height};
}

} // namespace

GangSubView::GangSubView(zelui::ui::UI_Node& inArea, const SpeedLink& inLink, std::function<void()> inToggle)
    : UI_SubView(inArea, L"gangSubView"), mLink(inLink), mToggle(std::move(inToggle))
{
    SetWantsKeyboardFocus(true);
    Refresh();
}

void GangSubView::Refresh()
{
    SetAccessibleName(LoadString(mLink.IsGanged() ? kStr_ClipSpeedLinked : kStr_ClipSpeedUnlinked));
    Invalidate();
}

void GangSubView::UI_Draw(zelui::drawbot::DrawInterface& ioDrawer)
{
    const zelui::ui::Rect bounds = GetLocalRect();
    ioDrawer.DrawImage(mLink.IsGanged() ? kLinkedImage : kUnlinkedImage, ImageRect(bounds));
    if (HasFocus()) {
        ioDrawer.DrawFocusRing(bounds);
    }
}

bool GangSubView::UI_DoMouseEvent(zelui::ui::UI_Node*, const zelui::ui::MouseEvent& inEvent)
{
    if (inEvent.type != zelui::ui::MouseEvent::Type::kClick || inEvent.button != 1) {
        return false;
    }
    mToggle();
    return true;
}

bool GangSubView::UI_DoKeyboardEvent(zelui::ui::UI_Node*, const zelui::ui::KeyboardEvent& inEvent)
{
    if (inEvent.keyCode != zelui::ui::kKey_Character || inEvent.character != L' ' || inEvent.modifiers != 0) {
        return false;
    }
    // A held Space toggles once, as a click does.
    if (inEvent.keyDown && !inEvent.autoRepeat) {
        mToggle();
    }
    return true;
}

ClipSpeedDialogImpl::ClipSpeedDialogImpl(const UIF::Workspace& inWorkspace, KOR::InterfaceRef<BE::IProject> inProject,
                                         const ClipSpeedValues& inValues, KOR::Time inReferenceDuration,
                                         const ClipSpeedEnabling& inEnabling)
    : DialogBaseImpl(L"ClipSpeedDialog", inWorkspace), mProject(std::move(inProject)), mValues(inValues),
      mEnabling(inEnabling),
      mLink(inReferenceDuration, kRateMultiplier, inValues.speedPercent, inValues.duration, false)
{
}

void ClipSpeedDialogImpl::BindControls()
{
    // Without a duration to change, the speed changes alone whatever the remembered gang says.
    mLink.SetGanged(mEnabling.duration && ReadGanged());
    BindOkAndCancel();
    BindSpeed();
    BindDuration();
    BindGang();
    mReverse = Bind<UI_CheckBox>(L"reverseSpeed", mValues.reverse);
    if (mReverse) {
        mReverse->SetEnabled(mEnabling.reverse);
    }
    if (const auto pitch = Bind<UI_CheckBox>(L"maintainAudioPitch", mValues.maintainPitch)) {
        pitch->SetEnabled(mEnabling.pitch);
    }
    if (mSpeed) {
        mSpeed->SetFocus();
    }
}

void ClipSpeedDialogImpl::BindSpeed()
{
    const auto scripted = GetUINodePtr<UI_HotTextNumber>(L"clipSpeed");
    if (!scripted) {
        return;
    }
    mSpeed = new HotNumberControl(*scripted);
    mSpeed->SetFontSize(kFieldFontSize);
    scripted->SetVisible(false);
    ShowValue(*mSpeed, mValues.speedPercent);
    mSpeed->SetVisible(true);
    mSpeed->SetEnabled(true);
    mSpeed->NotifyWhenChanged([this] { SpeedEntered(); });
}

void ClipSpeedDialogImpl::BindDuration()
{
    const auto scripted = GetUINodePtr<UI_HotTextNumber>(L"timecodeControl");
    if (!scripted) {
        return;
    }
    mDuration =
        new TimeCtrl(*scripted, CreateNotifyingTimecodeControlInfo(mProject), ClipSpeedDialog::kDurationStation);
    scripted->SetVisible(false);
    mDuration->SetMaximumTime(ClipSpeedDialog::kLongestDuration);
    mDuration->SetTime(mValues.duration);
    mDuration->SetVisible(true);
    mDuration->SetEnabled(mEnabling.duration);
    mDuration->NotifyWhenChanged([this] { DurationEntered(); });
    if (const auto label = GetUINodePtr<zelui::ui::UI_Node>(L"durationTimecodeStaticText")) {
        label->SetEnabled(mEnabling.duration);
    }
}

void ClipSpeedDialogImpl::BindGang()
{
    const auto area = GetUINodePtr<zelui::ui::UI_Node>(L"gangSubViewArea");
    if (!area) {
        return;
    }
    mGangView = new GangSubView(*area, mLink, [this] { ToggleGang(); });
    mGangView->SetEnabled(mEnabling.duration);
}

void ClipSpeedDialogImpl::SpeedEntered()
{
    if (mSpeed) {
        Show(mLink.EnterSpeed(mSpeed->GetValue()));
    }
}

void ClipSpeedDialogImpl::DurationEntered()
{
    if (mDuration) {
        const std::int32_t fastest = mSpeed ? ClipSpeedDialog::HundredthsFromPercent(mSpeed->GetMaximum())
                                            : std::numeric_limits<std::int32_t>::max();
        Show(mLink.EnterDuration(mDuration->GetTime(), fastest));
    }
}

void ClipSpeedDialogImpl::ToggleGang()
{
    Show(mLink.ToggleGang(mReverse && mReverse->IsChecked()));
    if (mGangView) {
        mGangView->Refresh();
    }
    WriteGanged(mLink.IsGanged());
}

void ClipSpeedDialogImpl::Show(const SpeedLink::Update& inUpdate)
{
    if (inUpdate.shownSpeed && mSpeed) {
        ShowValue(*mSpeed, *inUpdate.shownSpeed);
    }
    if (inUpdate.checkReverse && mReverse) {
        mReverse->SetChecked(true);
    }
    if (mDuration) {
        mDuration->SetTime(inUpdate.duration);
    }
}

void ClipSpeedDialogImpl::ReadControls()
{
    mValues.speedPercent = mLink.KeptSpeed();
    mValues.duration = mLink.Duration();
    mValues.ganged = mLink.IsGanged();
}

} // namespace DLG

namespace DLG::ClipSpeedDialog {

bool DoClipSpeedDialog(UIF::Commander* inCommander, KOR::InterfaceRef<BE::IProject> inProject,
                       double& ioSpeedPercent, KOR::Time& ioDuration, const KOR::Time& inReferenceDuration,
                       bool& ioReverse, bool& ioMaintainPitch, bool& outGanged, bool inEnableReverse,
                       bool inEnablePitch, bool inEnableDuration)
{
    ZEL_INPUT_CONTRACT(inProject != NULL);
    std::stringstream script;
    const UIF::Workspace* workspace = PrepareScriptDialog(L"ClipSpeedDialog.vrel", script);
    if (!workspace) {
        return false;
    }
    // The dialog makes the focused panel's commander the target; the caller's gets it back
    // however the dialog ends.
    struct GiveTargetBack {
        UIF::Commander* mCommander;
        ~GiveTargetBack()
        {
            if (mCommander) {
                mCommander->SwitchTarget();
            }
        }
    } giveTargetBack{inCommander};
    ClipSpeedValues values{ioSpeedPercent, ioDuration, ioReverse, ioMaintainPitch, false};
    ClipSpeedDialogImpl dialog(*workspace, inProject, values, inReferenceDuration,
                               {inEnableReverse, inEnablePitch, inEnableDuration});
    dialog.Run(script);
    if (dialog.WasCancelled()) {
        return false;
    }
    values = dialog.Result();
    ioSpeedPercent = values.speedPercent;
    ioDuration = values.duration;
    ioReverse = values.reverse;
    ioMaintainPitch = values.maintainPitch;
    outGanged = values.ganged;
    return true;
}

} // namespace DLG::ClipSpeedDialog
