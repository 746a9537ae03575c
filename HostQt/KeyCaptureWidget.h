#pragma once

#include <QLineEdit>
#include <QString>

#include <memory>

#include "zelui/UI_Node.h"

namespace HostQt {

// The widget behind zelui::controls::UI_KeyCaptureEdit: a read-only field that shows the last key
// pressed in it. Every key, Enter and Escape included, is taken rather than handed to the dialog;
// Tab and Shift+Tab move the focus on, so the field is no trap for the keyboard.
class KeyCaptureWidget : public QLineEdit {
    Q_OBJECT
public:
    explicit KeyCaptureWidget(QWidget* inParent = nullptr);

    // In portable text; shown in the platform's own.
    void SetKey(const QString& inPortableKey);
    const QString& Key() const { return mKey; }

signals:
    void KeyCaptured();

protected:
    bool event(QEvent* inEvent) override;
    void keyPressEvent(QKeyEvent* inEvent) override;

private:
    QString mKey;
};

// The node of a popup or a key capture field; null for any other widget.
zelui::ui::UI_NodePtr MakeShortcutControlNode(QWidget* inWidget, std::unique_ptr<zelui::ui::NodePeer>& ioPeer);

} // namespace HostQt
