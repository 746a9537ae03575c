#pragma once

#include <cstdint>
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
enum class ColorRole { kWindow, kFrame, kHighlight, kText };

// An exact colour, for what shows a colour rather than the theme.
struct RGBColor {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend bool operator==(const RGBColor&, const RGBColor&) = default;
};

// A picture the view computed itself: inWidth x inHeight pixels, row by row from the top, each
// 0x00RRGGBB (the top byte is ignored).
struct PixelImage {
    const std::uint32_t* pixels = nullptr;
    int width = 0;
    int height = 0;
};

// What a view draws with while the host paints it. Rectangles are in the view's own
// coordinates. A disabled view's images are drawn in the host's disabled look.
class HOST_API DrawInterface {
public:
    virtual ~DrawInterface();
    // Draws the host image resource inName scaled into inRect; false when the host has no such image.
    virtual bool DrawImage(const std::wstring& inName, const ui::Rect& inRect) = 0;
    // Draws inImage scaled into inRect, without smoothing.
    virtual void DrawPixels(const PixelImage& inImage, const ui::Rect& inRect) = 0;
    virtual void FillRect(const ui::Rect& inRect, ColorRole inRole) = 0;
    virtual void FillRect(const ui::Rect& inRect, const RGBColor& inColor) = 0;
    virtual void FrameRect(const ui::Rect& inRect, ColorRole inRole) = 0;
    virtual void FrameRect(const ui::Rect& inRect, const RGBColor& inColor) = 0;
    // A one-pixel outline of the ellipse inside inRect (a marker on a colour field).
    virtual void FrameEllipse(const ui::Rect& inRect, const RGBColor& inColor) = 0;
    // One line of text in the theme's font, centred in inRect.
    virtual void DrawText(const std::wstring& inText, const ui::Rect& inRect, ColorRole inRole) = 0;
    // The platform's mark of keyboard focus around inRect.
    virtual void DrawFocusRing(const ui::Rect& inRect) = 0;
};

} // namespace zelui::drawbot
