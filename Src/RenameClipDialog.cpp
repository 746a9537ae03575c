#include "DLG/RenameClipDialog.h"

#include "DLG/OneValueDialog.h"
#include "DLG/StringIDs.h"

namespace DLG {

bool DoRenameClipDialog(std::wstring& ioName)
{
    return RunNameDialog(L"RenameClipDialog", L"clipNameTextEdit", ioName,
                         EmptyNameMessage{kStr_RenameClipEmptyName, kStr_RenameClipCaption});
}

} // namespace DLG
