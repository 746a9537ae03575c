#pragma once

#include <boost/function.hpp>
#include <boost/signals2/connection.hpp>

#include "KOR/InterfaceRef.h"
#include "KOR/Time.h"

namespace BE {

class HOST_API IVideoSettings : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;
    virtual KOR::FrameRate GetFrameRate() const = 0;
    virtual void SetFrameRate(KOR::FrameRate inRate) = 0;

protected:
    ~IVideoSettings() override;
};

class HOST_API IAudioSettings : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;
    virtual KOR::FrameRate GetSampleRate() const = 0;
    virtual void SetSampleRate(KOR::FrameRate inRate) = 0;

protected:
    ~IAudioSettings() override;
};

// A project's settings. A change of any of them (video and audio settings included) is told
// to the listeners connected here.
class HOST_API IProjectSettings : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    // Display format codes of KOR/Timecode.h.
    virtual unsigned int GetTimeDisplayFormat() const = 0;
    virtual void SetTimeDisplayFormat(unsigned int inFormat) = 0;
    virtual unsigned int GetAudioTimeDisplayFormat() const = 0;
    virtual void SetAudioTimeDisplayFormat(unsigned int inFormat) = 0;
    virtual KOR::InterfaceRef<IVideoSettings> GetVideoSettings() const = 0;
    virtual KOR::InterfaceRef<IAudioSettings> GetAudioSettings() const = 0;

    virtual boost::signals2::connection ConnectSettingsChanged(const boost::function<void()>& inListener) = 0;

protected:
    ~IProjectSettings() override;
};

} // namespace BE
