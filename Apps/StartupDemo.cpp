#include "StartupDemo.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

#include "BE/Backend.h"
#include "DLG/AboutDialog.h"
#include "DLG/QuickStartDialog.h"
#include "DemoWindow.h"
#include "HostQt/ReferenceHost.h"

namespace Demo {

namespace {

constexpr int kRecentProjectChosen = 5;

std::wstring RecentKey(int inEntry) { return DLG::QuickStart::kRecentDocumentProperty + std::to_wstring(inEntry); }

// The sample project as a file that the welcome screen can open again.
QString SaveSampleProject(const DemoState& inState)
{
    QDir().mkpath(inState.dataDirectory);
    const QString path = QDir(inState.dataDirectory).filePath(QStringLiteral("Harbour Documentary.tvx"));
    if (!QFileInfo::exists(path)) {
        QFile::copy(QStringLiteral(":/SampleProject.json"), path);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    }
    return path;
}

struct WelcomeAnswer {
    int result = 0;
    int chosenIndex = 0;
    std::vector<std::wstring> recent;
};

WelcomeAnswer AskWelcomeScreen(const DemoState& inState)
{
    WelcomeAnswer answer;
    answer.recent = RecentProjects(inState);
    answer.result = DLG::QuickStart::DoQuickStartDialog(answer.recent, answer.chosenIndex);
    return answer;
}

QString Describe(const WelcomeAnswer& inAnswer)
{
    QString text = QStringLiteral("returned %1").arg(inAnswer.result);
    if (inAnswer.result == kRecentProjectChosen) {
        text += QStringLiteral(", recent project %1: \"%2\"")
                    .arg(inAnswer.chosenIndex)
                    .arg(QString::fromStdWString(inAnswer.recent.at(inAnswer.chosenIndex)));
    }
    return text;
}

} // namespace

std::vector<std::wstring> RecentProjects(const DemoState& inState)
{
    BE::Backend* backend = BE::GetBackend();
    if (!backend) {
        return {};
    }
    if (backend->GetStringProperty(RecentKey(0), L"").empty()) {
        backend->SetStringProperty(RecentKey(0), SaveSampleProject(inState).toStdWString());
    }
    std::vector<std::wstring> recent;
    for (int entry = 0;; ++entry) {
        const std::wstring path = backend->GetStringProperty(RecentKey(entry), L"");
        if (path.empty()) {
            return recent;
        }
        recent.push_back(path);
    }
}

void ShowWelcomeScreenAtStart(DemoWindow& ioWindow, DemoState& ioState)
{
    QTimer::singleShot(0, &ioWindow, [&ioWindow, &ioState] {
        const WelcomeAnswer answer = AskWelcomeScreen(ioState);
        ioWindow.Log(QStringLiteral("Welcome screen: ") + Describe(answer));
        if (answer.result != kRecentProjectChosen) {
            return;
        }
        const QString path = QString::fromStdWString(answer.recent.at(answer.chosenIndex));
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            ioWindow.Log(QStringLiteral("Cannot read \"%1\"").arg(path));
            return;
        }
        try {
            ioWindow.OpenProject(HostQt::LoadProject(file.readAll(), path));
        } catch (const std::exception& error) {
            ioWindow.Log(QStringLiteral("Cannot open \"%1\": %2").arg(path, QString::fromLocal8Bit(error.what())));
        }
    });
}

QString OpenWelcomeScreen(DemoState& ioState, HostQt::Workspace&) { return Describe(AskWelcomeScreen(ioState)); }

QString OpenAbout(DemoState&, HostQt::Workspace&)
{
    DLG::DoAboutDialog(L"Tarvix Studio", L"Reference host, Qt " QT_VERSION_STR, L"Harbour Films", 2026);
    return QStringLiteral("closed");
}

} // namespace Demo
