#pragma once

#include <QLineEdit>
#include <QTest>
#include <QWidget>

#include "HostQt/NodePeer.h"
#include "TestHost.h"
#include "zelui/HotTextNumber.h"

namespace TestSupport {

// A shown, active window for controls made on their own, with the test host behind it.
class ControlWindow {
public:
    ControlWindow()
    {
        mWindow.resize(320, 120);
        mWindow.show();
        mWindow.activateWindow();
        (void)QTest::qWaitForWindowActive(&mWindow);
        mNode = new zelui::ui::UI_Node(std::make_unique<zelui::ui::NodePeer>(&mWindow));
    }

    zelui::ui::UI_Node* Node() const { return mNode.get(); }
    TestHost& Host() { return mHost; }

    // Gives a control made in this window a place to be seen and clicked.
    static QWidget* Place(zelui::controls::UI_HotTextNumber& ioControl)
    {
        ioControl.SetLocalRect({10, 10, 200, 26});
        QWidget* widget = HostQt::PeerWidget<QWidget>(&ioControl);
        widget->show();
        return widget;
    }

    static QLineEdit* InPlaceField(const zelui::controls::UI_HotTextNumber& inControl)
    {
        return inControl.GetFirstChild() ? HostQt::PeerWidget<QLineEdit>(inControl.GetFirstChild()) : nullptr;
    }

    // Clicks the control open, types inText into its field and presses Enter.
    static void TypeIn(zelui::controls::UI_HotTextNumber& ioControl, const QString& inText)
    {
        QTest::mouseClick(HostQt::PeerWidget<QWidget>(&ioControl), Qt::LeftButton);
        QLineEdit* field = InPlaceField(ioControl);
        if (!field) {
            ADD_FAILURE() << "no in-place field opened";
            return;
        }
        QTest::keyClicks(field, inText);
        QTest::keyClick(field, Qt::Key_Return);
    }

private:
    TestHost mHost;
    QWidget mWindow;
    zelui::ui::UI_NodePtr mNode;
};

} // namespace TestSupport
