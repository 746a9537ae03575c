// The reference host's project manager operation: collects a project's files into a new folder,
// or makes a trimmed copy that keeps only the used parts of its media. See
// docs/project-manager.md for the layout it writes and the choices behind it.

#include "TL/ProjectManager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <map>
#include <mutex>
#include <set>

#include "BE/ProjectSettings.h"
#include "BE/Sequence.h"
#include "HostQt/MediaCache.h"
#include "HostQt/ProjectManagerMedia.h"
#include "HostQt/ProjectManagerPlan.h"
#include "KOR/DiskUtils.h"
#include "KOR/Paths.h"
#include "KOR/WorkQueue.h"
#include "ML/ConformUtils.h"

namespace TL::ProjectManager {

namespace {

using namespace HostQt::ProjectManagement;

constexpr int kWorkPriority = 3;
const QString kMediaFolder = QStringLiteral("Media");
const QString kConformedFolder = QStringLiteral("Conformed Audio");
const QString kProxyFolder = QStringLiteral("Proxies");
const QString kPreviewsSuffix = QStringLiteral(" Previews");

QString ToQ(const std::wstring& inText) { return QString::fromStdWString(inText); }

// A master clip of the project as the operation needs it, read on the caller's thread.
struct Master {
    std::wstring name;
    QString path;
    QStringList frames; // every file of a numbered still sequence, path first; empty for one file
    QString proxy;
    QStringList conformed;
    std::vector<Use> uses;
};

// What the operation works from: taken from the project when it is created, so the worker never
// touches the project's objects.
struct Snapshot {
    QString projectName;
    QString projectFile;
    QJsonObject document;
    std::int64_t videoFrameTicks = 0;
    std::int64_t audioSampleTicks = 0;
    int audioSampleRate = 0;
    std::vector<std::int64_t> sequenceFrameTicks; // by the document's sequence order
    std::vector<Master> masters;                  // one per name: the first, as the project finds it
};

// One file the run writes, relative to the new project's folder.
struct FileJob {
    enum class Kind { kCopy, kWav, kStreams };
    Kind kind = Kind::kCopy;
    QString source;
    QString target;
    std::wstring label;
    Span span;
    std::int64_t grid = 1;
    std::int64_t cut = 0;
    std::uint64_t bytes = 0;
    int follows = -1; // conformed audio takes the cut of the media job it was made from
    int stream = 0;   // and is of this audio stream of it
};

FileJob CopyJob(QString inSource, QString inName, std::wstring inLabel)
{
    FileJob job;
    job.source = std::move(inSource);
    job.target = std::move(inName);
    job.label = std::move(inLabel);
    return job;
}

// How a master clip's media ends up in the new project.
struct Placement {
    QString target; // relative to the new project's folder
    std::int64_t cut = 0;
    QString proxy;
};

struct Failure {
    long code = kResult_OK;
    QString text;
};

std::vector<Use> UsesOf(const BE::MasterClipRef& inMaster, const std::vector<BE::SequenceRef>& inSequences,
                        const std::vector<BE::ChildClipRef>& inChildClips, std::int64_t inVideoFrameTicks)
{
    std::vector<Use> uses;
    for (const BE::SequenceRef& sequence : inSequences) {
        const std::int64_t frameTicks = KOR::Time::TicksPerFrame(sequence->GetFrameRate());
        for (const BE::ClipRef& clip : sequence->GetClips()) {
            if (clip->GetMasterClip().Get() == inMaster.Get()) {
                uses.push_back({clip->GetInPoint().Ticks(), clip->GetOutPoint().Ticks(), frameTicks});
            }
        }
    }
    for (const BE::ChildClipRef& child : inChildClips) {
        if (child->GetMasterClip().Get() == inMaster.Get()) {
            uses.push_back({child->GetInPoint().Ticks(), child->GetOutPoint().Ticks(), inVideoFrameTicks});
        }
    }
    return uses;
}

// The project file as the project would save it now, read back from a private temporary copy;
// empty when the project could not be saved there.
QJsonObject CurrentDocument(const BE::ProjectRef& inProject)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("project.json"));
    QFile file(path);
    if (!folder.isValid() || inProject->SaveToFile(path.toStdWString(), true) != 0 || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return QJsonDocument::fromJson(file.readAll()).object();
}

// "proxy" paths of the document's clips, by name.
std::map<std::wstring, QString> ProxyPaths(const QJsonObject& inDocument)
{
    std::map<std::wstring, QString> proxies;
    for (const char* key : {"clips", "media"}) {
        for (const QJsonValue& value : inDocument.value(QLatin1String(key)).toArray()) {
            const QString proxy = value[QStringLiteral("proxy")].toString();
            if (!proxy.isEmpty()) {
                proxies.emplace(value[QStringLiteral("name")].toString().toStdWString(), proxy);
            }
        }
    }
    return proxies;
}

Snapshot TakeSnapshot(const BE::ProjectRef& inProject)
{
    Snapshot snapshot;
    snapshot.projectName = ToQ(inProject->GetName());
    snapshot.projectFile = ToQ(inProject->GetFilePath());
    snapshot.document = CurrentDocument(inProject);
    const auto settings = inProject->GetProjectSettings();
    const KOR::FrameRate audioRate = settings->GetAudioSettings()->GetSampleRate();
    snapshot.videoFrameTicks = KOR::Time::TicksPerFrame(settings->GetVideoSettings()->GetFrameRate());
    snapshot.audioSampleTicks = KOR::Time::TicksPerFrame(audioRate);
    const std::vector<BE::SequenceRef> sequences = inProject->GetSequences();
    for (const BE::SequenceRef& sequence : sequences) {
        snapshot.sequenceFrameTicks.push_back(KOR::Time::TicksPerFrame(sequence->GetFrameRate()));
    }
    const std::vector<BE::ChildClipRef> children = inProject->GetChildClips();
    const std::map<std::wstring, QString> proxies = ProxyPaths(snapshot.document);
    const int sampleRate = static_cast<int>(audioRate.Numerator() / audioRate.Denominator());
    snapshot.audioSampleRate = sampleRate;
    for (const BE::MasterClipRef& master : inProject->GetMasterClips()) {
        const BE::MediaRef media = master->GetMedia();
        const bool known = std::any_of(snapshot.masters.begin(), snapshot.masters.end(),
                                       [&](const Master& inOther) { return inOther.name == master->GetName(); });
        if (known || !media || !media->IsFileMedia()) {
            continue;
        }
        Master entry{master->GetName(), ToQ(media->GetFilePath()), {}, {}, {}, {}};
        if (media->GetStillCount() > 0) {
            for (const std::wstring& frame : NumberedFrames(media->GetFilePath(), media->GetStillCount())) {
                entry.frames.append(ToQ(frame));
            }
        }
        const auto proxy = proxies.find(entry.name);
        entry.proxy = proxy == proxies.end() ? QString() : proxy->second;
        for (const std::wstring& file : ML::ConformUtils::GetConformedFiles(media, sampleRate)) {
            entry.conformed.append(ToQ(file));
        }
        entry.uses = UsesOf(master, sequences, children, snapshot.videoFrameTicks);
        snapshot.masters.push_back(std::move(entry));
    }
    return snapshot;
}

QString PreviewsFolder(const QString& inProjectFile)
{
    const QFileInfo file(inProjectFile);
    return file.absoluteDir().filePath(file.completeBaseName() + kPreviewsSuffix);
}

QFileInfoList PreviewFiles(const QString& inProjectFile)
{
    return inProjectFile.isEmpty() ? QFileInfoList()
                                   : QDir(PreviewsFolder(inProjectFile)).entryInfoList(QDir::Files, QDir::Name);
}

std::uint64_t FileSize(const QString& inPath)
{
    const QFileInfo info(inPath);
    return info.isFile() ? static_cast<std::uint64_t>(info.size()) : 0;
}

// A folder under inDestination named after the project that does not exist yet: "Name",
// "Name 2", "Name 3" ...
QString NewFolderName(const QString& inDestination, const QString& inProjectName)
{
    QString base = QString::fromStdWString(CopyName({}, inProjectName.toStdWString(), false));
    const QDir destination(inDestination);
    QString name = base;
    for (int number = 2; destination.exists(name); ++number) {
        name = base + QLatin1Char(' ') + QString::number(number);
    }
    return name;
}

class Operation : public KOR::RefCounted<IProjectManagerOperation> {
public:
    Operation(const BE::ProjectRef& inProject, const Options& inOptions, bool inCalculateOnly)
        : mSnapshot(TakeSnapshot(inProject)), mOptions(inOptions), mCalculateOnly(inCalculateOnly)
    {
    }

    bool QueryInterface(const KOR::InterfaceID& inID, void** outObject) override
    {
        if (inID == KOR::IBatchOperation::kIID) {
            AddRef();
            *outObject = static_cast<KOR::IBatchOperation*>(this);
            return true;
        }
        return RefCounted::QueryInterface(inID, outObject);
    }

    std::wstring GetMessageStationName() const override { return mBatch->GetMessageStationName(); }
    void RequestCancel() override { mBatch->RequestCancel(); }
    bool IsCancelRequested() const override { return mBatch->IsCancelRequested(); }

    bool Start() override
    {
        if (mStarted.exchange(true)) {
            return false;
        }
        KOR::SharedThreadedWorkQueue::Instance().RetrieveOrCreate(kWorkPriority).QueueRequest(
            [self = KOR::InterfaceRef<Operation>(this)] { self->mBatch->RunToCompletion([&] { self->Run(); }); });
        return true;
    }

    long GetResult() const override
    {
        std::lock_guard lock(mMutex);
        return mFailure.code;
    }
    std::uint64_t GetOriginalSize() const override
    {
        std::lock_guard lock(mMutex);
        return mOriginalSize;
    }
    std::uint64_t GetResultingSize() const override
    {
        std::lock_guard lock(mMutex);
        return mResultingSize;
    }
    std::wstring GetFailureText() const override
    {
        std::lock_guard lock(mMutex);
        return mFailure.text.toStdWString();
    }
    std::wstring GetResultProjectPath() const override
    {
        std::lock_guard lock(mMutex);
        return mResultPath.toStdWString();
    }

private:
    class Batch : public KOR::RefCounted<KOR::BatchOperation> {};

    // Whatever ends the work, a failure takes away the folder it made.
    void Run()
    {
        try {
            Finish(Work());
        } catch (...) {
            Finish({kError_WriteFault, mFolder});
            throw;
        }
    }

    void Finish(Failure inFailure)
    {
        if (inFailure.code != kResult_OK && !mFolder.isEmpty()) {
            QDir(mFolder).removeRecursively();
        }
        std::lock_guard lock(mMutex);
        mFailure = std::move(inFailure);
    }

    Failure Work()
    {
        std::vector<const Master*> kept;
        for (const Master& master : mSnapshot.masters) {
            if (!mOptions.excludeUnusedClips || !master.uses.empty()) {
                kept.push_back(&master);
            }
        }
        if (mSnapshot.document.isEmpty()) {
            return {kError_ReadFailed,
                    mSnapshot.projectFile.isEmpty() ? mSnapshot.projectName : mSnapshot.projectFile};
        }
        // A relative destination would depend on the worker's current folder.
        const QString requested = ToQ(mOptions.destinationFolder);
        if (requested.isEmpty() || QDir::isRelativePath(requested)) {
            return {kError_AccessDenied, requested};
        }
        if (mOptions.excludeUnusedClips && kept.empty()) {
            return {kError_NothingToKeep, mSnapshot.projectName};
        }
        const QString destination = ToQ(KOR::PathUtils::ToNormalizedPath(mOptions.destinationFolder));
        const QString folderName = NewFolderName(destination, mSnapshot.projectName);
        std::map<std::wstring, Placement> placements;
        if (Failure planned = Plan(kept, QFileInfo(ProjectFileName(folderName)).completeBaseName(), placements);
            planned.code != kResult_OK) {
            return planned;
        }
        const QByteArray projectBytes =
            QJsonDocument(NewDocument(QDir(destination).filePath(folderName), placements)).toJson();
        std::uint64_t resulting = projectBytes.size();
        for (const FileJob& job : mJobs) {
            resulting += mOptions.keepOnline ? job.bytes : 0;
        }
        {
            std::lock_guard lock(mMutex);
            mOriginalSize = OriginalSize();
            mResultingSize = resulting;
        }
        if (mCalculateOnly) {
            return {};
        }
        return Write(destination, folderName, placements, resulting);
    }

    QString ProjectFileName(const QString& inFolderName) const
    {
        const QString own = QFileInfo(mSnapshot.projectFile).fileName();
        return own.isEmpty() ? inFolderName + QStringLiteral(".json") : own;
    }

    std::uint64_t OriginalSize() const
    {
        std::uint64_t bytes = FileSize(mSnapshot.projectFile);
        for (const Master& master : mSnapshot.masters) {
            bytes += FileSize(master.proxy);
            for (const QString& file : master.frames.isEmpty() ? QStringList{master.path} : master.frames) {
                bytes += FileSize(file);
            }
            for (const QString& conformed : master.conformed) {
                bytes += FileSize(conformed);
            }
        }
        for (const QFileInfo& preview : PreviewFiles(mSnapshot.projectFile)) {
            bytes += static_cast<std::uint64_t>(preview.size());
        }
        return bytes;
    }

    // Decides every file of the new project and measures it by writing it into a counting sink.
    Failure Plan(const std::vector<const Master*>& inKept, const QString& inProjectBase,
                 std::map<std::wstring, Placement>& outPlacements)
    {
        std::vector<std::wstring> taken;
        auto add = [&](FileJob inJob, const QString& inFolder) {
            const std::wstring name = UniqueName(QFileInfo(inJob.target).fileName().toStdWString(), taken);
            taken.push_back(name);
            inJob.target = inFolder + QLatin1Char('/') + ToQ(name);
            mJobs.push_back(std::move(inJob));
            return mJobs.size() - 1;
        };
        std::vector<std::pair<const Master*, std::size_t>> media;
        std::map<std::wstring, std::size_t> proxies;
        for (const Master* master : inKept) {
            if (!master->frames.isEmpty()) {
                media.emplace_back(master, AddStills(*master, taken));
                continue;
            }
            const std::wstring fileName = QFileInfo(master->path).fileName().toStdWString();
            FileJob job = CopyJob(master->path, ToQ(CopyName(master->name, fileName, mOptions.renameMediaToClipNames)),
                                  L"Copying " + master->name);
            if (mOptions.createTrimmedProject && !master->uses.empty()) {
                if (Failure planned = PlanTrim(*master, job); planned.code != kResult_OK) {
                    return planned;
                }
            }
            const bool trimmed = job.kind != FileJob::Kind::kCopy;
            const std::size_t index = add(std::move(job), kMediaFolder);
            media.emplace_back(master, index);
            if (mOptions.includeConformedAudio) {
                for (qsizetype stream = 0; stream < master->conformed.size(); ++stream) {
                    const QString& conformed = master->conformed[stream];
                    const QString name = QFileInfo(conformed).fileName();
                    const std::wstring verb = trimmed ? L"Trimming " : L"Copying ";
                    FileJob audio = CopyJob(conformed, name, verb + name.toStdWString());
                    audio.kind = trimmed ? FileJob::Kind::kWav : FileJob::Kind::kCopy;
                    audio.follows = static_cast<int>(index);
                    audio.stream = static_cast<int>(stream);
                    add(std::move(audio), kConformedFolder);
                }
            }
            // A proxy cut at its own key frames would not line up with a trimmed media: a trimmed
            // project goes without proxies.
            if (mOptions.includeProxies && !master->proxy.isEmpty() && !trimmed) {
                const QString name = QFileInfo(master->proxy).fileName();
                proxies[master->name] =
                    add(CopyJob(master->proxy, name, L"Copying " + name.toStdWString()), kProxyFolder);
            }
        }
        if (mOptions.includePreviews) {
            for (const QFileInfo& preview : PreviewFiles(mSnapshot.projectFile)) {
                add(CopyJob(preview.filePath(), preview.fileName(), L"Copying " + preview.fileName().toStdWString()),
                    inProjectBase + kPreviewsSuffix);
            }
        }
        if (Failure measured = MeasureJobs(); measured.code != kResult_OK) {
            return measured;
        }
        for (const auto& [master, index] : media) {
            Placement& placement = outPlacements[master->name];
            placement.target = mJobs[index].target;
            placement.cut = mJobs[index].cut;
            const auto proxy = proxies.find(master->name);
            placement.proxy = proxy == proxies.end() ? QString() : mJobs[proxy->second].target;
        }
        return {};
    }

    // The frames of a numbered still sequence, copied whole under their own names so that they
    // stay one run; into a folder of their own when one of the names is taken. The first frame's
    // job is returned.
    std::size_t AddStills(const Master& inMaster, std::vector<std::wstring>& ioTaken)
    {
        const bool clash = std::any_of(inMaster.frames.begin(), inMaster.frames.end(), [&](const QString& inFrame) {
            const std::wstring name = QFileInfo(inFrame).fileName().toStdWString();
            return UniqueName(name, ioTaken) != name;
        });
        QString folder = kMediaFolder;
        if (clash) {
            const std::wstring own = UniqueName(CopyName({}, inMaster.name, false), ioTaken);
            ioTaken.push_back(own);
            folder += QLatin1Char('/') + ToQ(own);
        }
        const std::size_t first = mJobs.size();
        for (const QString& frame : inMaster.frames) {
            const QString name = QFileInfo(frame).fileName();
            if (!clash) {
                ioTaken.push_back(name.toStdWString());
            }
            mJobs.push_back(CopyJob(frame, folder + QLatin1Char('/') + name, L"Copying " + inMaster.name));
        }
        return first;
    }

    // The kind of cut and the part of the media to keep; the cut start of a stream copy is only
    // known once the key frame is found, when measuring.
    Failure PlanTrim(const Master& inMaster, FileJob& ioJob) const
    {
        MediaLayout layout;
        if (const long probed = ProbeMedia(inMaster.path, layout); probed != 0) {
            return {probed, inMaster.path};
        }
        if (layout.kind == CutKind::kWhole) {
            return {};
        }
        std::vector<std::int64_t> units = layout.units;
        units.push_back(mSnapshot.audioSampleTicks);
        for (const Use& use : inMaster.uses) {
            units.push_back(use.frameTicks);
        }
        ioJob.kind = layout.kind == CutKind::kWav ? FileJob::Kind::kWav : FileJob::Kind::kStreams;
        ioJob.label = L"Trimming " + inMaster.name;
        ioJob.grid = CutGrid(units);
        ioJob.span = NeededSpan(inMaster.uses, mOptions.includeHandles ? mOptions.handleFrames : 0, layout.duration);
        ioJob.span.start = AlignDown(ioJob.span.start, ioJob.grid);
        ioJob.cut = ioJob.span.start;
        return {};
    }

    // Offline copies are not measured, except stream copies whose cut start only measuring finds.
    Failure MeasureJobs()
    {
        for (std::size_t i = 0; i < mJobs.size(); ++i) {
            FileJob& job = mJobs[i];
            if (IsCancelRequested()) {
                return {kResult_Cancelled, {}};
            }
            // A run's progress is the bytes it writes; only a calculation reports its measuring.
            if (mCalculateOnly) {
                mBatch->PostProgress(static_cast<float>(i) / static_cast<float>(mJobs.size()));
            }
            if (job.follows >= 0) {
                const FileJob& media = mJobs[static_cast<std::size_t>(job.follows)];
                job.span = {media.cut, media.span.end};
                job.cut = media.cut;
                job.kind = media.kind == FileJob::Kind::kCopy ? FileJob::Kind::kCopy : job.kind;
            }
            if (!mOptions.keepOnline && job.kind != FileJob::Kind::kStreams) {
                continue;
            }
            long measured = Measure(job);
            if (measured == kError_TrimFailed && job.kind == FileJob::Kind::kStreams) {
                // A file the muxer cannot cut is still whole: its clips keep their in and out.
                job.kind = FileJob::Kind::kCopy;
                job.cut = 0;
                job.label = L"Copying" + job.label.substr(job.label.find(L' '));
                measured = mOptions.keepOnline ? Measure(job) : 0;
            }
            if (measured != 0) {
                return {measured, measured == kResult_Cancelled ? QString() : job.source};
            }
        }
        return {};
    }

    long Measure(FileJob& ioJob)
    {
        Sink counter({}, [this](std::uint64_t) { return !IsCancelRequested(); });
        const long measured = RunJob(ioJob, counter);
        ioJob.bytes = counter.Size();
        return measured;
    }

    static long RunJob(FileJob& ioJob, Sink& ioSink)
    {
        switch (ioJob.kind) {
        case FileJob::Kind::kWav:
            return CutWav(ioJob.source, ioJob.span, ioSink);
        case FileJob::Kind::kStreams:
            return CutStreams(ioJob.source, ioJob.span, ioJob.grid, ioSink, ioJob.cut);
        case FileJob::Kind::kCopy:
            break;
        }
        return CopyWhole(ioJob.source, ioSink);
    }

    // The project file of the new project: its media at their new places, clip times moved back
    // by the cut of their media, unused clips left out when asked. Clips are found by name, so of
    // entries that share a name only the first is the clip the project uses: later ones are kept
    // as they stand.
    QJsonObject NewDocument(const QString& inFolder, const std::map<std::wstring, Placement>& inPlacements) const
    {
        QJsonObject document = mSnapshot.document;
        std::set<std::wstring> seen;
        for (const char* key : {"clips", "media"}) {
            QJsonArray items;
            for (const QJsonValue& value : document.value(QLatin1String(key)).toArray()) {
                QJsonObject item = value.toObject();
                const std::wstring name = item.value(QStringLiteral("name")).toString().toStdWString();
                if (!seen.insert(name).second) {
                    items.append(item);
                    continue;
                }
                const auto placement = inPlacements.find(name);
                const bool isFile = IsFileMaster(name);
                if (isFile && placement == inPlacements.end()) {
                    continue; // an unused clip left out
                }
                if (placement != inPlacements.end()) {
                    item.insert(QStringLiteral("path"), QDir(inFolder).filePath(placement->second.target));
                    item.remove(QStringLiteral("proxy"));
                    if (!placement->second.proxy.isEmpty()) {
                        item.insert(QStringLiteral("proxy"), QDir(inFolder).filePath(placement->second.proxy));
                    }
                    if (item.contains(QStringLiteral("online"))) {
                        item.insert(QStringLiteral("online"), mOptions.keepOnline);
                    }
                }
                items.append(item);
            }
            if (document.contains(QLatin1String(key))) {
                document.insert(QLatin1String(key), items);
            }
        }
        QJsonArray sequences = document.value(QStringLiteral("sequences")).toArray();
        for (qsizetype s = 0; s < sequences.size(); ++s) {
            QJsonObject sequence = sequences[s].toObject();
            const auto index = static_cast<std::size_t>(s);
            const std::int64_t frameTicks = index < mSnapshot.sequenceFrameTicks.size()
                                                ? mSnapshot.sequenceFrameTicks[index]
                                                : mSnapshot.videoFrameTicks;
            sequence.insert(QStringLiteral("items"), ShiftItems(sequence.value(QStringLiteral("items")).toArray(),
                                                                frameTicks, inPlacements));
            sequences[s] = sequence;
        }
        if (document.contains(QStringLiteral("sequences"))) {
            document.insert(QStringLiteral("sequences"), sequences);
        }
        if (document.contains(QStringLiteral("childClips"))) {
            document.insert(QStringLiteral("childClips"),
                            ShiftItems(document.value(QStringLiteral("childClips")).toArray(),
                                       mSnapshot.videoFrameTicks, inPlacements));
        }
        return document;
    }

    bool IsFileMaster(const std::wstring& inName) const
    {
        return std::any_of(mSnapshot.masters.begin(), mSnapshot.masters.end(),
                           [&](const Master& inMaster) { return inMaster.name == inName; });
    }

    // Items with "clip", "in" and "out" (whole frames of inFrameTicks): in and out moved back by the
    // cut of the clip's media, which the cut grid makes a whole number of frames.
    static QJsonArray ShiftItems(QJsonArray inItems, std::int64_t inFrameTicks,
                                 const std::map<std::wstring, Placement>& inPlacements)
    {
        for (qsizetype i = 0; i < inItems.size(); ++i) {
            QJsonObject item = inItems[i].toObject();
            const auto placement = inPlacements.find(item.value(QStringLiteral("clip")).toString().toStdWString());
            if (placement == inPlacements.end() || placement->second.cut == 0 || inFrameTicks <= 0) {
                continue;
            }
            const qint64 frames = placement->second.cut / inFrameTicks;
            for (const char* key : {"in", "out"}) {
                item.insert(QLatin1String(key), item.value(QLatin1String(key)).toInteger() - frames);
            }
            inItems[i] = item;
        }
        return inItems;
    }

    // The folder is made first; when another one of its name came since the name was chosen, the
    // next free name is taken, and the project file points into the folder actually made.
    Failure Write(const QString& inDestination, QString inFolderName,
                  const std::map<std::wstring, Placement>& inPlacements, std::uint64_t inTotal)
    {
        const std::uint64_t free = KOR::DiskUtils::GetFreeSpace(inDestination.toStdWString());
        if (free != 0 && free < inTotal) {
            return {kError_DiskFull, inDestination};
        }
        QString folder = QDir(inDestination).filePath(inFolderName);
        for (Failure made = MakeFolder(folder); made.code != kResult_OK; made = MakeFolder(folder)) {
            if (made.code != kError_DestinationExists) {
                return made;
            }
            inFolderName = NewFolderName(inDestination, mSnapshot.projectName);
            folder = QDir(inDestination).filePath(inFolderName);
        }
        mFolder = folder;
        const QByteArray projectBytes = QJsonDocument(NewDocument(folder, inPlacements)).toJson();
        std::uint64_t done = 0;
        if (mOptions.keepOnline) {
            for (FileJob& job : mJobs) {
                if (job.follows >= 0) {
                    job.target = ConformedTarget(job);
                }
                if (Failure written = WriteJob(job, done, inTotal); written.code != kResult_OK) {
                    return written;
                }
                done += job.bytes;
            }
        }
        const QString projectPath = QDir(folder).filePath(ProjectFileName(inFolderName));
        Sink project(projectPath, {});
        if (project.Open() != 0 ||
            !project.Write(projectBytes.constData(), static_cast<std::size_t>(projectBytes.size())) ||
            project.Close() != 0) {
            return {project.Failure(), projectPath};
        }
        mBatch->PostProgress(1.0f);
        std::lock_guard lock(mMutex);
        mResultPath = projectPath;
        return {};
    }

    Failure MakeFolder(const QString& inFolder) const
    {
        if (::mkdir(QFile::encodeName(inFolder).constData(), 0755) != 0) {
            return {errno == EACCES || errno == EPERM || errno == EROFS ? kError_AccessDenied
                    : errno == ENOSPC                                   ? kError_DiskFull
                    : errno == EEXIST                                   ? kError_DestinationExists
                                                                        : kError_WriteFault,
                    QFileInfo(inFolder).absolutePath()};
        }
        return {};
    }

    // The host finds conformed audio by a digest of its media file's path, size and time: named
    // for the media's copy, which is written by now, a copy is used by a host whose media cache is
    // the folder it is in.
    QString ConformedTarget(const FileJob& inJob) const
    {
        const QString media = QDir(mFolder).filePath(mJobs[static_cast<std::size_t>(inJob.follows)].target);
        const QString name =
            QFileInfo(HostQt::ConformedAudioPath(media, inJob.stream, mSnapshot.audioSampleRate)).fileName();
        return name.isEmpty() ? inJob.target : kConformedFolder + QLatin1Char('/') + name;
    }

    // inFolder and the folders above it up to the new project's folder, those missing.
    Failure MakeFolders(const QString& inFolder) const
    {
        if (QFileInfo(inFolder).isDir()) {
            return {};
        }
        if (Failure made = MakeFolders(QFileInfo(inFolder).absolutePath()); made.code != kResult_OK) {
            return made;
        }
        return MakeFolder(inFolder);
    }

    Failure WriteJob(FileJob& ioJob, std::uint64_t inDone, std::uint64_t inTotal)
    {
        const QString target = QDir(mFolder).filePath(ioJob.target);
        const QString subfolder = QFileInfo(target).absolutePath();
        if (Failure made = MakeFolders(subfolder); made.code != kResult_OK) {
            return made;
        }
        mBatch->PostDescription(ioJob.label);
        const std::uint64_t step = std::max<std::uint64_t>(inTotal / 200, 1);
        std::uint64_t posted = 0;
        Sink sink(target, [&](std::uint64_t inWritten) {
            if (inWritten - posted >= step) {
                posted = inWritten;
                mBatch->PostProgress(
                    static_cast<float>(std::min(1.0, static_cast<double>(inDone + inWritten) / inTotal)));
            }
            return !IsCancelRequested();
        });
        long result = sink.Open();
        if (result == 0) {
            result = RunJob(ioJob, sink);
        }
        const long closed = sink.Close();
        result = result != 0 ? result : closed;
        if (IsCancelRequested()) {
            return {kResult_Cancelled, {}};
        }
        const bool readSide =
            result == kError_SourceMissing || result == kError_ReadFailed || result == kError_TrimFailed;
        return {result, result == 0 ? QString() : readSide ? ioJob.source : target};
    }

    const Snapshot mSnapshot;
    const Options mOptions;
    const bool mCalculateOnly;
    KOR::InterfaceRef<Batch> mBatch{new Batch};
    std::atomic<bool> mStarted{false};
    // The worker's own.
    std::vector<FileJob> mJobs;
    QString mFolder;
    // Read by the caller once the completion message came.
    mutable std::mutex mMutex;
    Failure mFailure;
    std::uint64_t mOriginalSize = 0;
    std::uint64_t mResultingSize = 0;
    QString mResultPath;
};

} // namespace

ProjectManagerOperationRef CreateProjectManagerOperation(const BE::ProjectRef& inProject, const Options& inOptions,
                                                         bool inCalculateOnly)
{
    return inProject ? ProjectManagerOperationRef(new Operation(inProject, inOptions, inCalculateOnly))
                     : ProjectManagerOperationRef();
}

} // namespace TL::ProjectManager
