// The host's file chooser on QFileDialog, with the customiser's panel, notifications and list
// filter, and the window disabler that runs around system dialogs.

#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRegularExpression>
#include <QResizeEvent>
#include <QScreen>
#include <QTimer>

#include <vector>

#include "HostQt/FileChooser.h"
#include "HostQt/NodePeer.h"
#include "HostQt/Workspace.h"
#include "KOR/InterfaceRef.h"
#include "KOR/Services.h"
#include "UIF/Windows.h"
#include "zelui/Controls.h"

namespace UIF {

FileChooserWindow::~FileChooserWindow() = default;
FileChooserCustomizer::~FileChooserCustomizer() = default;
long FileChooserCustomizer::OnInitDialog(FileChooserWindow&) { return 0; }
long FileChooserCustomizer::OnInitDone(FileChooserWindow&) { return 0; }
long FileChooserCustomizer::OnSelChange(FileChooserWindow&) { return 0; }
void FileChooserCustomizer::OnFolderChange(FileChooserWindow&) {}
int FileChooserCustomizer::OnFileOK(FileChooserWindow&) { return 1; }
void FileChooserCustomizer::OnTypeChange(FileChooserWindow&) {}
long FileChooserCustomizer::OnSize(unsigned int, FileChooserSize) { return 0; }
bool FileChooserCustomizer::KeepListItem(const std::wstring&, FileChooserItemKind) const { return true; }
FileChooserService::~FileChooserService() = default;

FileChooserResult FileChooser::Run(const FileChooserRequest& inRequest, FileChooserCustomizer* inCustomizer)
{
    FileChooserService* service = KOR::Services().fileChooser;
    if (!service) {
        KOR::ThrowNullInterfaceDereference();
    }
    return service->Run(inRequest, inCustomizer);
}

namespace Windows {

struct ParentAndChildWindowDisabler::Disabled {
    QPointer<QWidget> window;
};

ParentAndChildWindowDisabler::ParentAndChildWindowDisabler(HWND inWindow) : mDisabled(new Disabled)
{
    zelui::ui::UI_Node* node = KOR::NodeFromHWND(inWindow);
    if (!node && KOR::Services().workspace) {
        node = KOR::Services().workspace->GetMainTopLevelWindow();
    }
    QWidget* widget = node ? HostQt::PeerWidget<QWidget>(node) : nullptr;
    // Disabling a window disables the windows it owns with it.
    if (widget && widget->window()->isEnabled()) {
        mDisabled->window = widget->window();
        mDisabled->window->setEnabled(false);
    }
}

ParentAndChildWindowDisabler::~ParentAndChildWindowDisabler()
{
    if (mDisabled->window) {
        mDisabled->window->setEnabled(true);
    }
    delete mDisabled;
}

} // namespace Windows

} // namespace UIF

namespace HostQt {

namespace {

QString ToQ(const std::wstring& inText) { return QString::fromStdWString(inText); }

// "Stills\0*.png;*.jpg\0" as Qt's "Stills (*.png *.jpg)".
QStringList NameFilters(const std::wstring& inFilter)
{
    QStringList parts;
    std::size_t start = 0;
    while (start < inFilter.size() && inFilter[start] != L'\0') {
        const std::size_t end = inFilter.find(L'\0', start);
        parts << ToQ(inFilter.substr(start, end == std::wstring::npos ? std::wstring::npos : end - start));
        start = end == std::wstring::npos ? inFilter.size() : end + 1;
    }
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns = parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts);
        // The system's "*.*" takes every file; Qt's would hide those without an extension.
        patterns.replaceInStrings(QRegularExpression(QStringLiteral("^\\*\\.\\*$")), QStringLiteral("*"));
        filters << QStringLiteral("%1 (%2)").arg(parts[i], patterns.join(QLatin1Char(' ')));
    }
    return filters;
}

QFileDialog::FileMode FileModeFor(const UIF::FileChooserRequest& inRequest)
{
    switch (inRequest.mode) {
    case UIF::FileChooserMode::kFolder: return QFileDialog::Directory;
    case UIF::FileChooserMode::kSave: return QFileDialog::AnyFile;
    case UIF::FileChooserMode::kOpen: break;
    }
    return inRequest.flags & UIF::kFileChooserFlag_AllowMultiSelect ? QFileDialog::ExistingFiles
                                                                   : QFileDialog::ExistingFile;
}

// The chosen paths in the buffer form: one path, or the folder and then each name.
std::wstring SelectionText(const QStringList& inPaths)
{
    if (inPaths.size() == 1) {
        return QDir::toNativeSeparators(inPaths.front()).toStdWString();
    }
    std::wstring text = QDir::toNativeSeparators(QFileInfo(inPaths.front()).absolutePath()).toStdWString();
    for (const QString& path : inPaths) {
        text += L'\0';
        text += QFileInfo(path).fileName().toStdWString();
    }
    return text;
}

// Names a file's type by its extension ("PNG File"), as the system dialogs' lists do. Qt's own
// provider asks the MIME database about every file, which is most of the time a large folder takes.
class ExtensionTypes : public QFileIconProvider {
public:
    QString type(const QFileInfo& inInfo) const override
    {
        if (!inInfo.isFile()) {
            return QFileIconProvider::type(inInfo);
        }
        const QString suffix = inInfo.suffix().toUpper();
        return suffix.isEmpty() ? QStringLiteral("File") : suffix + QStringLiteral(" File");
    }
};

class ChooserDialog : public QFileDialog, public UIF::FileChooserWindow {
public:
    ChooserDialog(const UIF::FileChooserRequest& inRequest, UIF::FileChooserCustomizer* inCustomizer,
                  Workspace& inWorkspace)
        : QFileDialog(nullptr, ToQ(inRequest.title)), mCustomizer(inCustomizer), mWorkspace(inWorkspace)
    {
        setObjectName(ToQ(inRequest.windowName));
        setOption(QFileDialog::DontUseNativeDialog);
        setWindowModality(Qt::ApplicationModal);
        setFileMode(FileModeFor(inRequest));
        if (inRequest.mode == UIF::FileChooserMode::kSave) {
            setAcceptMode(QFileDialog::AcceptSave);
            setDefaultSuffix(ToQ(inRequest.defaultExtension));
        }
        if (inRequest.mode == UIF::FileChooserMode::kFolder) {
            setOption(QFileDialog::ShowDirsOnly);
        }
        if (!inRequest.initialDirectory.empty()) {
            setDirectory(ToQ(inRequest.initialDirectory));
        }
        const QStringList filters = NameFilters(inRequest.filter);
        if (!filters.isEmpty()) {
            setNameFilters(filters);
            const qsizetype index = inRequest.filterIndex == 0 ? 0 : inRequest.filterIndex - 1;
            selectNameFilter(filters.value(index, filters.front()));
        }
        if (!inRequest.initialName.empty()) {
            selectFile(ToQ(inRequest.initialName));
        }
        mFilter = PrepareChooserList(*this, mCustomizer);
        if (mCustomizer) {
            Customize();
        }
    }

    std::wstring GetFilePath() const override
    {
        const QItemSelectionModel* selection = ListView()->selectionModel();
        const QModelIndexList rows = selection->selectedRows();
        if (rows.isEmpty()) {
            return {};
        }
        const QModelIndex current = selection->currentIndex();
        const QModelIndex item = selection->isRowSelected(current.row(), current.parent()) ? current : rows.front();
        return item.data(QFileSystemModel::FilePathRole).toString().toStdWString();
    }
    std::wstring GetFileNameText() const override { return FileNameBox()->text().toStdWString(); }
    int GetTypeIndex() const override { return static_cast<int>(nameFilters().indexOf(selectedNameFilter())); }
    void CloseAsCancelled() override { reject(); }
    void RefilterList() override
    {
        if (mFilter) {
            mFilter->Refilter();
        }
    }
    void CenterOverMainWindow() override
    {
        zelui::ui::UI_Node* main = mWorkspace.GetMainTopLevelWindow();
        const QWidget* window = main ? PeerWidget<QWidget>(main) : nullptr;
        const QRect area = window ? window->frameGeometry() : screen()->availableGeometry();
        QRect frame = frameGeometry();
        frame.moveCenter(area.center());
        move(frame.topLeft());
    }
    void RepositionPanel() override
    {
        if (mPanel) {
            layout()->activate();
        }
    }
    boost::intrusive_ptr<zelui::controls::UI_CheckBox> AddCheckBox(const std::wstring& inName,
                                                                   const std::wstring& inLabel) override
    {
        return AddToPanel<zelui::controls::UI_CheckBox>(new QCheckBox(ToQ(inLabel)), inName, 0);
    }
    boost::intrusive_ptr<zelui::controls::UI_Button> AddButton(const std::wstring& inName,
                                                               const std::wstring& inLabel) override
    {
        return AddToPanel<zelui::controls::UI_Button>(new QPushButton(ToQ(inLabel)), inName, 1);
    }
    boost::intrusive_ptr<zelui::controls::UI_StaticText> AddText(const std::wstring& inName) override
    {
        auto* label = new QLabel;
        label->setTextFormat(Qt::PlainText); // file names are shown as they are, never as markup
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        return AddToPanel<zelui::controls::UI_StaticText>(label, inName, 0);
    }

    UIF::FileChooserResult Result() const
    {
        UIF::FileChooserResult result;
        result.filterIndex = static_cast<unsigned long>(GetTypeIndex() + 1);
        const QStringList files = selectedFiles();
        if (mResult == QDialog::Accepted && !files.isEmpty()) {
            result.confirmed = true;
            result.selection = SelectionText(files);
        }
        return result;
    }

    void done(int inResult) override
    {
        mResult = inResult;
        if (inResult == QDialog::Accepted && mCustomizer) {
            mCustomizer->OnFileOK(*this);
        }
        QFileDialog::done(inResult);
    }

protected:
    void resizeEvent(QResizeEvent* inEvent) override
    {
        QFileDialog::resizeEvent(inEvent);
        if (mCustomizer) {
            const unsigned int type = isMaximized()   ? UIF::kFileChooserSize_Maximized
                                      : isMinimized() ? UIF::kFileChooserSize_Minimized
                                                      : UIF::kFileChooserSize_Restored;
            mCustomizer->OnSize(type, {inEvent->size().width(), inEvent->size().height()});
        }
    }
    void showEvent(QShowEvent* inEvent) override
    {
        QFileDialog::showEvent(inEvent);
        if (mCustomizer && !mShown) {
            mShown = true;
            QTimer::singleShot(0, this, [this] {
                mCustomizer->OnInitDone(*this);
                mCustomizer->OnFolderChange(*this);
            });
        }
    }

private:
    QListView* ListView() const { return findChild<QListView*>(QStringLiteral("listView")); }
    QLineEdit* FileNameBox() const { return findChild<QLineEdit*>(QStringLiteral("fileNameEdit")); }

    // The proxy goes in first: it brings a new selection model, which the notices follow.
    void Customize()
    {
        connect(ListView()->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
            ShowSelectionInNameBox();
            mCustomizer->OnSelChange(*this);
        });
        ListView()->installEventFilter(this);
        ListView()->viewport()->installEventFilter(this);
        connect(FileNameBox(), &QLineEdit::textChanged, this, [this] {
            if (FileNameBox()->hasFocus()) {
                SelectTypedNames();
            }
        });
        connect(FileNameBox(), &QLineEdit::textEdited, this, [this] { mCustomizer->OnSelChange(*this); });
        connect(this, &QFileDialog::directoryEntered, this, [this] { mCustomizer->OnFolderChange(*this); });
        connect(this, &QFileDialog::filterSelected, this, [this] { mCustomizer->OnTypeChange(*this); });
        mCustomizer->OnInitDialog(*this);
    }

    // A click or key in the list is the user selecting there; other selection changes (Qt's
    // completion of what the file-name box says) must not rewrite the box.
    bool eventFilter(QObject* inObject, QEvent* inEvent) override
    {
        const QEvent::Type type = inEvent->type();
        if ((inObject == ListView() || inObject == ListView()->viewport()) &&
            (type == QEvent::MouseButtonPress || type == QEvent::KeyPress)) {
            mSelectingInList = true;
            QTimer::singleShot(0, this, [this] { mSelectingInList = false; });
        }
        return QFileDialog::eventFilter(inObject, inEvent);
    }

    // The file-name box shows the files selected in the list, each in double quotes when there are
    // several, as the system dialogs' box does; Qt's own dialog leaves it alone while it has the focus.
    void ShowSelectionInNameBox()
    {
        QStringList names;
        for (const QModelIndex& row : ListView()->selectionModel()->selectedRows()) {
            if (!QFileInfo(row.data(QFileSystemModel::FilePathRole).toString()).isDir()) {
                names << row.data().toString();
            }
        }
        if (!mSelectingInList || names.isEmpty()) {
            return;
        }
        if (names.size() > 1) {
            for (QString& name : names) {
                name = QLatin1Char('"') + name + QLatin1Char('"');
            }
        }
        // Quietly: Qt's completion would select again what the box names, through the filter
        // model's indexes it does not map.
        const QSignalBlocker quiet(FileNameBox());
        FileNameBox()->setText(names.join(QLatin1Char(' ')));
    }

    // The list selects the names typed into the file-name box, one or several in double quotes.
    // Qt's own completion does too, but cannot map its indexes through the list filter.
    void SelectTypedNames()
    {
        const QString text = FileNameBox()->text().trimmed();
        QStringList names;
        if (text.contains(QLatin1Char('"'))) {
            const QStringList parts = text.split(QLatin1Char('"'));
            for (qsizetype at = 1; at < parts.size(); at += 2) {
                names << parts[at];
            }
        } else if (!text.isEmpty()) {
            names << text;
        }
        const auto* files = static_cast<const QFileSystemModel*>(mFilter->sourceModel());
        QItemSelection selection;
        for (const QString& name : names) {
            const QModelIndex item = mFilter->mapFromSource(files->index(directory().absoluteFilePath(name)));
            if (item.isValid()) {
                selection.select(item, item);
            }
        }
        if (!selection.isEmpty()) {
            ListView()->selectionModel()->select(selection,
                                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        }
    }

    QGridLayout* Panel()
    {
        if (!mPanel) {
            auto* panel = new QWidget(this);
            panel->setObjectName(QStringLiteral("extensionPanel"));
            mPanel = new QGridLayout(panel);
            mPanel->setContentsMargins(0, 0, 0, 0);
            mPanel->setColumnStretch(0, 1);
            auto* grid = qobject_cast<QGridLayout*>(layout());
            grid->addWidget(panel, grid->rowCount(), 0, 1, grid->columnCount());
        }
        return mPanel;
    }

    // Column 0 stacks the check boxes and texts under the file-name box; column 1 the buttons
    // under Cancel.
    template <class Node>
    boost::intrusive_ptr<Node> AddToPanel(QWidget* inWidget, const std::wstring& inName, int inColumn)
    {
        inWidget->setObjectName(ToQ(inName));
        Panel()->addWidget(inWidget, mPanelRows[inColumn]++, inColumn,
                           inColumn == 1 ? Qt::AlignRight : Qt::Alignment());
        return boost::static_pointer_cast<Node>(MakeControlNode(inWidget));
    }

    UIF::FileChooserCustomizer* mCustomizer;
    Workspace& mWorkspace;
    ChooserListFilter* mFilter = nullptr;
    QGridLayout* mPanel = nullptr;
    int mPanelRows[2] = {0, 0};
    bool mShown = false;
    bool mSelectingInList = false;
    int mResult = QDialog::Rejected;
};

class QtFileChooser : public UIF::FileChooserService {
public:
    explicit QtFileChooser(Workspace& inWorkspace) : mWorkspace(inWorkspace) {}

    UIF::FileChooserResult Run(const UIF::FileChooserRequest& inRequest,
                               UIF::FileChooserCustomizer* inCustomizer) override
    {
        ChooserDialog dialog(inRequest, inCustomizer, mWorkspace);
        dialog.exec();
        return dialog.Result();
    }

private:
    Workspace& mWorkspace;
};

} // namespace

ChooserListFilter::ChooserListFilter(const UIF::FileChooserCustomizer& inCustomizer, QObject* inParent)
    : QSortFilterProxyModel(inParent), mCustomizer(inCustomizer)
{
}

void ChooserListFilter::sort(int inColumn, Qt::SortOrder inOrder)
{
    if (sourceModel()) {
        sourceModel()->sort(inColumn, inOrder);
    }
}

bool ChooserListFilter::filterAcceptsRow(int inRow, const QModelIndex& inParent) const
{
    const auto* model = static_cast<const QFileSystemModel*>(sourceModel());
    const QModelIndex index = model->index(inRow, 0, inParent);
    const UIF::FileChooserItemKind kind = model->isDir(index)                ? UIF::FileChooserItemKind::kFolder
                                          : model->fileInfo(index).isSymLink() ? UIF::FileChooserItemKind::kLink
                                                                               : UIF::FileChooserItemKind::kFile;
    return mCustomizer.KeepListItem(model->fileName(index).toStdWString(), kind);
}

ChooserListFilter* PrepareChooserList(QFileDialog& ioDialog, const UIF::FileChooserCustomizer* inCustomizer)
{
    static ExtensionTypes types;
    ioDialog.setIconProvider(&types);
    if (!inCustomizer) {
        return nullptr;
    }
    auto* filter = new ChooserListFilter(*inCustomizer, &ioDialog);
    ioDialog.setProxyModel(filter);
    return filter;
}

std::unique_ptr<UIF::FileChooserService> MakeFileChooserService(Workspace& inWorkspace)
{
    return std::make_unique<QtFileChooser>(inWorkspace);
}

} // namespace HostQt
