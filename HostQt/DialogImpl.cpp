// Native dialogs over templates: Qt Designer files named after their template number, among the
// module's resources (the folder registered as "module.templates"). A control's object name is
// its number.

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QUiLoader>
#include <QVBoxLayout>

#include "BE/DeviceControl.h"
#include "HostQt/NodePeer.h"
#include "HostQt/Widgets.h"
#include "KOR/Paths.h"
#include "UIF/ColorManager.h"
#include "UIF/DialogImpl.h"
#include "zelui/Controls.h"

namespace {

QColor ToQColor(KOR::ParamColor<unsigned long> inColor)
{
    return QColor(inColor.Red(), inColor.Green(), inColor.Blue());
}

KOR::ParamColor<unsigned long> FromQColor(const QColor& inColor)
{
    return KOR::ParamColor<unsigned long>(static_cast<std::uint8_t>(inColor.red()),
                                          static_cast<std::uint8_t>(inColor.green()),
                                          static_cast<std::uint8_t>(inColor.blue()));
}

// Escape and the window's close button are the Cancel command, as on the native platform.
class TemplateWindow : public QDialog {
public:
    TemplateWindow(QWidget* inParent, std::function<void()> inCancel) : QDialog(inParent), mCancel(std::move(inCancel))
    {
    }
    void reject() override { HostQt::Guarded(mCancel); }

protected:
    // Enter on a focused push button presses that button: on Cancel it cancels, although the
    // template's OK is the default button that Enter reaches from anywhere else.
    void keyPressEvent(QKeyEvent* inEvent) override
    {
        const bool noModifiers = (inEvent->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        const bool isEnter = inEvent->key() == Qt::Key_Return || inEvent->key() == Qt::Key_Enter;
        if (auto* focused = qobject_cast<QPushButton*>(focusWidget());
            noModifiers && isEnter && focused && focused->isEnabled()) {
            focused->click();
            return;
        }
        QDialog::keyPressEvent(inEvent);
    }

private:
    std::function<void()> mCancel;
};

} // namespace

namespace UIF {

KOR::ParamColor<unsigned long> ColorManager::GetColor(const std::wstring& inKey)
{
    const QPalette palette = QApplication::palette();
    if (inKey == L"colors.kor.ListBox") {
        return FromQColor(palette.color(QPalette::Base));
    }
    if (inKey == L"colors.kor.ListBoxText") {
        return FromQColor(palette.color(QPalette::Text));
    }
    return FromQColor(palette.color(QPalette::Window));
}

class DialogImpl::Impl {
public:
    unsigned int mTemplateID;
    QPointer<QWidget> mParent;
    QPointer<TemplateWindow> mWindow;

    template <class W>
    W* Find(int inID) const
    {
        return mWindow ? mWindow->findChild<W*>(QString::number(inID)) : nullptr;
    }
};

DialogImpl::DialogImpl(unsigned int inTemplateID, zelui::ui::UI_Node* inParent)
    : mImpl(std::make_unique<Impl>(Impl{inTemplateID, HostQt::WidgetOf(inParent), nullptr}))
{
}

DialogImpl::~DialogImpl() { delete mImpl->mWindow.data(); }

long DialogImpl::DoModal()
{
    const QString directory = QString::fromStdWString(KOR::DirectoryRegistry::FindDirectory(L"module.templates"));
    QFile file(QDir(directory).filePath(QStringLiteral("%1.ui").arg(mImpl->mTemplateID)));
    if (directory.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        return -1;
    }
    delete mImpl->mWindow.data();
    auto* window = new TemplateWindow(mImpl->mParent, [this] { OnCommand(2, kNotify_Clicked); });
    QUiLoader loader;
    loader.setTranslationEnabled(false);
    QWidget* content = loader.load(&file, window);
    if (!content) {
        delete window;
        return -1;
    }
    window->setObjectName(content->objectName());
    window->setWindowTitle(content->windowTitle());
    window->setLayout(new QVBoxLayout);
    window->layout()->setContentsMargins(0, 0, 0, 0);
    window->layout()->addWidget(content);
    mImpl->mWindow = window;

    HostQt::HandlerScope scope(window);
    for (QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
        bool isNumber = false;
        const int id = button->objectName().toInt(&isNumber);
        if (isNumber) {
            QObject::connect(button, &QAbstractButton::clicked, window,
                             [this, id] { HostQt::Guarded([&] { OnCommand(id, kNotify_Clicked); }); });
        }
        if (auto* push = qobject_cast<QPushButton*>(button); push && id == 1) {
            push->setDefault(true);
        }
    }
    for (QComboBox* list : window->findChildren<QComboBox*>()) {
        const int id = list->objectName().toInt();
        QObject::connect(list, &QComboBox::activated, window,
                         [this, id] { HostQt::Guarded([&] { OnCommand(id, kNotify_SelectionChanged); }); });
    }
    HostQt::Guarded([this] { OnInitDialog(); });
    scope.RethrowPending();
    // A dialog may end while it initialises; then it is not shown.
    const int result = window->result() != 0 ? window->result() : window->exec();
    scope.RethrowPending();
    return result;
}

void DialogImpl::EndDialog(long inCode)
{
    if (mImpl->mWindow) {
        mImpl->mWindow->done(static_cast<int>(inCode));
    }
}

void DialogImpl::SetItemEnabled(int inID, bool inEnabled)
{
    if (auto* item = mImpl->Find<QWidget>(inID)) {
        item->setEnabled(inEnabled);
    }
}

void DialogImpl::SetItemChecked(int inID, bool inChecked)
{
    if (auto* box = mImpl->Find<QAbstractButton>(inID)) {
        box->setChecked(inChecked);
    }
}

bool DialogImpl::IsItemChecked(int inID) const
{
    auto* box = mImpl->Find<QAbstractButton>(inID);
    return box && box->isChecked();
}

void DialogImpl::SetItemText(int inID, const std::wstring& inText)
{
    const QString text = QString::fromStdWString(inText);
    if (auto* edit = mImpl->Find<QLineEdit>(inID)) {
        edit->setText(text);
    } else if (auto* button = mImpl->Find<QAbstractButton>(inID)) {
        button->setText(text);
    } else if (auto* item = mImpl->Find<QWidget>(inID)) {
        item->setProperty("text", text);
    }
}

std::wstring DialogImpl::GetItemText(int inID) const
{
    if (auto* edit = mImpl->Find<QLineEdit>(inID)) {
        return edit->text().toStdWString();
    }
    auto* item = mImpl->Find<QWidget>(inID);
    return item ? item->property("text").toString().toStdWString() : std::wstring();
}

void DialogImpl::SetItemUnsignedOnly(int inID)
{
    if (auto* edit = mImpl->Find<QLineEdit>(inID)) {
        edit->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), edit));
    }
}

unsigned long DialogImpl::GetItemUnsigned(int inID, bool* outOk) const
{
    bool ok = false;
    const unsigned int value = QString::fromStdWString(GetItemText(inID)).trimmed().toUInt(&ok);
    if (outOk) {
        *outOk = ok;
    }
    return ok ? value : 0;
}

void DialogImpl::ResetList(int inID)
{
    if (auto* list = mImpl->Find<QComboBox>(inID)) {
        list->clear();
    }
}

int DialogImpl::AddListString(int inID, const std::wstring& inText)
{
    auto* list = mImpl->Find<QComboBox>(inID);
    if (!list) {
        return static_cast<int>(kListError);
    }
    list->addItem(QString::fromStdWString(inText));
    return list->count() - 1;
}

void DialogImpl::SetListItemData(int inID, int inIndex, long inData)
{
    auto* list = mImpl->Find<QComboBox>(inID);
    if (list && inIndex >= 0 && inIndex < list->count()) {
        list->setItemData(inIndex, QVariant::fromValue<qlonglong>(inData));
    }
}

long DialogImpl::GetListItemData(int inID, int inIndex) const
{
    auto* list = mImpl->Find<QComboBox>(inID);
    if (!list || inIndex < 0 || inIndex >= list->count()) {
        return kListError;
    }
    return static_cast<long>(list->itemData(inIndex).toLongLong());
}

int DialogImpl::GetListCount(int inID) const
{
    auto* list = mImpl->Find<QComboBox>(inID);
    return list ? list->count() : 0;
}

int DialogImpl::GetListSelection(int inID) const
{
    auto* list = mImpl->Find<QComboBox>(inID);
    return list ? list->currentIndex() : static_cast<int>(kListError);
}

void DialogImpl::SetListSelection(int inID, int inIndex)
{
    if (auto* list = mImpl->Find<QComboBox>(inID)) {
        list->setCurrentIndex(inIndex);
    }
}

void DialogImpl::SetControlColors(KOR::ParamColor<unsigned long> inText, KOR::ParamColor<unsigned long> inBackground)
{
    if (!mImpl->mWindow) {
        return;
    }
    for (QWidget* control : mImpl->mWindow->findChildren<QWidget*>()) {
        if (qobject_cast<QComboBox*>(control) || qobject_cast<QLineEdit*>(control) ||
            qobject_cast<QCheckBox*>(control)) {
            QPalette palette = control->palette();
            palette.setColor(QPalette::Base, ToQColor(inBackground));
            palette.setColor(QPalette::Text, ToQColor(inText));
            palette.setColor(QPalette::WindowText, ToQColor(inText));
            control->setPalette(palette);
        }
    }
}

void DialogImpl::OnInitDialog() {}

void DialogImpl::OnCommand(int inID, int)
{
    if (inID == 1 || inID == 2) {
        EndDialog(inID);
    }
}

} // namespace UIF

namespace zelui::controls {

void UI_Button::SetLabel(const std::wstring& inLabel)
{
    if (auto* button = HostQt::PeerWidget<QAbstractButton>(this)) {
        button->setText(QString::fromStdWString(inLabel));
    }
}

int UI_CheckBox::GetCheckValue() const
{
    const auto* box = HostQt::PeerWidget<QCheckBox>(this);
    if (box && box->checkState() == Qt::PartiallyChecked) {
        return kCheck_Mixed;
    }
    return IsChecked() ? kCheck_Checked : kCheck_Clear;
}

} // namespace zelui::controls

namespace BE {

// {D92D0DCA-9374-4F71-B977-BD52C6A69577} in its in-memory layout.
const KOR::InterfaceID ISerialSetupRequest::kIID = {0xCA, 0x0D, 0x2D, 0xD9, 0x74, 0x93, 0x71, 0x4F,
                                                    0xB9, 0x77, 0xBD, 0x52, 0xC6, 0xA6, 0x95, 0x77};
ISerialSetupRequest::~ISerialSetupRequest() = default;

const KOR::InterfaceID ISerialExportOptionsRequest::kIID = {0x42, 0x45, 0x53, 0x65, 0x72, 0x69, 0x61, 0x6c,
                                                            0x45, 0x78, 0x70, 0x4f, 0x70, 0x74, 0x00, 0x01};
ISerialExportOptionsRequest::~ISerialExportOptionsRequest() = default;

const KOR::InterfaceID ISerialExportStatus::kIID = {0x42, 0x45, 0x53, 0x65, 0x72, 0x69, 0x61, 0x6c,
                                                    0x45, 0x78, 0x70, 0x53, 0x74, 0x61, 0x00, 0x01};
ISerialExportStatus::~ISerialExportStatus() = default;

} // namespace BE
