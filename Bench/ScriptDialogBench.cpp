// Opening a script dialog: from the entry call until its modal loop runs, warm, beside a plain
// Qt dialog for two numbers built in code.

#include <QDialog>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>

#include "DialogOpening.h"
#include "DLG/TransformPositionDialog.h"

namespace {

using Bench::MeasureOpening;
using Bench::ModuleHost;

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
