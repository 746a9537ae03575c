#include "DLG/SerialDialogSupport.h"

#include "DLG/Module.h"
#include "UIF/ColorManager.h"

namespace DLG::SerialDialogs {

void AddItems(UIF::DialogImpl& ioDialog, int inID, std::span<const ListItem> inItems)
{
    for (const ListItem& item : inItems) {
        const int index = ioDialog.AddListString(inID, LoadString(item.textID));
        ioDialog.SetListItemData(inID, index, item.code);
    }
}

void SelectByCode(UIF::DialogImpl& ioDialog, int inID, long inCode)
{
    const int count = ioDialog.GetListCount(inID);
    for (int index = 0; index < count; ++index) {
        if (ioDialog.GetListItemData(inID, index) == inCode) {
            ioDialog.SetListSelection(inID, index);
            return;
        }
    }
    ioDialog.SetListSelection(inID, 0);
}

long SelectedCode(const UIF::DialogImpl& inDialog, int inID)
{
    return inDialog.GetListItemData(inID, inDialog.GetListSelection(inID));
}

void ApplyHostColors(UIF::DialogImpl& ioDialog)
{
    ioDialog.SetControlColors(UIF::ColorManager::GetColor(L"colors.kor.ListBoxText"),
                              UIF::ColorManager::GetColor(L"colors.kor.ListBox"));
}

} // namespace DLG::SerialDialogs
