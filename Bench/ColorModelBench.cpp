// The colour picker's logic, one call per iteration: the broadcast-safe test, the recompute
// rule from each group, and the square and slider pictures that are redrawn on every change.

#include <vector>

#include <benchmark/benchmark.h>

#include "ColorPicker/ColorComponents.h"

namespace {

using namespace DLG::ColorPicker;

// Colours spread over the whole cube (a step prime to 2^24), each with every description loaded.
std::vector<ColorComponents> SpreadOfColours()
{
    std::vector<ColorComponents> colours(4096);
    unsigned long value = 0;
    for (ColorComponents& colour : colours) {
        colour.LoadRGB(KOR::ParamColor<unsigned long>(value));
        value = (value + 4093 * 997) & 0xFFFFFF;
    }
    return colours;
}

void BM_TestBroadcastSafe(benchmark::State& ioState)
{
    const std::vector<ColorComponents> colours = SpreadOfColours();
    std::size_t next = 0;
    std::int64_t unsafe = 0;
    for (auto _ : ioState) {
        KOR::ParamColor<unsigned long> safe;
        unsafe += TestBroadcastSafe(colours[next].GetRGB(), safe) ? 0 : 1;
        benchmark::DoNotOptimize(safe);
        next = (next + 1) % colours.size();
    }
    ioState.counters["unsafe_share"] = static_cast<double>(unsafe) / static_cast<double>(ioState.iterations());
}
BENCHMARK(BM_TestBroadcastSafe);

// The argument is the source mode: 0 HSB, 3 RGB, 6 HSL, 9 YUV.
void BM_RecomputeFrom(benchmark::State& ioState)
{
    const auto mode = static_cast<TarvixColorPickerMode>(ioState.range(0));
    const std::vector<ColorComponents> colours = SpreadOfColours();
    std::size_t next = 0;
    for (auto _ : ioState) {
        ColorComponents components = colours[next];
        benchmark::DoNotOptimize(components.RecomputeFrom(mode));
        benchmark::DoNotOptimize(components);
        next = (next + 1) % colours.size();
    }
}
BENCHMARK(BM_RecomputeFrom)->Arg(0)->Arg(3)->Arg(6)->Arg(9);

// The argument is the mode.
void BM_RenderSquare(benchmark::State& ioState)
{
    const auto mode = static_cast<TarvixColorPickerMode>(ioState.range(0));
    ColorComponents current;
    current.LoadRGB({200, 60, 30});
    std::vector<std::uint32_t> pixels(kFieldSize * kFieldSize);
    for (auto _ : ioState) {
        RenderSquare(mode, current, kWebAdjustOff, pixels.data());
        benchmark::DoNotOptimize(pixels.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_RenderSquare)->DenseRange(0, 11)->Unit(benchmark::kMicrosecond);

void BM_RenderSlider(benchmark::State& ioState)
{
    const auto mode = static_cast<TarvixColorPickerMode>(ioState.range(0));
    ColorComponents current;
    current.LoadRGB({200, 60, 30});
    std::vector<std::uint32_t> pixels(kFieldSize);
    for (auto _ : ioState) {
        RenderSlider(mode, current, kWebAdjustOff, pixels.data());
        benchmark::DoNotOptimize(pixels.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_RenderSlider)->DenseRange(0, 11)->Unit(benchmark::kMicrosecond);

} // namespace
