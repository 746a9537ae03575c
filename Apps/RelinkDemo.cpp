#include "RelinkDemo.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QStringList>

#include <array>
#include <cmath>
#include <numbers>

#include "BE/Project.h"
#include "DLG/FileRelinker.h"
#include "DLG/LinkMediaDialog.h"
#include "DLG/Module.h"
#include "DemoDialogs.h"
#include "HostQt/ReferenceHost.h"
#include "HostQt/SampleMovie.h"
#include "ProjectManagerDemo.h"
#include "HostQt/WavFile.h"

namespace Demo {

namespace {

constexpr const char* kMovie = "Interview B.mov";
constexpr const char* kNarration = "Narration take 3.wav";

// The files a title uses, as they lay beside each other on the old drive and on the moved one.
constexpr std::array<const char*, 3> kTitleFiles = {"Titles/Opening title.png", "Titles/Layers/Glow.png",
                                                    "Shared/Logo.png"};

QString RelinkFolder(const DemoState& inState) { return QDir(inState.mediaFolder).filePath(QStringLiteral("Relink")); }

// Two seconds of a falling tone, mono 48 kHz.
bool WriteNarration(const QString& inPath)
{
    const HostQt::WavLayout layout{HostQt::WavFormat::kInt16, 1, 48000};
    constexpr int kFrames = 96000;
    QByteArray data = HostQt::WavHeader(layout, kFrames);
    for (int i = 0; i < kFrames; ++i) {
        const double t = static_cast<double>(i) / layout.sampleRate;
        HostQt::AppendWavSample(data, layout.format, 0.4 * std::sin(2 * std::numbers::pi * (330.0 - 40.0 * t) * t));
    }
    QFile file(inPath);
    return file.open(QIODevice::WriteOnly) && file.write(data) == data.size();
}

bool WriteStill(const QString& inPath)
{
    QImage still(320, 180, QImage::Format_RGB32);
    for (int y = 0; y < still.height(); ++y) {
        for (int x = 0; x < still.width(); ++x) {
            still.setPixel(x, y, qRgb(30 + x / 3, 60 + y / 2, 120));
        }
    }
    return still.save(inPath);
}

bool MakeMovedFiles(const QString& inFolder)
{
    QDir().mkpath(inFolder);
    const QDir folder(inFolder);
    HostQt::SampleMovie movie;
    movie.frames = 50;
    return (QFile::exists(folder.filePath(kMovie)) || HostQt::WriteSampleMovie(folder.filePath(kMovie), movie)) &&
           (QFile::exists(folder.filePath(kNarration)) || WriteNarration(folder.filePath(kNarration)));
}

bool MakeMovedTitleFiles(const QString& inFolder)
{
    for (const char* file : kTitleFiles) {
        const QString path = QDir(inFolder).filePath(QString::fromLatin1(file));
        QDir().mkpath(QFileInfo(path).absolutePath());
        if (!QFile::exists(path) && !WriteStill(path)) {
            return false;
        }
    }
    return true;
}

QString ListOrNone(const QStringList& inNames)
{
    return inNames.isEmpty() ? QStringLiteral("none") : inNames.join(QStringLiteral(", "));
}

// The media of the project's bin whose files are missing, in the bin's order.
std::vector<BE::MediaRef> OfflineMedia(const BE::IProject& inProject)
{
    std::vector<BE::MediaRef> offline;
    for (const BE::MasterClipRef& clip : inProject.GetMasterClips()) {
        if (clip->GetMedia()->GetState() == BE::kMediaState_Offline) {
            offline.push_back(clip->GetMedia());
        }
    }
    return offline;
}

} // namespace

QString RelinkMovedFolder(const DemoState& inState) { return QDir(RelinkFolder(inState)).filePath(QStringLiteral("Moved drive")); }

QString RelinkOfflineMedia(DemoState& ioState, HostQt::Workspace&)
{
    if (!MakeMovedFiles(RelinkMovedFolder(ioState))) {
        return QStringLiteral("the moved media could not be written to %1").arg(RelinkMovedFolder(ioState));
    }
    QString problem;
    const QByteArray json = MappedSampleProject(RelinkFolder(ioState), true, problem);
    if (json.isEmpty()) {
        return problem;
    }
    const BE::ProjectRef project =
        HostQt::LoadProject(json, QDir(RelinkFolder(ioState)).filePath(QStringLiteral("Harbour Documentary.tvx")));
    const std::vector<BE::MediaRef> offline = OfflineMedia(*project);
    if (offline.empty()) {
        return QStringLiteral("no media is offline");
    }
    const bool completed = DLG::LocateFile::DoLocateFileDialog(project, offline, true);
    QStringList linked;
    QStringList missing;
    for (const BE::MediaRef& media : offline) {
        (media->GetState() == BE::kMediaState_Online ? linked : missing) << QString::fromStdWString(media->GetName());
    }
    return QStringLiteral("returned %1; linked: %2; still offline: %3")
        .arg(completed ? QStringLiteral("true") : QStringLiteral("false"), ListOrNone(linked), ListOrNone(missing));
}

QString RelinkTitleFiles(DemoState& ioState, HostQt::Workspace&)
{
    const BE::ProjectRef project = DLG::GetCurrentProject();
    if (!project) {
        return QStringLiteral("no project");
    }
    if (!MakeMovedTitleFiles(RelinkMovedFolder(ioState))) {
        return QStringLiteral("the moved title files could not be written to %1").arg(RelinkMovedFolder(ioState));
    }
    const QDir oldDrive(QDir(RelinkFolder(ioState)).filePath(QStringLiteral("Old drive")));
    QStringList linked;
    std::vector<KOR::InterfaceRef<KOR::KORUnknown>> items;
    for (const char* file : kTitleFiles) {
        items.emplace_back(new DLG::DependencyRelinker(oldDrive.filePath(QString::fromLatin1(file)).toStdWString(), L"",
                                                       [&linked, file](const std::wstring& inNewPath) {
                                                           linked << QStringLiteral("%1 at %2").arg(
                                                               QString::fromLatin1(file), QString::fromStdWString(inNewPath));
                                                       }));
    }
    const bool completed = DLG::LocateFile::DoLocateFileDialog(project, items, true);
    return QStringLiteral("returned %1; linked: %2")
        .arg(completed ? QStringLiteral("true") : QStringLiteral("false"), ListOrNone(linked));
}

} // namespace Demo
