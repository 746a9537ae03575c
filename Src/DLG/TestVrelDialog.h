#pragma once

#include "DLG/Export.h"

namespace DLG {

// Opens "TestVrelDialog.vrel", the plainest script dialog; true when it was confirmed.
DLG_API bool DoTestVrelDialog();

} // namespace DLG
