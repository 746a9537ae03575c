#include "DLG/NewTapeNameDialog.h"

#include "DLG/OneValueDialog.h"

namespace DLG {

bool DoNewTapeNameDialog(std::wstring inDefaultName, std::wstring& outName)
{
    std::wstring name = std::move(inDefaultName);
    if (!RunNameDialog(L"NewTapeNameDialog", L"tapeNameTextEdit", name)) {
        return false;
    }
    outName = name;
    return true;
}

} // namespace DLG
