#pragma once

#include <QString>

namespace HostQt {
class Workspace;
}

namespace Demo {

struct DemoState;

// Where the demo's moved media lie: real files made at first use, a short movie, a narration and
// a still, all in one folder.
QString RelinkMovedFolder(const DemoState& inState);

// Adds the media of the moved folder to the current project at their old, missing places (once),
// then runs the locate dialog over the project's offline media with the automatic search on.
QString RelinkOfflineMedia(DemoState& ioState, HostQt::Workspace& inWorkspace);

// Relinks the files a title uses, moved together to another drive: the user finds the first, the
// others are found at their places relative to it ("Layers/Glow.png", "../Shared/Logo.png").
QString RelinkTitleFiles(DemoState& ioState, HostQt::Workspace& inWorkspace);

} // namespace Demo
