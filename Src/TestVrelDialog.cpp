#include "DLG/TestVrelDialog.h"

#include "DLG/DialogBaseImpl.h"
#include "UIF/Workspace.h"

namespace DLG {

bool DoTestVrelDialog()
{
    std::stringstream script;
    UIF::Workspace* workspace = PrepareScriptDialog(L"TestVrelDialog.vrel", script);
    if (!workspace) {
        return false;
    }
    DialogBaseImpl dialog(L"TestVrelDialog", workspace->GetDrawSupplier(), workspace->GetMainTopLevelWindow());
    dialog.Run(script);
    return !dialog.WasCancelled();
}

} // namespace DLG
