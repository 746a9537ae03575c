#pragma once

#include <memory>
#include <sstream>
#include <string>

#include <boost/intrusive_ptr.hpp>

#include "zelui/UI_Dialog.h"

namespace zelui::drawbot {
class SupplierInterface;
}

namespace zelvrel {

// A dialog laid out by a layout script. ParseVrelScript builds the dialog's window and
// controls from the script, lets the subclass bind them (BindControls), runs the dialog
// modally and returns when it has ended.
class HOST_API UI_Vrel {
public:
    UI_Vrel(const std::wstring& inNodeName, const zelui::drawbot::SupplierInterface* inSupplier,
            zelui::ui::UI_Node* inParent);
    virtual ~UI_Vrel();
    UI_Vrel(const UI_Vrel&) = delete;
    UI_Vrel& operator=(const UI_Vrel&) = delete;

    // False when the script built no dialog (empty, or not a layout the host can read): then
    // no window was shown. A script that cannot be read is reported to the user in a message box.
    bool ParseVrelScript(std::stringstream& inScript);

    // The control that the script names inName, as a T; null when the script has no such
    // control or it is of another kind.
    template <class T>
    boost::intrusive_ptr<T> GetUINodePtr(const std::wstring& inName) const
    {
        return boost::intrusive_ptr<T>(dynamic_cast<T*>(FindNode(inName).get()));
    }
    zelui::ui::UI_NodePtr FindNode(const std::wstring& inName) const;

    // The dialog window while the script runs; null before and after.
    zelui::ui::UI_Dialog* GetDialogView() const;
    const std::wstring& GetNodeName() const;

protected:
    virtual void BindControls();
    void SetResponseHandler(zelui::ui::UI_Dialog::ResponseHandler inHandler);

private:
    class Impl;
    std::unique_ptr<Impl> mImpl;
};

} // namespace zelvrel
