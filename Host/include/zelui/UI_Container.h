#pragma once

#include <map>
#include <string>

#include "zelcore/Error.h"
#include "zelui/UI_Node.h"

namespace zelui::drawbot {
class SupplierInterface;
}

namespace zelui::ui {

// A panel built in code: its controls are made in its content view (GetContentView() is the
// parent to make them in), placed by their bounds, and registered under identifiers by which
// other code finds them. The content scrolls when the panel is smaller than it.
class HOST_API UI_Container : public UI_Node {
public:
    UI_Container(const drawbot::SupplierInterface* inSupplier, UI_Node* inParent);
    ~UI_Container() override;

    UI_Node* GetContentView() const { return mContent.get(); }
    // The size of what the content holds; it scrolls when the panel is smaller.
    void SetContentSize(int inWidth, int inHeight);

    // Registers inChild (made in the content view) under inID, names it so and places it at inBounds.
    void AddChild(const UI_NodePtr& inChild, const std::wstring& inID, const Rect& inBounds);
    // The child registered under inID, or null.
    UI_NodePtr FindChildByID(const std::wstring& inID) const;
    // The same as a T; a child of another kind raises the host's invalid type conversion error.
    template <class T>
    boost::intrusive_ptr<T> FindChild(const std::wstring& inID) const
    {
        const UI_NodePtr child = FindChildByID(inID);
        if (!child) {
            return nullptr;
        }
        auto* typed = dynamic_cast<T*>(child.get());
        if (!typed) {
            zelcore::config::ThrowError(zelcore::messages::kInvalidTypeConversion);
        }
        return typed;
    }

    // The panel got a new size (in its parent's coordinates); by default nothing more happens.
    virtual void UI_SizeChanged(const Rect& inBounds);

private:
    UI_NodePtr mContent;
    std::map<std::wstring, UI_NodePtr> mChildren;
};

} // namespace zelui::ui
