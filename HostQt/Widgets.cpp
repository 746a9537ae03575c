// Nodes, controls and dialogs of the host's UI on Qt widgets.

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOption>
#include <QTextEdit>
#include <QTreeWidget>

#include "HostQt/HotTextNumberWidget.h"
#include "HostQt/KeyCaptureWidget.h"
#include "HostQt/NodePeer.h"
#include "HostQt/NumberEditWidget.h"
#include "HostQt/Widgets.h"
#include "zelui/Controls.h"
#include "zelui/HotTextNumber.h"
#include "zelui/UI_Dialog.h"

namespace HostQt {

namespace {

struct ScopeEntry {
    QPointer<QDialog> mDialog;
    std::exception_ptr mPending;
};

// Dialogs being bound or run, innermost last.
thread_local std::vector<ScopeEntry> gHandlerScopes;

// A text field's dynamic properties for its change notices.
constexpr const char* kNotifyWhenFinished = "tarvixNotifyWhenFinished";
constexpr const char* kEditedSinceNotice = "tarvixEditedSinceNotice";
constexpr int kNoLengthLimit = 32767; // QLineEdit's own default

// An exception must not unwind through Qt's event delivery. One thrown by a handler ends the
// innermost dialog and is raised again when that dialog's scope asks for it.
} // namespace

void Guarded(const std::function<void()>& inHandler)
{
    try {
        inHandler();
    } catch (...) {
        if (gHandlerScopes.empty()) {
            qCritical("A handler outside any dialog raised an error; it was dropped.");
            return;
        }
        ScopeEntry& scope = gHandlerScopes.back();
        if (!scope.mPending) {
            scope.mPending = std::current_exception();
        }
        if (scope.mDialog) {
            scope.mDialog->done(zelui::ui::UI_Dialog::kResponse_Dismiss);
        }
    }
}

HandlerScope::HandlerScope(QDialog* inDialog) : mDepth(gHandlerScopes.size())
{
    gHandlerScopes.push_back({inDialog, nullptr});
}

HandlerScope::~HandlerScope() { gHandlerScopes.resize(mDepth); }

void HandlerScope::RethrowPending()
{
    if (std::exception_ptr pending = std::exchange(gHandlerScopes.at(mDepth).mPending, nullptr)) {
        std::rethrow_exception(pending);
    }
}

NumberEditWidget::NumberEditWidget(QWidget* inParent) : QDoubleSpinBox(inParent)
{
    // Enter re-reads the text and reports the same value again: only a different one is a change.
    connect(this, &QDoubleSpinBox::valueChanged, this, [this](double inValue) {
        if (inValue != mShownExact) {
            mHasExact = false;
        }
    });
}

void NumberEditWidget::SetExactValue(double inValue)
{
    setValue(inValue);
    mExact = inValue;
    mShownExact = value();
    mHasExact = inValue >= minimum() && inValue <= maximum();
}

double NumberEditWidget::ExactValue()
{
    interpretText();
    return mHasExact ? mExact : value();
}

DialogWidget::DialogWidget(QWidget* inParent) : QDialog(inParent) {}

void DialogWidget::SetButtons(QAbstractButton* inOk, QAbstractButton* inCancel)
{
    if (inOk) {
        mOkButton = inOk;
        if (auto* push = qobject_cast<QPushButton*>(inOk)) {
            push->setDefault(true);
        }
    }
    if (inCancel) {
        mCancelButton = inCancel;
    }
}

void DialogWidget::keyPressEvent(QKeyEvent* inEvent)
{
    const bool noModifiers = (inEvent->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (noModifiers && (inEvent->key() == Qt::Key_Return || inEvent->key() == Qt::Key_Enter)) {
        // Enter on a focused push button (Cancel, Show All ...) presses that button: what the
        // user is on is what they mean, not the OK that Enter reaches from anywhere else.
        if (auto* focused = qobject_cast<QPushButton*>(focusWidget()); focused && focused->isEnabled()) {
            focused->click();
        } else if (!mOkButton) {
            Respond(zelui::ui::UI_Dialog::kResponse_Accept);
        } else if (mOkButton->isEnabled() && mOkButton->isVisible()) {
            mOkButton->click();
        }
        return;
    }
    if (noModifiers && inEvent->key() == Qt::Key_Escape) {
        if (mCancelButton && mCancelButton->isEnabled() && mCancelButton->isVisible()) {
            mCancelButton->click();
        } else {
            Respond(zelui::ui::UI_Dialog::kResponse_Dismiss);
        }
        return;
    }
    QDialog::keyPressEvent(inEvent);
}

// Closing the window (and every other path by which Qt rejects a dialog) is a dismissal.
void DialogWidget::reject() { Respond(zelui::ui::UI_Dialog::kResponse_Dismiss); }

void DialogWidget::Respond(long inResponse)
{
    if (mNode) {
        Guarded([&] { mNode->Respond(inResponse); });
    } else {
        done(static_cast<int>(inResponse));
    }
}

int DialogWidget::RunModal()
{
    HandlerScope scope(this);
    const int result = exec();
    scope.RethrowPending();
    return result;
}

zelui::ui::MouseEvent ToMouseEvent(zelui::ui::MouseEvent::Type inType, const QMouseEvent& inEvent)
{
    const QPoint at = inEvent.position().toPoint();
    return {inType, 1, Modifiers(inEvent.modifiers()), at.x(), at.y()};
}

QPixmap HostImage(const std::wstring& inName, const QWidget& inShownIn)
{
    QPixmap image(QStringLiteral(":/zelui/images/%1.png").arg(QString::fromStdWString(inName)));
    if (!image.isNull() && !inShownIn.isEnabled()) {
        QStyleOption option;
        option.initFrom(&inShownIn);
        image = inShownIn.style()->generatedIconPixmap(QIcon::Disabled, image, &option);
    }
    return image;
}

void BroadcastClicks(zelui::controls::UI_Button& ioNode)
{
    if (auto* button = PeerWidget<QAbstractButton>(&ioNode)) {
        QObject::connect(button, &QAbstractButton::clicked, ioNode.GetPeer()->ConnectionContext(),
                         [raw = &ioNode] { raw->BroadcastChange(); });
    }
}

// The field lives while it can emit, so the handlers may hold it bare. Focus leaving a field whose
// text the user did not change, and Enter again after a notice, tell no one.
void ConnectTextChanges(zelui::controls::UI_TextEdit& ioNode, QLineEdit* inField)
{
    QObject* context = ioNode.GetPeer()->ConnectionContext();
    QObject::connect(inField, &QLineEdit::textEdited, context, [raw = &ioNode, inField] {
        if (inField->property(kNotifyWhenFinished).toBool()) {
            inField->setProperty(kEditedSinceNotice, true);
        } else {
            raw->BroadcastChange();
        }
    });
    QObject::connect(inField, &QLineEdit::editingFinished, context, [raw = &ioNode, inField] {
        if (inField->property(kNotifyWhenFinished).toBool() && inField->property(kEditedSinceNotice).toBool()) {
            inField->setProperty(kEditedSinceNotice, false);
            raw->BroadcastChange();
        }
    });
}

zelui::ui::UI_NodePtr MakeControlNode(QWidget* inWidget)
{
    using namespace zelui::controls;
    auto peer = std::make_unique<zelui::ui::NodePeer>(inWidget);
    QObject* context = peer->ConnectionContext();
    if (auto* button = qobject_cast<QAbstractButton*>(inWidget)) {
        boost::intrusive_ptr<UI_Button> node = qobject_cast<QRadioButton*>(button) ? new UI_RadioButton(std::move(peer))
                                               : qobject_cast<QCheckBox*>(button)  ? new UI_CheckBox(std::move(peer))
                                                                                   : new UI_Button(std::move(peer));
        BroadcastClicks(*node);
        return node;
    }
    if (auto* list = qobject_cast<QTreeWidget*>(inWidget)) {
        return MakeListBoxNode(list, std::move(peer));
    }
    if (zelui::ui::UI_NodePtr node = MakeShortcutControlNode(inWidget, peer)) {
        return node;
    }
    if (auto* numberEdit = qobject_cast<NumberEditWidget*>(inWidget)) {
        boost::intrusive_ptr<UI_NumberEdit> node(new UI_NumberEdit(std::move(peer)));
        QObject::connect(numberEdit, &QDoubleSpinBox::valueChanged, context,
                         [raw = node.get()] { raw->BroadcastChange(); });
        return node;
    }
    if (auto* lineEdit = qobject_cast<QLineEdit*>(inWidget)) {
        boost::intrusive_ptr<UI_TextEdit> node(new UI_TextEdit(std::move(peer)));
        ConnectTextChanges(*node, lineEdit);
        InstallKeyForwarder(*node, lineEdit);
        return node;
    }
    if (auto* hotNumber = qobject_cast<HotTextNumberWidget*>(inWidget)) {
        boost::intrusive_ptr<UI_HotTextNumber> node(new UI_HotTextNumber(std::move(peer)));
        hotNumber->InitializeNode(*node);
        hotNumber->SetNode(node.get());
        return node;
    }
    if (qobject_cast<QPlainTextEdit*>(inWidget) || qobject_cast<QTextEdit*>(inWidget)) {
        return new UI_TextEdit(std::move(peer));
    }
    if (qobject_cast<QLabel*>(inWidget)) {
        return new UI_StaticText(std::move(peer));
    }
    if (qobject_cast<QProgressBar*>(inWidget)) {
        return new UI_ProgressBar(std::move(peer));
    }
    return new zelui::ui::UI_Node(std::move(peer));
}

} // namespace HostQt

namespace zelui {
namespace ui {

using HostQt::PeerWidget;

UI_Node::UI_Node(std::unique_ptr<NodePeer> inPeer) : mPeer(std::move(inPeer)) {}
UI_Node::~UI_Node() = default;

std::wstring UI_Node::GetName() const
{
    const QWidget* widget = PeerWidget<QWidget>(this);
    return widget ? widget->objectName().toStdWString() : std::wstring();
}

void UI_Node::SetName(const std::wstring& inName)
{
    if (QWidget* widget = PeerWidget<QWidget>(this)) {
        widget->setObjectName(QString::fromStdWString(inName));
    }
}

void UI_Node::SetBounds(const Rect& inBounds)
{
    if (QWidget* widget = PeerWidget<QWidget>(this)) {
        widget->setGeometry(HostQt::ToQRect(inBounds));
    }
}

Rect UI_Node::GetBounds() const
{
    const QWidget* widget = PeerWidget<QWidget>(this);
    return widget ? HostQt::ToRect(widget->geometry()) : Rect{};
}

void UI_Node::SetAccessibleName(const std::wstring& inName)
{
    if (QWidget* widget = PeerWidget<QWidget>(this)) {
        widget->setAccessibleName(QString::fromStdWString(inName));
    }
}

std::wstring UI_Node::GetAccessibleName() const
{
    const QWidget* widget = PeerWidget<QWidget>(this);
    return widget ? widget->accessibleName().toStdWString() : std::wstring();
}

void UI_Node::SetEnabled(bool inEnabled)
{
    if (QWidget* widget = PeerWidget<QWidget>(this)) {
        widget->setEnabled(inEnabled);
    }
}

bool UI_Node::IsEnabled() const
{
    const QWidget* widget = PeerWidget<QWidget>(this);
    return widget && widget->isEnabled();
}

void UI_Node::SetVisible(bool inVisible)
{
    if (QWidget* widget = PeerWidget<QWidget>(this)) {
        widget->setVisible(inVisible);
    }
}

bool UI_Node::IsVisible() const
{
    const QWidget* widget = PeerWidget<QWidget>(this);
    return widget && !widget->isHidden();
}

void UI_Node::SetFocus()
{
    if (QWidget* widget = PeerWidget<QWidget>(this)) {
        widget->setFocus(Qt::OtherFocusReason);
    }
}

void UI_Node::RedrawNow()
{
    if (QWidget* widget = PeerWidget<QWidget>(this)) {
        widget->repaint();
    }
}

UI_Dialog::~UI_Dialog() = default;

void UI_Dialog::SetResponseHandler(ResponseHandler inHandler) { mResponseHandler = std::move(inHandler); }

void UI_Dialog::SetOkButton(controls::UI_Button* inButton)
{
    if (auto* dialog = PeerWidget<HostQt::DialogWidget>(this); dialog && inButton) {
        dialog->SetButtons(PeerWidget<QAbstractButton>(inButton), nullptr);
    }
}

void UI_Dialog::SetCancelButton(controls::UI_Button* inButton)
{
    if (auto* dialog = PeerWidget<HostQt::DialogWidget>(this); dialog && inButton) {
        dialog->SetButtons(nullptr, PeerWidget<QAbstractButton>(inButton));
    }
}

void UI_Dialog::SetTitle(const std::wstring& inTitle)
{
    if (QWidget* widget = PeerWidget<QWidget>(this)) {
        widget->setWindowTitle(QString::fromStdWString(inTitle));
    }
}

UI_Dialog::Response UI_Dialog::RunModal()
{
    auto* dialog = PeerWidget<HostQt::DialogWidget>(this);
    if (!dialog) {
        return kResponse_Dismiss;
    }
    dialog->SetNode(this);
    struct Detach {
        QPointer<HostQt::DialogWidget> mDialog;
        ~Detach()
        {
            if (mDialog) {
                mDialog->SetNode(nullptr);
            }
        }
    } detach{dialog};
    return dialog->RunModal();
}

void UI_Dialog::EndDialog(Response inResponse)
{
    if (auto* dialog = PeerWidget<QDialog>(this)) {
        dialog->done(static_cast<int>(inResponse));
    }
}

void UI_Dialog::Respond(Response inResponse)
{
    Response response = inResponse;
    if (mResponseHandler) {
        mResponseHandler(response);
    }
    if (response != kResponse_KeepOpen) {
        EndDialog(response);
    }
}

} // namespace ui

namespace controls {

using HostQt::PeerWidget;

UI_Control::~UI_Control() = default;

void UI_Control::NotifyWhenChanged(ChangeHandler inHandler) { mHandlers.push_back(std::move(inHandler)); }

void UI_Control::BroadcastChange()
{
    // A handler may add handlers or end the dialog; run the ones registered before the change.
    const std::vector<ChangeHandler> handlers = mHandlers;
    HostQt::Guarded([&] {
        for (const ChangeHandler& handler : handlers) {
            handler();
        }
    });
}

UI_Button::~UI_Button() = default;

void UI_Button::Press()
{
    if (auto* button = PeerWidget<QAbstractButton>(this)) {
        button->click();
    }
}

UI_CheckBox::~UI_CheckBox() = default;

void UI_CheckBox::SetChecked(bool inChecked)
{
    if (auto* button = PeerWidget<QAbstractButton>(this)) {
        button->setChecked(inChecked);
    }
}

bool UI_CheckBox::IsChecked() const
{
    const auto* button = PeerWidget<QAbstractButton>(this);
    return button && button->isChecked();
}

UI_RadioButton::~UI_RadioButton() = default;

UI_StaticText::~UI_StaticText() = default;

void UI_StaticText::SetText(const std::wstring& inText)
{
    if (auto* label = PeerWidget<QLabel>(this)) {
        label->setText(QString::fromStdWString(inText));
    }
}

std::wstring UI_StaticText::GetText() const
{
    const auto* label = PeerWidget<QLabel>(this);
    return label ? label->text().toStdWString() : std::wstring();
}

UI_TextEdit::~UI_TextEdit() = default;

void UI_TextEdit::SetText(const std::wstring& inText)
{
    QString text = QString::fromStdWString(inText);
    if (auto* line = PeerWidget<QLineEdit>(this)) {
        line->setText(text);
        return;
    }
    // Qt's documents break a line at "\r" and again at "\n".
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    if (auto* plain = PeerWidget<QPlainTextEdit>(this)) {
        plain->setPlainText(text);
    } else if (auto* rich = PeerWidget<QTextEdit>(this)) {
        rich->setPlainText(text);
    }
}

std::wstring UI_TextEdit::GetText() const
{
    if (const auto* line = PeerWidget<QLineEdit>(this)) {
        return line->text().toStdWString();
    }
    if (const auto* plain = PeerWidget<QPlainTextEdit>(this)) {
        return plain->toPlainText().toStdWString();
    }
    if (const auto* rich = PeerWidget<QTextEdit>(this)) {
        return rich->toPlainText().toStdWString();
    }
    return {};
}

void UI_TextEdit::SelectAll()
{
    if (auto* line = PeerWidget<QLineEdit>(this)) {
        line->selectAll();
        line->setFocus(Qt::OtherFocusReason);
    } else if (auto* plain = PeerWidget<QPlainTextEdit>(this)) {
        plain->selectAll();
        plain->setFocus(Qt::OtherFocusReason);
    }
}

void UI_TextEdit::SetReadOnly(bool inReadOnly)
{
    if (auto* line = PeerWidget<QLineEdit>(this)) {
        line->setReadOnly(inReadOnly);
    } else if (auto* plain = PeerWidget<QPlainTextEdit>(this)) {
        plain->setReadOnly(inReadOnly);
    } else if (auto* rich = PeerWidget<QTextEdit>(this)) {
        rich->setReadOnly(inReadOnly);
    }
}

void UI_TextEdit::SetMaxLength(int inLength)
{
    if (auto* line = PeerWidget<QLineEdit>(this)) {
        line->setMaxLength(inLength > 0 ? inLength : HostQt::kNoLengthLimit);
    }
}

void UI_TextEdit::SetNotifyWhenFinished(bool inWhenFinished)
{
    if (auto* line = PeerWidget<QLineEdit>(this)) {
        line->setProperty(HostQt::kNotifyWhenFinished, inWhenFinished);
        line->setProperty(HostQt::kEditedSinceNotice, false);
    }
}

UI_NumberEdit::~UI_NumberEdit() = default;

void UI_NumberEdit::SetValue(double inValue)
{
    if (auto* edit = PeerWidget<HostQt::NumberEditWidget>(this)) {
        edit->SetExactValue(inValue);
    }
}

double UI_NumberEdit::GetValue() const
{
    auto* edit = PeerWidget<HostQt::NumberEditWidget>(this);
    return edit ? edit->ExactValue() : 0.0;
}

void UI_NumberEdit::SelectAll()
{
    if (auto* edit = PeerWidget<HostQt::NumberEditWidget>(this)) {
        edit->selectAll();
        edit->setFocus(Qt::OtherFocusReason);
    }
}

void UI_NumberEdit::SetRange(double inMinimum, double inMaximum)
{
    if (auto* edit = PeerWidget<HostQt::NumberEditWidget>(this)) {
        edit->setRange(inMinimum, inMaximum);
    }
}

void UI_NumberEdit::SetDecimalPlaces(int inPlaces)
{
    if (auto* edit = PeerWidget<HostQt::NumberEditWidget>(this)) {
        edit->setDecimals(inPlaces);
    }
}

UI_ProgressBar::~UI_ProgressBar() = default;

void UI_ProgressBar::SetRange(int inMinimum, int inMaximum)
{
    if (auto* bar = PeerWidget<QProgressBar>(this)) {
        bar->setRange(inMinimum, inMaximum);
    }
}

int UI_ProgressBar::GetMaximum() const
{
    const auto* bar = PeerWidget<QProgressBar>(this);
    return bar ? bar->maximum() : 0;
}

void UI_ProgressBar::SetValue(int inValue)
{
    if (auto* bar = PeerWidget<QProgressBar>(this)) {
        bar->setValue(inValue);
    }
}

int UI_ProgressBar::GetValue() const
{
    const auto* bar = PeerWidget<QProgressBar>(this);
    return bar ? bar->value() : 0;
}

} // namespace controls
} // namespace zelui
