#include "DLG/SaveProject.h"

#include <cstdint>

#include "DLG/Module.h"
#include "DLG/StringIDs.h"
#include "UIF/MessageBox.h"
#include "zelcore/Error.h"

namespace DLG {

namespace {

// Host codes are 32-bit values; a caller may hand one in sign-extended or not.
constexpr std::int32_t Code32(long inCode) { return static_cast<std::int32_t>(inCode); }

} // namespace

unsigned int SaveErrorMessageID(long inError)
{
    switch (Code32(inError)) {
    case Code32(BE::kSaveError_PathNotFound): return kStr_SaveErrorPathNotFound;
    case Code32(BE::kSaveError_AccessDenied): return kStr_SaveErrorAccessDenied;
    case Code32(BE::kSaveError_DiskFull):
    case Code32(BE::kSaveError_WriteFault): return kStr_SaveErrorDiskFull;
    case Code32(BE::kSaveError_FileReadOnly): return kStr_SaveErrorFileReadOnly;
    default: return kStr_SaveErrorOther;
    }
}

void SaveProjectErrorDialog(long inError, bool inAddHint)
{
    std::wstring message = LoadString(SaveErrorMessageID(inError));
    if (inAddHint) {
        message += LoadString(kStr_SaveErrorHint);
    }
    UIF::MessageBoxW(message, LoadString(kStr_SaveErrorCaption), UIF::kMessageBox_OK, UIF::kMessageBoxIcon_Error, 0);
}

long SaveProject(KOR::InterfaceRef<BE::IProject> inProject, std::wstring inFilePath, bool inReportErrors,
                 bool inSaveAsCopy)
{
    ZEL_INPUT_CONTRACT(inProject != NULL);
    ZEL_INPUT_CONTRACT(!inFilePath.empty());
    const long result = Code32(inProject->SaveToFile(inFilePath, inSaveAsCopy));
    if (result < 0 && result != BE::kSaveError_Cancelled && inReportErrors) {
        SaveProjectErrorDialog(result, !inSaveAsCopy);
    }
    return result;
}

} // namespace DLG
