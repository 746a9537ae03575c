#pragma once

#include <QByteArray>

#include <cstdint>

namespace HostQt {

// How a WAV file codes its samples: integer PCM (8-bit offset by 128, wider ones signed),
// IEEE floats, or 24-bit PCM in the extensible format chunk.
enum class WavFormat { kUInt8, kInt16, kInt24, kInt32, kFloat32, kFloat64, kExtensibleInt24 };

struct WavLayout {
    WavFormat format = WavFormat::kInt16;
    int channels = 2;
    int sampleRate = 48000;
};

// The start of a WAV file of inFrames frames: the RIFF header, the format chunk and the data
// chunk's header. The interleaved samples follow it.
QByteArray WavHeader(const WavLayout& inLayout, std::int64_t inFrames);

// Appends a sample of [-1, 1] in inFormat's coding. Integers are scaled by their full scale,
// 2^(bits - 1), rounded, and stop at their largest and smallest values; floats are kept as they are.
void AppendWavSample(QByteArray& ioData, WavFormat inFormat, double inSample);

} // namespace HostQt
