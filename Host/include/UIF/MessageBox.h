#pragma once

#include <string>

#include "KOR/HostAPI.h"

namespace UIF {

// Button sets.
inline constexpr unsigned long kMessageBox_OK = 1;
inline constexpr unsigned long kMessageBox_OKCancel = 2;
inline constexpr unsigned long kMessageBox_YesNo = 3;
inline constexpr unsigned long kMessageBox_YesNoCancel = 4;

// Icons.
inline constexpr unsigned long kMessageBoxIcon_None = 0;
inline constexpr unsigned long kMessageBoxIcon_Question = 0x10;
inline constexpr unsigned long kMessageBoxIcon_Information = 0x20;
inline constexpr unsigned long kMessageBoxIcon_Warning = 0x40;
inline constexpr unsigned long kMessageBoxIcon_Error = 0x80;

// Answers. A box closed without a choice answers its cancelling button (or OK when it has none).
inline constexpr long kMessageBoxResult_OK = 1;
inline constexpr long kMessageBoxResult_Cancel = 2;
inline constexpr long kMessageBoxResult_Yes = 6;
inline constexpr long kMessageBoxResult_No = 7;

class HOST_API MessageBoxService {
public:
    virtual ~MessageBoxService();
    virtual long Show(const std::wstring& inText, const std::wstring& inCaption, unsigned long inButtons,
                      unsigned long inIcon, long inDefaultResult) = 0;
};

// A modal message box over the host's windows. inDefaultResult names the answer of the button
// that Enter presses; 0 picks the first button of the set.
HOST_API long MessageBoxW(const std::wstring& inText, const std::wstring& inCaption, unsigned long inButtons,
                          unsigned long inIcon, long inDefaultResult);

} // namespace UIF
