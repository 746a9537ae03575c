#pragma once

#include <QMainWindow>

#include "DemoDialogs.h"

class QPlainTextEdit;

namespace HostQt {
class Workspace;
}

namespace Demo {

// The editor shell: a button per dialog and a log of what each entry function returned and
// wrote back.
class DemoWindow : public QMainWindow {
public:
    DemoWindow(DemoState& ioState, HostQt::Workspace& inWorkspace, const QString& inProjectName);

    void Log(const QString& inLine);
    void OpenDialog(const DemoDialog& inDialog);

private:
    DemoState& mState;
    HostQt::Workspace& mWorkspace;
    QPlainTextEdit* mLog;
};

} // namespace Demo
