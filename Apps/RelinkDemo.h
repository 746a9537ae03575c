#pragma once

#include <QString>

namespace HostQt {
class Workspace;
}

namespace Demo {

struct DemoState;

// Where the demo's moved media lie: real files made at first use, the sample project's movie and
// narration that are missing from their old drive, and the files a title uses.
QString RelinkMovedFolder(const DemoState& inState);

// Opens the sample project on real media, with the clips it marks offline missing from their old
// drive, and runs the locate dialog over its offline media with the automatic search on: the user
// finds the movie on the moved drive, the narration beside it follows.
QString RelinkOfflineMedia(DemoState& ioState, HostQt::Workspace& inWorkspace);

// Relinks the files a title uses, moved together to another drive: the user finds the first, the
// others are found at their places relative to it ("Layers/Glow.png", "../Shared/Logo.png").
QString RelinkTitleFiles(DemoState& ioState, HostQt::Workspace& inWorkspace);

} // namespace Demo
