// The automatic search for missing files: 10,000 missing items, 100 remembered folders of 1,000
// files each, one item in ten findable. Asking every folder about every name beside the search
// that lists each folder once, and the whole automatic search of the locate logic.

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>

#include "DLG/LocateFileDialogLogic.h"

namespace {

constexpr int kFolders = 100;
constexpr int kFilesPerFolder = 1000;
constexpr int kMissingItems = 10000;

// The tree on disk. Making 100,000 files takes a while, so it is kept in the temporary folder
// between runs and made again only when it is incomplete.
struct Tree {
    Tree() : root(QDir::temp().filePath(QStringLiteral("tarvix-relink-bench")))
    {
        const QString complete = QDir(root).filePath(QStringLiteral("complete"));
        if (!QFile::exists(complete)) {
            QDir(root).removeRecursively();
            Make();
            QFile(complete).open(QIODevice::WriteOnly);
        }
        for (int f = 0; f < kFolders; ++f) {
            folders.insert(FolderPath(f).toStdWString());
        }
        // Every tenth missing name lies in one of the folders, the rest nowhere.
        for (int i = 0; i < kMissingItems; ++i) {
            const int f = i % kFolders;
            const int n = i / kFolders;
            names.push_back(i % 10 == 0 ? QStringLiteral("shot_%1_%2.mov").arg(f).arg(n).toStdWString()
                                        : QStringLiteral("lost_%1.mov").arg(i).toStdWString());
        }
    }

    QString FolderPath(int inIndex) const
    {
        return QDir(root).filePath(QStringLiteral("folder%1").arg(inIndex, 3, 10, QLatin1Char('0')));
    }

    void Make() const
    {
        for (int f = 0; f < kFolders; ++f) {
            QDir().mkpath(FolderPath(f));
            for (int n = 0; n < kFilesPerFolder; ++n) {
                QFile(QStringLiteral("%1/shot_%2_%3.mov").arg(FolderPath(f)).arg(f).arg(n)).open(QIODevice::WriteOnly);
            }
        }
    }

    QString root;
    DLG::FolderSet folders;
    std::vector<std::wstring> names;
};

const Tree& TheTree()
{
    static const Tree tree;
    return tree;
}

void LiteralWalk(benchmark::State& ioState)
{
    const Tree& tree = TheTree();
    const DLG::FolderQueries disk;
    for (auto _ : ioState) {
        std::size_t found = 0;
        for (const std::wstring& name : tree.names) {
            found += DLG::SearchFoldersLiterally(tree.folders, name, disk).count;
        }
        benchmark::DoNotOptimize(found);
    }
}
BENCHMARK(LiteralWalk)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5)->ReportAggregatesOnly(true);

void ListedFolders(benchmark::State& ioState)
{
    const Tree& tree = TheTree();
    const DLG::FolderQueries disk;
    for (auto _ : ioState) {
        DLG::FolderNameSearch search(disk, tree.names);
        std::size_t found = 0;
        for (const std::wstring& name : tree.names) {
            found += search.Search(tree.folders, name).count;
        }
        benchmark::DoNotOptimize(found);
    }
}
BENCHMARK(ListedFolders)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5)->ReportAggregatesOnly(true);

// LocateOthers over all the items after the one the user found, linking the findable tenth.
void WholeAutomaticSearch(benchmark::State& ioState)
{
    const Tree& tree = TheTree();
    std::vector<DLG::FileRelinkerRef> items;
    for (const std::wstring& name : tree.names) {
        items.emplace_back(new DLG::DependencyRelinker(L"/missing/" + name, L"", {}));
    }
    std::size_t linked = 0;
    for (auto _ : ioState) {
        DLG::LocateLogic logic(true);
        for (const std::wstring& folder : tree.folders) {
            logic.Link(items.front(), folder + L"/first.mov");
        }
        logic.LocateOthers(items, 1);
        linked = logic.Moves().size();
    }
    ioState.counters["linked"] = static_cast<double>(linked);
}
BENCHMARK(WholeAutomaticSearch)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5)->ReportAggregatesOnly(true);

} // namespace
