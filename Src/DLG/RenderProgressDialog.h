#pragma once

#include <cstdint>
#include <string>

#include "DLG/Export.h"
#include "KOR/BatchOperation.h"
#include "KOR/InterfaceRef.h"

namespace DLG {

namespace RenderProgress {

// The progress dialog of a render: as DLG::ProgressDialog::DoProgressDialog, with details
// ("disclosureTriangle") that show the time elapsed since the dialog opened and the
// operation's estimate of the time left.
DLG_API bool DoRenderProgressDialog(KOR::InterfaceRef<KOR::IBatchOperation> inBatchOperation);

} // namespace RenderProgress

// A duration as "m:ss", or "h:mm:ss" from an hour on; negative counts as zero.
std::wstring FormatDuration(std::int64_t inSeconds);

} // namespace DLG
