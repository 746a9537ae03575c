// The hot text number and in-place text fields on Qt widgets.

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPainter>
#include <QPalette>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "HostQt/HotTextNumberWidget.h"
#include "HostQt/NodePeer.h"
#include "HostQt/Widgets.h"
#include "zelcore/Utility.h"
#include "zelui/HotTextNumber.h"

namespace HostQt {

namespace {

constexpr int kDragThreshold = 3; // pixels before a press becomes a drag

} // namespace

unsigned int Modifiers(Qt::KeyboardModifiers inModifiers)
{
    unsigned int modifiers = 0;
    if (inModifiers & Qt::ShiftModifier) {
        modifiers |= zelui::ui::kModifier_Shift;
    }
    if (inModifiers & Qt::ControlModifier) {
        modifiers |= zelui::ui::kModifier_Command;
    }
    if (inModifiers & Qt::MetaModifier) {
        modifiers |= zelui::ui::kModifier_Control;
    }
    if (inModifiers & Qt::AltModifier) {
        modifiers |= zelui::ui::kModifier_Option;
    }
    return modifiers;
}

namespace {

int KeyCode(int inKey)
{
    switch (inKey) {
    case Qt::Key_Backspace: return zelui::ui::kKey_Backspace;
    case Qt::Key_Delete: return zelui::ui::kKey_Delete;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return zelui::ui::kKey_Tab;
    case Qt::Key_Left: return zelui::ui::kKey_Left;
    case Qt::Key_Right: return zelui::ui::kKey_Right;
    case Qt::Key_Home: return zelui::ui::kKey_Home;
    case Qt::Key_End: return zelui::ui::kKey_End;
    case Qt::Key_Up: return zelui::ui::kKey_Up;
    case Qt::Key_Down: return zelui::ui::kKey_Down;
    case Qt::Key_Return:
    case Qt::Key_Enter: return zelui::ui::kKey_Return;
    case Qt::Key_Escape: return zelui::ui::kKey_Escape;
    default: return zelui::ui::kKey_Other;
    }
}

} // namespace

zelui::ui::KeyboardEvent ToKeyboardEvent(const QKeyEvent& inEvent)
{
    zelui::ui::KeyboardEvent event;
    event.keyDown = inEvent.type() == QEvent::KeyPress;
    event.autoRepeat = inEvent.isAutoRepeat();
    event.modifiers = Modifiers(inEvent.modifiers());
    event.keyCode = KeyCode(inEvent.key());
    const bool shortcut = inEvent.modifiers() & (Qt::ControlModifier | Qt::MetaModifier);
    if (event.keyCode == zelui::ui::kKey_Other && !shortcut && !inEvent.text().isEmpty() &&
        inEvent.text().at(0).isPrint()) {
        event.keyCode = zelui::ui::kKey_Character;
        event.character = static_cast<wchar_t>(inEvent.text().at(0).unicode());
    }
    return event;
}

namespace {

// Hands every key of a text field to its node first.
class KeyForwarder : public QObject {
public:
    KeyForwarder(zelui::controls::UI_TextEdit& inNode, QObject* inParent) : QObject(inParent), mNode(inNode) {}

    bool eventFilter(QObject*, QEvent* inEvent) override
    {
        if (inEvent->type() != QEvent::KeyPress && inEvent->type() != QEvent::KeyRelease) {
            return false;
        }
        bool consumed = false;
        const zelui::ui::KeyboardEvent event = ToKeyboardEvent(*static_cast<QKeyEvent*>(inEvent));
        Guarded([&] { consumed = mNode.UI_DoKeyboardEvent(&mNode, event); });
        return consumed;
    }

private:
    zelui::controls::UI_TextEdit& mNode;
};

// Enter and leaving the in-place field commit it, Escape cancels; these come before the
// field's own key handling.
class InPlaceEnding : public QObject {
public:
    InPlaceEnding(zelui::controls::UI_HotTextNumber& inOwner, QObject* inParent) : QObject(inParent), mOwner(inOwner)
    {
    }

    bool eventFilter(QObject*, QEvent* inEvent) override
    {
        if (inEvent->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent*>(inEvent)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) {
                End(key != Qt::Key_Escape, true);
                return true;
            }
        } else if (inEvent->type() == QEvent::FocusOut) {
            // The field's own context menu, or another window for a while, is not leaving it.
            const Qt::FocusReason reason = static_cast<QFocusEvent*>(inEvent)->reason();
            if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason) {
                End(true, false);
            }
        }
        return false;
    }

private:
    void End(bool inCommit, bool inRefocus)
    {
        Guarded([&] { mOwner.EndInPlaceEdit(inCommit, inRefocus); });
    }
    zelui::controls::UI_HotTextNumber& mOwner;
};

} // namespace

void InstallKeyForwarder(zelui::controls::UI_TextEdit& ioNode, QWidget* inWidget)
{
    inWidget->installEventFilter(new KeyForwarder(ioNode, ioNode.GetPeer()->ConnectionContext()));
}

HotTextNumberWidget::HotTextNumberWidget(QWidget* inParent) : QWidget(inParent)
{
    setCursor(Qt::SizeHorCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void HotTextNumberWidget::SetNode(zelui::controls::UI_HotTextNumber* inNode)
{
    mNode = inNode;
    updateGeometry();
    update();
}

void HotTextNumberWidget::InitializeNode(zelui::controls::UI_HotTextNumber& ioNode) const
{
    ioNode.SetMinimum(mMinimum);
    ioNode.SetMaximum(mMaximum);
    ioNode.SetDecimalPlaces(mDecimals);
    ioNode.SetIncrement(mIncrement);
    ioNode.SetTextLabel(mLabel.toStdWString());
    ioNode.SetValue(mValue);
    ioNode.UpdateStringFromValue();
}

QString HotTextNumberWidget::DisplayText() const
{
    QString text = mNode ? QString::fromStdWString(mNode->GetText()) : QString::number(mValue, 'f', mDecimals);
    const QString label = mNode ? QString::fromStdWString(mNode->GetTextLabel()) : mLabel;
    if (!label.isEmpty()) {
        text += QLatin1Char(' ') + label;
    }
    return text;
}

QSize HotTextNumberWidget::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const int width = std::max(metrics.horizontalAdvance(DisplayText()), metrics.horizontalAdvance(QStringLiteral("00:00:00:00")));
    return {width + 8, metrics.height() + 6};
}

namespace {

// A disabled number is still information (a marker's number, a locked value): it is drawn
// dimmed, but not in the style's faint disabled grey. Mixed 65:35 from the text and window
// colours it keeps a contrast of at least 4.5:1 on the usual light and dark palettes.
QColor ReadableDisabledText(const QPalette& inPalette)
{
    const QColor text = inPalette.color(QPalette::Active, QPalette::WindowText);
    const QColor window = inPalette.color(QPalette::Active, QPalette::Window);
    const auto mix = [](int inText, int inWindow) { return (inText * 65 + inWindow * 35) / 100; };
    return QColor(mix(text.red(), window.red()), mix(text.green(), window.green()), mix(text.blue(), window.blue()));
}

} // namespace

void HotTextNumberWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const bool editing = mNode && mNode->GetFirstChild();
    if (editing) {
        return;
    }
    QPen pen(isEnabled() ? palette().color(QPalette::Active, QPalette::Link) : ReadableDisabledText(palette()));
    painter.setPen(pen);
    const QRect area = rect().adjusted(4, 0, -4, 0);
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter, DisplayText());
    pen.setStyle(Qt::DotLine);
    painter.setPen(pen);
    const int baseline = area.center().y() + fontMetrics().height() / 2;
    painter.drawLine(area.left(), baseline, area.left() + fontMetrics().horizontalAdvance(DisplayText()), baseline);
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

double HotTextNumberWidget::Factor(Qt::KeyboardModifiers inModifiers) const
{
    double factor = 1.0;
    if ((inModifiers & Qt::ShiftModifier) && mNode->IsShiftModifierAFactor()) {
        factor *= 10.0;
    }
    if ((inModifiers & Qt::ControlModifier) && mNode->IsCmdModifierAFactor()) {
        factor *= 0.1;
    }
    return factor;
}

void HotTextNumberWidget::mousePressEvent(QMouseEvent* inEvent)
{
    if (!mNode || inEvent->button() != Qt::LeftButton) {
        return;
    }
    zelui::ui::MouseEvent event{zelui::ui::MouseEvent::Type::kDown, 1, Modifiers(inEvent->modifiers()),
                                inEvent->position().toPoint().x(), inEvent->position().toPoint().y()};
    Guarded([&] { mPressConsumed = mNode->UI_DoMouseEvent(mNode, event); });
    mPressed = true;
    mDragging = false;
    mPressX = inEvent->position().toPoint().x();
    mDragStart = mNode->GetValue();
    setFocus(Qt::MouseFocusReason);
}

void HotTextNumberWidget::mouseMoveEvent(QMouseEvent* inEvent)
{
    if (!mNode || !mPressed || mPressConsumed || !isEnabled()) {
        return;
    }
    const int dx = inEvent->position().toPoint().x() - mPressX;
    if (!mDragging && std::abs(dx) < kDragThreshold) {
        return;
    }
    Guarded([&] {
        if (!mDragging) {
            mDragging = true;
            mNode->SendInteractiveMessage(zelui::controls::kInteractive_Begin, false);
        }
        const double value =
            mNode->ClampToRange(mDragStart + dx * mNode->GetIncrement() * Factor(inEvent->modifiers()));
        if (value != mNode->GetValue()) {
            mNode->SetValue(value);
            mNode->UpdateStringFromValue();
            mNode->SendInteractiveMessage(zelui::controls::kInteractive_Continue, false);
        }
    });
}

void HotTextNumberWidget::mouseReleaseEvent(QMouseEvent* inEvent)
{
    if (!mNode || !mPressed || inEvent->button() != Qt::LeftButton) {
        return;
    }
    mPressed = false;
    if (mDragging) {
        mDragging = false;
        Guarded([&] { mNode->SendInteractiveMessage(zelui::controls::kInteractive_Finish, false); });
        return;
    }
    zelui::ui::MouseEvent click{zelui::ui::MouseEvent::Type::kClick, 1, Modifiers(inEvent->modifiers()),
                                inEvent->position().toPoint().x(), inEvent->position().toPoint().y()};
    Guarded([&] {
        if (!mNode->UI_DoMouseEvent(mNode, click) && !mPressConsumed && isEnabled()) {
            mNode->StartInPlaceEdit();
        }
    });
}

void HotTextNumberWidget::CancelDrag()
{
    if (!mDragging || !mNode) {
        return;
    }
    mDragging = false;
    mPressed = false;
    Guarded([&] {
        mNode->SetValue(mDragStart);
        mNode->UpdateStringFromValue();
        mNode->SendInteractiveMessage(zelui::controls::kInteractive_FinishByKey, true);
    });
}

// A drag that loses the keyboard or the window ends as cancelled, never left open.
void HotTextNumberWidget::focusOutEvent(QFocusEvent* inEvent)
{
    CancelDrag();
    QWidget::focusOutEvent(inEvent);
}

void HotTextNumberWidget::hideEvent(QHideEvent* inEvent)
{
    CancelDrag();
    QWidget::hideEvent(inEvent);
}

void HotTextNumberWidget::Step(double inSteps, Qt::KeyboardModifiers inModifiers)
{
    const double value = mNode->ClampToRange(mNode->GetValue() + inSteps * mNode->GetIncrement() * Factor(inModifiers));
    mNode->SendInteractiveMessage(zelui::controls::kInteractive_Begin, false);
    mNode->SetValue(value);
    mNode->UpdateStringFromValue();
    mNode->SendInteractiveMessage(zelui::controls::kInteractive_Continue, false);
    mNode->SendInteractiveMessage(zelui::controls::kInteractive_FinishByKey, false);
}

void HotTextNumberWidget::keyPressEvent(QKeyEvent* inEvent)
{
    if (!mNode || !isEnabled()) {
        QWidget::keyPressEvent(inEvent);
        return;
    }
    const int key = inEvent->key();
    if (mDragging && key == Qt::Key_Escape) {
        CancelDrag();
    } else if (key == Qt::Key_Up || key == Qt::Key_Down) {
        Guarded([&] { Step(key == Qt::Key_Up ? 1.0 : -1.0, inEvent->modifiers()); });
    } else if (key == Qt::Key_F2 || key == Qt::Key_Space) {
        Guarded([&] { mNode->StartInPlaceEdit(); });
    } else if (!inEvent->text().isEmpty() && QStringLiteral("0123456789+-.,:;").contains(inEvent->text().at(0))) {
        // Typing starts the in-place field with what was typed.
        const QString typed = inEvent->text();
        Guarded([&] {
            mNode->StartInPlaceEdit();
            if (auto* field = qobject_cast<QLineEdit*>(focusWidget())) {
                QKeyEvent replay(QEvent::KeyPress, inEvent->key(), inEvent->modifiers(), typed);
                QApplication::sendEvent(field, &replay);
            }
        });
    } else {
        QWidget::keyPressEvent(inEvent);
    }
}

} // namespace HostQt

namespace zelui::controls {

using HostQt::PeerWidget;

UI_HotTextNumber::UI_HotTextNumber(const drawbot::SupplierInterface*, ui::UI_Node* inParent)
    : UI_Control(std::make_unique<ui::NodePeer>(
          new HostQt::HotTextNumberWidget(inParent ? PeerWidget<QWidget>(inParent) : nullptr)))
{
    PeerWidget<HostQt::HotTextNumberWidget>(this)->SetNode(this);
}

namespace {

// A replacement is the same control to the user: its name for screen readers, its tip, the
// label that names it and its place in the Tab order.
void TakeOverIdentity(QWidget& inOld, QWidget& ioNew)
{
    ioNew.setAccessibleName(inOld.accessibleName());
    ioNew.setAccessibleDescription(inOld.accessibleDescription());
    ioNew.setToolTip(inOld.toolTip());
    if (inOld.parentWidget()) {
        for (QLabel* label : inOld.window()->findChildren<QLabel*>()) {
            if (label->buddy() == &inOld) {
                label->setBuddy(&ioNew);
            }
        }
        QWidget::setTabOrder(&inOld, &ioNew);
    }
}

} // namespace

UI_HotTextNumber::UI_HotTextNumber(UI_HotTextNumber& inReplaced)
    : UI_Control(std::make_unique<ui::NodePeer>(new HostQt::HotTextNumberWidget()))
{
    auto* widget = PeerWidget<HostQt::HotTextNumberWidget>(this);
    widget->SetNode(this);
    if (QWidget* old = PeerWidget<QWidget>(&inReplaced)) {
        widget->setParent(old->parentWidget());
        widget->setObjectName(old->objectName() + QStringLiteral("Replacement"));
        widget->setGeometry(old->geometry());
        TakeOverIdentity(*old, *widget);
        if (old->parentWidget()) {
            for (QLayout* layout : old->parentWidget()->findChildren<QLayout*>()) {
                if (layout->indexOf(old) >= 0) {
                    delete layout->replaceWidget(old, widget);
                    break;
                }
            }
        }
    }
}

UI_HotTextNumber::~UI_HotTextNumber()
{
    if (auto* widget = PeerWidget<HostQt::HotTextNumberWidget>(this)) {
        widget->SetNode(nullptr);
    }
}

void UI_HotTextNumber::SetValue(double inValue) { mValue = inValue; }

void UI_HotTextNumber::SetTextLabel(const std::wstring& inLabel)
{
    mTextLabel = inLabel;
    Repaint();
}

void UI_HotTextNumber::SetValueUnknown(bool inUnknown) { mValueUnknown = inUnknown; }

void UI_HotTextNumber::SetFontSize(double inPoints)
{
    if (auto* widget = PeerWidget<QWidget>(this)) {
        QFont font = widget->font();
        font.setPointSizeF(inPoints);
        widget->setFont(font);
    }
}

void UI_HotTextNumber::SetWantsKeyboardFocus(bool inWants)
{
    if (auto* widget = PeerWidget<QWidget>(this)) {
        widget->setFocusPolicy(inWants ? Qt::StrongFocus : Qt::NoFocus);
    }
}

ui::Rect UI_HotTextNumber::GetLocalRect() const
{
    const auto* widget = PeerWidget<QWidget>(this);
    return widget ? ui::Rect{widget->x(), widget->y(), widget->width(), widget->height()} : ui::Rect{};
}

void UI_HotTextNumber::SetLocalRect(const ui::Rect& inRect)
{
    if (auto* widget = PeerWidget<QWidget>(this)) {
        widget->setGeometry(inRect.left, inRect.top, inRect.width, inRect.height);
    }
}

void UI_HotTextNumber::SetText(const std::wstring& inText)
{
    mText = inText;
    Repaint();
}

std::wstring UI_HotTextNumber::FormatValue(double inValue) const
{
    const int places = std::clamp(mDecimalPlaces, 0, 15);
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.*f", places, inValue);
    std::string text(buffer);
    if (text.find_first_not_of("-0.") == std::string::npos && text[0] == '-') {
        text.erase(0, 1); // no "-0"
    }
    if ((mFormatFlags & kNumberFormat_Grouping) && !(mFormatFlags & kNumberFormat_Plain)) {
        const std::size_t digitsStart = text[0] == '-' ? 1 : 0;
        std::size_t point = text.find('.');
        for (std::size_t at = (point == std::string::npos ? text.size() : point); at > digitsStart + 3; at -= 3) {
            text.insert(at - 3, 1, ',');
        }
    }
    if ((mFormatFlags & kNumberFormat_ShowPlusSign) && !(mFormatFlags & kNumberFormat_Plain) && inValue > 0) {
        text.insert(0, 1, '+');
    }
    return std::wstring(text.begin(), text.end());
}

void UI_HotTextNumber::UpdateStringFromValue()
{
    SetText(mValueUnknown ? GetUnknownValueText() : FormatValue(mValue));
}

void UI_HotTextNumber::SendInteractiveMessage(int inMessage, bool inCancelled)
{
    if (mInteractiveHandler) {
        mInteractiveHandler(inMessage, inCancelled);
        return;
    }
    switch (inMessage) {
    case kInteractive_Begin: BeginInteractiveChange(); break;
    case kInteractive_Continue: ContinueInteractiveChange(); break;
    default: inCancelled ? CancelInteractiveChange() : FinishInteractiveChange(); break;
    }
}

void UI_HotTextNumber::NotifyWhenInteractiveChange(InteractiveListener inListener)
{
    mInteractiveListeners.push_back(std::move(inListener));
}

void UI_HotTextNumber::Broadcast(InteractivePhase inPhase)
{
    const std::vector<InteractiveListener> listeners = mInteractiveListeners;
    for (const InteractiveListener& listener : listeners) {
        listener(inPhase);
    }
}

void UI_HotTextNumber::BeginInteractiveChange() { Broadcast(InteractivePhase::kBegin); }
void UI_HotTextNumber::ContinueInteractiveChange() { Broadcast(InteractivePhase::kContinue); }

// A whole drag is one change to those who only listen for changes.
void UI_HotTextNumber::FinishInteractiveChange()
{
    Broadcast(InteractivePhase::kFinish);
    BroadcastChange();
}

void UI_HotTextNumber::CancelInteractiveChange() { Broadcast(InteractivePhase::kCancel); }

bool UI_HotTextNumber::UI_DoMouseEvent(ui::UI_Node*, const ui::MouseEvent&) { return false; }

boost::intrusive_ptr<UI_TextEdit> UI_HotTextNumber::CreateInPlaceEditor(ui::UI_Node* inParent)
{
    return new UI_TextEdit(nullptr, inParent);
}

void UI_HotTextNumber::StartInPlaceEdit()
{
    auto* widget = PeerWidget<QWidget>(this);
    if (mInPlaceEditor || !widget || !widget->isEnabled()) {
        return;
    }
    mInPlaceEditor = CreateInPlaceEditor(this);
    auto* field = PeerWidget<QLineEdit>(mInPlaceEditor.get());
    if (!field) {
        mInPlaceEditor.reset();
        return;
    }
    field->setGeometry(widget->rect());
    field->setText(QString::fromStdWString(mText));
    field->setProperty("tarvixStartText", field->text());
    field->installEventFilter(new HostQt::InPlaceEnding(*this, mInPlaceEditor->GetPeer()->ConnectionContext()));
    field->show();
    field->selectAll();
    field->setFocus(Qt::OtherFocusReason);
    Repaint();
}

double UI_HotTextNumber::ClampToRange(double inValue) const
{
    return std::max(mMinimum, std::min(inValue, mMaximum));
}

void UI_HotTextNumber::EndInPlaceEdit(bool inCommit, bool inRefocus)
{
    // A listener of the commit may move the focus away: that ends nothing twice.
    if (!mInPlaceEditor || mEndingInPlaceEdit) {
        return;
    }
    mEndingInPlaceEdit = true;
    auto* field = PeerWidget<QLineEdit>(mInPlaceEditor.get());
    const bool changed = field && field->text() != field->property("tarvixStartText").toString();
    // The field and its node go once the event that ended the typing has been handled.
    struct Close {
        UI_HotTextNumber& mOwner;
        QPointer<QLineEdit> mField;
        bool mRefocus;
        ~Close()
        {
            mOwner.mEndingInPlaceEdit = false;
            boost::intrusive_ptr<UI_TextEdit> editor = std::move(mOwner.mInPlaceEditor);
            QTimer::singleShot(0, qApp, [editor] {});
            if (mField) {
                mField->hide();
                mField->deleteLater();
            }
            if (auto* widget = PeerWidget<QWidget>(&mOwner); widget && mRefocus) {
                widget->setFocus(Qt::OtherFocusReason);
            }
            mOwner.Repaint();
        }
    } close{*this, field, inRefocus};
    if (inCommit && changed) {
        CommitInPlaceText();
    }
}

void UI_HotTextNumber::CommitInPlaceText()
{
    auto* editor = dynamic_cast<UI_TextEdit*>(GetFirstChild());
    if (!editor) {
        return;
    }
    SetValue(ClampToRange(zelcore::utility::StringToNumber(editor->GetText())));
    UpdateStringFromValue();
    BroadcastChange();
}

void UI_HotTextNumber::Repaint()
{
    if (auto* widget = PeerWidget<QWidget>(this)) {
        widget->updateGeometry();
        widget->update();
    }
}

// A hot number's in-place field is one too: no one listens to it, its owner reads it on commit.
UI_TextEdit::UI_TextEdit(const drawbot::SupplierInterface*, ui::UI_Node* inParent)
    : UI_Control(HostQt::CodeBuiltPeer(new QLineEdit(HostQt::WidgetOf(inParent))))
{
    auto* field = PeerWidget<QLineEdit>(this);
    HostQt::InstallKeyForwarder(*this, field);
    HostQt::ConnectTextChanges(*this, field);
}

bool UI_TextEdit::UI_DoKeyboardEvent(ui::UI_Node*, const ui::KeyboardEvent&) { return false; }

} // namespace zelui::controls
