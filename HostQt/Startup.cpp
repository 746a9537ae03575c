// The host's start-up services: the welcome screen, the module's native images, the UI
// brightness, the help centre, and the path helpers they use.

#include <QApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPalette>
#include <QPointer>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <optional>

#include "HostQt/NodePeer.h"
#include "KOR/Module.h"
#include "KOR/Paths.h"
#include "KOR/Services.h"
#include "TL/HelpCenter.h"
#include "UIF/ColorManager.h"
#include "zelui/OS_ResourceManager.h"
#include "zelui/ZELWelcomeDlog.h"

namespace KOR {

NativeModule Module::GetNativeModule() const { return {DirectoryRegistry::FindDirectory(L"module.resources")}; }

namespace PathUtils {

std::wstring GetDisplayStringFromPath(const std::wstring& inPath)
{
    const std::size_t slash = inPath.find_last_of(L"\\/");
    std::wstring name = slash == std::wstring::npos ? inPath : inPath.substr(slash + 1);
    const std::size_t dot = name.find_last_of(L'.');
    if (dot != std::wstring::npos && dot > 0) {
        name.erase(dot);
    }
    return name;
}

std::vector<std::wstring> ListFiles(const std::wstring& inDirectory, const std::wstring& inSuffix)
{
    const QDir directory(QString::fromStdWString(inDirectory));
    const QString suffix = QString::fromStdWString(inSuffix);
    std::vector<std::wstring> paths;
    for (const QString& name : directory.entryList(QDir::Files, QDir::Name)) {
        if (name.endsWith(suffix)) {
            paths.push_back(directory.filePath(name).toStdWString());
        }
    }
    return paths;
}

} // namespace PathUtils

bool ReadTextFile(const std::wstring& inPath, std::wstring& outText)
{
    QFile file(QString::fromStdWString(inPath));
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    outText = QString::fromUtf8(file.readAll()).toStdWString();
    return true;
}

} // namespace KOR

namespace TL {

HelpService::~HelpService() = default;

bool TarvixHelpCenter::OpenHelpPage(const std::wstring& inPage)
{
    HelpService* help = KOR::Services().help;
    return help && help->OpenHelpPage(inPage);
}

} // namespace TL

namespace UIF {

namespace {

// The palette the application had before the first change, and the brightness it stands for.
struct Brightness {
    QPalette original;
    int originalValue = 0;
    int current = 0;
};

int BrightnessOf(const QPalette& inPalette)
{
    return qRound(inPalette.color(QPalette::Window).lightness() * 100.0 / 255.0);
}

// Windows, buttons and fields in greys of the brightness, fields a step lighter, with the text
// in black or white, whichever reads better on them.
QPalette GrayPalette(int inBrightness)
{
    const int level = qRound(inBrightness * 255.0 / 100.0);
    const QColor gray = QColor::fromHsl(0, 0, level);
    QPalette palette(gray, gray);
    const QColor text = inBrightness >= 50 ? QColor(Qt::black) : QColor(Qt::white);
    palette.setColor(QPalette::Base, QColor::fromHsl(0, 0, std::min(255, level + 32)));
    palette.setColor(QPalette::AlternateBase, gray);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, text);
    }
    return palette;
}

std::optional<Brightness>& State()
{
    static std::optional<Brightness> state;
    return state;
}

} // namespace

int ColorManager::GetBrightness() { return State() ? State()->current : BrightnessOf(QApplication::palette()); }

void ColorManager::SetBrightness(int inBrightness)
{
    const int value = std::clamp(inBrightness, 0, 100);
    if (!State()) {
        const QPalette palette = QApplication::palette();
        State() = Brightness{palette, BrightnessOf(palette), BrightnessOf(palette)};
    }
    State()->current = value;
    if (value == State()->originalValue) {
        QApplication::setPalette(State()->original);
        return;
    }
    QApplication::setPalette(GrayPalette(value));
}

} // namespace UIF

namespace zelui::utility {

OS_ResourceManager::OS_ResourceManager(const KOR::NativeModule& inModule) : mModule(inModule) {}

bool OS_ResourceManager::HasImage(const std::wstring& inName) const { return !ImagePath(inName).empty(); }

std::wstring OS_ResourceManager::ImagePath(const std::wstring& inName) const
{
    if (mModule.resourceDirectory.empty() || inName.empty()) {
        return {};
    }
    const QString path = QDir(QString::fromStdWString(mModule.resourceDirectory))
                             .filePath(QString::fromStdWString(inName) + QStringLiteral(".png"));
    return QFileInfo::exists(path) ? path.toStdWString() : std::wstring();
}

} // namespace zelui::utility

namespace zelui::sharedui {

namespace {

// The window of the welcome screen. Escape and the close button end it with kClosed; a recent
// project is chosen by Enter or a double click on its row.
class WelcomeWindow : public QDialog {
public:
    WelcomeWindow(QWidget* inParent, const std::vector<std::wstring>& inRecentItems,
                  const utility::OS_ResourceManager& inResources, const ZELWelcomeDlog::Images& inImages)
        : QDialog(inParent)
    {
        setObjectName(QStringLiteral("ZELWelcomeDlog"));
        setWindowTitle(QStringLiteral("Welcome"));
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(MakeImage(inResources, inImages.top, QStringLiteral("topImage")));

        auto* recentLabel = new QLabel(QStringLiteral("&Recent Projects:"), this);
        mRecent = new QListWidget(this);
        mRecent->setObjectName(QStringLiteral("recentProjectsList"));
        mRecent->setAccessibleName(QStringLiteral("Recent Projects"));
        recentLabel->setBuddy(mRecent);
        for (const std::wstring& item : inRecentItems) {
            mRecent->addItem(QString::fromStdWString(item));
        }
        if (mRecent->count() > 0) {
            mRecent->setCurrentRow(0);
        }
        connect(mRecent, &QListWidget::itemActivated, this, [this](QListWidgetItem* inItem) {
            mSelected = inItem->text().toStdWString();
            done(ZELWelcomeDlog::kRecentProject);
        });
        layout->addWidget(recentLabel);
        layout->addWidget(mRecent);

        auto* buttons = new QHBoxLayout;
        buttons->addWidget(MakeButton(inResources, inImages.newProject, QStringLiteral("newProjectButton"),
                                      QStringLiteral("&New Project"), ZELWelcomeDlog::kNewProject));
        buttons->addWidget(MakeButton(inResources, inImages.openProject, QStringLiteral("openProjectButton"),
                                      QStringLiteral("&Open Project"), ZELWelcomeDlog::kOpenProject));
        buttons->addWidget(MakeButton(inResources, inImages.help, QStringLiteral("helpButton"), QStringLiteral("&Help"),
                                      ZELWelcomeDlog::kHelp));
        layout->addLayout(buttons);
        layout->addWidget(MakeImage(inResources, inImages.bottom, QStringLiteral("bottomImage")));
        (mRecent->count() > 0 ? static_cast<QWidget*>(mRecent) : findChild<QPushButton*>())->setFocus();
    }

    const std::wstring& Selected() const { return mSelected; }

    void reject() override { done(ZELWelcomeDlog::kClosed); }

protected:
    // Left and Right move between the buttons as Tab does; Up and Down stay with the list.
    void keyPressEvent(QKeyEvent* inEvent) override
    {
        if (qobject_cast<QPushButton*>(focusWidget()) &&
            (inEvent->key() == Qt::Key_Left || inEvent->key() == Qt::Key_Right)) {
            focusNextPrevChild(inEvent->key() == Qt::Key_Right);
            return;
        }
        QDialog::keyPressEvent(inEvent);
    }

private:
    QLabel* MakeImage(const utility::OS_ResourceManager& inResources, const std::wstring& inName,
                      const QString& inObjectName)
    {
        auto* image = new QLabel(this);
        image->setObjectName(inObjectName);
        image->setPixmap(QPixmap(QString::fromStdWString(inResources.ImagePath(inName))));
        return image;
    }

    QPushButton* MakeButton(const utility::OS_ResourceManager& inResources, const std::wstring& inImage,
                            const QString& inObjectName, const QString& inText, int inResult)
    {
        auto* button = new QPushButton(QIcon(QString::fromStdWString(inResources.ImagePath(inImage))), inText, this);
        button->setObjectName(inObjectName);
        button->setIconSize(QSize(32, 32));
        connect(button, &QPushButton::clicked, this, [this, inResult] { done(inResult); });
        return button;
    }

    QListWidget* mRecent = nullptr;
    std::wstring mSelected;
};

QPointer<WelcomeWindow>& Running()
{
    static QPointer<WelcomeWindow> running;
    return running;
}

} // namespace

class ZELWelcomeDlog::Impl {
public:
    std::unique_ptr<WelcomeWindow> mWindow;
};

ZELWelcomeDlog::ZELWelcomeDlog(ui::UI_Node* inParent, std::vector<std::wstring> inRecentItems,
                               const utility::OS_ResourceManager& inResources, const Images& inImages)
    : mImpl(std::make_unique<Impl>())
{
    mImpl->mWindow = std::make_unique<WelcomeWindow>(HostQt::WidgetOf(inParent), inRecentItems, inResources, inImages);
}

ZELWelcomeDlog::~ZELWelcomeDlog() = default;

int ZELWelcomeDlog::RunModal()
{
    Running() = mImpl->mWindow.get();
    const int result = mImpl->mWindow->exec();
    Running() = nullptr;
    return result;
}

std::wstring ZELWelcomeDlog::GetSelectedMRUItem() const { return mImpl->mWindow->Selected(); }

bool ZELWelcomeDlog::WelcomeScreenIsRunning() { return !Running().isNull(); }

void ZELWelcomeDlog::TerminateRunningWelcomeScreen(int inResult)
{
    if (Running()) {
        Running()->done(inResult);
    }
}

} // namespace zelui::sharedui

namespace HostQt {

namespace {

// Opens the pages of the registered "help.pages" folder ("<page>.html") in the desktop's viewer.
class DesktopHelp : public TL::HelpService {
public:
    bool OpenHelpPage(const std::wstring& inPage) override
    {
        const std::wstring folder = KOR::DirectoryRegistry::FindDirectory(L"help.pages");
        const QString page =
            QDir(QString::fromStdWString(folder)).filePath(QString::fromStdWString(inPage) + QStringLiteral(".html"));
        return !folder.empty() && QFileInfo::exists(page) && QDesktopServices::openUrl(QUrl::fromLocalFile(page));
    }
};

} // namespace

TL::HelpService* ReferenceHelpService()
{
    static DesktopHelp help;
    return &help;
}

} // namespace HostQt
