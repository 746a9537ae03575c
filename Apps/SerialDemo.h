#pragma once

#include <QWidget>

#include <cstdint>
#include <functional>

#include "DemoDialogs.h"

namespace Demo {

// The serial deck dialogs for the demo's list: set-up on the machine's real serial ports
// (protocol 1 and 16 decks), the export options, and an export to tape on the simulated deck,
// run to its end, aborted, and watched in the status dialog.
DemoDialog SerialSetupDemo(int inProtocol);
DemoDialog SerialExportOptionsDemo();
DemoDialog ExportToTapeIdleDemo();
DemoDialog ExportToTapeToTheEndDemo();
DemoDialog ExportToTapeAbortedDemo();
DemoDialog SerialExportStatusDemo();

// For the gallery's scripted user: waits until the export-to-tape dialog, or the status dialog,
// shows the deck in inState.
std::function<void(QWidget&)> UntilDeckState(std::uint32_t inState);
std::function<void(QWidget&)> UntilStatusDialogState(std::uint32_t inState);

} // namespace Demo
