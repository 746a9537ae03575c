#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "DLG/Export.h"

namespace UIF {
class ShortcutManager;
}

namespace DLG {

// Asks for the name of a key set, proposing ioName with all its text selected.
// ioName is written only when the user saves; false (nothing shown) without a
// workspace or script.
DLG_API bool AskKeysetName(std::wstring& ioName);

// Asks whether the key set file inFileName may be replaced; true when the user
// agrees. False (nothing shown) without a workspace or script.
DLG_API bool ConfirmKeysetReplace(const std::wstring& inFileName);

// The set list of the shortcuts editor: one path and one shown name per entry,
// and the entry selected.
struct KeysetList {
    std::vector<std::wstring> paths;
    std::vector<std::wstring> names;
    std::size_t selected = 0;
};

// How the set list shows the host's set inIndex: the presets' names from the
// string table, any other set by its file name without the set suffix.
std::wstring KeysetDisplayName(const UIF::ShortcutManager& inManager, std::size_t inIndex);

// Every set of the host, the first one selected.
DLG_API KeysetList ListKeysets(const UIF::ShortcutManager& inManager);

// Saves the current shortcuts as a set under a name the user gives, proposed
// from the selected set. A set of that name is replaced only after the user
// agrees; the set list then selects it (adding an entry only for a new file).
// Returns whether a set was saved.
DLG_API bool SaveKeysetAs(UIF::ShortcutManager& ioManager, KeysetList& ioList);

} // namespace DLG
