#pragma once

#include <QFile>
#include <QString>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

namespace TestSupport {

enum class WavFormat { kUInt8, kInt16, kInt24, kInt32, kFloat32, kFloat64, kExtensibleInt24 };

namespace wav {

inline void Put(QByteArray& ioBytes, std::uint64_t inValue, int inBytes)
{
    for (int i = 0; i < inBytes; ++i) {
        ioBytes.append(static_cast<char>((inValue >> (8 * i)) & 0xFF));
    }
}

inline int SampleBytes(WavFormat inFormat)
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

// A sample in [-1, 1] in the format's own coding; integers round and stop at their largest value.
inline void PutSample(QByteArray& ioBytes, WavFormat inFormat, double inSample)
{
    const int bytes = SampleBytes(inFormat);
    if (inFormat == WavFormat::kFloat32) {
        const float value = static_cast<float>(inSample);
        std::uint32_t raw;
        std::memcpy(&raw, &value, sizeof raw);
        Put(ioBytes, raw, 4);
    } else if (inFormat == WavFormat::kFloat64) {
        std::uint64_t raw;
        std::memcpy(&raw, &inSample, sizeof raw);
        Put(ioBytes, raw, 8);
    } else if (inFormat == WavFormat::kUInt8) {
        Put(ioBytes, static_cast<std::uint64_t>(std::clamp(std::lround(128 + inSample * 128), 0L, 255L)), 1);
    } else {
        const double scale = std::ldexp(1.0, 8 * bytes - 1);
        const auto value = static_cast<std::int64_t>(std::clamp(std::round(inSample * scale), -scale, scale - 1));
        Put(ioBytes, static_cast<std::uint64_t>(value), bytes);
    }
}

} // namespace wav

// Writes a WAV file of interleaved samples; with inOddChunk an odd-sized chunk comes before the
// samples, as tagging programs leave them.
inline void WriteWav(const QString& inPath, WavFormat inFormat, int inChannels, const std::vector<double>& inSamples,
                     bool inOddChunk = false)
{
    using wav::Put;
    const int bytes = wav::SampleBytes(inFormat);
    const bool isFloat = inFormat == WavFormat::kFloat32 || inFormat == WavFormat::kFloat64;
    const bool extensible = inFormat == WavFormat::kExtensibleInt24;
    QByteArray format;
    Put(format, extensible ? 0xFFFE : isFloat ? 3 : 1, 2);
    Put(format, static_cast<std::uint64_t>(inChannels), 2);
    Put(format, 48000, 4);
    Put(format, static_cast<std::uint64_t>(48000 * bytes * inChannels), 4);
    Put(format, static_cast<std::uint64_t>(bytes * inChannels), 2);
    Put(format, static_cast<std::uint64_t>(8 * bytes), 2);
    if (extensible) {
        Put(format, 22, 2);
        Put(format, static_cast<std::uint64_t>(8 * bytes), 2);
        Put(format, 0, 4);
        format.append("\x01\x00\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71", 16); // PCM
    }
    QByteArray data;
    for (const double sample : inSamples) {
        wav::PutSample(data, inFormat, sample);
    }
    QByteArray body("WAVE");
    body += "fmt ";
    Put(body, static_cast<std::uint64_t>(format.size()), 4);
    body += format;
    if (inOddChunk) {
        body += "LIST";
        Put(body, 3, 4);
        body += QByteArray("abc\0", 4);
    }
    body += "data";
    Put(body, static_cast<std::uint64_t>(data.size()), 4);
    body += data;
    QByteArray file("RIFF");
    Put(file, static_cast<std::uint64_t>(body.size()), 4);
    file += body;
    QFile out(inPath);
    out.open(QIODevice::WriteOnly | QIODevice::Truncate);
    out.write(file);
}

} // namespace TestSupport
