#pragma once

#include <cstdint>
#include <cstring>
#include <span>

#include "UIF/DialogImpl.h"

namespace DLG::SerialDialogs {

// An item of a drop-down list: the string ID of its text and the code it carries.
struct ListItem {
    unsigned int textID;
    long code;
};

// Appends inItems to list inID, each with its code as item data.
void AddItems(UIF::DialogImpl& ioDialog, int inID, std::span<const ListItem> inItems);
// Selects the first item of list inID whose code is inCode; index 0 when none is.
void SelectByCode(UIF::DialogImpl& ioDialog, int inID, long inCode);
// The code of the selected item, or UIF::DialogImpl::kListError.
long SelectedCode(const UIF::DialogImpl& inDialog, int inID);
// Colours of the native dialogs from the host's colour manager.
void ApplyHostColors(UIF::DialogImpl& ioDialog);

// Fields of host records, at byte offsets and in the machine's byte order.
template <class T>
T ReadField(const std::uint8_t* inRecord, std::size_t inOffset)
{
    T value;
    std::memcpy(&value, inRecord + inOffset, sizeof(T));
    return value;
}

template <class T>
void WriteField(std::uint8_t* ioRecord, std::size_t inOffset, T inValue)
{
    std::memcpy(ioRecord + inOffset, &inValue, sizeof(T));
}

} // namespace DLG::SerialDialogs
