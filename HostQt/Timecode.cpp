// Timecode formatting and parsing. Plain integer arithmetic on frame counts, no toolkit.

#include "KOR/Timecode.h"

#include <array>
#include <cstdint>

namespace KOR {

namespace {

enum class Family { kSMPTE, kFeet, kFrames, kSamples, kMilliseconds };

struct FormatInfo {
    Family family;
    FrameRate rate;        // SMPTE: the format's own rate; others: the rate counted when none is given
    std::int64_t base = 0; // SMPTE: frames in a labelled second; feet: frames in a foot
    std::int64_t drop = 0; // SMPTE drop-frame: labels skipped a minute
};

FormatInfo Describe(unsigned int inFormat)
{
    switch (inFormat) {
    case kTimecodeFormat_SMPTE23976: return {Family::kSMPTE, kFrameRate_Film23976, 24};
    case kTimecodeFormat_SMPTE24: return {Family::kSMPTE, kFrameRate_Film24, 24};
    case kTimecodeFormat_SMPTE25: return {Family::kSMPTE, kFrameRate_PAL25, 25};
    case kTimecodeFormat_SMPTE2997DropFrame: return {Family::kSMPTE, kFrameRate_NTSC2997, 30, 2};
    case kTimecodeFormat_SMPTE2997NonDrop: return {Family::kSMPTE, kFrameRate_NTSC2997, 30};
    case kTimecodeFormat_SMPTE50: return {Family::kSMPTE, kFrameRate_PAL50, 50};
    case kTimecodeFormat_SMPTE5994DropFrame: return {Family::kSMPTE, kFrameRate_NTSC5994, 60, 4};
    case kTimecodeFormat_SMPTE5994NonDrop: return {Family::kSMPTE, kFrameRate_NTSC5994, 60};
    case kTimecodeFormat_SMPTE60: return {Family::kSMPTE, kFrameRate_Video60, 60};
    // 16 mm feet and frames are a film measure: with no rate given they count film's 24 fps.
    case kTimecodeFormat_FeetFrames16mm: return {Family::kFeet, kFrameRate_Film24, 40};
    case kTimecodeFormat_Frames: return {Family::kFrames, kFrameRate_Zero};
    case kTimecodeFormat_FeetFrames35mm: return {Family::kFeet, kFrameRate_Zero, 16};
    case kTimecodeFormat_AudioSamples: return {Family::kSamples, kFrameRate_Zero};
    case kTimecodeFormat_Milliseconds: return {Family::kMilliseconds, kFrameRate_Zero};
    default: return {Family::kSMPTE, kFrameRate_Video30, 30};
    }
}

// Digits of the sample field: enough for the last sample of a second.
int SampleDigits(FrameRate inRate)
{
    int digits = 1;
    for (std::int64_t last = inRate.Numerator() / inRate.Denominator() - 1; last >= 10; last /= 10) {
        ++digits;
    }
    return digits < 5 ? 5 : digits;
}

// inFrames frames at inRate, or kTime_Invalid when that many ticks do not fit.
Time FramesToTime(std::int64_t inFrames, FrameRate inRate)
{
    std::int64_t ticks = 0;
    if (__builtin_mul_overflow(inFrames, Time::TicksPerFrame(inRate), &ticks) || ticks == kTime_Invalid.Ticks()) {
        return kTime_Invalid;
    }
    return Time(ticks);
}

Time Sum(Time inA, Time inB)
{
    std::int64_t ticks = 0;
    if (inA == kTime_Invalid || inB == kTime_Invalid || __builtin_add_overflow(inA.Ticks(), inB.Ticks(), &ticks)) {
        return kTime_Invalid;
    }
    return Time(ticks);
}

// Drop-frame: frames in ten minutes, and in each minute after the first of ten.
std::int64_t FramesPerTenMinutes(const FormatInfo& inInfo) { return inInfo.base * 600 - inInfo.drop * 9; }
std::int64_t FramesPerDroppedMinute(const FormatInfo& inInfo) { return inInfo.base * 60 - inInfo.drop; }

// The label number (frames as if none were dropped) of frame inFrame.
std::int64_t LabelOfFrame(std::int64_t inFrame, const FormatInfo& inInfo)
{
    if (inInfo.drop == 0) {
        return inFrame;
    }
    const std::int64_t tens = inFrame / FramesPerTenMinutes(inInfo);
    const std::int64_t rest = inFrame % FramesPerTenMinutes(inInfo);
    std::int64_t skipped = inInfo.drop * 9 * tens;
    if (rest >= inInfo.drop) {
        skipped += inInfo.drop * ((rest - inInfo.drop) / FramesPerDroppedMinute(inInfo));
    }
    return inFrame + skipped;
}

// The frame of label number inLabel; labels that drop-frame skips stand for the first kept one.
std::int64_t FrameOfLabel(std::int64_t inLabel, const FormatInfo& inInfo)
{
    if (inInfo.drop == 0) {
        return inLabel;
    }
    const std::int64_t minutes = inLabel / (inInfo.base * 60);
    std::int64_t inMinute = inLabel % (inInfo.base * 60);
    if (minutes % 10 != 0 && inMinute < inInfo.drop) {
        inMinute = inInfo.drop;
    }
    return minutes * inInfo.base * 60 + inMinute - inInfo.drop * (minutes - minutes / 10);
}

class Writer {
public:
    void Sign(bool inNegative)
    {
        if (inNegative) {
            mText.push_back(L'-');
        }
    }
    void Digits(std::int64_t inValue, int inWidth)
    {
        std::array<wchar_t, 20> digits{};
        int count = 0;
        do {
            digits[count++] = static_cast<wchar_t>(L'0' + inValue % 10);
            inValue /= 10;
        } while (inValue > 0);
        for (int pad = count; pad < inWidth; ++pad) {
            mText.push_back(L'0');
        }
        while (count > 0) {
            mText.push_back(digits[--count]);
        }
    }
    void Char(wchar_t inChar) { mText.push_back(inChar); }
    std::wstring Take() { return std::move(mText); }

private:
    std::wstring mText;
};

void WriteClock(Writer& ioWriter, std::int64_t inSeconds)
{
    ioWriter.Digits(inSeconds / 3600, 2);
    ioWriter.Char(L':');
    ioWriter.Digits(inSeconds / 60 % 60, 2);
    ioWriter.Char(L':');
    ioWriter.Digits(inSeconds % 60, 2);
}

// Fields hold at most 12 digits and clocks at most this many seconds (three centuries), so
// that no time computed from them overflows its ticks.
constexpr int kMaxDigits = 12;
constexpr std::int64_t kMaxSeconds = 10000000000LL;


// The typed fields, rightmost first.
struct Fields {
    std::array<std::int64_t, 4> values{};
    std::array<int, 4> widths{};
    int count = 0;
    bool negative = false;
    bool digitsOnly = true;
    bool fractionLast = false; // the last field came after a decimal point ("." or ",")
};

bool ReadFields(const std::wstring& inText, Fields& outFields)
{
    std::size_t begin = inText.find_first_not_of(L' ');
    std::size_t end = inText.find_last_not_of(L' ');
    if (begin == std::wstring::npos) {
        return false;
    }
    if (inText[begin] == L'-') {
        outFields.negative = true;
        ++begin;
    }
    std::array<std::int64_t, 8> values{};
    std::array<int, 8> widths{};
    int count = 0;
    bool inField = false;
    wchar_t lastDelimiter = 0;
    for (std::size_t i = begin; i <= end && i < inText.size(); ++i) {
        const wchar_t c = inText[i];
        if (c >= L'0' && c <= L'9') {
            if (!inField) {
                if (count == static_cast<int>(values.size())) {
                    return false;
                }
                inField = true;
                ++count;
                outFields.fractionLast = lastDelimiter == L'.' || lastDelimiter == L',';
            }
            std::int64_t& value = values[count - 1];
            if (++widths[count - 1] > kMaxDigits) {
                return false;
            }
            value = value * 10 + (c - L'0');
        } else if (Timecode::IsDelimiter(c)) {
            lastDelimiter = c;
            inField = false;
            outFields.digitsOnly = false;
        } else {
            return false;
        }
    }
    if (count == 0 || count > 4) {
        return false;
    }
    outFields.count = count;
    for (int i = 0; i < count; ++i) {
        outFields.values[i] = values[count - 1 - i];
        outFields.widths[i] = widths[count - 1 - i];
    }
    return true;
}

// Digits typed without delimiters, split from the right into fields of the given widths
// (the last width takes whatever is left).
void SplitDigits(Fields& ioFields, const std::array<int, 4>& inWidths)
{
    std::int64_t rest = ioFields.values[0];
    int fields = 0;
    for (int i = 0; i < 4 && (rest > 0 || i == 0); ++i) {
        std::int64_t scale = 1;
        for (int d = 0; d < inWidths[i]; ++d) {
            scale *= 10;
        }
        ioFields.values[i] = inWidths[i] == 0 ? rest : rest % scale;
        rest = inWidths[i] == 0 ? 0 : rest / scale;
        fields = i + 1;
    }
    ioFields.count = fields;
}

// The seconds of the fields from inFirst leftwards; -1 when they are more than a clock holds.
std::int64_t Clock(const Fields& inFields, int inFirst)
{
    std::int64_t seconds = 0;
    for (int i = inFields.count - 1; i >= inFirst; --i) {
        if (inFields.values[i] > kMaxSeconds || seconds > kMaxSeconds / 60) {
            return -1;
        }
        seconds = seconds * 60 + inFields.values[i];
    }
    return seconds > kMaxSeconds ? -1 : seconds;
}

} // namespace

bool Timecode::IsDelimiter(wchar_t inChar)
{
    return inChar == L':' || inChar == L';' || inChar == L'.' || inChar == L',' || inChar == L'+' ||
           inChar == L'/' || inChar == L' ';
}

void Timecode::SetFormat(unsigned int inFormat, FrameRate inRate)
{
    mFormat = inFormat;
    mRate = inRate;
}

FrameRate Timecode::CountingRate(unsigned int inFormat, FrameRate inRate)
{
    const FormatInfo info = Describe(inFormat);
    switch (info.family) {
    case Family::kSMPTE: return info.rate;
    case Family::kMilliseconds: return FrameRate(1000);
    default: return inRate.IsZero() ? info.rate : inRate;
    }
}

std::wstring Timecode::GetString() const
{
    const FormatInfo info = Describe(mFormat);
    const FrameRate rate = CountingRate(mFormat, mRate);
    if (mTime == kTime_Invalid) {
        return L"--";
    }
    const bool negative = mTime < Time();
    const Time magnitude = negative ? Time() - mTime : mTime;
    Writer writer;
    writer.Sign(negative);
    switch (info.family) {
    case Family::kSMPTE: {
        const std::int64_t label = LabelOfFrame(magnitude.ToFrame64(rate), info);
        WriteClock(writer, label / info.base);
        writer.Char(info.drop ? L';' : L':');
        writer.Digits(label % info.base, 2);
        break;
    }
    case Family::kFeet: {
        const std::int64_t frames = magnitude.ToFrame64(rate);
        writer.Digits(frames / info.base, 1);
        writer.Char(L'+');
        writer.Digits(frames % info.base, 2);
        break;
    }
    case Family::kFrames: writer.Digits(magnitude.ToFrame64(rate), 1); break;
    case Family::kSamples: {
        const std::int64_t seconds = magnitude.Ticks() / Time::kTicksPerSecond;
        WriteClock(writer, seconds);
        writer.Char(L':');
        writer.Digits((magnitude - Time::FromSeconds(seconds)).ToFrame64(rate), SampleDigits(rate));
        break;
    }
    case Family::kMilliseconds: {
        const std::int64_t milliseconds = magnitude.ToFrame64(FrameRate(1000));
        WriteClock(writer, milliseconds / 1000);
        writer.Char(L'.');
        writer.Digits(milliseconds % 1000, 3);
        break;
    }
    }
    return writer.Take();
}

Time Timecode::StringToTime(const std::wstring& inText, const Style& inStyle, unsigned int inFormat)
{
    Fields fields;
    if (!ReadFields(inText, fields)) {
        return kTime_Invalid;
    }
    const FormatInfo info = Describe(inFormat);
    const FrameRate rate = CountingRate(inFormat, inStyle.frameRate);
    if (rate.IsZero()) {
        return kTime_Invalid;
    }
    Time result;
    switch (info.family) {
    case Family::kSMPTE: {
        if (fields.digitsOnly) {
            SplitDigits(fields, {2, 2, 2, 0});
        }
        const std::int64_t seconds = Clock(fields, 1);
        if (seconds < 0) {
            return kTime_Invalid;
        }
        result = FramesToTime(FrameOfLabel(seconds * info.base + fields.values[0], info), rate);
        break;
    }
    case Family::kFeet: {
        if (fields.digitsOnly) {
            SplitDigits(fields, {2, 0, 0, 0});
        }
        std::int64_t frames = 0;
        if (fields.count > 2 || __builtin_mul_overflow(fields.values[1], info.base, &frames) ||
            __builtin_add_overflow(frames, fields.values[0], &frames)) {
            return kTime_Invalid;
        }
        result = FramesToTime(frames, rate);
        break;
    }
    case Family::kFrames:
        if (fields.count > 1) {
            return kTime_Invalid;
        }
        result = FramesToTime(fields.values[0], rate);
        break;
    case Family::kSamples: {
        if (fields.digitsOnly) {
            SplitDigits(fields, {SampleDigits(rate), 2, 2, 0});
        }
        const std::int64_t seconds = Clock(fields, 1);
        result = seconds < 0 ? kTime_Invalid : Sum(Time::FromSeconds(seconds), FramesToTime(fields.values[0], rate));
        break;
    }
    case Family::kMilliseconds: {
        if (fields.digitsOnly) {
            SplitDigits(fields, {3, 2, 2, 0});
        } else if (!fields.fractionLast) {
            // "1:30" is a minute and a half: without a decimal point every field is on the clock.
            if (fields.count == 4) {
                return kTime_Invalid;
            }
            for (int i = fields.count; i > 0; --i) {
                fields.values[i] = fields.values[i - 1];
            }
            fields.values[0] = 0;
            fields.widths[0] = 3;
            ++fields.count;
        }
        std::int64_t milliseconds = fields.values[0];
        // "1.5" is a second and a half: digits after a point are a fraction.
        if (fields.fractionLast) {
            for (int width = fields.widths[0]; width < 3; ++width) {
                milliseconds *= 10;
            }
            for (int width = fields.widths[0]; width > 3; --width) {
                milliseconds /= 10;
            }
        }
        const std::int64_t seconds = Clock(fields, 1);
        result = seconds < 0 ? kTime_Invalid : Sum(Time::FromSeconds(seconds), FramesToTime(milliseconds, rate));
        break;
    }
    }
    if (result == kTime_Invalid) {
        return kTime_Invalid;
    }
    return fields.negative ? Time() - result : result;
}

} // namespace KOR
