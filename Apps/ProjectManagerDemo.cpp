#include "ProjectManagerDemo.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>

#include "BE/Backend.h"
#include "BE/Project.h"
#include "DLG/ProjectManagerDialog.h"
#include "DemoDialogs.h"
#include "HostQt/ReferenceHost.h"
#include "HostQt/SampleMovie.h"
#include "HostQt/WavFile.h"
#include "KOR/Paths.h"

namespace Demo {

namespace {

constexpr const char* kProjectDrive = "/media/";
constexpr const char* kProjectFile = "Harbour Documentary.tvx";
// The sample project's frames are at 29.97; one second of them past the last out point leaves
// room for the default handles.
constexpr KOR::FrameRate kSampleRate = KOR::kFrameRate_NTSC2997;
constexpr int kHandleRoom = 30;
constexpr int kAudioRate = 48000;

QJsonObject SampleProject()
{
    QFile file(QStringLiteral(":/SampleProject.json"));
    file.open(QIODevice::ReadOnly);
    return QJsonDocument::fromJson(file.readAll()).object();
}

// The last frame each clip's items and child clips use, by clip name.
std::map<QString, int> LastUsedFrames(const QJsonObject& inProject)
{
    std::map<QString, int> last;
    const auto note = [&last](const QJsonValue& inUse) {
        int& frame = last[inUse[QStringLiteral("clip")].toString()];
        frame = std::max(frame, inUse[QStringLiteral("out")].toInt());
    };
    for (const QJsonValue sequence : inProject.value(QStringLiteral("sequences")).toArray()) {
        for (const QJsonValue item : sequence[QStringLiteral("items")].toArray()) {
            note(item);
        }
    }
    for (const QJsonValue child : inProject.value(QStringLiteral("childClips")).toArray()) {
        note(child);
    }
    return last;
}

// A tone that rises with time, stereo, inFrames video frames long.
bool WriteTone(const QString& inPath, int inFrames)
{
    const HostQt::WavLayout layout{HostQt::WavFormat::kInt16, 2, kAudioRate};
    const std::int64_t samples = (static_cast<std::int64_t>(inFrames) * kAudioRate * kSampleRate.Denominator() +
                                  kSampleRate.Numerator() - 1) /
                                 kSampleRate.Numerator();
    QByteArray data = HostQt::WavHeader(layout, samples);
    for (std::int64_t i = 0; i < samples; ++i) {
        const double t = static_cast<double>(i) / kAudioRate;
        const double sample = 0.3 * std::sin(2 * std::numbers::pi * (220.0 + 20.0 * t) * t);
        HostQt::AppendWavSample(data, layout.format, sample);
        HostQt::AppendWavSample(data, layout.format, -sample);
    }
    QFile file(inPath);
    return file.open(QIODevice::WriteOnly) && file.write(data) == data.size();
}

bool WriteMedia(const QString& inPath, bool inAudioOnly, int inFrames)
{
    if (QFile::exists(inPath)) {
        return true;
    }
    QDir().mkpath(QFileInfo(inPath).path());
    if (inAudioOnly) {
        return WriteTone(inPath, inFrames);
    }
    HostQt::SampleMovie movie;
    movie.frameRate = kSampleRate;
    movie.frames = inFrames;
    return HostQt::WriteSampleMovie(inPath, movie);
}

} // namespace

QByteArray MappedSampleProject(const QString& inFolder, bool inLeaveOfflineClipsMissing, QString& outProblem)
{
    QJsonObject project = SampleProject();
    const std::map<QString, int> last = LastUsedFrames(project);
    const QString drive = QString::fromLatin1(kProjectDrive);
    QJsonArray clips;
    for (const QJsonValue value : project.value(QStringLiteral("clips")).toArray()) {
        QJsonObject clip = value.toObject();
        const QString path = clip.value(QStringLiteral("path")).toString();
        const QString mapped = QDir(inFolder).filePath(QStringLiteral("media/") +
                                                        (path.startsWith(drive) ? path.mid(drive.size()) : path));
        const auto used = last.find(clip.value(QStringLiteral("name")).toString());
        const int frames = (used == last.end() ? 0 : used->second) + kHandleRoom;
        clip.insert(QStringLiteral("path"), mapped);
        if (inLeaveOfflineClipsMissing && !clip.value(QStringLiteral("online")).toBool(true)) {
            clips.append(clip);
            continue;
        }
        if (!WriteMedia(mapped, clip.value(QStringLiteral("audioOnly")).toBool(), frames)) {
            outProblem = QStringLiteral("%1 could not be written").arg(mapped);
            return {};
        }
        clip.insert(QStringLiteral("online"), true);
        clips.append(clip);
    }
    project.insert(QStringLiteral("clips"), clips);
    return QJsonDocument(project).toJson();
}

namespace {

// The project file the last run wrote: the newest one in the destination or in a folder of it (the
// host puts the new project in a folder of its own there).
QString WrittenProject()
{
    const BE::Backend* prefs = BE::GetBackend();
    const QDir destination(
        QString::fromStdWString(prefs ? prefs->GetStringProperty(BE::kPrefsProjectManagerDestinationPath, L"") : L""));
    QStringList folders{destination.path()};
    for (const QFileInfo& folder : destination.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        folders << folder.filePath();
    }
    QFileInfo newest;
    for (const QString& folder : folders) {
        for (const std::wstring& file : KOR::PathUtils::ListFiles(folder.toStdWString(), L".tvx")) {
            const QFileInfo info(QString::fromStdWString(file));
            if (!newest.exists() || info.lastModified() > newest.lastModified()) {
                newest = info;
            }
        }
    }
    return newest.filePath();
}

QString Describe(const QString& inProjectPath)
{
    QFile file(inProjectPath);
    if (!file.open(QIODevice::ReadOnly)) {
        return QStringLiteral("the new project %1 could not be read").arg(inProjectPath);
    }
    const BE::ProjectRef project = HostQt::LoadProject(file.readAll(), inProjectPath);
    QStringList clips;
    for (const BE::SequenceRef& sequence : project->GetSequences()) {
        for (const BE::ClipRef& clip : sequence->GetClips()) {
            clips << QStringLiteral("%1: %2 [%3-%4]")
                         .arg(QString::fromStdWString(sequence->GetName()), QString::fromStdWString(clip->GetName()))
                         .arg(clip->GetInPoint().Seconds(), 0, 'f', 3)
                         .arg(clip->GetOutPoint().Seconds(), 0, 'f', 3);
        }
    }
    QStringList media;
    for (const BE::MasterClipRef& master : project->GetMasterClips()) {
        const BE::MediaRef item = master->GetMedia();
        const QString path = item ? QString::fromStdWString(item->GetFilePath()) : QString();
        media << QStringLiteral("%1 -> %2 (%3)")
                     .arg(QString::fromStdWString(master->GetName()), path,
                          QFile::exists(path) ? QStringLiteral("present") : QStringLiteral("missing"));
    }
    return QStringLiteral("opened %1; clips: %2; media: %3")
        .arg(inProjectPath, clips.join(QStringLiteral(", ")), media.join(QStringLiteral(", ")));
}

} // namespace

QString ProjectManagerFolder(const DemoState& inState)
{
    return QDir(inState.mediaFolder).filePath(QStringLiteral("Project manager"));
}

QString OpenProjectManager(DemoState& ioState, HostQt::Workspace&)
{
    const QString folder = ProjectManagerFolder(ioState);
    QString problem;
    const QByteArray json = MappedSampleProject(folder, false, problem);
    if (json.isEmpty()) {
        return problem;
    }
    const QString projectPath = QDir(folder).filePath(QString::fromLatin1(kProjectFile));
    QFile file(projectPath);
    if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size()) {
        return QStringLiteral("%1 could not be written").arg(projectPath);
    }
    file.close();
    const long result = DLG::ProjectManager::DisplayProjectManager(HostQt::LoadProject(json, projectPath));
    if (result != 0) {
        return QStringLiteral("returned %1").arg(static_cast<std::uint32_t>(result), 8, 16, QLatin1Char('0'));
    }
    return QStringLiteral("returned 0; ") + Describe(WrittenProject());
}

} // namespace Demo
