#pragma once

#include <QString>

#include <string>

#include <functional>
#include <vector>

#include "BE/ColorMatte.h"
#include "KOR/InterfaceRef.h"
#include "KOR/Time.h"

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

// The caller's values that the demo hands to the dialogs and shows after each call.
struct DemoState {
    double x = 960.0;
    double y = 540.0;
    KOR::Time zeroPoint = KOR::Time::FromSeconds(3600);
    KOR::InterfaceRef<MatteParameters> matte{new MatteParameters};
    std::vector<std::wstring> trackNames{L"Video 1", L"Video 2", L"Video 3", L"Audio 1", L"Audio 2"};
    std::vector<bool> tracksShown{true, true, false, true, false};
    float clipGain = 1.0f;
    QString dataDirectory; // where the demo saves projects
};

// One dialog the demo offers: how to open it and what it returned, and how the gallery's
// scripted user answers it.
struct DemoDialog {
    QString title;
    QString window; // the dialog window's name, as the scripted user finds it
    std::function<QString(DemoState&, HostQt::Workspace&)> open;
    std::function<void(TestSupport::Step&)> galleryAnswer;
    QString picture = {}; // the gallery's PNG name when not the window's; no window, no PNG
};

const std::vector<DemoDialog>& DemoDialogs();

} // namespace Demo
