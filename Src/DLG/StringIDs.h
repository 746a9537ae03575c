#pragma once

namespace DLG {

// IDs of the module's texts in the host's string table.
inline constexpr unsigned int kStr_ScriptMissingCaption = 11152;
inline constexpr unsigned int kStr_ScriptMissingText = 11153;
inline constexpr unsigned int kStr_ColorMatteNameCaption = 11300;
inline constexpr unsigned int kStr_ColorMatteNameEmpty = 11301;
inline constexpr unsigned int kStr_SaveErrorCaption = 11227;
inline constexpr unsigned int kStr_SaveErrorPathNotFound = 11228;
inline constexpr unsigned int kStr_SaveErrorAccessDenied = 11229;
inline constexpr unsigned int kStr_SaveErrorDiskFull = 11230;
inline constexpr unsigned int kStr_SaveErrorFileReadOnly = 11231;
inline constexpr unsigned int kStr_SaveErrorOther = 11232;
inline constexpr unsigned int kStr_SaveErrorHint = 11233;

} // namespace DLG
