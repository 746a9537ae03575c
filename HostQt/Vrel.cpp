// Layout scripts: Qt Designer UI files built with QUiLoader, with the host's control classes.

#include <QBuffer>
#include <QDialog>
#include <QPointer>
#include <QUiLoader>
#include <QVBoxLayout>

#include <map>

#include "HostQt/HotTextNumberWidget.h"
#include "HostQt/KeyCaptureWidget.h"
#include "HostQt/NodePeer.h"
#include "HostQt/NumberEditWidget.h"
#include "HostQt/Widgets.h"
#include "KOR/Module.h"
#include "UIF/MessageBox.h"
#include "zelvrel/UI_Vrel.h"

namespace {

// Builds the host's own widget classes by the names scripts give them; one per thread,
// since a loader reads its plugin folders when it is made.
class ScriptBuilder : public QUiLoader {
public:
    // Scripts carry no translations of their own: the module sets its texts from its table.
    ScriptBuilder() { setTranslationEnabled(false); }

    QWidget* Build(const QByteArray& inScript, QWidget* inParent)
    {
        mParent = inParent;
        QBuffer buffer;
        buffer.setData(inScript);
        buffer.open(QIODevice::ReadOnly);
        QWidget* top = load(&buffer, nullptr);
        mParent = nullptr;
        return top;
    }

    QWidget* createWidget(const QString& inClassName, QWidget* inParent, const QString& inName) override
    {
        QWidget* widget = nullptr;
        if (inClassName == QLatin1String("UI_NumberEdit")) {
            widget = new HostQt::NumberEditWidget(inParent);
        } else if (inClassName == QLatin1String("UI_KeyCaptureEdit")) {
            widget = new HostQt::KeyCaptureWidget(inParent);
        } else if (inClassName == QLatin1String("UI_HotTextNumber")) {
            widget = new HostQt::HotTextNumberWidget(inParent);
        } else if (!inParent && inClassName == QLatin1String("QDialog")) {
            widget = new HostQt::DialogWidget(mParent);
        } else {
            return QUiLoader::createWidget(inClassName, inParent, inName);
        }
        widget->setObjectName(inName);
        return widget;
    }

private:
    QWidget* mParent = nullptr;
};

ScriptBuilder& Builder()
{
    thread_local ScriptBuilder builder;
    return builder;
}

QWidget* ParentWidget(zelui::ui::UI_Node* inParent)
{
    return inParent ? HostQt::PeerWidget<QWidget>(inParent) : nullptr;
}

// A script whose top widget is not a dialog is shown inside one.
HostQt::DialogWidget* AsDialog(QWidget* inTop, QWidget* inParent)
{
    if (auto* dialog = qobject_cast<HostQt::DialogWidget*>(inTop)) {
        return dialog;
    }
    auto* dialog = new HostQt::DialogWidget(inParent);
    dialog->setWindowTitle(inTop->windowTitle());
    auto* layout = new QVBoxLayout(dialog);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(inTop);
    return dialog;
}

void ReportUnreadableScript(const std::wstring& inName, const QString& inReason)
{
    const std::wstring text =
        KOR::Localize(L"$$$/zelvrel/Error/ScriptUnreadable=The layout of this dialog could not be read: ") +
        inName + L" (" + inReason.toStdWString() + L")";
    UIF::MessageBoxW(text, KOR::Localize(L"$$$/zelvrel/Error/ScriptCaption=Layout Script"), UIF::kMessageBox_OK,
                     UIF::kMessageBoxIcon_Error, 0);
}

bool IsBlank(const std::string& inText)
{
    return inText.find_first_not_of(std::string(" \t\r\n\0", 5)) == std::string::npos;
}

} // namespace

namespace zelvrel {

class UI_Vrel::Impl {
public:
    std::wstring mNodeName;
    const zelui::drawbot::SupplierInterface* mSupplier;
    zelui::ui::UI_Node* mParent;
    zelui::ui::UI_Dialog::ResponseHandler mResponseHandler;
    QPointer<HostQt::DialogWidget> mWindow;
    boost::intrusive_ptr<zelui::ui::UI_Dialog> mDialog;
    std::map<std::wstring, zelui::ui::UI_NodePtr> mNodes;

    void Close()
    {
        mNodes.clear();
        mDialog.reset();
        delete mWindow.data();
    }
};

UI_Vrel::UI_Vrel(const std::wstring& inNodeName, const zelui::drawbot::SupplierInterface* inSupplier,
                 zelui::ui::UI_Node* inParent)
    : mImpl(std::make_unique<Impl>(Impl{inNodeName, inSupplier, inParent, {}, {}, {}, {}}))
{
}

UI_Vrel::~UI_Vrel() { mImpl->Close(); }

bool UI_Vrel::ParseVrelScript(std::stringstream& inScript)
{
    const std::string text = inScript.str();
    if (IsBlank(text)) {
        return false;
    }
    QWidget* parent = ParentWidget(mImpl->mParent);
    QWidget* top = Builder().Build(QByteArray(text.c_str()), parent);
    if (!top) {
        ReportUnreadableScript(mImpl->mNodeName, Builder().errorString());
        return false;
    }
    HostQt::DialogWidget* window = AsDialog(top, parent);
    window->setObjectName(QString::fromStdWString(mImpl->mNodeName));
    if (window->windowTitle().isEmpty()) {
        window->setWindowTitle(QString::fromStdWString(mImpl->mNodeName));
    }
    mImpl->mWindow = window;
    mImpl->mDialog = new zelui::ui::UI_Dialog(std::make_unique<zelui::ui::NodePeer>(window));
    mImpl->mDialog->SetResponseHandler(mImpl->mResponseHandler);

    struct CloseAfterwards {
        Impl& mImpl;
        ~CloseAfterwards() { mImpl.Close(); }
    } closeAfterwards{*mImpl};
    HostQt::HandlerScope binding(window);
    BindControls();
    binding.RethrowPending();
    mImpl->mDialog->RunModal();
    return true;
}

zelui::ui::UI_NodePtr UI_Vrel::FindNode(const std::wstring& inName) const
{
    if (!mImpl->mWindow) {
        return {};
    }
    if (auto found = mImpl->mNodes.find(inName); found != mImpl->mNodes.end()) {
        return found->second;
    }
    auto* widget = mImpl->mWindow->findChild<QWidget*>(QString::fromStdWString(inName));
    if (!widget) {
        return {};
    }
    zelui::ui::UI_NodePtr node = HostQt::MakeControlNode(widget);
    mImpl->mNodes.emplace(inName, node);
    return node;
}

zelui::ui::UI_Dialog* UI_Vrel::GetDialogView() const { return mImpl->mDialog.get(); }

const std::wstring& UI_Vrel::GetNodeName() const { return mImpl->mNodeName; }

void UI_Vrel::BindControls() {}

void UI_Vrel::SetResponseHandler(zelui::ui::UI_Dialog::ResponseHandler inHandler)
{
    mImpl->mResponseHandler = std::move(inHandler);
    if (mImpl->mDialog) {
        mImpl->mDialog->SetResponseHandler(mImpl->mResponseHandler);
    }
}

} // namespace zelvrel
