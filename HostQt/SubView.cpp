// Views that the module draws and drives itself, on a Qt widget inside a scripted area.

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QVBoxLayout>

#include "HostQt/NodePeer.h"
#include "HostQt/Widgets.h"
#include "zelui/UI_SubView.h"

namespace HostQt {

namespace {

QRect ToQRect(const zelui::ui::Rect& inRect) { return {inRect.left, inRect.top, inRect.width, inRect.height}; }

// Images are host resources, by name: ":/zelui/images/<name>.png".
QPixmap HostImage(const std::wstring& inName)
{
    return QPixmap(QStringLiteral(":/zelui/images/%1.png").arg(QString::fromStdWString(inName)));
}

class PainterDrawer : public zelui::drawbot::DrawInterface {
public:
    PainterDrawer(QPainter& ioPainter, QWidget& inWidget) : mPainter(ioPainter), mWidget(inWidget) {}

    bool DrawImage(const std::wstring& inName, const zelui::ui::Rect& inRect) override
    {
        QPixmap image = HostImage(inName);
        if (image.isNull()) {
            return false;
        }
        if (!mWidget.isEnabled()) {
            QStyleOption option;
            option.initFrom(&mWidget);
            image = mWidget.style()->generatedIconPixmap(QIcon::Disabled, image, &option);
        }
        mPainter.setRenderHint(QPainter::SmoothPixmapTransform);
        mPainter.drawPixmap(ToQRect(inRect), image);
        return true;
    }

    void FillRect(const zelui::ui::Rect& inRect, zelui::drawbot::ColorRole inRole) override
    {
        mPainter.fillRect(ToQRect(inRect), Color(inRole));
    }

    void FrameRect(const zelui::ui::Rect& inRect, zelui::drawbot::ColorRole inRole) override
    {
        mPainter.setPen(Color(inRole));
        mPainter.setBrush(Qt::NoBrush);
        mPainter.drawRect(ToQRect(inRect).adjusted(0, 0, -1, -1));
    }

    void DrawFocusRing(const zelui::ui::Rect& inRect) override
    {
        QStyleOptionFocusRect option;
        option.initFrom(&mWidget);
        option.rect = ToQRect(inRect);
        option.backgroundColor = mWidget.palette().color(QPalette::Window);
        mWidget.style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &mPainter, &mWidget);
    }

private:
    QColor Color(zelui::drawbot::ColorRole inRole) const
    {
        const QPalette::ColorGroup group = mWidget.isEnabled() ? QPalette::Active : QPalette::Disabled;
        switch (inRole) {
        case zelui::drawbot::ColorRole::kFrame: return mWidget.palette().color(group, QPalette::Mid);
        case zelui::drawbot::ColorRole::kHighlight: return mWidget.palette().color(group, QPalette::Highlight);
        case zelui::drawbot::ColorRole::kWindow: break;
        }
        return mWidget.palette().color(group, QPalette::Window);
    }

    QPainter& mPainter;
    QWidget& mWidget;
};

// Hands paint, mouse, key and focus events to its view's hooks. A press and release on the
// view is a click; keys the view leaves go on to the window (Enter, Escape).
class SubViewWidget : public QWidget {
public:
    explicit SubViewWidget(QWidget* inParent) : QWidget(inParent) { setFocusPolicy(Qt::NoFocus); }

    void SetNode(zelui::ui::UI_SubView* inNode) { mNode = inNode; }

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (!mNode) {
            return;
        }
        QPainter painter(this);
        PainterDrawer drawer(painter, *this);
        Guarded([&] { mNode->UI_Draw(drawer); });
    }

    void mousePressEvent(QMouseEvent* inEvent) override
    {
        if (inEvent->button() == Qt::LeftButton) {
            mPressed = true;
            Send(zelui::ui::MouseEvent::Type::kDown, *inEvent);
        }
    }

    void mouseMoveEvent(QMouseEvent* inEvent) override
    {
        if (mPressed) {
            Send(zelui::ui::MouseEvent::Type::kDrag, *inEvent);
        }
    }

    void mouseReleaseEvent(QMouseEvent* inEvent) override
    {
        if (inEvent->button() != Qt::LeftButton || !mPressed) {
            return;
        }
        mPressed = false;
        Send(zelui::ui::MouseEvent::Type::kUp, *inEvent);
        if (rect().contains(inEvent->position().toPoint())) {
            Send(zelui::ui::MouseEvent::Type::kClick, *inEvent);
        }
    }

    void keyPressEvent(QKeyEvent* inEvent) override
    {
        if (!SendKey(*inEvent)) {
            QWidget::keyPressEvent(inEvent);
        }
    }

    void keyReleaseEvent(QKeyEvent* inEvent) override
    {
        if (!SendKey(*inEvent)) {
            QWidget::keyReleaseEvent(inEvent);
        }
    }

    void focusInEvent(QFocusEvent* inEvent) override
    {
        QWidget::focusInEvent(inEvent);
        SendFocus(true);
    }

    void focusOutEvent(QFocusEvent* inEvent) override
    {
        QWidget::focusOutEvent(inEvent);
        mPressed = false;
        SendFocus(false);
    }

private:
    void Send(zelui::ui::MouseEvent::Type inType, const QMouseEvent& inEvent)
    {
        if (!mNode || !isEnabled()) {
            return;
        }
        const QPoint at = inEvent.position().toPoint();
        const zelui::ui::MouseEvent event{inType, 1, Modifiers(inEvent.modifiers()), at.x(), at.y()};
        Guarded([&] { mNode->UI_DoMouseEvent(mNode, event); });
    }

    bool SendKey(const QKeyEvent& inEvent)
    {
        bool consumed = false;
        if (mNode && isEnabled()) {
            const zelui::ui::KeyboardEvent event = ToKeyboardEvent(inEvent);
            Guarded([&] { consumed = mNode->UI_DoKeyboardEvent(mNode, event); });
        }
        return consumed;
    }

    void SendFocus(bool inHasFocus)
    {
        if (mNode) {
            Guarded([&] { mNode->UI_FocusChanged(inHasFocus); });
        }
    }

    zelui::ui::UI_SubView* mNode = nullptr;
    bool mPressed = false;
};

// The view fills its area: the area's layout holds it alone.
SubViewWidget* MakeSubViewWidget(zelui::ui::UI_Node& inArea, const std::wstring& inName)
{
    QWidget* area = PeerWidget<QWidget>(&inArea);
    auto* widget = new SubViewWidget(area);
    widget->setObjectName(QString::fromStdWString(inName));
    if (area) {
        QLayout* layout = area->layout();
        if (!layout) {
            layout = new QVBoxLayout(area);
            layout->setContentsMargins(0, 0, 0, 0);
        }
        layout->addWidget(widget);
        widget->show();
    }
    return widget;
}

} // namespace

} // namespace HostQt

namespace zelui::drawbot {
DrawInterface::~DrawInterface() = default;
}

namespace zelui::ui {

using HostQt::PeerWidget;

UI_SubView::UI_SubView(UI_Node& inArea, const std::wstring& inName)
    : UI_Node(std::make_unique<NodePeer>(HostQt::MakeSubViewWidget(inArea, inName)))
{
    static_cast<HostQt::SubViewWidget*>(PeerWidget<QWidget>(this))->SetNode(this);
}

// The widget belongs to the window and may outlive the view.
UI_SubView::~UI_SubView()
{
    if (auto* widget = dynamic_cast<HostQt::SubViewWidget*>(PeerWidget<QWidget>(this))) {
        widget->SetNode(nullptr);
    }
}

Rect UI_SubView::GetLocalRect() const
{
    const auto* widget = PeerWidget<QWidget>(this);
    return widget ? Rect{0, 0, widget->width(), widget->height()} : Rect{};
}

// The view takes the area's place in the tab order; the area itself never takes the focus.
void UI_SubView::SetWantsKeyboardFocus(bool inWants)
{
    QWidget* widget = PeerWidget<QWidget>(this);
    if (!widget) {
        return;
    }
    widget->setFocusPolicy(inWants ? Qt::StrongFocus : Qt::NoFocus);
    QWidget* area = widget->parentWidget();
    if (inWants && area) {
        if (area->focusPolicy() == Qt::NoFocus) {
            area->setFocusPolicy(Qt::TabFocus);
        }
        QWidget::setTabOrder(area, widget);
        area->setFocusPolicy(Qt::NoFocus);
    }
}

bool UI_SubView::HasFocus() const
{
    const auto* widget = PeerWidget<QWidget>(this);
    return widget && widget->hasFocus();
}

void UI_SubView::SetAccessibleName(const std::wstring& inName)
{
    if (auto* widget = PeerWidget<QWidget>(this)) {
        widget->setAccessibleName(QString::fromStdWString(inName));
    }
}

std::wstring UI_SubView::GetAccessibleName() const
{
    const auto* widget = PeerWidget<QWidget>(this);
    return widget ? widget->accessibleName().toStdWString() : std::wstring();
}

void UI_SubView::Invalidate()
{
    if (auto* widget = PeerWidget<QWidget>(this)) {
        widget->update();
    }
}

void UI_SubView::UI_Draw(drawbot::DrawInterface&) {}

bool UI_SubView::UI_DoMouseEvent(UI_Node*, const MouseEvent&) { return false; }

bool UI_SubView::UI_DoKeyboardEvent(UI_Node*, const KeyboardEvent&) { return false; }

void UI_SubView::UI_FocusChanged(bool) { Invalidate(); }

} // namespace zelui::ui
