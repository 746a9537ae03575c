#include <QComboBox>
#include <QEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QSignalBlocker>

#include "HostQt/KeyCaptureWidget.h"
#include "HostQt/NodePeer.h"
#include "zelui/ShortcutControls.h"

namespace HostQt {

namespace {

bool IsModifierKey(int inKey)
{
    return inKey == Qt::Key_Shift || inKey == Qt::Key_Control || inKey == Qt::Key_Meta || inKey == Qt::Key_Alt ||
           inKey == Qt::Key_AltGr || inKey == Qt::Key_CapsLock || inKey == Qt::Key_unknown;
}

// Tab and Shift+Tab (which Qt reports as Backtab) are how the keyboard leaves the field.
bool IsFocusKey(const QKeyEvent& inEvent)
{
    const Qt::KeyboardModifiers modifiers = inEvent.modifiers() & ~Qt::KeypadModifier;
    return (inEvent.key() == Qt::Key_Tab && modifiers == Qt::NoModifier) ||
           (inEvent.key() == Qt::Key_Backtab && (modifiers == Qt::ShiftModifier || modifiers == Qt::NoModifier));
}

} // namespace

KeyCaptureWidget::KeyCaptureWidget(QWidget* inParent) : QLineEdit(inParent)
{
    setReadOnly(true);
    setContextMenuPolicy(Qt::NoContextMenu);
}

void KeyCaptureWidget::SetKey(const QString& inPortableKey)
{
    mKey = inPortableKey;
    setText(QKeySequence(mKey, QKeySequence::PortableText).toString(QKeySequence::NativeText));
}

// Keys that would be the window's shortcuts (mnemonics, Enter, Escape) come to the field first.
bool KeyCaptureWidget::event(QEvent* inEvent)
{
    if (inEvent->type() == QEvent::ShortcutOverride) {
        if (!IsFocusKey(*static_cast<QKeyEvent*>(inEvent))) {
            inEvent->accept();
            return true;
        }
    }
    return QLineEdit::event(inEvent);
}

void KeyCaptureWidget::keyPressEvent(QKeyEvent* inEvent)
{
    inEvent->accept();
    if (IsModifierKey(inEvent->key())) {
        return;
    }
    const Qt::KeyboardModifiers modifiers = inEvent->modifiers() & ~Qt::KeypadModifier;
    SetKey(QKeySequence(QKeyCombination(modifiers, static_cast<Qt::Key>(inEvent->key())))
               .toString(QKeySequence::PortableText));
    emit KeyCaptured();
}

zelui::ui::UI_NodePtr MakeShortcutControlNode(QWidget* inWidget, std::unique_ptr<zelui::ui::NodePeer>& ioPeer)
{
    using namespace zelui::controls;
    QObject* context = ioPeer->ConnectionContext();
    if (auto* capture = qobject_cast<KeyCaptureWidget*>(inWidget)) {
        boost::intrusive_ptr<UI_KeyCaptureEdit> node(new UI_KeyCaptureEdit(std::move(ioPeer)));
        QObject::connect(capture, &KeyCaptureWidget::KeyCaptured, context,
                         [raw = node.get()] { raw->BroadcastChange(); });
        return node;
    }
    if (auto* combo = qobject_cast<QComboBox*>(inWidget)) {
        boost::intrusive_ptr<UI_Popup> node(new UI_Popup(std::move(ioPeer)));
        // Only a choice the user makes: activated is not sent for changes made in code.
        QObject::connect(combo, &QComboBox::activated, context, [raw = node.get()] { raw->BroadcastChange(); });
        return node;
    }
    return nullptr;
}

} // namespace HostQt

namespace zelui::controls {

using HostQt::PeerWidget;

UI_Popup::~UI_Popup() = default;

void UI_Popup::Clear()
{
    if (auto* combo = PeerWidget<QComboBox>(this)) {
        const QSignalBlocker blocker(combo);
        combo->clear();
    }
}

int UI_Popup::AddItem(const std::wstring& inText)
{
    auto* combo = PeerWidget<QComboBox>(this);
    if (!combo) {
        return -1;
    }
    const QSignalBlocker blocker(combo);
    combo->addItem(QString::fromStdWString(inText));
    return combo->count() - 1;
}

int UI_Popup::GetItemCount() const
{
    const auto* combo = PeerWidget<QComboBox>(this);
    return combo ? combo->count() : 0;
}

std::wstring UI_Popup::GetItemText(int inIndex) const
{
    const auto* combo = PeerWidget<QComboBox>(this);
    return combo ? combo->itemText(inIndex).toStdWString() : std::wstring();
}

void UI_Popup::SelectItem(int inIndex)
{
    if (auto* combo = PeerWidget<QComboBox>(this)) {
        const QSignalBlocker blocker(combo);
        combo->setCurrentIndex(inIndex);
    }
}

int UI_Popup::GetSelectedItem() const
{
    const auto* combo = PeerWidget<QComboBox>(this);
    return combo ? combo->currentIndex() : -1;
}

UI_KeyCaptureEdit::~UI_KeyCaptureEdit() = default;

void UI_KeyCaptureEdit::SetKey(const std::wstring& inKey)
{
    if (auto* capture = PeerWidget<HostQt::KeyCaptureWidget>(this)) {
        capture->SetKey(QString::fromStdWString(inKey));
    }
}

std::wstring UI_KeyCaptureEdit::GetKey() const
{
    const auto* capture = PeerWidget<HostQt::KeyCaptureWidget>(this);
    return capture ? capture->Key().toStdWString() : std::wstring();
}

} // namespace zelui::controls
