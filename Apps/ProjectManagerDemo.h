#pragma once

#include <QString>

namespace HostQt {
class Workspace;
}

namespace Demo {

struct DemoState;

// Where the project manager's sample project and its media lie: the sample project with its
// "/media" drive mapped to real files made at first use, long enough for every clip's in and out
// points (frames at 29.97) and the default handles past them.
QString ProjectManagerFolder(const DemoState& inState);

// The sample project with its clips' "/media" drive mapped to real files under inFolder's "media",
// made at first use. With inLeaveOfflineClipsMissing the clips the project marks offline keep their
// mapped paths without files; otherwise every clip is online. Empty, with outProblem, when a file
// could not be written.
QByteArray MappedSampleProject(const QString& inFolder, bool inLeaveOfflineClipsMissing, QString& outProblem);

// Opens the project manager on that project. After a run the new project is loaded back and its
// sequences' clips and media are listed with whether each media file is there.
QString OpenProjectManager(DemoState& ioState, HostQt::Workspace& inWorkspace);

} // namespace Demo
