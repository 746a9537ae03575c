#pragma once

#include <QString>
#include <QTemporaryDir>
#include <QWidget>

#include <memory>
#include <string>
#include <vector>

#include "HostQt/ReferenceHost.h"
#include "HostQt/WavFile.h"
#include "HostQt/Workspace.h"
#include "KOR/Services.h"

namespace TestSupport {

// What the module asked of the host, counted by wrappers around the reference services.
struct HostCounts {
    int autoSaveBlocks = 0;
    int autoSaveUnblocks = 0;
    int beeps = 0;
    std::vector<std::string> contractsFailed; // the failed expressions, in order
    struct MessageBox {
        std::wstring text;
        std::wstring caption;
        unsigned long buttons;
        unsigned long icon;
    };
    std::vector<MessageBox> messageBoxes;
    std::vector<std::string> sequence; // the calls above, and what tests recorded, in order
    bool autoSaveBlockedNow = false;
    int waitCursorsShown = 0;
    int cursorsRestored = 0;
};

// A reference host for one test: settings in a temporary folder, the project's layout scripts,
// the module's string table set with DLG::SetModule, and counting wrappers around the services.
class TestHost {
public:
    explicit TestHost(bool inWithMainWindow = false);
    ~TestHost();

    // Registers another folder as "vrel.scripts"; the file names are the dialogs' script names.
    void UseScripts(const QString& inDirectory);
    // A folder of its own for scripts that a test writes.
    QString ScratchDirectory() const { return mScratch.path(); }
    // Where the backend keeps its properties file, "Backend.json".
    QString SettingsDirectory() const { return mSettings.path(); }
    void WriteScript(const QString& inFileName, const QByteArray& inContents) const;

    HostCounts Counts() const;
    // Adds inEvent to the sequence of calls, between the host's own.
    void Record(const std::string& inEvent);
    HostQt::ReferenceHost& Host() { return *mHost; }
    HostQt::Workspace& Workspace() { return mHost->GetWorkspace(); }
    QWidget* MainWindow() const { return mMainWindow.get(); }

private:
    class Wrappers;
    QTemporaryDir mSettings;
    QTemporaryDir mScratch;
    std::unique_ptr<HostQt::ReferenceHost> mHost;
    std::unique_ptr<Wrappers> mWrappers;
    std::unique_ptr<QWidget> mMainWindow;
};

// The folder of the project's own layout scripts and string table.
QString ScriptsDirectory();
QString StringTablePath();

// Writes a WAV file of interleaved samples. inChunkBeforeData, a whole chunk, goes between the
// format chunk and the samples, where tagging programs leave theirs.
void WriteWav(const QString& inPath, const HostQt::WavLayout& inLayout, const std::vector<double>& inSamples,
              const QByteArray& inChunkBeforeData = {});

} // namespace TestSupport
