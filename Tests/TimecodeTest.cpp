// Times and their timecode text.

#include <gtest/gtest.h>

#include "KOR/Timecode.h"

namespace {

using namespace KOR;

std::wstring Format(unsigned int inFormat, FrameRate inRate, Time inTime)
{
    Timecode timecode;
    timecode.SetFormat(inFormat, inRate);
    timecode.SetTime(inTime);
    return timecode.GetString();
}

Time Parse(const std::wstring& inText, unsigned int inFormat, FrameRate inRate)
{
    return Timecode::StringToTime(inText, {inRate}, inFormat);
}

TEST(Time, EveryRateIsAWholeNumberOfTicksAndFramesRoundTrip)
{
    for (const FrameRate rate : {kFrameRate_Film23976, kFrameRate_Film24, kFrameRate_PAL25, kFrameRate_NTSC2997,
                                 kFrameRate_Video30, kFrameRate_PAL50, kFrameRate_NTSC5994, kFrameRate_Video60,
                                 kFrameRate_NTSC11988, kFrameRate_Video120, kFrameRate_Audio44100,
                                 kFrameRate_Audio48000, kFrameRate_Audio96000, kFrameRate_Audio192000}) {
        EXPECT_EQ(Time::kTicksPerSecond * rate.Denominator() % rate.Numerator(), 0) << rate.ToDouble();
        for (const std::int64_t frames : {0LL, 1LL, 1799LL, 86400LL * 60, -5LL}) {
            EXPECT_EQ(Time(frames, rate).ToFrame64(rate), frames) << rate.ToDouble();
        }
    }
    EXPECT_EQ(Time(1, kFrameRate_Video30).ToFrame64(kFrameRate_NTSC2997), 0) << "frames round down";
    EXPECT_EQ(Time(-1).ToFrame64(kFrameRate_Video30), -1) << "also below zero";
    EXPECT_EQ(Time(5, kFrameRate_Zero), Time());
}

struct DropFrameCase {
    unsigned int format;
    FrameRate rate;
    std::int64_t framesPerDay; // of drop-frame timecode, which runs 2.6 frames a day short of the clock
    const wchar_t* lastFrame;
    friend void PrintTo(const DropFrameCase& inCase, std::ostream* outStream) { *outStream << inCase.format; }
};

class DropFrame : public testing::TestWithParam<DropFrameCase> {};

TEST_P(DropFrame, EveryFrameOfADayRoundTrips)
{
    const auto [format, rate, framesPerDay, lastFrame] = GetParam();
    Timecode timecode;
    timecode.SetFormat(format, rate);
    std::wstring previous;
    for (std::int64_t frame = 0; frame < framesPerDay; ++frame) {
        timecode.SetTime(Time(frame, rate));
        const std::wstring text = timecode.GetString();
        const Time parsed = Timecode::StringToTime(text, timecode.GetStyle(), format);
        if (parsed.ToFrame64(rate) != frame || text <= previous) {
            FAIL() << "frame " << frame << " shows as " << std::string(text.begin(), text.end());
        }
        previous = text;
    }
    EXPECT_EQ(previous, lastFrame);
}

INSTANTIATE_TEST_SUITE_P(Rates, DropFrame,
                         testing::Values(DropFrameCase{kTimecodeFormat_SMPTE2997DropFrame, kFrameRate_NTSC2997,
                                                       17982 * 144, L"23:59:59;29"},
                                         DropFrameCase{kTimecodeFormat_SMPTE5994DropFrame, kFrameRate_NTSC5994,
                                                       35964 * 144, L"23:59:59;59"}));

struct FormatCase {
    unsigned int format;
    FrameRate rate;
    std::int64_t frames;
    const wchar_t* text;
};

TEST(Timecode, ShowsEachFamilyAndReadsItBack)
{
    const FormatCase cases[] = {
        {kTimecodeFormat_SMPTE2997DropFrame, kFrameRate_NTSC2997, 1800, L"00:01:00;02"},
        {kTimecodeFormat_SMPTE2997DropFrame, kFrameRate_NTSC2997, 17982, L"00:10:00;00"},
        {kTimecodeFormat_SMPTE5994DropFrame, kFrameRate_NTSC5994, 3600, L"00:01:00;04"},
        {kTimecodeFormat_SMPTE2997NonDrop, kFrameRate_NTSC2997, 1800, L"00:01:00:00"},
        {kTimecodeFormat_SMPTE25, kFrameRate_PAL25, 90000 + 24, L"01:00:00:24"},
        {kTimecodeFormat_SMPTE23976, kFrameRate_Film23976, 86400LL * 24 + 1, L"24:00:00:01"},
        {kTimecodeFormat_SMPTE60, kFrameRate_Video60, -61, L"-00:00:01:01"},
        {kTimecodeFormat_FeetFrames35mm, kFrameRate_Film24, 20, L"1+04"},
        {kTimecodeFormat_FeetFrames16mm, kFrameRate_Film24, 20, L"0+20"},
        {kTimecodeFormat_Frames, kFrameRate_PAL25, 1234567, L"1234567"},
        {kTimecodeFormat_AudioSamples, kFrameRate_Audio48000, 48000 * 61 + 24000, L"00:01:01:24000"},
        {kTimecodeFormat_AudioSamples, kFrameRate_Audio192000, 192000 * 11 + 191999, L"00:00:11:191999"},
        {kTimecodeFormat_Milliseconds, FrameRate(1000), 3723004, L"01:02:03.004"},
    };
    for (const FormatCase& c : cases) {
        const FrameRate counting = Timecode::CountingRate(c.format, c.rate);
        EXPECT_EQ(Format(c.format, c.rate, Time(c.frames, counting)), c.text) << c.format;
        EXPECT_EQ(Parse(c.text, c.format, c.rate), Time(c.frames, counting)) << c.format;
    }
}

struct ParseCase {
    const wchar_t* text;
    unsigned int format;
    FrameRate rate;
    Time expected;
};

TEST(Timecode, AnInvalidTimeShowsAsDashes)
{
    EXPECT_EQ(Format(kTimecodeFormat_SMPTE30, kFrameRate_Video30, kTime_Invalid), L"--");
}

TEST(Timecode, ReadsWhatEditorsType)
{
    const Time invalid = kTime_Invalid;
    const ParseCase cases[] = {
        {L"1:00", kTimecodeFormat_SMPTE25, kFrameRate_PAL25, Time::FromSeconds(1)},
        {L"100", kTimecodeFormat_SMPTE30, kFrameRate_Video30, Time::FromSeconds(1)},
        {L"1000000", kTimecodeFormat_SMPTE30, kFrameRate_Video30, Time::FromSeconds(3600)},
        {L" 1.2.3.4 ", kTimecodeFormat_SMPTE24, kFrameRate_Film24, Time((3723) * 24 + 4, kFrameRate_Film24)},
        {L"0;0,10/5", kTimecodeFormat_SMPTE24, kFrameRate_Film24, Time(245, kFrameRate_Film24)},
        {L"90", kTimecodeFormat_SMPTE30, kFrameRate_Video30, Time(90, kFrameRate_Video30)},
        {L"-1:00", kTimecodeFormat_SMPTE30, kFrameRate_Video30, Time() - Time::FromSeconds(1)},
        {L"00:01:00;00", kTimecodeFormat_SMPTE2997DropFrame, kFrameRate_NTSC2997, Time(1800, kFrameRate_NTSC2997)},
        {L"100024000", kTimecodeFormat_AudioSamples, kFrameRate_Audio48000,
         Time::FromSeconds(600) + Time(24000, kFrameRate_Audio48000)},
        {L"1.5", kTimecodeFormat_Milliseconds, kFrameRate_Zero, Time(1500, FrameRate(1000))},
        {L"1500", kTimecodeFormat_Milliseconds, kFrameRate_Zero, Time(1500, FrameRate(1000))},
        {L"12+5", kTimecodeFormat_FeetFrames35mm, kFrameRate_Film24, Time(197, kFrameRate_Film24)},
        {L"", kTimecodeFormat_SMPTE30, kFrameRate_Video30, invalid},
        {L"::", kTimecodeFormat_SMPTE30, kFrameRate_Video30, invalid},
        {L"12a", kTimecodeFormat_SMPTE30, kFrameRate_Video30, invalid},
        {L"1:2:3:4:5", kTimecodeFormat_SMPTE30, kFrameRate_Video30, invalid},
        {L"1:00", kTimecodeFormat_Frames, kFrameRate_Video30, invalid},
        {L"100", kTimecodeFormat_Frames, kFrameRate_Zero, invalid},
        {L"99999999999:00:00:00", kTimecodeFormat_SMPTE30, kFrameRate_Video30, invalid},
        {L"1234567890123", kTimecodeFormat_Frames, kFrameRate_Video30, invalid},
        {L"999999999999+15", kTimecodeFormat_FeetFrames35mm, kFrameRate_Film24, invalid},
        {L"999999999999", kTimecodeFormat_Frames, FrameRate(12), invalid},
        {L"-00:01:00;02", kTimecodeFormat_SMPTE2997DropFrame, kFrameRate_NTSC2997,
         Time() - Time(1800, kFrameRate_NTSC2997)},
        {L".5", kTimecodeFormat_Milliseconds, kFrameRate_Zero, Time(500, FrameRate(1000))},
        {L"1,5", kTimecodeFormat_Milliseconds, kFrameRate_Zero, Time(1500, FrameRate(1000))},
        {L"00:01:30", kTimecodeFormat_Milliseconds, kFrameRate_Zero, Time::FromSeconds(90)},
        {L"1:30.25", kTimecodeFormat_Milliseconds, kFrameRate_Zero, Time(90250, FrameRate(1000))},
    };
    for (const ParseCase& c : cases) {
        EXPECT_EQ(Parse(c.text, c.format, c.rate), c.expected) << std::string(c.text, c.text + wcslen(c.text));
    }
}

} // namespace
