#pragma once

#include <string>

#include "KOR/InterfaceRef.h"

namespace BE {

// A clip of the project that carries audio.
class HOST_API IAudioClip : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual std::wstring GetName() const = 0;
    // The clip's media file; it may be offline (missing from disk).
    virtual std::wstring GetMediaPath() const = 0;
    // The largest absolute sample value over all channels as a linear amplitude, 1.0 being full
    // scale; 0 for silence, kPeakUnknown when it cannot be measured (the media is offline or
    // unreadable and no earlier measurement is known). Measuring it may read the whole media file.
    virtual double GetPeakAmplitude() const = 0;

    static constexpr double kPeakUnknown = -1.0;

protected:
    ~IAudioClip() override;
};

using AudioClipRef = KOR::InterfaceRef<IAudioClip>;

} // namespace BE
