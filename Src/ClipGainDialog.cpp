#include "DLG/ClipGainDialog.h"

#include <algorithm>
#include <cmath>

#include "DLG/DialogBaseImpl.h"
#include "DLG/HotNumberControl.h"
#include "UIF/Cursor.h"
#include "UIF/Sound.h"

namespace DLG {

namespace ClipGain {

double DecibelsFromGain(double inGain)
{
    if (!(inGain > 0.0)) {
        return kMinimumDecibels;
    }
    return std::clamp(20.0 * std::log10(inGain), kMinimumDecibels, kMaximumDecibels);
}

double GainFromDecibels(double inDecibels)
{
    const float exponent = static_cast<float>(inDecibels / 20.0);
    return static_cast<float>(std::pow(10.0, static_cast<double>(exponent)));
}

std::optional<Normalized> NormalizeToPeak(double inPeak)
{
    if (!(inPeak > 0.0)) {
        return std::nullopt;
    }
    const double gain = 1.0 / inPeak;
    const double level = 20.0 * std::log10(gain);
    if (level >= kMinimumDecibels && level <= kMaximumDecibels) {
        return Normalized{gain, level};
    }
    const double limit = std::clamp(level, kMinimumDecibels, kMaximumDecibels);
    return Normalized{GainFromDecibels(limit), limit};
}

} // namespace ClipGain

namespace {

using namespace ClipGain;
using zelui::controls::UI_Button;
using zelui::controls::UI_HotTextNumber;

struct ClipGainValues {
    KOR::InterfaceRef<BE::IAudioClip> clip;
    double gain;
};

constexpr int kDecibelPlaces = 1;
constexpr double kDecibelIncrement = 0.1;

} // namespace

// The level of the clip in decibels as a hot number; the gain is kept as the linear factor.
class ClipGainDialog : public DialogBaseImpl {
public:
    ClipGainDialog(const UIF::Workspace& inWorkspace, const ClipGainValues& inValues)
        : DialogBaseImpl(L"ClipGain", inWorkspace), mValues(inValues)
    {
    }

    const ClipGainValues& Result() const { return mValues; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        if (const auto scripted = GetUINodePtr<UI_HotTextNumber>(L"dbLevel")) {
            scripted->SetValue(DecibelsFromGain(mValues.gain));
            scripted->SetMinimum(kMinimumDecibels);
            scripted->SetMaximum(kMaximumDecibels);
            scripted->SetDecimalPlaces(kDecibelPlaces);
            scripted->SetIncrement(kDecibelIncrement);
            scripted->SetFormatFlags(0);
            mDecibels = new HotNumberControl(*scripted);
            scripted->SetVisible(false);
            mDecibels->SetVisible(true);
            mDecibels->SetEnabled(true);
            mDecibels->NotifyWhenChanged([this] { mValues.gain = GainFromDecibels(mDecibels->GetValue()); });
            mDecibels->SetFocus();
        }
        if (const auto normalize = OnChange<UI_Button>(L"normalizeButton", [this] { Normalize(); })) {
            normalize->SetEnabled(true);
        }
    }

    // Reading the peak may scan the whole media file.
    void Normalize()
    {
        const UIF::WaitCursor waitCursor;
        const std::optional<Normalized> normalized = NormalizeToPeak(mValues.clip->GetPeakAmplitude());
        if (!normalized) {
            UIF::Beep();
            return;
        }
        mValues.gain = normalized->gain;
        if (mDecibels) {
            ShowValue(*mDecibels, normalized->decibels);
        }
    }

    ClipGainValues mValues;
    boost::intrusive_ptr<HotNumberControl> mDecibels;
};

bool DoClipGainDialog(KOR::InterfaceRef<BE::IAudioClip> inClip, float& ioGain)
{
    ClipGainValues values{std::move(inClip), ioGain};
    if (!RunScriptDialog<ClipGainDialog>(L"ClipGainDialog.vrel", values)) {
        return false;
    }
    ioGain = static_cast<float>(values.gain);
    return true;
}

} // namespace DLG
