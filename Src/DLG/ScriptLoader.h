#pragma once

#include <memory>
#include <sstream>
#include <string>

#include "DLG/Export.h"

namespace DLG {

// Reads a layout script from the host's "vrel.scripts" folder into memory, followed by four
// zero bytes. A script that is missing or unreadable is reported once, in a message box, and
// reads as empty text.
class DLG_API ScriptLoader {
public:
    explicit ScriptLoader(const std::wstring& inFileName);
    ~ScriptLoader();
    ScriptLoader(const ScriptLoader&) = delete;
    ScriptLoader& operator=(const ScriptLoader&) = delete;

    // False only when no buffer is held; otherwise outStream holds the text up to its first zero byte.
    bool GetStream(std::stringstream& outStream) const;

private:
    std::unique_ptr<char[]> mBuffer;
};

} // namespace DLG
