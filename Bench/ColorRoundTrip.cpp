// For every one of the 16,777,216 RGB colours: shows its HSB (and its HSL) components in the
// number fields as the picker does, types the shown texts back and counts the colours whose
// RGB comes back unchanged. Exits with 1 unless every colour comes back in both descriptions.

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <thread>
#include <vector>

#include "ColorPicker/ColorComponents.h"

namespace {

using DLG::ColorPicker::ColorComponents;
using DLG::ColorPicker::kComponentFields;

constexpr std::uint32_t kColorCount = 1U << 24;

struct Description {
    const char* name;
    std::array<TarvixColorPickerMode, 3> modes;
};

// The value as the field shows it (the host formats like printf's "%.*f") and reads it back
// when typed.
double AsShown(double inValue, int inDecimalPlaces)
{
    char text[32];
    const auto written = std::to_chars(text, text + sizeof text, inValue, std::chars_format::fixed, inDecimalPlaces);
    double shown = 0.0;
    std::from_chars(text, written.ptr, shown);
    return shown;
}

bool ComesBack(const Description& inDescription, std::uint32_t inColor)
{
    const KOR::ParamColor<unsigned long> color(inColor);
    ColorComponents components;
    components.LoadRGB(color);
    for (const TarvixColorPickerMode mode : inDescription.modes) {
        components.SetFieldValue(mode, AsShown(components.GetFieldValue(mode), kComponentFields[mode].decimalPlaces));
    }
    components.RecomputeFrom(inDescription.modes[0]);
    return components.GetRGB() == color;
}

struct Tally {
    std::uint32_t back = 0;
    std::uint32_t firstMiss = kColorCount;
};

Tally CountRange(const Description& inDescription, std::uint32_t inBegin, std::uint32_t inEnd)
{
    Tally tally;
    for (std::uint32_t color = inBegin; color < inEnd; ++color) {
        if (ComesBack(inDescription, color)) {
            ++tally.back;
        } else if (tally.firstMiss == kColorCount) {
            tally.firstMiss = color;
        }
    }
    return tally;
}

// Splits the colours over the machine's cores.
Tally Count(const Description& inDescription)
{
    const std::uint32_t workers = std::max(1U, std::thread::hardware_concurrency());
    std::vector<Tally> tallies(workers);
    std::vector<std::thread> threads;
    const auto boundary = [workers](std::uint32_t inWorker) {
        return static_cast<std::uint32_t>(std::uint64_t{kColorCount} * inWorker / workers);
    };
    for (std::uint32_t worker = 0; worker < workers; ++worker) {
        threads.emplace_back([&, worker] {
            tallies[worker] = CountRange(inDescription, boundary(worker), boundary(worker + 1));
        });
    }
    Tally total;
    for (std::uint32_t worker = 0; worker < workers; ++worker) {
        threads[worker].join();
        total.back += tallies[worker].back;
        total.firstMiss = std::min(total.firstMiss, tallies[worker].firstMiss);
    }
    return total;
}

} // namespace

int main()
{
    const std::array<Description, 2> descriptions = {{
        {"HSB", {kTarvixColorPickerMode_Hue, kTarvixColorPickerMode_Saturation, kTarvixColorPickerMode_Brightness}},
        {"HSL", {kTarvixColorPickerMode_HSL_H, kTarvixColorPickerMode_HSL_S, kTarvixColorPickerMode_HSL_L}},
    }};
    bool allBack = true;
    for (const Description& description : descriptions) {
        const Tally tally = Count(description);
        std::printf("%s (%d, %d and %d decimals): %u of %u come back", description.name,
                    kComponentFields[description.modes[0]].decimalPlaces,
                    kComponentFields[description.modes[1]].decimalPlaces,
                    kComponentFields[description.modes[2]].decimalPlaces, tally.back, kColorCount);
        if (tally.firstMiss != kColorCount) {
            const KOR::ParamColor<unsigned long> miss(tally.firstMiss);
            std::printf("; the first that does not: red %d, green %d, blue %d", miss.Red(), miss.Green(), miss.Blue());
        }
        std::printf("\n");
        allBack = allBack && tally.back == kColorCount;
    }
    return allBack ? 0 : 1;
}
