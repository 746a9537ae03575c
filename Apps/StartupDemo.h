#pragma once

#include <QString>

#include <string>
#include <vector>

#include "DemoDialogs.h"

namespace Demo {

class DemoWindow;

// The recent projects as the preferences hold them ("BE.Prefs.MRU.Document.0", "...1" ...).
// While there are none, the sample project is saved into the data folder and becomes the first.
std::vector<std::wstring> RecentProjects(const DemoState& inState);

// Once the window is up, shows the welcome screen over it; a recent project chosen there is
// read from its file and opened in the window.
void ShowWelcomeScreenAtStart(DemoWindow& ioWindow, DemoState& ioState);

// For the dialog list: the welcome screen and the about dialog, reporting what they returned.
QString OpenWelcomeScreen(DemoState& ioState, HostQt::Workspace& inWorkspace);
QString OpenAbout(DemoState& ioState, HostQt::Workspace& inWorkspace);

} // namespace Demo
