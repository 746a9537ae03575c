// The import chooser's list in a folder of 100,000 files, one in ten importable: from the folder
// change until the filtered list is complete, beside the same folder in a plain Qt file dialog.

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>

#include <benchmark/benchmark.h>

#include "DLG/ImportFileDialog.h"
#include "HostQt/FileChooser.h"
#include "HostQt/ReferenceHost.h"
#include "ML/ImportableFileTypes.h"

namespace {

constexpr int kFiles = 100000;
constexpr int kImportableEvery = 10;
constexpr int kImportable = kFiles / kImportableEvery;

// Empty files are enough: the list reads names and kinds, never contents.
QString FillFolder(const QTemporaryDir& inFolder)
{
    for (int index = 0; index < kFiles; ++index) {
        const char* extension = index % kImportableEvery == 0 ? "png" : "xyzq";
        QFile(inFolder.filePath(
                  QStringLiteral("file_%1.%2").arg(index, 6, 10, QLatin1Char('0')).arg(QLatin1String(extension))))
            .open(QIODevice::WriteOnly);
    }
    return inFolder.path();
}

// Made once per run.
const QString& CrowdedFolder()
{
    static const QTemporaryDir folder;
    static const QString path = FillFolder(folder);
    return path;
}

QFileDialog* PlainDialog()
{
    auto* dialog = new QFileDialog(nullptr, QStringLiteral("Import"));
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    return dialog;
}

// Both measure from setDirectory until every row the list will show is in its model, and the
// events that follow (the views' layout) have run.
void BM_ImportChooserFilteredFolder(benchmark::State& ioState)
{
    CrowdedFolder();
    QTemporaryDir settings;
    HostQt::ReferenceHost host({settings.path(), QString()});
    DLG::ImportFileDialog importer(nullptr, DLG::kDialogFlag_AllowMultiSelect, nullptr,
                                   ML::ImportableFileTypeUtils::GetImportableFileExtensions(), nullptr);
    // A fresh dialog each time, so that no listing is cached.
    for (auto _ : ioState) {
        ioState.PauseTiming();
        std::unique_ptr<QFileDialog> dialog(PlainDialog());
        HostQt::ChooserListFilter* filter = HostQt::PrepareChooserList(*dialog, &importer);
        dialog->show();
        auto* model = dialog->findChild<QFileSystemModel*>();
        ioState.ResumeTiming();
        const auto start = std::chrono::steady_clock::now();
        dialog->setDirectory(CrowdedFolder());
        const auto root = [&] { return filter->mapFromSource(model->index(CrowdedFolder())); };
        while (filter->rowCount(root()) < kImportable) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        }
        QCoreApplication::processEvents();
        ioState.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
}

// The plain dialog as Qt sets it up, and with the host's type names but no filter: the
// difference between the second and the import chooser is the filter's own cost.
void MeasurePlainDialog(benchmark::State& ioState, bool inHostTypeNames)
{
    CrowdedFolder();
    for (auto _ : ioState) {
        ioState.PauseTiming();
        std::unique_ptr<QFileDialog> dialog(PlainDialog());
        if (inHostTypeNames) {
            HostQt::PrepareChooserList(*dialog, nullptr);
        }
        dialog->show();
        auto* model = dialog->findChild<QFileSystemModel*>();
        ioState.ResumeTiming();
        const auto start = std::chrono::steady_clock::now();
        dialog->setDirectory(CrowdedFolder());
        while (model->rowCount(model->index(CrowdedFolder())) < kFiles) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        }
        QCoreApplication::processEvents();
        ioState.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
}

void BM_PlainQtFileDialogSameFolder(benchmark::State& ioState) { MeasurePlainDialog(ioState, false); }
void BM_HostTypeNamesUnfilteredSameFolder(benchmark::State& ioState) { MeasurePlainDialog(ioState, true); }

} // namespace

BENCHMARK(BM_ImportChooserFilteredFolder)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK(BM_PlainQtFileDialogSameFolder)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK(BM_HostTypeNamesUnfilteredSameFolder)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
