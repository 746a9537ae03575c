#pragma once

#include <QString>

#include "DemoDialogs.h"

namespace Demo {

class DemoWindow;

// Opens every dialog once for a scripted user, saves a picture of each window as the user
// first sees it in inDirectory, and writes report.txt with what each call returned.
// Returns the number of dialogs that did not go as scripted.
int RenderGallery(const QString& inDirectory, DemoWindow& ioWindow, DemoState& ioState,
                  HostQt::Workspace& inWorkspace);

} // namespace Demo
