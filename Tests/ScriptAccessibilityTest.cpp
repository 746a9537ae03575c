// Every layout script, as the host builds it: each control a user works reaches the keyboard
// focus by Tab and has a name that a screen reader can say.

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "HostQt/HotTextNumberWidget.h"
#include "CheckedUser.h"
#include "TestHost.h"
#include "zelvrel/UI_Vrel.h"

namespace {

using TestSupport::CheckedUser;
using TestSupport::TestHost;

bool IsWorkedByTheUser(const QWidget& inWidget)
{
    return qobject_cast<const QAbstractButton*>(&inWidget) || qobject_cast<const QLineEdit*>(&inWidget) ||
           qobject_cast<const QAbstractSpinBox*>(&inWidget) || qobject_cast<const QAbstractItemView*>(&inWidget) ||
           qobject_cast<const QPlainTextEdit*>(&inWidget) || qobject_cast<const QTextEdit*>(&inWidget) ||
           qobject_cast<const QComboBox*>(&inWidget) || qobject_cast<const HostQt::HotTextNumberWidget*>(&inWidget);
}

// The controls the script names (Qt's own inner widgets, "qt_...", belong to their control).
std::vector<QWidget*> ScriptedControls(QWidget& inWindow)
{
    std::vector<QWidget*> controls;
    for (QWidget* child : inWindow.findChildren<QWidget*>()) {
        if (!child->objectName().isEmpty() && !child->objectName().startsWith(QLatin1String("qt_")) &&
            IsWorkedByTheUser(*child)) {
            controls.push_back(child);
        }
    }
    return controls;
}

std::vector<std::string> Problems(QWidget& inWindow)
{
    std::vector<std::string> problems;
    for (QWidget* control : ScriptedControls(inWindow)) {
        if (!(control->focusPolicy() & Qt::TabFocus)) {
            problems.push_back(control->objectName().toStdString() + ": not reached by Tab");
        }
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(control);
        if (!accessible || accessible->text(QAccessible::Name).trimmed().isEmpty()) {
            problems.push_back(control->objectName().toStdString() + ": no accessible name");
        }
    }
    return problems;
}

class EveryScript : public testing::TestWithParam<std::string> {};

TEST_P(EveryScript, ControlsAreReachedByTabAndNamed)
{
    TestHost host;
    QFile file(TestSupport::ScriptsDirectory() + QLatin1Char('/') + QString::fromStdString(GetParam()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    std::stringstream script(file.readAll().toStdString());

    std::vector<std::string> problems;
    int controls = 0;
    CheckedUser user;
    user.On(QStringLiteral("ScriptProbe"))
        .Inspect([&](QWidget& inWindow) {
            controls = static_cast<int>(ScriptedControls(inWindow).size());
            problems = Problems(inWindow);
        })
        .Close();
    zelvrel::UI_Vrel probe(L"ScriptProbe", nullptr, nullptr);
    ASSERT_TRUE(probe.ParseVrelScript(script));
    EXPECT_GT(controls, 0) << "the script has no control a user can work";
    EXPECT_THAT(problems, testing::IsEmpty());
}

// The test dialog has nothing to work but Enter and Escape.
std::vector<std::string> AllScripts()
{
    std::vector<std::string> scripts;
    for (const QString& name : QDir(TestSupport::ScriptsDirectory()).entryList({QStringLiteral("*.vrel")}, QDir::Files)) {
        if (name != QLatin1String("TestVrelDialog.vrel")) {
            scripts.push_back(name.toStdString());
        }
    }
    return scripts;
}

INSTANTIATE_TEST_SUITE_P(Scripts, EveryScript, testing::ValuesIn(AllScripts()),
                         [](const testing::TestParamInfo<std::string>& inInfo) {
                             return inInfo.param.substr(0, inInfo.param.size() - 5);
                         });

} // namespace
