#pragma once

#include <QByteArray>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

#include "BE/Project.h"
#include "KOR/Module.h"
#include "KOR/ObjectPtr.h"
#include "KOR/Services.h"

namespace TL {
class HelpService;
}

namespace HostQt {

class Workspace;
class SettingsBackend;

// Where the reference host finds and keeps its files.
struct HostConfig {
    QString settingsDirectory; // backend properties live in "Backend.json" here
    QString scriptsDirectory;  // registered as "vrel.scripts"
};

// The reference host: every service of the host's declarations, on Qt. Constructing it
// installs its services in KOR::Services(); destroying it puts back the table it found.
class ReferenceHost {
public:
    explicit ReferenceHost(const HostConfig& inConfig);
    ~ReferenceHost();
    ReferenceHost(const ReferenceHost&) = delete;
    ReferenceHost& operator=(const ReferenceHost&) = delete;

    // The editor's main window; dialogs open over it. Null: the host shows no main window.
    void SetMainWindow(QWidget* inWindow);
    // A player that StopAllPlayers stops.
    void AddPlayer(std::function<void()> inStop);

    Workspace& GetWorkspace();
    const KOR::ServiceTable& InstalledServices() const { return mTable; }

private:
    struct Services;
    std::unique_ptr<Services> mServices;
    KOR::ServiceTable mTable;
    KOR::ServiceTable mPrevious;
};

// The module object with its string table, read from a JSON file {"strings": {"11152": "..."}}.
// The module's images are the PNG files of the "Images" folder beside the table (registered as
// "module.resources"), the notices of what it ships with the texts of the "Notices" folder
// (registered as "legal.notices"), and the templates of its native dialogs the Qt Designer files
// of the "Templates" folder, named after their template numbers (registered as "module.templates").
// Throws zelcore::Error when the file cannot be read.
KOR::ObjectPtr<KOR::Module, KOR::AtomicValue> LoadModuleObject(const QString& inStringTablePath);

// The reference host's help centre: the pages of the folder registered as "help.pages".
TL::HelpService* ReferenceHelpService();

// A project of the host's model from its JSON form; throws zelcore::Error on bad JSON.
BE::ProjectRef LoadProject(const QByteArray& inJson, const QString& inFilePath);

} // namespace HostQt
