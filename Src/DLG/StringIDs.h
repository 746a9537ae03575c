#pragma once

namespace DLG {

// IDs of the module's texts in the host's string table.
inline constexpr unsigned int kStr_ScriptMissingCaption = 11152;
inline constexpr unsigned int kStr_ScriptMissingText = 11153;
inline constexpr unsigned int kStr_ColorMatteNameCaption = 11300;
inline constexpr unsigned int kStr_ColorMatteNameEmpty = 11301;
inline constexpr unsigned int kStr_RenameClipCaption = 11185;
inline constexpr unsigned int kStr_RenameClipEmptyName = 11186;
inline constexpr unsigned int kStr_FitClipLonger = 11242;
inline constexpr unsigned int kStr_FitClipShorter = 11243;
inline constexpr unsigned int kStr_ClipSpeedLinked = 11400;
inline constexpr unsigned int kStr_ClipSpeedUnlinked = 11401;
inline constexpr unsigned int kStr_ProgressCancelling = 11600;
inline constexpr unsigned int kStr_RenderProgressTitle = 11601;
inline constexpr unsigned int kStr_RenderProgressTimeLeftUnknown = 11602;
inline constexpr unsigned int kStr_SaveErrorCaption = 11227;
inline constexpr unsigned int kStr_SaveErrorPathNotFound = 11228;
inline constexpr unsigned int kStr_SaveErrorAccessDenied = 11229;
inline constexpr unsigned int kStr_SaveErrorDiskFull = 11230;
inline constexpr unsigned int kStr_SaveErrorFileReadOnly = 11231;
inline constexpr unsigned int kStr_SaveErrorOther = 11232;
inline constexpr unsigned int kStr_SaveErrorHint = 11233;
inline constexpr unsigned int kStr_ColorPickerTitle = 11567;
inline constexpr unsigned int kStr_KeysetUserSetProposal = 11398;
inline constexpr unsigned int kStr_KeysetPreset1Name = 11412;
inline constexpr unsigned int kStr_KeysetPreset2Name = 11413;
inline constexpr unsigned int kStr_KeysetPreset3Name = 11414;
inline constexpr unsigned int kStr_KeysetInvalidName = 11415;
inline constexpr unsigned int kStr_KeysetFileSuffix = 11418;
inline constexpr unsigned int kStr_ShortcutKeyTaken = 11416;

inline constexpr unsigned int kStr_AboutTitle = 11620;
inline constexpr unsigned int kStr_AboutVersion = 11621;
inline constexpr unsigned int kStr_AboutLicensedTo = 11622;
inline constexpr unsigned int kStr_AboutCopyright = 11623;

inline constexpr unsigned int kStr_ImportNumberedStills = 11056;
inline constexpr unsigned int kStr_ImportFolder = 11057;
inline constexpr unsigned int kStr_ImportRunWithGaps = 11700;
inline constexpr unsigned int kStr_ImportRunComplete = 11701;
inline constexpr unsigned int kStr_ImportRunSingle = 11702;
inline constexpr unsigned int kStr_SerialStatusAbort = 11740;
inline constexpr unsigned int kStr_SerialStatusDroppedFrames = 11741;

// The file chosen for a missing item cannot be used.
inline constexpr unsigned int kStr_RelinkUnusableMessage = 11551;
inline constexpr unsigned int kStr_RelinkUnusableFileColumn = 11552;
inline constexpr unsigned int kStr_RelinkUnusableProblemColumn = 11553;
// The chooser for a missing file.
inline constexpr unsigned int kStr_RelinkTitle = 11800;
inline constexpr unsigned int kStr_RelinkMissingPath = 11801;
inline constexpr unsigned int kStr_RelinkImportableFiles = 11802;
inline constexpr unsigned int kStr_RelinkAllFiles = 11803;
inline constexpr unsigned int kStr_RelinkSkip = 11804;
inline constexpr unsigned int kStr_RelinkSkipAll = 11805;

// The audio conform dialog and its background operation.
inline constexpr unsigned int kStr_ConformOperationName = 9754;
inline constexpr unsigned int kStr_ConformTitle = 11830;
inline constexpr unsigned int kStr_ConformPreparing = 11831;
inline constexpr unsigned int kStr_ConformMediaName = 11832;
inline constexpr unsigned int kStr_ConformStopping = 11833;
inline constexpr unsigned int kStr_ConformFailed = 11834;
inline constexpr unsigned int kStr_ConformEndedEarly = 11835;
// The project manager.
inline constexpr unsigned int kStr_ProjectManagerSaveCaption = 11198;
inline constexpr unsigned int kStr_ProjectManagerCalculateFailed = 11213;
inline constexpr unsigned int kStr_ProjectManagerRunningTitle = 11214;
inline constexpr unsigned int kStr_ProjectManagerCalculatingTitle = 11215;
inline constexpr unsigned int kStr_ProjectManagerFailedCaption = 11216;
inline constexpr unsigned int kStr_ProjectManagerFailed = 11217;
inline constexpr unsigned int kStr_ProjectManagerFileNotFound = 11218;
inline constexpr unsigned int kStr_ProjectManagerCannotWrite = 11219;
inline constexpr unsigned int kStr_ProjectManagerNothingUsed = 11220;
inline constexpr unsigned int kStr_ProjectManagerSaveFirst = 11221;
inline constexpr unsigned int kStr_ProjectManagerNoSpaceOrExists = 11222;
inline constexpr unsigned int kStr_ProjectManagerNotAFolder = 11840;
inline constexpr unsigned int kStr_ProjectManagerNotWriteable = 11841;
inline constexpr unsigned int kStr_ProjectManagerChooseFolder = 11842;

} // namespace DLG
