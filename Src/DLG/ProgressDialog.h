#pragma once

#include <string>

#include "DLG/Export.h"
#include "KOR/BatchOperation.h"
#include "KOR/InterfaceRef.h"
#include "KOR/Platform.h"

namespace DLG::ProgressDialog {

// Shows inTitle and the progress of inBatchOperation, which the caller has started, until the
// operation posts its completion message. True when it completed without a cancel request;
// false when the user asked it to stop (the dialog stays until the operation confirms with its
// completion message) or no dialog could be shown. The dialog opens over the host's modal
// window when there is one, otherwise over the main window, otherwise over inParent.
DLG_API bool DoProgressDialog(const std::wstring& inTitle, KOR::InterfaceRef<KOR::IBatchOperation> inBatchOperation,
                              HWND inParent);

} // namespace DLG::ProgressDialog
