#pragma once

#include <string>

#include "DLG/Export.h"

namespace UIF {
class ShortcutManager;
}

namespace DLG {

// The shortcuts editor: picks a key set, gives commands keys by pressing them, and saves the
// current keys as a new set. ioSetPath selects the set shown first (the first set when it is
// none of the host's). On OK it receives the set whose keys are now current; keys edited since a
// set was chosen or saved are kept as the user's own set. On cancel the keys are put back as they
// were and ioSetPath stays. Returns whether the user confirmed.
DLG_API bool DoShortcutsDialog(UIF::ShortcutManager* inManager, std::wstring& ioSetPath);

} // namespace DLG
