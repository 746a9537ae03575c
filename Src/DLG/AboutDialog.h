#pragma once

#include <string>
#include <vector>

#include "DLG/Export.h"

namespace DLG {

// The library's version, three dotted numbers set by the build.
extern const std::wstring kLibraryVersion;

// "Version <library version> (<inHostBuild>)".
std::wstring AboutVersionLine(const std::wstring& inHostBuild);

// The notices of the components shipped with the editor: the texts of the ".txt" files in the
// folder registered as "legal.notices", in file-name order, each followed by a blank line.
std::wstring LegalNoticesText();

// Shows the product name inApplicationName, the version line with the host's build text
// inHostBuild, the licensee inLicensee and the copyright year inCopyrightYear; its button opens
// the patent and legal notices.
DLG_API void DoAboutDialog(const std::wstring& inApplicationName, const std::wstring& inHostBuild,
                           const std::wstring& inLicensee, unsigned long inCopyrightYear);

// The patent and legal notices on their own.
DLG_API void DoPatentAndLegalNoticesDialog();

} // namespace DLG
