#pragma once

namespace DLG {

// IDs of the module's texts in the host's string table.
inline constexpr unsigned int kStr_ScriptMissingCaption = 11152;
inline constexpr unsigned int kStr_ScriptMissingText = 11153;
inline constexpr unsigned int kStr_ColorMatteNameCaption = 11300;
inline constexpr unsigned int kStr_ColorMatteNameEmpty = 11301;
inline constexpr unsigned int kStr_ProgressCancelling = 11400;
inline constexpr unsigned int kStr_RenderProgressTitle = 11401;
inline constexpr unsigned int kStr_RenderProgressTimeLeftUnknown = 11402;

} // namespace DLG
