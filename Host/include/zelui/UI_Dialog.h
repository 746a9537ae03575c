#pragma once

#include <string>

#include <boost/function.hpp>

#include "zelui/UI_Node.h"

namespace zelui::controls {
class UI_Button;
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

} // namespace zelui::ui
