// Panels built in code: a frameless scroll area whose content holds controls placed by their bounds.

#include <QResizeEvent>
#include <QScrollArea>

#include "HostQt/NodePeer.h"
#include "HostQt/Widgets.h"
#include "zelcore/Error.h"
#include "zelui/UI_Container.h"

namespace HostQt {

namespace {

// Tells its panel of each new size. The content keeps the size the panel gives it and scrolls.
class ContainerWidget : public QScrollArea {
public:
    explicit ContainerWidget(QWidget* inParent) : QScrollArea(inParent)
    {
        setFrameShape(QFrame::NoFrame);
        setWidgetResizable(false);
        // The panel is only a frame for its controls: no tab stop of its own, the window's colour.
        setFocusPolicy(Qt::NoFocus);
        viewport()->setBackgroundRole(QPalette::Window);
    }

    void SetNode(zelui::ui::UI_Container* inNode) { mNode = inNode; }

protected:
    void resizeEvent(QResizeEvent* inEvent) override
    {
        QScrollArea::resizeEvent(inEvent);
        if (mNode) {
            const zelui::ui::Rect bounds = ToRect(geometry());
            Guarded([&] { mNode->UI_SizeChanged(bounds); });
        }
    }

private:
    zelui::ui::UI_Container* mNode = nullptr;
};

ContainerWidget* Widget(const zelui::ui::UI_Container& inNode)
{
    return dynamic_cast<ContainerWidget*>(PeerWidget<QWidget>(&inNode));
}

} // namespace

} // namespace HostQt

namespace zelui::ui {

UI_Container::UI_Container(const drawbot::SupplierInterface*, UI_Node* inParent)
    : UI_Node(HostQt::CodeBuiltPeer(new HostQt::ContainerWidget(HostQt::WidgetOf(inParent))))
{
    HostQt::ContainerWidget* area = HostQt::Widget(*this);
    auto* content = new QWidget;
    area->setWidget(content);
    mContent = new UI_Node(std::make_unique<NodePeer>(content));
    area->SetNode(this);
}

// The panel's widget belongs to its window and may outlive the node.
UI_Container::~UI_Container()
{
    if (HostQt::ContainerWidget* area = HostQt::Widget(*this)) {
        area->SetNode(nullptr);
    }
}

void UI_Container::SetContentSize(int inWidth, int inHeight)
{
    if (QWidget* content = HostQt::PeerWidget<QWidget>(mContent.get())) {
        content->resize(inWidth, inHeight);
    }
}

void UI_Container::AddChild(const UI_NodePtr& inChild, const std::wstring& inID, const Rect& inBounds)
{
    ZEL_INPUT_CONTRACT(inChild != nullptr);
    inChild->SetName(inID);
    inChild->SetBounds(inBounds);
    mChildren[inID] = inChild;
}

UI_NodePtr UI_Container::FindChildByID(const std::wstring& inID) const
{
    const auto found = mChildren.find(inID);
    return found != mChildren.end() ? found->second : nullptr;
}

void UI_Container::UI_SizeChanged(const Rect&) {}

} // namespace zelui::ui
