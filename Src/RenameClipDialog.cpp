#include "DLG/RenameClipDialog.h"

#include "DLG/OneValueDialog.h"
#include "DLG/StringIDs.h"

namespace DLG {

// A clip is found by its name in the project, so it must have one; a name of blanks is as
// empty as none.
bool DoRenameClipDialog(std::wstring& ioName)
{
    return RunNameDialog(L"RenameClipDialog", L"clipNameTextEdit", ioName,
                         EmptyNameMessage{kStr_RenameClipEmptyName, kStr_RenameClipCaption});
}

} // namespace DLG
