#pragma once

#include <QDialog>
#include <QPixmap>
#include <QPointer>
#include <QRect>

#include <functional>

#include "zelui/Events.h"

class QAbstractButton;
class QKeyEvent;
class QLineEdit;
class QMouseEvent;

namespace zelui::ui {
class UI_Dialog;
}
namespace zelui::controls {
class UI_Button;
class UI_TextEdit;
}

namespace HostQt {

// The window of a zelui::ui::UI_Dialog: Enter and Escape press the dialog's OK and cancel
// buttons, and every other way of ending it is a response to the dialog node.
class DialogWidget : public QDialog {
    Q_OBJECT
public:
    explicit DialogWidget(QWidget* inParent = nullptr);

    void SetNode(zelui::ui::UI_Dialog* inNode) { mNode = inNode; }
    void SetButtons(QAbstractButton* inOk, QAbstractButton* inCancel);
    // exec(), raising afterwards what a handler threw inside the loop.
    int RunModal();
    void reject() override;

protected:
    void keyPressEvent(QKeyEvent* inEvent) override;

private:
    void Respond(long inResponse);

    zelui::ui::UI_Dialog* mNode = nullptr;
    QPointer<QAbstractButton> mOkButton;
    QPointer<QAbstractButton> mCancelButton;
};

// Runs a handler of the module from Qt's event delivery: an exception it throws is kept by the
// innermost HandlerScope instead of unwinding through Qt.
void Guarded(const std::function<void()>& inHandler);

// The host's modifier bits and key event for Qt's.
unsigned int Modifiers(Qt::KeyboardModifiers inModifiers);
zelui::ui::KeyboardEvent ToKeyboardEvent(const QKeyEvent& inEvent);

zelui::ui::MouseEvent ToMouseEvent(zelui::ui::MouseEvent::Type inType, const QMouseEvent& inEvent);

inline QRect ToQRect(const zelui::ui::Rect& inRect) { return {inRect.left, inRect.top, inRect.width, inRect.height}; }
inline zelui::ui::Rect ToRect(const QRect& inRect) { return {inRect.x(), inRect.y(), inRect.width(), inRect.height()}; }

// The host image resource inName (":/zelui/images/<name>.png"), in the disabled look when
// inShownIn is disabled; null when the host has no such image.
QPixmap HostImage(const std::wstring& inName, const QWidget& inShownIn);

// Makes inWidget hand its keys to ioNode's keyboard hook first.
void InstallKeyForwarder(zelui::controls::UI_TextEdit& ioNode, QWidget* inWidget);
// Tells ioNode's listeners of each click on its button (a click by the user, or Press).
void BroadcastClicks(zelui::controls::UI_Button& ioNode);
// Tells ioNode's listeners of the user's edits in inField: at each edit, or once the user has
// finished editing a text they changed when the node notifies when finished.
void ConnectTextChanges(zelui::controls::UI_TextEdit& ioNode, QLineEdit* inField);

// While it lives, what a handler of inDialog's controls throws is kept (and the dialog ended)
// instead of unwinding through Qt; RethrowPending raises it where it is safe.
class HandlerScope {
public:
    explicit HandlerScope(QDialog* inDialog);
    ~HandlerScope();
    HandlerScope(const HandlerScope&) = delete;
    HandlerScope& operator=(const HandlerScope&) = delete;
    void RethrowPending();

private:
    std::size_t mDepth;
};

} // namespace HostQt
