#pragma once

#include <string>

#include "zelui/Events.h"
#include "zelui/UI_Node.h"
#include "zelui/drawbot.h"

namespace zelui::ui {

// A view that a dialog draws and drives itself, made inside an area of its window (a plain
// node that a layout script built as a placeholder) and filling it. The host calls the UI_
// hooks: to draw, with the mouse and keys, and when the focus comes or goes.
class HOST_API UI_SubView : public UI_Node {
public:
    // A new view named inName filling inArea.
    UI_SubView(UI_Node& inArea, const std::wstring& inName);
    // A new view named inName in inParent's window (a container's content, a dialog), placed by SetBounds.
    UI_SubView(const drawbot::SupplierInterface* inSupplier, UI_Node* inParent, const std::wstring& inName);
    ~UI_SubView() override;

    // The view's bounds in its own coordinates.
    Rect GetLocalRect() const;
    // With inWants the view takes keyboard focus by click and Tab, at its area's place in the tab order.
    void SetWantsKeyboardFocus(bool inWants);
    bool HasFocus() const;
    // Asks the host to draw the view again soon. Several requests before it draws are one drawing.
    void Invalidate();
    // The same for a part of the view only (in the view's coordinates): what lies outside keeps
    // its last drawing, and UI_Draw's drawing outside the part is clipped away.
    void Invalidate(const Rect& inArea);
    // The cursor over the view: a cross hair for picking a point, or the platform's arrow.
    void SetCrossCursor(bool inCross);

    // Draws the view; by default nothing.
    virtual void UI_Draw(drawbot::DrawInterface& ioDrawer);
    // Mouse and key events on the view; true consumes the event. By default none is consumed, so
    // that keys such as Enter and Escape reach the dialog.
    virtual bool UI_DoMouseEvent(UI_Node* inNode, const MouseEvent& inEvent);
    virtual bool UI_DoKeyboardEvent(UI_Node* inNode, const KeyboardEvent& inEvent);
    // The view got or lost the keyboard focus; by default it is drawn again.
    virtual void UI_FocusChanged(bool inHasFocus);
};

} // namespace zelui::ui
