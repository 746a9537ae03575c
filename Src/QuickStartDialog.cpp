#include "DLG/QuickStartDialog.h"

#include <algorithm>

#include "DLG/Module.h"
#include "KOR/Paths.h"
#include "TL/HelpCenter.h"
#include "UIF/ColorManager.h"
#include "UIF/Workspace.h"
#include "zelui/OS_ResourceManager.h"
#include "zelui/ZELWelcomeDlog.h"

namespace DLG::QuickStart {

const std::wstring kRecentDocumentProperty = L"BE.Prefs.MRU.Document.";

namespace {

constexpr int kHelpResult = 3;
constexpr int kClosedResult = 4;
constexpr int kRecentProjectResult = 5;
// The welcome screen is drawn for a middle grey, whatever the user's brightness.
constexpr int kWelcomeBrightness = 50;

const zelui::sharedui::ZELWelcomeDlog::Images kImages{
    L"kResDLGQuickStartDialogTop", L"kResDLGQuickStartDialogBottom", L"kResDLGQuickStartNew",
    L"kResDLGQuickStartOpen",      L"kResDLGQuickStartHelp",
};

// Sets the UI brightness for its lifetime and puts the user's back however the screen ends.
class ScopedBrightness {
public:
    explicit ScopedBrightness(int inBrightness) : mPrevious(UIF::ColorManager::GetBrightness())
    {
        UIF::ColorManager::SetBrightness(inBrightness);
    }
    ~ScopedBrightness() { UIF::ColorManager::SetBrightness(mPrevious); }
    ScopedBrightness(const ScopedBrightness&) = delete;
    ScopedBrightness& operator=(const ScopedBrightness&) = delete;

private:
    int mPrevious;
};

// The position of the first display text equal to inSelected; two projects with the same name
// cannot be told apart, so the more recent one is taken.
int FirstIndexOf(const std::vector<std::wstring>& inDisplayTexts, const std::wstring& inSelected)
{
    const auto found = std::find(inDisplayTexts.begin(), inDisplayTexts.end(), inSelected);
    return found == inDisplayTexts.end() ? 0 : static_cast<int>(found - inDisplayTexts.begin());
}

} // namespace

int DoQuickStartDialog(const std::vector<std::wstring>& inRecentPaths, int& outChosenIndex)
{
    outChosenIndex = 0;
    std::vector<std::wstring> displayTexts;
    displayTexts.reserve(inRecentPaths.size());
    for (const std::wstring& path : inRecentPaths) {
        displayTexts.push_back(KOR::PathUtils::GetDisplayStringFromPath(path));
    }
    const zelui::utility::OS_ResourceManager resources(GetModule().GetNativeModule());
    UIF::Workspace* workspace = UIF::Workspace::GetPtr();
    if (!workspace) {
        return kClosedResult;
    }

    int result = 0;
    std::wstring selected;
    {
        const ScopedBrightness brightness(kWelcomeBrightness);
        zelui::sharedui::ZELWelcomeDlog screen(workspace->GetMainTopLevelWindow(), displayTexts, resources, kImages);
        result = screen.RunModal();
        selected = screen.GetSelectedMRUItem();
    }
    if (result == kHelpResult) {
        TL::TarvixHelpCenter::OpenHelpPage(TL::kHelpHomePage);
    } else if (result == kRecentProjectResult) {
        outChosenIndex = FirstIndexOf(displayTexts, selected);
    }
    return result;
}

void CloseQuickStartDialog()
{
    if (zelui::sharedui::ZELWelcomeDlog::WelcomeScreenIsRunning()) {
        zelui::sharedui::ZELWelcomeDlog::TerminateRunningWelcomeScreen(kClosedResult);
    }
}

bool IsDialogEnabled() { return zelui::sharedui::ZELWelcomeDlog::WelcomeScreenIsRunning(); }

} // namespace DLG::QuickStart
