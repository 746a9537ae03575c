#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <memory>

class QTreeWidget;

#include "zelui/UI_Node.h"

namespace zelui::ui {

// The Qt side of a node: the widget it shows (gone once its window is destroyed) and an
// object that carries the node's signal connections, so that they end with the node.
class NodePeer {
public:
    explicit NodePeer(QWidget* inWidget) : mWidget(inWidget) {}
    QWidget* Widget() const { return mWidget.data(); }
    QObject* ConnectionContext() { return &mContext; }

private:
    QPointer<QWidget> mWidget;
    QObject mContext;
};

} // namespace zelui::ui

namespace HostQt {

// The node that shows inWidget: a button, text, number edit or plain node by the widget's kind.
zelui::ui::UI_NodePtr MakeControlNode(QWidget* inWidget);
// The list box node of a tree widget that a layout script built.
zelui::ui::UI_NodePtr MakeListBoxNode(QTreeWidget* inList, std::unique_ptr<zelui::ui::NodePeer> inPeer);

template <class W>
W* PeerWidget(const zelui::ui::UI_Node* inNode)
{
    return inNode->GetPeer() ? qobject_cast<W*>(inNode->GetPeer()->Widget()) : nullptr;
}

// The widget that a control made in code with inParent as its parent goes into; null without a parent.
inline QWidget* WidgetOf(const zelui::ui::UI_Node* inParent)
{
    return inParent ? PeerWidget<QWidget>(inParent) : nullptr;
}

// The peer of a widget made in code: shown with its window (a widget added to a window already
// on screen stays hidden unless shown).
inline std::unique_ptr<zelui::ui::NodePeer> CodeBuiltPeer(QWidget* inWidget)
{
    if (inWidget->parentWidget()) {
        inWidget->show();
    }
    return std::make_unique<zelui::ui::NodePeer>(inWidget);
}

} // namespace HostQt
