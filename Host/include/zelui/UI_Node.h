#pragma once

#include <atomic>
#include <memory>
#include <string>

#include <boost/intrusive_ptr.hpp>

#include "KOR/HostAPI.h"
#include "zelui/Events.h"

namespace zelui::ui {

// The toolkit side of a node; only the host knows what it holds.
class NodePeer;

// A view of the host's UI: a window, a dialog or a control. Nodes are reference counted and
// held through boost::intrusive_ptr; the window that a node shows belongs to its parent
// window, so a node whose window has gone answers as disabled, hidden and nameless.
class HOST_API UI_Node {
public:
    explicit UI_Node(std::unique_ptr<NodePeer> inPeer);
    virtual ~UI_Node();
    UI_Node(const UI_Node&) = delete;
    UI_Node& operator=(const UI_Node&) = delete;

    // The node's identifier: the name a layout script gave it, or the one its maker set.
    std::wstring GetName() const;
    void SetName(const std::wstring& inName);
    // Where the node lies in its parent, in the parent's coordinates. A node built in code is
    // placed by its maker; one that a layout script built is placed by the script's layout.
    void SetBounds(const Rect& inBounds);
    Rect GetBounds() const;
    // The name that assistive technology reads for the node.
    void SetAccessibleName(const std::wstring& inName);
    std::wstring GetAccessibleName() const;
    void SetEnabled(bool inEnabled);
    bool IsEnabled() const;
    void SetVisible(bool inVisible);
    bool IsVisible() const;
    void SetFocus();
    // Paints the node now instead of when the UI thread next runs its events: for a change that
    // must be seen before the UI thread blocks for a while.
    void RedrawNow();

    NodePeer* GetPeer() const { return mPeer.get(); }

    friend void intrusive_ptr_add_ref(const UI_Node* inNode) { inNode->mRefs.fetch_add(1, std::memory_order_relaxed); }
    friend void intrusive_ptr_release(const UI_Node* inNode)
    {
        if (inNode->mRefs.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete inNode;
        }
    }

private:
    std::unique_ptr<NodePeer> mPeer;
    mutable std::atomic<int> mRefs{0};
};

using UI_NodePtr = boost::intrusive_ptr<UI_Node>;

// Who holds the mouse and keyboard right now.
class HOST_API UI_NodeManager {
public:
    virtual ~UI_NodeManager();
    // The installed manager, or null.
    static UI_NodeManager* Get();
    // Releases any mouse or keyboard grab, as a modal window is about to take the input.
    virtual void EndInputCapture(bool inRestoreFocus) = 0;
    // The modal window that has the input now (a dialog over which another dialog opens).
    virtual bool HasModalWindow() const = 0;
    // Null when there is none.
    virtual UI_NodePtr GetModalWindow() const = 0;
};

} // namespace zelui::ui
