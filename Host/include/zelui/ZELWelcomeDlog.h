#pragma once

#include <memory>
#include <string>
#include <vector>

#include "KOR/HostAPI.h"

namespace zelui::ui {
class UI_Node;
}
namespace zelui::utility {
class OS_ResourceManager;
}

namespace zelui::sharedui {

// The editor's welcome screen: the recently used projects, a new project, opening another
// project and help. Tab and the arrow keys move between its parts, Enter chooses, Escape closes.
class HOST_API ZELWelcomeDlog {
public:
    // What RunModal returns.
    enum Result : int {
        kNewProject = 1,
        kOpenProject = 2,
        kHelp = 3,
        kClosed = 4, // Escape, the close button, or TerminateRunningWelcomeScreen(4)
        kRecentProject = 5,
    };
    // The resource names of the screen's images.
    struct Images {
        std::wstring top;
        std::wstring bottom;
        std::wstring newProject;
        std::wstring openProject;
        std::wstring help;
    };

    // inRecentItems: the display texts of the recent projects, most recent first.
    ZELWelcomeDlog(ui::UI_Node* inParent, std::vector<std::wstring> inRecentItems,
                   const utility::OS_ResourceManager& inResources, const Images& inImages);
    ~ZELWelcomeDlog();
    ZELWelcomeDlog(const ZELWelcomeDlog&) = delete;
    ZELWelcomeDlog& operator=(const ZELWelcomeDlog&) = delete;

    // Shows the screen until the user chooses or it is terminated; returns the result.
    int RunModal();
    // The display text of the recent project chosen (result kRecentProject); empty otherwise.
    std::wstring GetSelectedMRUItem() const;

    static bool WelcomeScreenIsRunning();
    // Ends the running screen, whose RunModal returns inResult; nothing when none runs.
    static void TerminateRunningWelcomeScreen(int inResult);

private:
    class Impl;
    std::unique_ptr<Impl> mImpl;
};

} // namespace zelui::sharedui
