// The host's cursor service on Qt's override cursor.

#include <QApplication>

#include "HostQt/Cursor.h"
#include "KOR/Services.h"

namespace HostQt {

void OverrideCursors::SetWaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }

void OverrideCursors::RestoreCursor() { QApplication::restoreOverrideCursor(); }

} // namespace HostQt

namespace UIF {

CursorService::~CursorService() = default;

void SetWaitCursor()
{
    if (CursorService* cursors = KOR::Services().cursors) {
        cursors->SetWaitCursor();
    }
}

void RestoreCursor()
{
    if (CursorService* cursors = KOR::Services().cursors) {
        cursors->RestoreCursor();
    }
}

} // namespace UIF
