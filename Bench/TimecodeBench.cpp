// Timecode text: one format plus one parse per iteration, by family of formats; and one drag
// step of a hot number, from the mouse event to its repainted text.

#include <QApplication>
#include <QMouseEvent>
#include <QTest>
#include <QWidget>

#include <benchmark/benchmark.h>

#include "DLG/HotNumberControl.h"
#include "HostQt/NodePeer.h"
#include "KOR/Timecode.h"

namespace {

using namespace KOR;

void FormatAndParse(benchmark::State& ioState, unsigned int inFormat, FrameRate inRate)
{
    Timecode timecode;
    timecode.SetFormat(inFormat, inRate);
    const FrameRate counting = Timecode::CountingRate(inFormat, inRate);
    std::int64_t frame = 1234567;
    for (auto _ : ioState) {
        timecode.SetTime(Time(frame++, counting));
        const std::wstring text = timecode.GetString();
        benchmark::DoNotOptimize(Timecode::StringToTime(text, timecode.GetStyle(), inFormat));
    }
    ioState.SetItemsProcessed(ioState.iterations());
}

void BM_SMPTE_NonDrop25(benchmark::State& ioState) { FormatAndParse(ioState, kTimecodeFormat_SMPTE25, kFrameRate_PAL25); }
void BM_SMPTE_DropFrame2997(benchmark::State& ioState)
{
    FormatAndParse(ioState, kTimecodeFormat_SMPTE2997DropFrame, kFrameRate_NTSC2997);
}
void BM_FeetFrames35mm(benchmark::State& ioState)
{
    FormatAndParse(ioState, kTimecodeFormat_FeetFrames35mm, kFrameRate_Film24);
}
void BM_Frames(benchmark::State& ioState) { FormatAndParse(ioState, kTimecodeFormat_Frames, kFrameRate_Film24); }
void BM_AudioSamples(benchmark::State& ioState)
{
    FormatAndParse(ioState, kTimecodeFormat_AudioSamples, kFrameRate_Audio48000);
}
void BM_Milliseconds(benchmark::State& ioState) { FormatAndParse(ioState, kTimecodeFormat_Milliseconds, kFrameRate_Zero); }

BENCHMARK(BM_SMPTE_NonDrop25);
BENCHMARK(BM_SMPTE_DropFrame2997);
BENCHMARK(BM_FeetFrames35mm);
BENCHMARK(BM_Frames);
BENCHMARK(BM_AudioSamples);
BENCHMARK(BM_Milliseconds);

class PaintCounter : public QObject {
public:
    bool eventFilter(QObject*, QEvent* inEvent) override
    {
        mCount += inEvent->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    std::int64_t mCount = 0;
};

// One pixel of a drag: the move event, the new value and text, and the repaint of the widget.
void BM_HotNumberDragStep(benchmark::State& ioState)
{
    QWidget window;
    window.resize(300, 80);
    window.show();
    zelui::ui::UI_NodePtr parent(new zelui::ui::UI_Node(std::make_unique<zelui::ui::NodePeer>(&window)));
    boost::intrusive_ptr<DLG::HotNumberControl> control(new DLG::HotNumberControl(nullptr, parent.get()));
    control->SetMinimum(-1e9);
    control->SetMaximum(1e9);
    control->SetDecimalPlaces(1);
    control->SetEnabled(true);
    control->SetLocalRect({10, 10, 200, 26});
    auto* widget = HostQt::PeerWidget<QWidget>(control.get());
    widget->show();
    if (!QTest::qWaitForWindowExposed(&window)) {
        ioState.SkipWithError("the window was never shown");
        return;
    }
    PaintCounter paints;
    widget->installEventFilter(&paints);

    QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 10), widget->mapToGlobal(QPointF(5, 10)), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &press);
    int x = 5;
    for (auto _ : ioState) {
        x += (x % 2000 == 1999) ? -1999 : 1; // stays within a sane span
        QMouseEvent move(QEvent::MouseMove, QPointF(x, 10), widget->mapToGlobal(QPointF(x, 10)), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(widget, &move);
        widget->repaint();
    }
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(x, 10), widget->mapToGlobal(QPointF(x, 10)),
                        Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &release);
    benchmark::DoNotOptimize(control->GetValue());
    ioState.counters["paints_per_step"] = static_cast<double>(paints.mCount) / static_cast<double>(ioState.iterations());
}

BENCHMARK(BM_HotNumberDragStep)->Unit(benchmark::kMicrosecond);

} // namespace
