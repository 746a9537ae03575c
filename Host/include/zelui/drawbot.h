#pragma once

#include <string>

#include "KOR/HostAPI.h"
#include "zelui/Events.h"

namespace zelui::drawbot {

// The host's source of drawing resources (fonts, colours, surfaces) for the views it builds.
// Dialogs only pass it on to the views they create.
class HOST_API SupplierInterface {
public:
    virtual ~SupplierInterface();
};

// Colours by their role in the host's theme, so that views follow the platform's look.
enum class ColorRole { kWindow, kFrame, kHighlight };

// What a view draws with while the host paints it. Rectangles are in the view's own
// coordinates. A disabled view's images are drawn in the host's disabled look.
class HOST_API DrawInterface {
public:
    virtual ~DrawInterface();
    // Draws the host image resource inName scaled into inRect; false when the host has no such image.
    virtual bool DrawImage(const std::wstring& inName, const ui::Rect& inRect) = 0;
    virtual void FillRect(const ui::Rect& inRect, ColorRole inRole) = 0;
    virtual void FrameRect(const ui::Rect& inRect, ColorRole inRole) = 0;
    // The platform's mark of keyboard focus around inRect.
    virtual void DrawFocusRing(const ui::Rect& inRect) = 0;
};

} // namespace zelui::drawbot
