#pragma once

#include "BE/Project.h"
#include "BE/Sequence.h"
#include "DLG/Export.h"
#include "KOR/InterfaceRef.h"

namespace DLG {

// Conforms the audio that the scope still needs, in a dialog that shows how far it got and lets
// the user stop. True at once, without a dialog, when nothing in the scope needs conforming;
// otherwise whether the dialog ended with everything conformed.
DLG_API bool DoConformDialog(KOR::InterfaceRef<BE::IProject> inProject);
DLG_API bool DoConformDialog(KOR::InterfaceRef<BE::ITrackItemSelection> inSelection);
DLG_API bool DoConformDialog(KOR::InterfaceRef<BE::IClip> inClip);
DLG_API bool DoConformDialog(KOR::InterfaceRef<BE::ISequence> inSequence);
DLG_API bool DoConformDialog(KOR::InterfaceRef<BE::IChildClip> inChildClip);
DLG_API bool DoConformDialog(KOR::InterfaceRef<BE::IProjectItemSelection> inSelection);
DLG_API bool DoConformDialog(KOR::InterfaceRef<BE::IMasterClip> inMasterClip);

} // namespace DLG
