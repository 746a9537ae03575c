#include "HostQt/WavFile.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace HostQt {

namespace {

constexpr std::uint64_t kFormat_PCM = 1;
constexpr std::uint64_t kFormat_Float = 3;
constexpr std::uint64_t kFormat_Extensible = 0xFFFE;
// The extensible chunk's sub-format: the GUID of integer PCM.
constexpr char kSubFormat_PCM[] = "\x01\x00\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71";

void Put(QByteArray& ioBytes, std::uint64_t inValue, int inBytes)
{
    for (int i = 0; i < inBytes; ++i) {
        ioBytes.append(static_cast<char>((inValue >> (8 * i)) & 0xFF));
    }
}

int SampleBytes(WavFormat inFormat)
{
    switch (inFormat) {
    case WavFormat::kUInt8: return 1;
    case WavFormat::kInt16: return 2;
    case WavFormat::kInt24:
    case WavFormat::kExtensibleInt24: return 3;
    case WavFormat::kInt32:
    case WavFormat::kFloat32: return 4;
    case WavFormat::kFloat64: return 8;
    }
    return 0;
}

std::uint64_t FormatCode(WavFormat inFormat)
{
    switch (inFormat) {
    case WavFormat::kFloat32:
    case WavFormat::kFloat64: return kFormat_Float;
    case WavFormat::kExtensibleInt24: return kFormat_Extensible;
    default: return kFormat_PCM;
    }
}

} // namespace

QByteArray WavHeader(const WavLayout& inLayout, std::int64_t inFrames)
{
    const int bits = 8 * SampleBytes(inLayout.format);
    const auto blockAlign = static_cast<std::uint64_t>(SampleBytes(inLayout.format) * inLayout.channels);
    QByteArray format;
    Put(format, FormatCode(inLayout.format), 2);
    Put(format, static_cast<std::uint64_t>(inLayout.channels), 2);
    Put(format, static_cast<std::uint64_t>(inLayout.sampleRate), 4);
    Put(format, static_cast<std::uint64_t>(inLayout.sampleRate) * blockAlign, 4);
    Put(format, blockAlign, 2);
    Put(format, static_cast<std::uint64_t>(bits), 2);
    if (inLayout.format == WavFormat::kExtensibleInt24) {
        Put(format, 22, 2); // the extension's size
        Put(format, static_cast<std::uint64_t>(bits), 2); // valid bits
        Put(format, 0, 4); // no channel mask
        format.append(kSubFormat_PCM, 16);
    }
    const std::uint64_t dataBytes = static_cast<std::uint64_t>(inFrames) * blockAlign;
    QByteArray header("RIFF");
    Put(header, 4 + 8 + static_cast<std::uint64_t>(format.size()) + 8 + dataBytes, 4);
    header += "WAVEfmt ";
    Put(header, static_cast<std::uint64_t>(format.size()), 4);
    header += format;
    header += "data";
    Put(header, dataBytes, 4);
    return header;
}

void AppendWavSample(QByteArray& ioData, WavFormat inFormat, double inSample)
{
    if (inFormat == WavFormat::kFloat32) {
        const auto value = static_cast<float>(inSample);
        std::uint32_t raw;
        std::memcpy(&raw, &value, sizeof raw);
        Put(ioData, raw, 4);
    } else if (inFormat == WavFormat::kFloat64) {
        std::uint64_t raw;
        std::memcpy(&raw, &inSample, sizeof raw);
        Put(ioData, raw, 8);
    } else if (inFormat == WavFormat::kUInt8) {
        Put(ioData, static_cast<std::uint64_t>(std::clamp(std::lround(128 + inSample * 128), 0L, 255L)), 1);
    } else {
        const int bytes = SampleBytes(inFormat);
        const double scale = std::ldexp(1.0, 8 * bytes - 1);
        const auto value = static_cast<std::int64_t>(std::clamp(std::round(inSample * scale), -scale, scale - 1));
        Put(ioData, static_cast<std::uint64_t>(value), bytes);
    }
}

} // namespace HostQt
