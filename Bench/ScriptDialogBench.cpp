// Opening a script dialog: from the entry call until its modal loop runs, warm, beside a plain
// Qt dialog for two numbers built in code.

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <vector>

#include <benchmark/benchmark.h>

#include "DLG/Module.h"
#include "DLG/TransformPositionDialog.h"
#include "HostQt/ReferenceHost.h"

namespace {

using Clock = std::chrono::steady_clock;

// Notes when the named window's modal loop first runs an event, then dismisses the window.
class LoopWatcher : public QObject {
public:
    explicit LoopWatcher(QString inWindow) : mWindow(std::move(inWindow)) { qApp->installEventFilter(this); }
    ~LoopWatcher() override { qApp->removeEventFilter(this); }

    Clock::time_point LoopRunning() const { return mLoopRunning; }

    bool eventFilter(QObject* inObject, QEvent* inEvent) override
    {
        if (inEvent->type() == QEvent::Show && inObject->objectName() == mWindow) {
            auto* dialog = qobject_cast<QDialog*>(inObject);
            QTimer::singleShot(0, dialog, [this, dialog] {
                mLoopRunning = Clock::now();
                dialog->reject();
            });
        }
        return false;
    }

private:
    QString mWindow;
    Clock::time_point mLoopRunning;
};

template <class Open>
void MeasureOpening(benchmark::State& ioState, const QString& inWindow, Open&& inOpen)
{
    LoopWatcher watcher(inWindow);
    std::vector<double> micros;
    for (auto _ : ioState) {
        const Clock::time_point start = Clock::now();
        inOpen();
        const std::chrono::duration<double> elapsed = watcher.LoopRunning() - start;
        ioState.SetIterationTime(elapsed.count());
        micros.push_back(elapsed.count() * 1e6);
    }
    std::nth_element(micros.begin(), micros.begin() + micros.size() / 2, micros.end());
    ioState.counters["median_us"] = micros[micros.size() / 2];
}

struct ModuleHost {
    ModuleHost() : host({settings.path(), QStringLiteral(TARVIX_SOURCE_DIR "/Scripts")})
    {
        DLG::SetModule(HostQt::LoadModuleObject(QStringLiteral(TARVIX_SOURCE_DIR "/Strings/Strings.json")));
    }
    ~ModuleHost() { DLG::Terminate(); }
    QTemporaryDir settings;
    HostQt::ReferenceHost host;
};

void BM_TransformPositionDialog(benchmark::State& ioState)
{
    ModuleHost host;
    double x = 960.0;
    double y = 540.0;
    MeasureOpening(ioState, QStringLiteral("TransformPositionDialog"),
                   [&] { benchmark::DoNotOptimize(DLG::TransformPosition::DoTransformPositionDialog(x, y)); });
}

void BM_PlainQtTwoNumberDialog(benchmark::State& ioState)
{
    MeasureOpening(ioState, QStringLiteral("PlainDialog"), [] {
        QDialog dialog;
        dialog.setObjectName(QStringLiteral("PlainDialog"));
        dialog.setWindowTitle(QStringLiteral("Position"));
        auto* layout = new QFormLayout(&dialog);
        for (const char* label : {"&Horizontal (X):", "&Vertical (Y):"}) {
            auto* edit = new QDoubleSpinBox;
            edit->setRange(-1000000.0, 1000000.0);
            edit->setDecimals(2);
            edit->setSuffix(QStringLiteral(" px"));
            edit->setButtonSymbols(QAbstractSpinBox::NoButtons);
            layout->addRow(QString::fromLatin1(label), edit);
        }
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
        QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
        QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
        layout->addRow(buttons);
        benchmark::DoNotOptimize(dialog.exec());
    });
}

} // namespace

BENCHMARK(BM_TransformPositionDialog)->UseManualTime()->Unit(benchmark::kMicrosecond)->MinWarmUpTime(0.5);
BENCHMARK(BM_PlainQtTwoNumberDialog)->UseManualTime()->Unit(benchmark::kMicrosecond)->MinWarmUpTime(0.5);
