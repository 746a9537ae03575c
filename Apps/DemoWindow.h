#pragma once

#include <QMainWindow>

#include "BE/Project.h"
#include "DLG/HotNumberControl.h"
#include "DLG/TimeCtrl.h"
#include "DemoDialogs.h"

class QGroupBox;
class QPlainTextEdit;

namespace HostQt {
class Workspace;
}

namespace Demo {

// The editor shell: a button per dialog and a log of what each entry function returned and
// wrote back.
class DemoWindow : public QMainWindow {
public:
    DemoWindow(DemoState& ioState, HostQt::Workspace& inWorkspace, BE::ProjectRef inProject);

    void Log(const QString& inLine);
    void OpenDialog(const DemoDialog& inDialog);
    // Makes inProject the current project of the window and the module.
    void OpenProject(BE::ProjectRef inProject);

private:
    // The module's number and time controls, live on the project's timecode settings.
    QGroupBox* MakeControlsPanel();

    BE::ProjectRef mProject;
    zelui::ui::UI_NodePtr mControlsNode;
    boost::intrusive_ptr<DLG::HotNumberControl> mGain;
    boost::intrusive_ptr<DLG::TimeCtrl> mPosition;
    DemoState& mState;
    HostQt::Workspace& mWorkspace;
    QPlainTextEdit* mLog;
};

} // namespace Demo
