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

// Both measure from setDirectory until every row the list will show is in its model, and the
// events that follow (the views' layout) have run.

// Empty files are enough: the list reads names and kinds, never contents. Made once per run.
const QString& CrowdedFolder()
{
    static QTemporaryDir folder;
    static const bool made = [] {
        for (int index = 0; index < kFiles; ++index) {
            const char* extension = index % kImportableEvery == 0 ? "png" : "xyzq";
            QFile(folder.filePath(
                      QStringLiteral("file_%1.%2").arg(index, 6, 10, QLatin1Char('0')).arg(QLatin1String(extension))))
                .open(QIODevice::WriteOnly);
        }
        return true;
    }();
    (void)made;
    static const QString path = folder.path();
    return path;
}

QFileDialog* PlainDialog()
{
    auto* dialog = new QFileDialog(nullptr, QStringLiteral("Import"));
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->show();
    return dialog;
}

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
        auto* filter = new HostQt::ChooserListFilter(importer, dialog.get());
        dialog->setProxyModel(filter);
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

void BM_PlainQtFileDialogSameFolder(benchmark::State& ioState)
{
    CrowdedFolder();
    for (auto _ : ioState) {
        ioState.PauseTiming();
        std::unique_ptr<QFileDialog> dialog(PlainDialog());
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

} // namespace

BENCHMARK(BM_ImportChooserFilteredFolder)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5)
    ->Repetitions(3)
    ->ReportAggregatesOnly();
BENCHMARK(BM_PlainQtFileDialogSameFolder)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5)
    ->Repetitions(3)
    ->ReportAggregatesOnly();
