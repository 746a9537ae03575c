#pragma once

#include "KOR/HostAPI.h"

namespace UIF {
class Workspace;
class PlayerService;
class MessageBoxService;
class SoundService;
class CursorService;
class ShortcutManager;
class FileChooserService;
} // namespace UIF
namespace TL {
class AutoSaveService;
class HelpService;
}
namespace BE {
class Backend;
}
namespace zelui::ui {
class UI_NodeManager;
}
namespace zelcore::debug {
class DebugService;
}

namespace KOR {

class SharedThreadedWorkQueue;
class ClockService;
class Application;

// The service objects behind the host's free functions and singletons. The running host
// installs one table at start-up; a test may swap in a wrapper around any entry (to count
// what the module asked for) and put the original back afterwards. A null entry means the
// host offers no such service right now (no workspace, no backend ...).
struct ServiceTable {
    UIF::Workspace* workspace = nullptr;
    UIF::PlayerService* players = nullptr;
    UIF::MessageBoxService* messageBoxes = nullptr;
    UIF::SoundService* sounds = nullptr;
    TL::AutoSaveService* autoSave = nullptr;
    BE::Backend* backend = nullptr;
    zelui::ui::UI_NodeManager* nodeManager = nullptr;
    zelcore::debug::DebugService* debugger = nullptr;
    SharedThreadedWorkQueue* workQueue = nullptr;
    ClockService* clock = nullptr;
    UIF::CursorService* cursors = nullptr;
    UIF::ShortcutManager* shortcuts = nullptr;
    Application* application = nullptr;
    TL::HelpService* help = nullptr;
    UIF::FileChooserService* fileChooser = nullptr;
};

HOST_API ServiceTable& Services();

} // namespace KOR
