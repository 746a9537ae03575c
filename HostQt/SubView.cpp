// Views that the module draws and drives itself, on a Qt widget inside a scripted area or placed in code.

#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QVBoxLayout>

#include <algorithm>
#include <cstdint>

#include "HostQt/NodePeer.h"
#include "HostQt/Widgets.h"
#include "zelui/UI_SubView.h"

namespace HostQt {

namespace {

using zelui::drawbot::ColorRole;
using zelui::drawbot::RGBColor;

// What one drawing call changes in the painter is put back when it ends.
class SavedState {
public:
    explicit SavedState(QPainter& ioPainter) : mPainter(ioPainter) { mPainter.save(); }
    ~SavedState() { mPainter.restore(); }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;

private:
    QPainter& mPainter;
};

QColor ToQColor(const RGBColor& inColor) { return QColor(inColor.red, inColor.green, inColor.blue); }

class PainterDrawer : public zelui::drawbot::DrawInterface {
public:
    PainterDrawer(QPainter& ioPainter, QWidget& inWidget, QImage& ioPixelBuffer)
        : mPainter(ioPainter), mWidget(inWidget), mPixelBuffer(ioPixelBuffer)
    {
    }

    bool DrawImage(const std::wstring& inName, const zelui::ui::Rect& inRect) override
    {
        const QPixmap image = HostImage(inName, mWidget);
        if (image.isNull()) {
            return false;
        }
        SavedState saved(mPainter);
        mPainter.setRenderHint(QPainter::SmoothPixmapTransform);
        mPainter.drawPixmap(ToQRect(inRect), image);
        return true;
    }

    // Qt takes the top byte of an RGB32 pixel for 0xFF: drawn as they stand, the view's pixels would
    // carry their top byte into a target with alpha (a window grabbed to a picture) and show as
    // holes. They go through the view's buffer, which keeps its memory from one drawing to the next.
    void DrawPixels(const zelui::drawbot::PixelImage& inImage, const zelui::ui::Rect& inRect) override
    {
        if (!inImage.pixels || inImage.width <= 0 || inImage.height <= 0) {
            return;
        }
        if (mPixelBuffer.width() != inImage.width || mPixelBuffer.height() != inImage.height) {
            mPixelBuffer = QImage(inImage.width, inImage.height, QImage::Format_RGB32);
        }
        uchar* rows = mPixelBuffer.bits();
        for (int y = 0; y < inImage.height; ++y) {
            const std::uint32_t* from = inImage.pixels + static_cast<std::ptrdiff_t>(y) * inImage.width;
            auto* to = reinterpret_cast<std::uint32_t*>(rows + y * mPixelBuffer.bytesPerLine());
            std::transform(from, from + inImage.width, to, [](std::uint32_t inPixel) { return inPixel | 0xFF000000u; });
        }
        SavedState saved(mPainter);
        mPainter.setRenderHint(QPainter::SmoothPixmapTransform, false);
        mPainter.drawImage(ToQRect(inRect), mPixelBuffer);
    }

    void FillRect(const zelui::ui::Rect& inRect, ColorRole inRole) override
    {
        mPainter.fillRect(ToQRect(inRect), Color(inRole));
    }

    void FillRect(const zelui::ui::Rect& inRect, const RGBColor& inColor) override
    {
        mPainter.fillRect(ToQRect(inRect), ToQColor(inColor));
    }

    void FrameRect(const zelui::ui::Rect& inRect, ColorRole inRole) override { Frame(inRect, Color(inRole)); }

    void FrameRect(const zelui::ui::Rect& inRect, const RGBColor& inColor) override
    {
        Frame(inRect, ToQColor(inColor));
    }

    void FrameEllipse(const zelui::ui::Rect& inRect, const RGBColor& inColor) override
    {
        SavedState saved(mPainter);
        mPainter.setRenderHint(QPainter::Antialiasing);
        mPainter.setPen(QPen(ToQColor(inColor), 1.0));
        mPainter.setBrush(Qt::NoBrush);
        // A one-pixel pen centred half a pixel inside keeps the outline within the rectangle.
        mPainter.drawEllipse(QRectF(ToQRect(inRect)).adjusted(0.5, 0.5, -0.5, -0.5));
    }

    void DrawText(const std::wstring& inText, const zelui::ui::Rect& inRect, ColorRole inRole) override
    {
        SavedState saved(mPainter);
        mPainter.setFont(mWidget.font());
        mPainter.setPen(Color(inRole));
        mPainter.drawText(ToQRect(inRect), Qt::AlignCenter | Qt::TextSingleLine, QString::fromStdWString(inText));
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
    QColor Color(ColorRole inRole) const
    {
        const QPalette::ColorGroup group = mWidget.isEnabled() ? QPalette::Active : QPalette::Disabled;
        switch (inRole) {
        case ColorRole::kFrame: return mWidget.palette().color(group, QPalette::Mid);
        case ColorRole::kHighlight: return mWidget.palette().color(group, QPalette::Highlight);
        case ColorRole::kText: return mWidget.palette().color(group, QPalette::WindowText);
        case ColorRole::kWindow: break;
        }
        return mWidget.palette().color(group, QPalette::Window);
    }

    void Frame(const zelui::ui::Rect& inRect, const QColor& inColor)
    {
        SavedState saved(mPainter);
        mPainter.setPen(inColor);
        mPainter.setBrush(Qt::NoBrush);
        mPainter.drawRect(ToQRect(inRect).adjusted(0, 0, -1, -1));
    }

    QPainter& mPainter;
    QWidget& mWidget;
    QImage& mPixelBuffer;
};

// Hands paint, mouse, key and focus events to its view's hooks. A press and release on the
// view is a click; keys the view leaves go on to the window (Enter, Escape).
class SubViewWidget : public QWidget {
public:
    SubViewWidget(QWidget* inParent, bool inFillsArea) : QWidget(inParent), mFillsArea(inFillsArea)
    {
        setFocusPolicy(Qt::NoFocus);
    }

    void SetNode(zelui::ui::UI_SubView* inNode) { mNode = inNode; }
    // A view that fills a scripted area, rather than one placed in code.
    bool FillsArea() const { return mFillsArea; }

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (!mNode) {
            return;
        }
        QPainter painter(this);
        PainterDrawer drawer(painter, *this, mPixelBuffer);
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
        const zelui::ui::MouseEvent event = ToMouseEvent(inType, inEvent);
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
    const bool mFillsArea;
    QImage mPixelBuffer; // what DrawPixels draws from
    bool mPressed = false;
};

// The view fills its area: the area's layout holds it alone.
SubViewWidget* MakeSubViewWidget(zelui::ui::UI_Node& inArea, const std::wstring& inName)
{
    QWidget* area = PeerWidget<QWidget>(&inArea);
    auto* widget = new SubViewWidget(area, true);
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

SubViewWidget* MakeCodeBuiltSubViewWidget(zelui::ui::UI_Node* inParent, const std::wstring& inName)
{
    auto* widget = new SubViewWidget(WidgetOf(inParent), false);
    widget->setObjectName(QString::fromStdWString(inName));
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

UI_SubView::UI_SubView(const drawbot::SupplierInterface*, UI_Node* inParent, const std::wstring& inName)
    : UI_Node(HostQt::CodeBuiltPeer(HostQt::MakeCodeBuiltSubViewWidget(inParent, inName)))
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

// A view in an area takes the area's place in the tab order, and the area itself never takes the
// focus; one placed in code keeps its place in the order of its making.
void UI_SubView::SetWantsKeyboardFocus(bool inWants)
{
    auto* widget = dynamic_cast<HostQt::SubViewWidget*>(PeerWidget<QWidget>(this));
    if (!widget) {
        return;
    }
    widget->setFocusPolicy(inWants ? Qt::StrongFocus : Qt::NoFocus);
    QWidget* area = widget->FillsArea() ? widget->parentWidget() : nullptr;
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

// Qt merges the requests into the next paint.
void UI_SubView::Invalidate()
{
    if (auto* widget = PeerWidget<QWidget>(this)) {
        widget->update();
    }
}

// Without the cross the view shows its window's cursor, the arrow unless the window set another.
void UI_SubView::SetCrossCursor(bool inCross)
{
    if (auto* widget = PeerWidget<QWidget>(this)) {
        if (inCross) {
            widget->setCursor(Qt::CrossCursor);
        } else {
            widget->unsetCursor();
        }
    }
}

void UI_SubView::Invalidate(const Rect& inArea)
{
    if (auto* widget = PeerWidget<QWidget>(this)) {
        widget->update(HostQt::ToQRect(inArea));
    }
}

void UI_SubView::UI_Draw(drawbot::DrawInterface&) {}

bool UI_SubView::UI_DoMouseEvent(UI_Node*, const MouseEvent&) { return false; }

bool UI_SubView::UI_DoKeyboardEvent(UI_Node*, const KeyboardEvent&) { return false; }

void UI_SubView::UI_FocusChanged(bool) { Invalidate(); }

} // namespace zelui::ui
