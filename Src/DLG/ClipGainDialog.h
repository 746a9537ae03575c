#pragma once

#include <optional>

#include "BE/AudioClip.h"
#include "DLG/Export.h"

namespace DLG {

namespace ClipGain {

inline constexpr double kMinimumDecibels = -96.0;
inline constexpr double kMaximumDecibels = 96.0;

// The level shown for a linear gain, 20 log10(gain), within the limits above; a gain of zero
// or less shows the minimum.
double DecibelsFromGain(double inGain);
// The linear gain of a level: 10^(dB/20), worked in single precision as the mixer applies it.
double GainFromDecibels(double inDecibels);

struct Normalized {
    double gain;
    double decibels;
};
// The gain that lifts inPeak to full scale (1 / peak) and its level. Where the level passes a
// limit (a clip so quiet that no gain within reach lifts it), the gain is that of the limit, so
// that the gain and the level shown never disagree. Nothing for a peak that is not above zero:
// silence has no level to lift, and an unmeasured clip must not be raised by 96 dB.
std::optional<Normalized> NormalizeToPeak(double inPeak);

} // namespace ClipGain

// Edits an audio clip's gain in decibels; "Normalize" sets the gain that brings the clip's
// peak to full scale, and beeps and keeps the gain for a silent or unmeasured clip. ioGain is a
// linear factor (1.0 leaves the clip as it is), written only when the user confirms; returns
// whether they did. Normalizing without a clip raises the null-interface error.
DLG_API bool DoClipGainDialog(KOR::InterfaceRef<BE::IAudioClip> inClip, float& ioGain);

} // namespace DLG
