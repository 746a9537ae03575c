#pragma once

#include <string>
#include <vector>

#include "DLG/Export.h"

namespace DLG::QuickStart {

// The prefix of the preference keys of the recently used projects; the host appends the
// entry's number.
DLG_API extern const std::wstring kRecentDocumentProperty;

// Shows the welcome screen over the main window with the recent projects' display texts and
// returns its result: 3 help (the help's home page has been opened), 4 closed or no workspace,
// 5 a recent project, whose position in inRecentPaths goes to outChosenIndex, or the screen's
// own code for a new or another project. outChosenIndex is 0 unless the result is 5.
DLG_API int DoQuickStartDialog(const std::vector<std::wstring>& inRecentPaths, int& outChosenIndex);
// Ends a running welcome screen with result 4.
DLG_API void CloseQuickStartDialog();
// True while the welcome screen runs.
DLG_API bool IsDialogEnabled();

} // namespace DLG::QuickStart
