#pragma once

#include "KOR/HostAPI.h"

namespace TL {

// Automatic saving of the project; blocks nest and every block is paired with an unblock.
class HOST_API AutoSaveService {
public:
    virtual ~AutoSaveService();
    virtual void Block() = 0;
    virtual void Unblock() = 0;
    virtual bool IsBlocked() const = 0;
};

HOST_API void BlockAutoSave();
HOST_API void UnblockAutoSave();

} // namespace TL
