#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "BE/Media.h"
#include "BE/Project.h"
#include "BE/ProjectItem.h"
#include "DLG/Export.h"
#include "DLG/LocateFileDialogLogic.h"
#include "KOR/InterfaceRef.h"

namespace DLG {

namespace LocateFile {
// One file chooser per missing media, in order, each titled with the item's name and filtered to
// the importable files, offering Skip, Skip All and Cancel. A chosen file is opened to check it;
// after each link, with inAutoLocate, the items after it are searched for and are not asked for
// once found. False when the user cancelled; what was linked until then stays linked.
DLG_API bool DoLocateFileDialog(BE::ProjectRef inProject, const std::vector<BE::MediaRef>& inItems,
                                bool inAutoLocate);
// The same for items that are relinkers already (DLG::IFileRelinker, such as a DependencyRelinker).
DLG_API bool DoLocateFileDialog(BE::ProjectRef inProject, const std::vector<KOR::InterfaceRef<KOR::KORUnknown>>& inItems,
                                bool inAutoLocate);
} // namespace LocateFile

namespace LinkMedia {
// Links each project item's media to a file the user chooses. ioItems keeps the items that are
// still unlinked when the dialog ends.
DLG_API bool DoLinkMediaDialog(BE::ProjectRef inProject, std::vector<BE::ProjectItemRef>& ioItems);
} // namespace LinkMedia

// Asks for every item of inItems in turn with the logic's chooser; false when cancelled.
bool RunRelinkDialogs(ILinkLocateLogic& ioLogic, const std::vector<FileRelinkerRef>& inItems);

// The filter of the relink chooser: the importable files first, then all files.
std::wstring RelinkFilter();

} // namespace DLG
