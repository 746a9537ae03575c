// The clip speed dialog: opening it beside a plain Qt dialog with the same controls, and one
// speed edit from the typed value's Enter until the duration shows the new time.

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include "DLG/ClipSpeedDialogImpl.h"
#include "DialogOpening.h"
#include "KOR/Timecode.h"

namespace {

using Bench::Clock;
using Bench::ModuleHost;

BE::ProjectRef NtscProject()
{
    return HostQt::LoadProject(R"({"name": "Bench", "timecode": {"displayFormat": 103, "videoFrameRate": "30000/1001",
        "audioDisplayFormat": 200, "audioRate": "48000"}})",
                               QStringLiteral("/tmp/Bench.tvx"));
}

// 10 s of 29.97 video at normal speed.
struct Clip {
    double speed = 100.0;
    KOR::Time reference{300, KOR::kFrameRate_NTSC2997};
    KOR::Time duration = reference;
    bool reverse = false;
    bool pitch = true;
    bool ganged = true;

    bool Open(const BE::ProjectRef& inProject)
    {
        return DLG::ClipSpeedDialog::DoClipSpeedDialog(nullptr, inProject, speed, duration, reference, reverse, pitch,
                                                       ganged, true, true, true);
    }
};

void BM_ClipSpeedDialog(benchmark::State& ioState)
{
    ModuleHost host;
    const BE::ProjectRef project = NtscProject();
    Clip clip;
    Bench::MeasureOpening(ioState, QStringLiteral("ClipSpeedDialog"),
                          [&] { benchmark::DoNotOptimize(clip.Open(project)); });
}

void BM_PlainQtClipSpeedDialog(benchmark::State& ioState)
{
    Bench::MeasureOpening(ioState, QStringLiteral("PlainClipSpeed"), [] {
        QDialog dialog;
        dialog.setObjectName(QStringLiteral("PlainClipSpeed"));
        dialog.setWindowTitle(QStringLiteral("Clip Speed / Duration"));
        auto* layout = new QVBoxLayout(&dialog);
        auto* group = new QGroupBox(QStringLiteral("Speed and duration"));
        auto* fields = new QGridLayout(group);
        auto* speed = new QDoubleSpinBox;
        speed->setRange(-10000.0, 10000.0);
        speed->setDecimals(2);
        speed->setSuffix(QStringLiteral(" %"));
        speed->setValue(100.0);
        auto* duration = new QLineEdit(QStringLiteral("00:00:10;00"));
        duration->setInputMask(QStringLiteral("99:99:99;99"));
        auto* link = new QToolButton;
        link->setCheckable(true);
        link->setChecked(true);
        link->setIcon(QIcon(QStringLiteral(":/zelui/images/GangLinked.png")));
        link->setAccessibleName(QStringLiteral("Speed and duration linked"));
        fields->addWidget(new QLabel(QStringLiteral("&Speed:")), 0, 0);
        fields->addWidget(speed, 0, 1);
        fields->addWidget(link, 0, 2, 2, 1);
        fields->addWidget(new QLabel(QStringLiteral("&Duration:")), 1, 0);
        fields->addWidget(duration, 1, 1);
        layout->addWidget(group);
        layout->addWidget(new QCheckBox(QStringLiteral("&Reverse speed")));
        layout->addWidget(new QCheckBox(QStringLiteral("&Maintain audio pitch")));
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
        QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
        QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
        layout->addWidget(buttons);
        benchmark::DoNotOptimize(dialog.exec());
    });
}

// Types 50 and 25 in turn into the open dialog's speed; times the Enter that commits it until the
// duration field has repainted with 20 or 40 seconds.
void BM_ClipSpeedEdit(benchmark::State& ioState)
{
    ModuleHost host;
    const BE::ProjectRef project = NtscProject();
    Clip clip;
    int shownRight = 0;
    int edits = 0;
    Bench::Median median;
    Bench::LoopWatcher watcher(QStringLiteral("ClipSpeedDialog"), [&](QDialog& ioDialog) {
        auto* speed = ioDialog.findChild<QWidget*>(QStringLiteral("clipSpeedReplacement"));
        auto* duration = ioDialog.findChild<QWidget*>(QStringLiteral("timecodeControlReplacement"));
        if (!speed || !duration) {
            ioState.SkipWithError("the dialog lacks its speed or duration field");
            return;
        }
        const QString shownAt[] = {QStringLiteral("00:00:20;00"), QStringLiteral("00:00:40;00")};
        for (auto _ : ioState) {
            const bool half = edits++ % 2 == 0;
            QTest::mouseClick(speed, Qt::LeftButton);
            auto* field = speed->findChild<QLineEdit*>();
            if (!field) {
                ioState.SkipWithError("a click opened no field to type in");
                break;
            }
            QTest::keyClicks(field, half ? QStringLiteral("50") : QStringLiteral("25"));
            const Clock::time_point start = Clock::now();
            QTest::keyClick(field, Qt::Key_Return);
            duration->repaint();
            const std::chrono::duration<double> elapsed = Clock::now() - start;
            ioState.SetIterationTime(elapsed.count());
            median.Add(elapsed);
            shownRight += duration->property("displayText").toString() == shownAt[half ? 0 : 1];
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the finished field goes
        }
    });
    benchmark::DoNotOptimize(clip.Open(project));
    median.Report(ioState);
    ioState.counters["shown_right"] = edits == 0 ? 0.0 : double(shownRight) / edits;
}

} // namespace

BENCHMARK(BM_ClipSpeedDialog)->UseManualTime()->Unit(benchmark::kMicrosecond)->MinWarmUpTime(0.5);
BENCHMARK(BM_PlainQtClipSpeedDialog)->UseManualTime()->Unit(benchmark::kMicrosecond)->MinWarmUpTime(0.5);
BENCHMARK(BM_ClipSpeedEdit)->UseManualTime()->Unit(benchmark::kMicrosecond);
