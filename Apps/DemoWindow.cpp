#include "DemoWindow.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTime>
#include <QVBoxLayout>

#include "zelcore/Error.h"

namespace Demo {

DemoWindow::DemoWindow(DemoState& ioState, HostQt::Workspace& inWorkspace, const QString& inProjectName)
    : mState(ioState), mWorkspace(inWorkspace), mLog(new QPlainTextEdit)
{
    setObjectName(QStringLiteral("MainWindow"));
    setWindowTitle(QStringLiteral("Tarvix Dialogs - %1").arg(inProjectName));

    auto* dialogs = new QGroupBox(QStringLiteral("Dialogs"));
    auto* buttons = new QVBoxLayout(dialogs);
    for (const DemoDialog& dialog : DemoDialogs()) {
        auto* button = new QPushButton(dialog.title + QStringLiteral("..."));
        button->setObjectName(dialog.window + QStringLiteral("Button"));
        connect(button, &QPushButton::clicked, this, [this, &dialog] { OpenDialog(dialog); });
        buttons->addWidget(button);
    }
    buttons->addStretch();

    mLog->setReadOnly(true);
    mLog->setObjectName(QStringLiteral("log"));
    auto* logBox = new QGroupBox(QStringLiteral("What the entry functions returned"));
    (new QVBoxLayout(logBox))->addWidget(mLog);

    auto* central = new QWidget;
    auto* layout = new QHBoxLayout(central);
    layout->addWidget(dialogs);
    layout->addWidget(logBox, 1);
    setCentralWidget(central);
    resize(820, 420);
    Log(QStringLiteral("Project \"%1\" open.").arg(inProjectName));
}

void DemoWindow::Log(const QString& inLine)
{
    mLog->appendPlainText(QTime::currentTime().toString(QStringLiteral("HH:mm:ss  ")) + inLine);
}

void DemoWindow::OpenDialog(const DemoDialog& inDialog)
{
    try {
        Log(inDialog.title + QStringLiteral(": ") + inDialog.open(mState, mWorkspace));
    } catch (const zelcore::Error& error) {
        Log(inDialog.title + QStringLiteral(": raised \"%1\"").arg(QString::fromStdWString(error.Message())));
    } catch (const std::exception& error) {
        Log(inDialog.title + QStringLiteral(": raised \"%1\"").arg(QString::fromLocal8Bit(error.what())));
    }
}

} // namespace Demo
