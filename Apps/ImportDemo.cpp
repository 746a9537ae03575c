#include "ImportDemo.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

#include "BE/Backend.h"
#include "BE/Project.h"
#include "DLG/ImportFileDialog.h"
#include "DLG/Module.h"
#include "DemoDialogs.h"
#include "HostQt/WavFile.h"
#include "HostQt/Workspace.h"
#include "KOR/Paths.h"
#include "ML/ImportableFileTypes.h"

namespace Demo {

namespace {

constexpr int kSequenceFrames = 24;
constexpr int kMissingFrames[] = {13, 14};
constexpr int kWavRate = 48000;

// A small frame: a sky that darkens as the sequence goes on, with the frame number drawn in.
void WriteStill(const QString& inPath, int inNumber, const QColor& inColor)
{
    QImage image(160, 90, QImage::Format_RGB32);
    image.fill(inColor.darker(100 + inNumber * 4));
    QPainter painter(&image);
    painter.setPen(Qt::white);
    painter.drawText(image.rect(), Qt::AlignCenter, QString::number(inNumber));
    painter.end();
    image.save(inPath, "PNG");
}

// One second of a 440 Hz tone, 16-bit mono.
void WriteTone(const QString& inPath)
{
    const HostQt::WavLayout layout{HostQt::WavFormat::kInt16, 1, kWavRate};
    QByteArray data = HostQt::WavHeader(layout, kWavRate);
    for (int frame = 0; frame < kWavRate; ++frame) {
        HostQt::AppendWavSample(data, layout.format, 0.25 * std::sin(2.0 * M_PI * 440.0 * frame / kWavRate));
    }
    QFile file(inPath);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(data);
    }
}

void MakeSamples(const QDir& inFolder)
{
    for (int frame = 1; frame <= kSequenceFrames; ++frame) {
        if (std::find(std::begin(kMissingFrames), std::end(kMissingFrames), frame) == std::end(kMissingFrames)) {
            WriteStill(inFolder.filePath(QStringLiteral("Harbour_%1.png").arg(frame, 4, 10, QLatin1Char('0'))), frame,
                       QColor(0x4a, 0x90, 0xd0));
        }
    }
    WriteStill(inFolder.filePath(QStringLiteral("Title card.png")), 0, QColor(0x30, 0x30, 0x30));
    WriteTone(inFolder.filePath(QStringLiteral("Interview.wav")));
    QFile(inFolder.filePath(QStringLiteral("Shot list.pdf"))).open(QIODevice::WriteOnly);
    inFolder.mkdir(QStringLiteral("Stills folder"));
    const QDir stills(inFolder.filePath(QStringLiteral("Stills folder")));
    for (int still = 1; still <= 3; ++still) {
        WriteStill(stills.filePath(QStringLiteral("Location %1.jpg").arg(still)), still, QColor(0x70, 0xa0, 0x50));
    }
}

QString ToQ(const std::wstring& inText) { return QString::fromStdWString(inText); }

std::wstring UpperSuffix(const QFileInfo& inFile) { return inFile.suffix().toUpper().toStdWString(); }

// What the dialog returned, brought into the project; the names of the new media items.
QStringList Import(const DLG::ImportFileDialog& inDialog, const std::set<std::wstring>& inImportable,
                   BE::IProject& ioProject)
{
    QStringList imported;
    const auto add = [&](const std::wstring& inName, const std::wstring& inPath, int inStills) {
        if (ioProject.AddMedia(inName, inPath, inStills)) {
            imported << ToQ(inName) + (inStills > 0 ? QStringLiteral(" (%1 stills)").arg(inStills) : QString());
        }
    };
    if (inDialog.IsDirectory()) {
        const QDir folder(ToQ(inDialog.GetDirectoryPath()));
        for (const QFileInfo& file : folder.entryInfoList(QDir::Files, QDir::Name)) {
            if (inImportable.count(UpperSuffix(file))) {
                add(file.fileName().toStdWString(), file.filePath().toStdWString(), 0);
            }
        }
        return imported;
    }
    const std::vector<std::wstring> paths = inDialog.GetFilePaths();
    if (inDialog.IsNumberedStills() && paths.size() == 1) {
        const QFileInfo first(ToQ(paths.front()));
        std::vector<std::wstring> names;
        for (const QString& name : first.dir().entryList(QDir::Files)) {
            names.push_back(name.toStdWString());
        }
        if (const auto run = DLG::FindNumberedRun(first.fileName().toStdWString(), names)) {
            const std::wstring folder = first.absolutePath().toStdWString() + L"/";
            add(run->firstName + L" to " + run->lastName, folder + run->firstName, static_cast<int>(run->present));
            return imported;
        }
    }
    for (const std::wstring& path : paths) {
        add(KOR::PathUtils::GetFilePart(path), path, 0);
    }
    return imported;
}

} // namespace

QString ImportSamplesFolder(const DemoState& inState)
{
    const QString path = QDir(inState.dataDirectory).filePath(QStringLiteral("Import samples"));
    if (!QFileInfo::exists(path)) {
        QDir().mkpath(path);
        MakeSamples(QDir(path));
    }
    return path;
}

QString OpenImportFiles(DemoState& ioState, HostQt::Workspace& inWorkspace)
{
    const BE::ProjectRef project = DLG::GetCurrentProject();
    if (!project) {
        return QStringLiteral("no project");
    }
    // The dialog opens where the samples are: the folder it remembers as last used.
    BE::GetBackend()->SetStringProperty(BE::kLastUsedDirectoryKey, ImportSamplesFolder(ioState).toStdWString());
    const std::set<std::wstring> importable = ML::ImportableFileTypeUtils::GetImportableFileExtensions();
    DLG::ImportFileDialog dialog(L"", DLG::kDialogFlag_AllowMultiSelect,
                                 L"All Supported Media\0*\0Still Images\0*.png;*.jpg;*.jpeg;*.tif;*.tiff;*.bmp\0"
                                 L"Audio\0*.wav;*.aif;*.aiff;*.mp3\0All Files\0*\0",
                                 importable, L"Import");
    const int result = dialog.DoModal(KOR::HWNDFromNode(inWorkspace.GetMainTopLevelWindow()));
    QString text = QStringLiteral("returned %1").arg(result);
    if (dialog.WasDialogCancelled()) {
        return text + QStringLiteral(", cancelled");
    }
    const QStringList imported = Import(dialog, importable, *project);
    return text + QStringLiteral("; imported %1; the project has %2 media")
                      .arg(imported.isEmpty() ? QStringLiteral("nothing") : imported.join(QStringLiteral(", ")))
                      .arg(project->GetMedia().size());
}

} // namespace Demo
