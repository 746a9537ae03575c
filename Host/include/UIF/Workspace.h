#pragma once

#include "KOR/HostAPI.h"

namespace zelui::ui {
class UI_Node;
}
namespace zelui::drawbot {
class SupplierInterface;
}

namespace UIF {

// A part of the host's command chain; keyboard commands go to the current target.
class HOST_API Commander {
public:
    virtual ~Commander();
    virtual Commander* GetSuperCommander() const = 0;
    // Makes this commander the target of the host's commands.
    virtual void SwitchTarget() = 0;
};

// A docked panel of the workspace (timeline, project, monitor ...).
class HOST_API TabView : public Commander {
public:
    ~TabView() override;
};

// The host's window arrangement.
class HOST_API Workspace {
public:
    virtual ~Workspace();

    // The installed workspace; Instance() requires one, GetPtr() is null when there is none.
    static Workspace& Instance();
    static Workspace* GetPtr();

    virtual TabView* GetFocusedTabView() const = 0;
    // The node of the main top-level window, or null when the host shows none.
    virtual zelui::ui::UI_Node* GetMainTopLevelWindow() const = 0;
    virtual const zelui::drawbot::SupplierInterface* GetDrawSupplier() const = 0;
};

} // namespace UIF
