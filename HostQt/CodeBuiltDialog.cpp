// Dialogs built in code: a dialog window whose keys, clicks and sizes go to the dialog's hooks.

#include <QKeyEvent>
#include <QMouseEvent>
#include <QResizeEvent>

#include "HostQt/NodePeer.h"
#include "HostQt/Widgets.h"
#include "zelui/UI_Dialog.h"

namespace HostQt {

namespace {

// Keys the hooks leave get the dialog's own handling (Enter confirms, Escape cancels); mouse
// events that reach the window itself (none of its controls took them) go to the hooks only.
class CodeBuiltDialogWidget : public DialogWidget {
public:
    using DialogWidget::DialogWidget;

    void SetOwner(zelui::ui::OS_Dialog* inOwner) { mOwner = inOwner; }

protected:
    void keyPressEvent(QKeyEvent* inEvent) override
    {
        if (!SendKey(*inEvent)) {
            DialogWidget::keyPressEvent(inEvent);
        }
    }

    void keyReleaseEvent(QKeyEvent* inEvent) override
    {
        if (!SendKey(*inEvent)) {
            DialogWidget::keyReleaseEvent(inEvent);
        }
    }

    void mousePressEvent(QMouseEvent* inEvent) override
    {
        if (inEvent->button() == Qt::LeftButton) {
            mPressed = true;
            SendMouse(zelui::ui::MouseEvent::Type::kDown, *inEvent);
        }
    }

    void mouseMoveEvent(QMouseEvent* inEvent) override
    {
        if (mPressed) {
            SendMouse(zelui::ui::MouseEvent::Type::kDrag, *inEvent);
        }
    }

    void mouseReleaseEvent(QMouseEvent* inEvent) override
    {
        if (inEvent->button() != Qt::LeftButton || !mPressed) {
            return;
        }
        mPressed = false;
        SendMouse(zelui::ui::MouseEvent::Type::kUp, *inEvent);
        if (rect().contains(inEvent->position().toPoint())) {
            SendMouse(zelui::ui::MouseEvent::Type::kClick, *inEvent);
        }
    }

    void resizeEvent(QResizeEvent* inEvent) override
    {
        DialogWidget::resizeEvent(inEvent);
        if (mOwner) {
            const zelui::ui::Rect content = ToRect(contentsRect());
            Guarded([&] { mOwner->UI_SizeChanged(content); });
        }
    }

private:
    bool SendKey(const QKeyEvent& inEvent)
    {
        bool consumed = false;
        if (mOwner) {
            const zelui::ui::KeyboardEvent event = ToKeyboardEvent(inEvent);
            Guarded([&] { consumed = mOwner->UI_DoKeyboardEvent(mOwner, event); });
        }
        return consumed;
    }

    void SendMouse(zelui::ui::MouseEvent::Type inType, const QMouseEvent& inEvent)
    {
        if (mOwner) {
            const zelui::ui::MouseEvent event = ToMouseEvent(inType, inEvent);
            Guarded([&] { mOwner->UI_DoMouseEvent(mOwner, event); });
        }
    }

    zelui::ui::OS_Dialog* mOwner = nullptr;
    bool mPressed = false;
};

CodeBuiltDialogWidget* Window(const zelui::ui::OS_Dialog& inDialog)
{
    return dynamic_cast<CodeBuiltDialogWidget*>(PeerWidget<QWidget>(&inDialog));
}

} // namespace

} // namespace HostQt

namespace zelui::ui {

OS_Dialog::OS_Dialog(const drawbot::SupplierInterface*, UI_Node* inParent, const std::wstring& inTitle)
    : UI_Dialog(std::make_unique<NodePeer>(new HostQt::CodeBuiltDialogWidget(HostQt::WidgetOf(inParent))))
{
    HostQt::CodeBuiltDialogWidget* window = HostQt::Window(*this);
    window->setWindowTitle(QString::fromStdWString(inTitle));
    window->SetOwner(this);
}

// The window belongs to the dialog that built it; its hooks are gone before it goes.
OS_Dialog::~OS_Dialog()
{
    if (HostQt::CodeBuiltDialogWidget* window = HostQt::Window(*this)) {
        window->SetOwner(nullptr);
        delete window;
    }
}

void OS_Dialog::SetContentSize(int inWidth, int inHeight)
{
    if (HostQt::CodeBuiltDialogWidget* window = HostQt::Window(*this)) {
        window->setMinimumSize(inWidth, inHeight);
        window->resize(inWidth, inHeight);
    }
}

void OS_Dialog::UI_SizeChanged(const Rect&) {}

bool OS_Dialog::UI_DoKeyboardEvent(UI_Node*, const KeyboardEvent&) { return false; }

bool OS_Dialog::UI_DoMouseEvent(UI_Node*, const MouseEvent&) { return false; }

} // namespace zelui::ui
