#pragma once

#include <QString>

#include <string>

#include <functional>
#include <vector>

#include "BE/ColorMatte.h"
#include "KOR/InterfaceRef.h"
#include "KOR/Time.h"
#include "MediaOperations.h"

namespace TestSupport {
class Step;
}
namespace HostQt {
class Workspace;
}

namespace Demo {

// The name that the colour matte dialog edits, as the editor would hold it.
class MatteParameters : public KOR::RefCounted<BE::IColorMatteNameParameters> {
public:
    std::wstring GetName() const override { return mName; }
    void SetName(const std::wstring& inName) override { mName = inName; }

private:
    std::wstring mName = L"Color Matte";
};

// A clip of the sample project as the clip speed dialog edits it: 10 s of 29.97 video.
struct DemoClip {
    std::wstring name = L"Harbour at dawn.mov";
    KOR::Time reference{300, KOR::kFrameRate_NTSC2997};
    double speedPercent = 100.0;
    KOR::Time duration = reference;
    bool reverse = false;
    bool maintainPitch = true;
    bool ganged = true;
};

// The caller's values that the demo hands to the dialogs and shows after each call.
struct DemoState {
    double x = 960.0;
    double y = 540.0;
    KOR::Time zeroPoint = KOR::Time::FromSeconds(3600);
    KOR::InterfaceRef<MatteParameters> matte{new MatteParameters};
    double uniformScale = 100.0;
    double horizontalScale = 100.0;
    double verticalScale = 100.0;
    bool uniformScaling = true;
    double rotation = 0.0;
    double opacity = 1.0;
    double fontSize = 48.0;
    std::wstring clipName = L"Interview 01";
    std::wstring tapeName;
    long markerNumber = 3;
    std::wstring markerName = L"Chorus";
    bool deleteMedia = false;
    bool deleteOfflineFiles = false;
    unsigned long fitClipOptions = 0xFC; // the clip is longer; every choice offered
    unsigned long fitClipChoice = 0;
    DemoClip clip;
    // Where the sample project's media are rendered and verified, and how long each clip lasts.
    QString mediaFolder;
    int renderSeconds = 300;
    // Set by the gallery: the next operation holds there until the gallery releases it.
    std::shared_ptr<PauseGate> pause;
    std::vector<std::wstring> trackNames{L"Video 1", L"Video 2", L"Video 3", L"Audio 1", L"Audio 2"};
    std::vector<bool> tracksShown{true, true, false, true, false};
    float clipGain = 1.0f;
    QString dataDirectory; // where the demo saves projects
    std::wstring keySetPath; // the key set the shortcuts editor last left current
};

// One dialog the demo offers: how to open it and what it returned, and how the gallery's
// scripted user answers it.
struct DemoDialog {
    QString title;
    QString window; // the dialog window's name, as the scripted user finds it
    std::function<QString(DemoState&, HostQt::Workspace&)> open;
    // None: a window that the gallery pictures its own way; with no window, run without a user.
    std::function<void(TestSupport::Step&)> galleryAnswer;
    QString picture = {}; // the gallery's PNG name when not the window's; no window, no PNG
};

const std::vector<DemoDialog>& DemoDialogs();
// The demo's dialog whose window is named inWindow; throws when there is none.
const DemoDialog& FindDemoDialog(const QString& inWindow);

} // namespace Demo
