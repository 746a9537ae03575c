#pragma once

// Measuring a modal dialog: from the call that opens it until its modal loop runs, warm.

#include <QApplication>
#include <QDialog>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

#include <benchmark/benchmark.h>

#include "DLG/Module.h"
#include "HostQt/ReferenceHost.h"

namespace Bench {

using Clock = std::chrono::steady_clock;

// Notes when the named window's modal loop first runs an event, runs inWhileOpen there (by
// default nothing), then dismisses the window.
class LoopWatcher : public QObject {
public:
    explicit LoopWatcher(QString inWindow, std::function<void(QDialog&)> inWhileOpen = {})
        : mWindow(std::move(inWindow)), mWhileOpen(std::move(inWhileOpen))
    {
        qApp->installEventFilter(this);
    }
    ~LoopWatcher() override { qApp->removeEventFilter(this); }

    Clock::time_point LoopRunning() const { return mLoopRunning; }

    bool eventFilter(QObject* inObject, QEvent* inEvent) override
    {
        if (inEvent->type() == QEvent::Show && inObject->objectName() == mWindow) {
            auto* dialog = qobject_cast<QDialog*>(inObject);
            QTimer::singleShot(0, dialog, [this, dialog] {
                mLoopRunning = Clock::now();
                if (mWhileOpen) {
                    mWhileOpen(*dialog);
                }
                dialog->reject();
            });
        }
        return false;
    }

private:
    QString mWindow;
    std::function<void(QDialog&)> mWhileOpen;
    Clock::time_point mLoopRunning;
};

// Counts the median of the iterations' times, in microseconds, as "median_us".
class Median {
public:
    void Add(std::chrono::duration<double> inElapsed) { mMicros.push_back(inElapsed.count() * 1e6); }
    void Report(benchmark::State& ioState)
    {
        if (mMicros.empty()) {
            return;
        }
        std::nth_element(mMicros.begin(), mMicros.begin() + mMicros.size() / 2, mMicros.end());
        ioState.counters["median_us"] = mMicros[mMicros.size() / 2];
    }

private:
    std::vector<double> mMicros;
};

template <class Open>
void MeasureOpening(benchmark::State& ioState, const QString& inWindow, Open&& inOpen)
{
    LoopWatcher watcher(inWindow);
    Median median;
    for (auto _ : ioState) {
        const Clock::time_point start = Clock::now();
        inOpen();
        const std::chrono::duration<double> elapsed = watcher.LoopRunning() - start;
        ioState.SetIterationTime(elapsed.count());
        median.Add(elapsed);
    }
    median.Report(ioState);
}

// The reference host with the project's scripts and string table, settings in a temporary folder.
struct ModuleHost {
    ModuleHost() : host({settings.path(), QStringLiteral(TARVIX_SOURCE_DIR "/Scripts")})
    {
        DLG::SetModule(HostQt::LoadModuleObject(QStringLiteral(TARVIX_SOURCE_DIR "/Strings/Strings.json")));
    }
    ~ModuleHost() { DLG::Terminate(); }
    QTemporaryDir settings;
    HostQt::ReferenceHost host;
};

} // namespace Bench
