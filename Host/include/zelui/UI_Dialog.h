#pragma once

#include <string>

#include <boost/function.hpp>

#include "zelui/UI_Node.h"

namespace zelui::controls {
class UI_Button;
}
namespace zelui::drawbot {
class SupplierInterface;
}

namespace zelui::ui {

// A modal dialog window.
//
// Enter presses the OK button when one is set (and nothing when it is disabled); without one it
// is the acceptance response 1. Escape presses the cancel button when one is set; without one,
// and on closing the window, it is the dismissal response 0. A response goes to the response
// handler, which may change it, and then ends the dialog with that code; a handler that sets it
// to kResponse_KeepOpen keeps the dialog open (an acceptance of values that do not check out).
class HOST_API UI_Dialog : public UI_Node {
public:
    using Response = long;
    static constexpr Response kResponse_Dismiss = 0;
    static constexpr Response kResponse_Accept = 1;
    static constexpr Response kResponse_KeepOpen = -1;
    using ResponseHandler = boost::function<bool(Response&)>;

    using UI_Node::UI_Node;
    ~UI_Dialog() override;

    void SetResponseHandler(ResponseHandler inHandler);
    void SetOkButton(controls::UI_Button* inButton);
    void SetCancelButton(controls::UI_Button* inButton);
    void SetTitle(const std::wstring& inTitle);

    // Shows the dialog and returns when it has ended, with the code it ended with.
    Response RunModal();
    void EndDialog(Response inResponse);

    // Called by the toolkit for Enter, Escape and closing that no button answered.
    void Respond(Response inResponse);

private:
    ResponseHandler mResponseHandler;
};

// A modal dialog window built in code rather than by a layout script: its maker creates the
// controls with the dialog as their parent and places them. The window's keys and mouse
// clicks go to the hooks first; what they do not consume gets the dialog's own handling
// (Enter confirms, Escape cancels).
class HOST_API OS_Dialog : public UI_Dialog {
public:
    OS_Dialog(const drawbot::SupplierInterface* inSupplier, UI_Node* inParent, const std::wstring& inTitle);
    ~OS_Dialog() override;

    // The size of the window's content; the window may be made larger by the user but not smaller.
    void SetContentSize(int inWidth, int inHeight);

    // The window got a new size: inBounds is its content's rectangle.
    virtual void UI_SizeChanged(const Rect& inBounds);
    virtual bool UI_DoKeyboardEvent(UI_Node* inNode, const KeyboardEvent& inEvent);
    virtual bool UI_DoMouseEvent(UI_Node* inNode, const MouseEvent& inEvent);
};

} // namespace zelui::ui
