// One drag step on the colour picker's square, from the mouse move to everything repainted,
// beside the same step on Qt's own colour dialog.

#include <QApplication>
#include <QColorDialog>
#include <QMouseEvent>
#include <QTest>

#include <map>

#include "ColorPicker/ColorPickerDlog.h"
#include "DialogOpening.h"
#include "HostQt/NodePeer.h"
#include "HostQt/Workspace.h"

namespace {

// Counts the paint events of the widgets named, to tell how often each was drawn per step.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget& inWindow, const QStringList& inNames)
    {
        for (const QString& name : inNames) {
            if (QWidget* widget = inWindow.findChild<QWidget*>(name)) {
                widget->installEventFilter(this);
                mCounts[widget] = 0;
            }
        }
    }

    bool eventFilter(QObject* inObject, QEvent* inEvent) override
    {
        if (inEvent->type() == QEvent::Paint) {
            ++mCounts[inObject];
        }
        return false;
    }

    // The most and the fewest paints of any one widget.
    int MostPaints() const
    {
        int most = 0;
        for (const auto& [widget, count] : mCounts) {
            most = std::max(most, count);
        }
        return most;
    }
    int FewestPaints() const
    {
        int fewest = mCounts.empty() ? 0 : INT_MAX;
        for (const auto& [widget, count] : mCounts) {
            fewest = std::min(fewest, count);
        }
        return fewest;
    }

private:
    std::map<QObject*, int> mCounts;
};

// Moves the pressed mouse across inField step by step, each step timed from the move event
// until the window has painted what changed.
void MeasureDrag(benchmark::State& ioState, QWidget& inField, PaintCounter* inCounter)
{
    QTest::mousePress(&inField, Qt::LeftButton, {}, QPoint(5, 5));
    QApplication::processEvents();
    Bench::Median median;
    int step = 0;
    for (auto _ : ioState) {
        const QPoint at(5 + (step * 7) % (inField.width() - 10), 5 + (step * 13) % (inField.height() - 10));
        ++step;
        QMouseEvent move(QEvent::MouseMove, at, inField.mapToGlobal(at), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        const Bench::Clock::time_point start = Bench::Clock::now();
        QApplication::sendEvent(&inField, &move);
        QApplication::processEvents();
        const std::chrono::duration<double> elapsed = Bench::Clock::now() - start;
        ioState.SetIterationTime(elapsed.count());
        median.Add(elapsed);
    }
    QTest::mouseRelease(&inField, Qt::LeftButton, {}, QPoint(5, 5));
    median.Report(ioState);
    if (inCounter && step > 0) {
        ioState.counters["most_paints_per_step"] = static_cast<double>(inCounter->MostPaints()) / step;
        ioState.counters["fewest_paints_per_step"] = static_cast<double>(inCounter->FewestPaints()) / step;
    }
}

void BM_ColorPickerSquareDrag(benchmark::State& ioState)
{
    Bench::ModuleHost host;
    boost::intrusive_ptr<DLG::ColorPicker::ColorPickerDlog> dialog(new DLG::ColorPicker::ColorPickerDlog(
        host.host.GetWorkspace().GetDrawSupplier(), nullptr, KOR::ParamColor<unsigned long>(200, 60, 30), L"Color"));
    QWidget* window = HostQt::PeerWidget<QWidget>(dialog.get());
    window->show();
    QApplication::processEvents();
    QWidget* square = window->findChild<QWidget*>(QStringLiteral("SquareView"));
    QStringList views{QStringLiteral("SquareView"), QStringLiteral("SliderView"), QStringLiteral("ChipView"),
                      QStringLiteral("NTSCView")};
    PaintCounter counter(*window, views);
    MeasureDrag(ioState, *square, &counter);
    window->hide();
}

// Qt's colour square is a private class; it is the child whose class is named so.
QWidget* QtColorSquare(QColorDialog& inDialog)
{
    for (QWidget* child : inDialog.findChildren<QWidget*>()) {
        if (QString::fromLatin1(child->metaObject()->className()).endsWith(QLatin1String("QColorPicker"))) {
            return child;
        }
    }
    return nullptr;
}

void BM_QtColorDialogSquareDrag(benchmark::State& ioState)
{
    QColorDialog dialog(QColor(200, 60, 30));
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    dialog.show();
    QApplication::processEvents();
    QWidget* square = QtColorSquare(dialog);
    if (!square) {
        ioState.SkipWithError("Qt's colour dialog has no colour square here");
        return;
    }
    MeasureDrag(ioState, *square, nullptr);
    dialog.hide();
}

} // namespace

BENCHMARK(BM_ColorPickerSquareDrag)->UseManualTime()->Unit(benchmark::kMicrosecond)->MinWarmUpTime(0.2);
BENCHMARK(BM_QtColorDialogSquareDrag)->UseManualTime()->Unit(benchmark::kMicrosecond)->MinWarmUpTime(0.2);
