#pragma once

#include <string>

#include "BE/Project.h"
#include "DLG/Export.h"

namespace DLG {

// The string ID of the message for a host code of a failed save; codes compare as 32 bits.
unsigned int SaveErrorMessageID(long inError);

// Tells the user that a save failed with the host code inError. With inAddHint the message
// goes on to say that the previous file is unchanged and where else to save.
DLG_API void SaveProjectErrorDialog(long inError, bool inAddHint);

// Saves inProject to inFilePath through the host. With inReportErrors a failure is shown
// with SaveProjectErrorDialog (with its hint when the project itself was being saved); the
// user's own cancellation (BE::kSaveError_Cancelled) is never shown. With inSaveAsCopy the
// file is a copy and the project stays the one at its own path; otherwise the project is
// from now on the one at inFilePath. Returns 0, or the host's negative 32-bit code.
DLG_API long SaveProject(KOR::InterfaceRef<BE::IProject> inProject, std::wstring inFilePath, bool inReportErrors,
                         bool inSaveAsCopy);

} // namespace DLG
