#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "KOR/HostAPI.h"

namespace UIF {

// A command that a key can run, as the shortcuts editor lists it.
struct ShortcutCommand {
    std::wstring id;   // stable, what set files store
    std::wstring name; // shown to the user
};

// The host's keyboard shortcuts: the current key of every command and the key
// sets it knows. A set is one file, identified by its full path; the host
// numbers its sets, the first three being its presets.
class HOST_API ShortcutManager {
public:
    virtual ~ShortcutManager();

    virtual std::size_t GetSetCount() const = 0;
    virtual std::wstring GetSetFullPath(std::size_t inIndex) const = 0;
    virtual bool IsPreset(const std::wstring& inPath) const = 0;
    // Writes the current shortcuts to inPath; a set already there stays whole
    // until the new one is completely written. A new file joins the host's sets.
    // False when it failed.
    virtual bool SaveSet(const std::wstring& inPath) = 0;
    // Makes the set at inPath the current shortcuts; false (and nothing changed)
    // when unreadable.
    virtual bool LoadSet(const std::wstring& inPath) = 0;

    virtual std::vector<ShortcutCommand> GetCommands() const = 0;
    // The key of a command in portable text ("Ctrl+Shift+Z"); empty when it has
    // none.
    virtual std::wstring GetKey(const std::wstring& inCommandID) const = 0;
    // Gives the command inKey; any other command that had it loses it. An empty
    // key clears.
    virtual void SetKey(const std::wstring& inCommandID, const std::wstring& inKey) = 0;
    // The command that has inKey now, or an empty string.
    virtual std::wstring FindCommandWithKey(const std::wstring& inKey) const = 0;
};

} // namespace UIF
