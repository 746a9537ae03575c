#pragma once

#include <QPointer>
#include <QWidget>

#include <string>

#include "UIF/Workspace.h"
#include "zelui/UI_Node.h"
#include "zelui/drawbot.h"

namespace HostQt {

class Workspace;

// A panel of the reference workspace; its super-commander is the workspace's main commander.
class TabView : public UIF::TabView {
public:
    TabView(Workspace& inWorkspace, std::wstring inName, UIF::Commander* inSuper);
    UIF::Commander* GetSuperCommander() const override { return mSuper; }
    void SwitchTarget() override;
    const std::wstring& Name() const { return mName; }

private:
    Workspace& mWorkspace;
    std::wstring mName;
    UIF::Commander* mSuper;
};

class Workspace : public UIF::Workspace {
public:
    Workspace();
    ~Workspace() override;

    UIF::TabView* GetFocusedTabView() const override { return mFocused; }
    zelui::ui::UI_Node* GetMainTopLevelWindow() const override { return mMainNode.get(); }
    const zelui::drawbot::SupplierInterface* GetDrawSupplier() const override { return &mSupplier; }

    void SetMainWindow(QWidget* inWindow);
    void SetFocusedTabView(UIF::TabView* inView) { mFocused = inView; }
    // The command chain's root: what panels hand commands up to.
    UIF::Commander* MainCommander() { return &mMainCommander; }
    UIF::Commander* CommandTarget() const { return mTarget; }
    void SetCommandTarget(UIF::Commander* inTarget) { mTarget = inTarget; }

private:
    class RootCommander : public UIF::Commander {
    public:
        explicit RootCommander(Workspace& inWorkspace) : mWorkspace(inWorkspace) {}
        UIF::Commander* GetSuperCommander() const override { return nullptr; }
        void SwitchTarget() override { mWorkspace.SetCommandTarget(this); }

    private:
        Workspace& mWorkspace;
    };

    zelui::drawbot::SupplierInterface mSupplier;
    RootCommander mMainCommander{*this};
    UIF::Commander* mTarget = nullptr;
    UIF::TabView* mFocused = nullptr;
    zelui::ui::UI_NodePtr mMainNode;
};

} // namespace HostQt
