#include "DemoWindow.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTime>
#include <QVBoxLayout>

#include "BE/ProjectSettings.h"
#include "DLG/Module.h"
#include "DLG/TimecodeInfo.h"
#include "HostQt/Conform.h"
#include "HostQt/NodePeer.h"
#include "zelcore/Error.h"

namespace Demo {

namespace {

struct FormatChoice {
    const char* name;
    unsigned int format;
};

const FormatChoice kFormats[] = {
    {"29.97 drop-frame", KOR::kTimecodeFormat_SMPTE2997DropFrame},
    {"29.97 non-drop", KOR::kTimecodeFormat_SMPTE2997NonDrop},
    {"Frames", KOR::kTimecodeFormat_Frames},
    {"Feet + frames 35mm", KOR::kTimecodeFormat_FeetFrames35mm},
    {"Milliseconds", KOR::kTimecodeFormat_Milliseconds},
};

QString ToQ(const std::wstring& inText) { return QString::fromStdWString(inText); }

} // namespace

QGroupBox* DemoWindow::MakeControlsPanel()
{
    auto* panel = new QGroupBox(QStringLiteral("Controls"));
    auto* layout = new QFormLayout(panel);
    mControlsNode = new zelui::ui::UI_Node(std::make_unique<zelui::ui::NodePeer>(panel));

    mGain = new DLG::HotNumberControl(nullptr, mControlsNode.get());
    mGain->SetMinimum(-96.0);
    mGain->SetMaximum(96.0);
    mGain->SetDecimalPlaces(1);
    mGain->SetTextLabel(L"dB");
    mGain->SetEnabled(true);
    mGain->UpdateStringFromValue();
    mGain->NotifyWhenChanged([this] { Log(QStringLiteral("Gain: %1 dB").arg(ToQ(mGain->GetText()))); });
    HostQt::PeerWidget<QWidget>(mGain.get())->setObjectName(QStringLiteral("gainHotTextNumber"));
    layout->addRow(QStringLiteral("Gain:"), HostQt::PeerWidget<QWidget>(mGain.get()));

    mPosition = new DLG::TimeCtrl(nullptr, mControlsNode.get(), DLG::CreateNotifyingTimecodeControlInfo(mProject));
    mPosition->SetTime(KOR::Time::FromSeconds(3600));
    mPosition->SetEnabled(true);
    mPosition->NotifyWhenChanged([this] { Log(QStringLiteral("Position: %1").arg(ToQ(mPosition->GetText()))); });
    HostQt::PeerWidget<QWidget>(mPosition.get())->setObjectName(QStringLiteral("positionTimecodeControl"));
    layout->addRow(QStringLiteral("Position:"), HostQt::PeerWidget<QWidget>(mPosition.get()));

    auto* formats = new QComboBox;
    formats->setObjectName(QStringLiteral("timeDisplayPopup"));
    for (const FormatChoice& choice : kFormats) {
        formats->addItem(QString::fromLatin1(choice.name), choice.format);
    }
    formats->setCurrentIndex(formats->findData(mProject->GetProjectSettings()->GetTimeDisplayFormat()));
    connect(formats, &QComboBox::currentIndexChanged, this, [this, formats] {
        mProject->GetProjectSettings()->SetTimeDisplayFormat(formats->currentData().toUInt());
        Log(QStringLiteral("Project time display: %1").arg(formats->currentText()));
    });
    layout->addRow(QStringLiteral("Time display:"), formats);
    return panel;
}

DemoWindow::DemoWindow(DemoState& ioState, HostQt::Workspace& inWorkspace, BE::ProjectRef inProject)
    : mProject(std::move(inProject)), mState(ioState), mWorkspace(inWorkspace), mLog(new QPlainTextEdit)
{
    const QString inProjectName = ToQ(mProject->GetName());
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
    auto* left = new QVBoxLayout;
    left->addWidget(dialogs);
    left->addWidget(MakeControlsPanel());

    mLog->setReadOnly(true);
    mLog->setObjectName(QStringLiteral("log"));
    auto* logBox = new QGroupBox(QStringLiteral("What the entry functions returned"));
    (new QVBoxLayout(logBox))->addWidget(mLog);

    auto* central = new QWidget;
    auto* layout = new QHBoxLayout(central);
    layout->addLayout(left);
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

void DemoWindow::OpenProject(BE::ProjectRef inProject)
{
    mProject = inProject;
    DLG::SetProject(inProject);
    HostQt::SetOpenProject(inProject);
    Log(QStringLiteral("Opened \"%1\" from %2")
            .arg(QString::fromStdWString(inProject->GetName()), QString::fromStdWString(inProject->GetFilePath())));
}

} // namespace Demo
