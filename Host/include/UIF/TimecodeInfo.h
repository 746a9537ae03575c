#pragma once

#include <cstdint>

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/signals2/connection.hpp>

#include "KOR/HostAPI.h"
#include "KOR/Time.h"

namespace UIF {

// How a project shows times.
struct TimecodeInfo {
    std::uint32_t displayFormat = 0;      // video time display format code
    KOR::FrameRate videoFrameRate;
    std::uint32_t audioDisplayFormat = 0; // audio time display format code
    KOR::FrameRate audioRate;
    friend bool operator==(const TimecodeInfo&, const TimecodeInfo&) = default;
};

// Tells bound controls when a project's timecode settings change.
class HOST_API TimecodeNotifier {
public:
    using Listener = boost::function<void(const TimecodeInfo&)>;
    virtual ~TimecodeNotifier();
    virtual boost::signals2::connection Connect(const Listener& inListener) = 0;
};

struct TimecodeControlInfo : TimecodeInfo {
    boost::shared_ptr<TimecodeNotifier> notifier;
};

} // namespace UIF
