#pragma once

#include <string>

#include "KOR/HostAPI.h"
#include "KOR/Time.h"

namespace KOR {

// Display formats of time, by the host's numeric codes.
//
// SMPTE timecode counts frames at the format's own rate: "hh:mm:ss:ff", drop-frame
// "hh:mm:ss;ff" (at 29.97 the frame labels 00 and 01 are skipped at the start of every minute
// but each tenth, at 59.94 the labels 00 to 03, so that the label keeps to the clock).
inline constexpr unsigned int kTimecodeFormat_SMPTE23976 = 100; // counted as 24 frames a second
inline constexpr unsigned int kTimecodeFormat_SMPTE24 = 101;
inline constexpr unsigned int kTimecodeFormat_SMPTE25 = 102;
inline constexpr unsigned int kTimecodeFormat_SMPTE2997DropFrame = 103;
inline constexpr unsigned int kTimecodeFormat_SMPTE2997NonDrop = 104;
inline constexpr unsigned int kTimecodeFormat_SMPTE30 = 105;
inline constexpr unsigned int kTimecodeFormat_SMPTE50 = 106;
inline constexpr unsigned int kTimecodeFormat_SMPTE5994DropFrame = 107;
inline constexpr unsigned int kTimecodeFormat_SMPTE5994NonDrop = 108;
inline constexpr unsigned int kTimecodeFormat_SMPTE60 = 109;
// Frame counts at the rate set with the format: "feet+frames" and plain frames. With a zero rate,
// 16 mm counts film's 24 fps; 111 and 112 count nothing (a time control shows them as 201).
inline constexpr unsigned int kTimecodeFormat_FeetFrames16mm = 110; // 40 frames a foot
inline constexpr unsigned int kTimecodeFormat_Frames = 111;
inline constexpr unsigned int kTimecodeFormat_FeetFrames35mm = 112; // 16 frames a foot
// Audio time: "hh:mm:ss:sssss" in samples at the rate set with the format, and "hh:mm:ss.mmm".
inline constexpr unsigned int kTimecodeFormat_AudioSamples = 200;
inline constexpr unsigned int kTimecodeFormat_Milliseconds = 201;

// Formats times as text in a display format and reads text back.
//
// Reading accepts what editors type: fields from the right (frames, seconds, minutes, hours,
// so "1:00" is one second), digits alone taken from the right in the format's field widths
// ("100" is one second), any of the delimiters ":;.,+/" and blanks between fields, values that
// overflow their field (carried over), and a leading "-". Anything else reads as kTime_Invalid.
class HOST_API Timecode {
public:
    // What reading needs besides the format: the rate that frame-counting formats count at.
    struct Style {
        FrameRate frameRate;
    };

    // Formats are counted at their own rate (SMPTE), at inRate (frames, feet, samples) or need
    // none (milliseconds). An unknown code shows SMPTE 30 timecode.
    void SetFormat(unsigned int inFormat, FrameRate inRate);
    void SetTime(Time inTime) { mTime = inTime; }
    unsigned int GetFormat() const { return mFormat; }
    Style GetStyle() const { return {mRate}; }
    std::wstring GetString() const;

    static Time StringToTime(const std::wstring& inText, const Style& inStyle, unsigned int inFormat);
    // The characters that separate the fields of typed time.
    static bool IsDelimiter(wchar_t inChar);
    // The rate inFormat counts frames in, given inRate; zero when it can count none.
    static FrameRate CountingRate(unsigned int inFormat, FrameRate inRate);

private:
    unsigned int mFormat = kTimecodeFormat_SMPTE30;
    FrameRate mRate = kFrameRate_Video30;
    Time mTime;
};

} // namespace KOR
