// tarvix-dialogs: the editor shell that links the dialog module and opens its dialogs.

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QLocale>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <iostream>

#include "DLG/Module.h"
#include "DemoWindow.h"
#include "Gallery.h"
#include "StartupDemo.h"
#include "HostQt/Conform.h"
#include "HostQt/ReferenceHost.h"
#include "HostQt/Workspace.h"
#include "KOR/Paths.h"
#include "zelcore/Error.h"

namespace {

// Long enough to watch the render and the verification in the window; short in the gallery.
constexpr int kDemoRenderSeconds = 300;
constexpr int kGalleryRenderSeconds = 10;

BE::ProjectRef LoadSampleProject()
{
    QFile file(QStringLiteral(":/SampleProject.json"));
    file.open(QIODevice::ReadOnly);
    return HostQt::LoadProject(file.readAll(), QStringLiteral("Harbour Documentary.tvx"));
}

int Run(QApplication& ioApp, const QCommandLineParser& inOptions)
{
    const bool gallery = inOptions.isSet(QStringLiteral("gallery"));
    QTemporaryDir gallerySettings;
    const QString settings = gallery ? gallerySettings.path()
                                     : QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    HostQt::ReferenceHost host({settings, inOptions.value(QStringLiteral("scripts"))});
    KOR::DirectoryRegistry::RegisterDirectory(L"help.pages", QStringLiteral(TARVIX_SOURCE_DIR "/Help").toStdWString());

    DLG::SetModule(HostQt::LoadModuleObject(inOptions.value(QStringLiteral("strings"))));
    DLG::Initialize();
    const BE::ProjectRef project = LoadSampleProject();
    DLG::SetProject(project);
    HostQt::SetOpenProject(project);

    Demo::DemoState state;
    state.mediaFolder = gallery ? QDir(gallerySettings.path()).filePath(QStringLiteral("Sample media"))
                                : QDir(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation))
                                      .filePath(QStringLiteral("Sample media"));
    state.renderSeconds = gallery ? kGalleryRenderSeconds : kDemoRenderSeconds;
    state.dataDirectory = gallery ? gallerySettings.path()
                                  : QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    Demo::DemoWindow window(state, host.GetWorkspace(), project);
    host.SetMainWindow(&window);
    window.show();

    int result = 0;
    if (gallery) {
        // The gallery's scripted user types numbers as "1280.5", whatever the machine's locale.
        QLocale::setDefault(QLocale::c());
        const int failed = Demo::RenderGallery(inOptions.value(QStringLiteral("gallery")), window, state,
                                               host.GetWorkspace());
        std::cout << "gallery written to " << inOptions.value(QStringLiteral("gallery")).toStdString() << "; "
                  << failed << " dialog(s) did not go as scripted" << std::endl;
        result = failed == 0 ? 0 : 1;
    } else {
        Demo::ShowWelcomeScreenAtStart(window, state);
        result = ioApp.exec();
    }
    host.SetMainWindow(nullptr);
    HostQt::SetOpenProject(nullptr);
    DLG::Terminate();
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tarvix-dialogs"));

    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral("The Tarvix dialog module in a reference editor shell."));
    options.addHelpOption();
    options.addOption({QStringLiteral("gallery"), QStringLiteral("Render every dialog to PNG files in <dir>."),
                       QStringLiteral("dir")});
    options.addOption({QStringLiteral("scripts"), QStringLiteral("Layout scripts folder."), QStringLiteral("dir"),
                       QStringLiteral(TARVIX_SOURCE_DIR "/Scripts")});
    options.addOption({QStringLiteral("strings"), QStringLiteral("The module's string table."),
                       QStringLiteral("file"), QStringLiteral(TARVIX_SOURCE_DIR "/Strings/Strings.json")});
    QStringList arguments = app.arguments();
    options.process(arguments);
    // Without a display there is nothing to show a window on: render the gallery instead.
    if (!options.isSet(QStringLiteral("gallery")) && QGuiApplication::platformName() == QLatin1String("offscreen")) {
        options.process(arguments << QStringLiteral("--gallery") << QStringLiteral("gallery"));
    }

    try {
        return Run(app, options);
    } catch (const std::exception& error) {
        std::cerr << "tarvix-dialogs: " << error.what() << std::endl;
        return 1;
    }
}
