#include "ScriptedUser.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QMouseEvent>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTest>

#include <cstdlib>

namespace TestSupport {

namespace {

constexpr int kTickMs = 5;
// A window left open this long after its steps is stuck; windows that wait for work on a loaded
// machine need a few seconds.
constexpr int kStuckTicks = 1000;

QWidget* FindControl(QWidget& inWindow, const QString& inName, QStringList& outFailures)
{
    if (auto* box = qobject_cast<QMessageBox*>(&inWindow)) {
        for (QAbstractButton* button : box->buttons()) {
            if (button->text().remove(QLatin1Char('&')) == inName) {
                return button;
            }
        }
    }
    QWidget* control = inWindow.findChild<QWidget*>(inName);
    if (!control) {
        outFailures << QStringLiteral("%1 has no control \"%2\"").arg(inWindow.objectName(), inName);
    }
    return control;
}

// A control that lacks the focus gets it the way a person gives it: by clicking into it. Keys
// then go to what has the focus inside it (an in-place field, say).
QWidget* FocusByClick(QWidget* inControl)
{
    QWidget* focus = inControl->window()->focusWidget();
    if (focus != inControl && !inControl->isAncestorOf(focus)) {
        QTest::mouseClick(inControl, Qt::LeftButton);
        focus = inControl->window()->focusWidget();
    }
    return focus && (focus == inControl || inControl->isAncestorOf(focus)) ? focus : inControl;
}

// Where a person clicks a control: a check box or radio button on its indicator, since a wide
// one is blank past its label; anything else in the middle.
QPoint ClickPoint(const QWidget& inControl)
{
    QStyleOptionButton option;
    option.initFrom(&inControl);
    if (qobject_cast<const QRadioButton*>(&inControl)) {
        return inControl.style()->subElementRect(QStyle::SE_RadioButtonIndicator, &option, &inControl).center();
    }
    if (qobject_cast<const QCheckBox*>(&inControl)) {
        return inControl.style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, &inControl).center();
    }
    return inControl.rect().center();
}

QWidget* FocusTarget(QWidget& inWindow)
{
    QWidget* focus = QApplication::focusWidget();
    return focus && focus->window() == &inWindow ? focus : &inWindow;
}

} // namespace

void MoveMouse(QWidget* inWidget, QPoint inPosition, Qt::KeyboardModifiers inModifiers)
{
    // QTest's mouse moves carry no modifiers; a drag with Shift held needs them.
    QMouseEvent move(QEvent::MouseMove, inPosition, inWidget->mapToGlobal(inPosition), Qt::NoButton, Qt::LeftButton,
                     inModifiers);
    QApplication::sendEvent(inWidget, &move);
}

void DragAcross(QWidget* inWidget, QPoint inStart, int inDx, Qt::KeyboardModifiers inModifiers)
{
    QTest::mousePress(inWidget, Qt::LeftButton, inModifiers, inStart);
    const int direction = inDx < 0 ? -1 : 1;
    for (int moved = 1; moved <= std::abs(inDx); ++moved) {
        MoveMouse(inWidget, inStart + QPoint(direction * moved, 0), inModifiers);
    }
    QTest::mouseRelease(inWidget, Qt::LeftButton, inModifiers, inStart + QPoint(inDx, 0));
}

Step& Step::Type(const QString& inControl, const QString& inText)
{
    mActions.push_back([inControl, inText](QWidget& inWindow, QStringList& outFailures) {
        if (QWidget* control = FindControl(inWindow, inControl, outFailures)) {
            QTest::keyClicks(FocusByClick(control), inText);
        }
    });
    return *this;
}

Step& Step::Retype(const QString& inControl, const QString& inText)
{
    mActions.push_back([inControl, inText](QWidget& inWindow, QStringList& outFailures) {
        if (QWidget* control = FindControl(inWindow, inControl, outFailures)) {
            QWidget* target = FocusByClick(control);
            QTest::keyClick(target, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(target, Qt::Key_Delete);
            QTest::keyClicks(target, inText);
        }
    });
    return *this;
}

Step& Step::Click(const QString& inControl)
{
    mActions.push_back([inControl](QWidget& inWindow, QStringList& outFailures) {
        if (QWidget* control = FindControl(inWindow, inControl, outFailures)) {
            QTest::mouseClick(control, Qt::LeftButton, Qt::NoModifier, ClickPoint(*control));
        }
    });
    return *this;
}

Step& Step::Choose(const QString& inControl, const QString& inItem)
{
    mActions.push_back([inControl, inItem](QWidget& inWindow, QStringList& outFailures) {
        auto* list = qobject_cast<QComboBox*>(FindControl(inWindow, inControl, outFailures));
        if (!list) {
            return;
        }
        if (list->currentIndex() != 0) {
            QTest::keyClick(list, Qt::Key_Home);
        }
        for (int tries = list->count(); list->currentText() != inItem && tries > 0; --tries) {
            QTest::keyClick(list, Qt::Key_Down);
        }
        if (list->currentText() != inItem) {
            outFailures << QStringLiteral("%1 has no item \"%2\"").arg(inControl, inItem);
        }
    });
    return *this;
}

Step& Step::Drag(const QString& inControl, int inDx, Qt::KeyboardModifiers inModifiers)
{
    mActions.push_back([inControl, inDx, inModifiers](QWidget& inWindow, QStringList& outFailures) {
        if (QWidget* control = FindControl(inWindow, inControl, outFailures)) {
            DragAcross(control, QPoint(4, control->height() / 2), inDx, inModifiers);
        }
    });
    return *this;
}

Step& Step::Press(Qt::Key inKey, Qt::KeyboardModifiers inModifiers)
{
    mActions.push_back([inKey, inModifiers](QWidget& inWindow, QStringList&) {
        QTest::keyClick(FocusTarget(inWindow), inKey, inModifiers);
    });
    return *this;
}

Step& Step::Close()
{
    mActions.push_back([](QWidget& inWindow, QStringList&) { inWindow.close(); });
    return *this;
}

Step& Step::Inspect(std::function<void(QWidget&)> inCheck)
{
    mActions.push_back([inCheck = std::move(inCheck)](QWidget& inWindow, QStringList&) { inCheck(inWindow); });
    return *this;
}

Step& Step::Grab(const QString& inPngPath)
{
    mActions.push_back([inPngPath](QWidget& inWindow, QStringList& outFailures) {
        if (!inWindow.grab().save(inPngPath, "PNG")) {
            outFailures << QStringLiteral("could not save %1").arg(inPngPath);
        }
    });
    return *this;
}

namespace {

constexpr int kListingWaitMs = 20000;

// The row of the list's folder that shows inName; invalid while the listing has not brought it.
QModelIndex ListItem(const QListView& inList, const QString& inName)
{
    const QAbstractItemModel* model = inList.model();
    const QModelIndex root = inList.rootIndex();
    for (int row = 0; row < model->rowCount(root); ++row) {
        const QModelIndex index = model->index(row, 0, root);
        if (index.data().toString() == inName) {
            return index;
        }
    }
    return {};
}

} // namespace

Step& Step::SelectItems(const QStringList& inNames)
{
    mActions.push_back([inNames](QWidget& inWindow, QStringList& outFailures) {
        auto* list = qobject_cast<QListView*>(FindControl(inWindow, QStringLiteral("listView"), outFailures));
        if (!list) {
            return;
        }
        for (qsizetype at = 0; at < inNames.size(); ++at) {
            QModelIndex item;
            if (!QTest::qWaitFor([&] { return (item = ListItem(*list, inNames[at])).isValid(); }, kListingWaitMs)) {
                outFailures << QStringLiteral("%1 does not list \"%2\"").arg(inWindow.objectName(), inNames[at]);
                return;
            }
            // Whatever the listing brought with the item (its sorting, say) settles first.
            QCoreApplication::processEvents();
            item = ListItem(*list, inNames[at]);
            list->scrollTo(item);
            QTest::mouseClick(list->viewport(), Qt::LeftButton, at == 0 ? Qt::NoModifier : Qt::ControlModifier,
                              list->visualRect(item).center());
        }
    });
    return *this;
}

Step& Step::ChangeFolder(const QString& inFolder)
{
    Retype(QStringLiteral("fileNameEdit"), inFolder);
    mActions.push_back([](QWidget& inWindow, QStringList& outFailures) {
        if (QWidget* box = FindControl(inWindow, QStringLiteral("fileNameEdit"), outFailures)) {
            QTest::keyClick(box, Qt::Key_Return);
        }
    });
    return *this;
}

Step& Step::ChooseType(int inIndex)
{
    mActions.push_back([inIndex](QWidget& inWindow, QStringList& outFailures) {
        auto* types = qobject_cast<QComboBox*>(FindControl(inWindow, QStringLiteral("fileTypeCombo"), outFailures));
        if (!types || inIndex < 0 || inIndex >= types->count()) {
            outFailures << QStringLiteral("%1 has no file type %2").arg(inWindow.objectName()).arg(inIndex);
            return;
        }
        while (types->currentIndex() != inIndex) {
            QTest::keyClick(types, types->currentIndex() < inIndex ? Qt::Key_Down : Qt::Key_Up);
        }
    });
    return *this;
}

Step& Step::Confirm()
{
    mActions.push_back([](QWidget& inWindow, QStringList& outFailures) {
        auto* buttons =
            qobject_cast<QDialogButtonBox*>(FindControl(inWindow, QStringLiteral("buttonBox"), outFailures));
        for (QAbstractButton* button : buttons ? buttons->buttons() : QList<QAbstractButton*>()) {
            if (buttons->buttonRole(button) == QDialogButtonBox::AcceptRole) {
                if (!button->isEnabled()) {
                    outFailures << QStringLiteral("%1: \"%2\" is disabled").arg(inWindow.objectName(), button->text());
                }
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
    });
    return *this;
}

ScriptedUser::ScriptedUser()
{
    mTimer.setInterval(kTickMs);
    connect(&mTimer, &QTimer::timeout, this, &ScriptedUser::Tick);
    mTimer.start();
}

ScriptedUser::~ScriptedUser() = default;

Step& ScriptedUser::On(const QString& inWindow)
{
    mSteps.push_back(std::make_shared<Step>(inWindow));
    return *mSteps.back();
}

QStringList ScriptedUser::Finish()
{
    mTimer.stop();
    for (const auto& step : mSteps) {
        mFailures << QStringLiteral("the window %1 never opened").arg(step->Window());
    }
    mSteps.clear();
    return mFailures;
}

void ScriptedUser::Tick()
{
    QWidget* window = QApplication::activeModalWidget();
    if (mScheduled > 0 || !window || !window->isVisible()) {
        mStuckTicks = 0;
        return;
    }
    // A step that waits for its window (on a worker, say) is not a window left open, and the next
    // step, even for a window of the same name, is for the window that comes after it.
    if (window == mRunningWindow) {
        mStuckTicks = 0;
        return;
    }
    if (!mSteps.empty() && mSteps.front()->Window() == window->objectName()) {
        std::shared_ptr<Step> step = mSteps.front();
        mSteps.pop_front();
        mStuckTicks = 0;
        ++mScheduled;
        // The step runs from its own event so that a modal loop it opens does not stop this timer.
        QTimer::singleShot(0, this, [this, target = QPointer<QWidget>(window), step] {
            --mScheduled;
            if (target && target->isVisible()) {
                RunStep(target, step);
            } else {
                mFailures << QStringLiteral("%1 closed before its step ran").arg(step->Window());
            }
        });
        return;
    }
    if (window != mLastWindow) {
        const auto* box = qobject_cast<QMessageBox*>(window);
        mFailures << QStringLiteral("unexpected modal window %1 (\"%2\"%3)")
                         .arg(window->objectName(), window->windowTitle(),
                              box ? QStringLiteral(": ") + box->text() : QString());
        mLastWindow = window;
        Dismiss(window);
    } else if (++mStuckTicks > kStuckTicks) {
        mFailures << QStringLiteral("%1 stayed open after its steps").arg(window->objectName());
        Dismiss(window);
    }
}

void ScriptedUser::RunStep(QWidget* inWindow, std::shared_ptr<Step> inStep)
{
    mLastWindow = inWindow;
    const QPointer<QWidget> outerRunning = std::exchange(mRunningWindow, inWindow);
    struct Restore {
        QPointer<QWidget>& mRunning;
        QPointer<QWidget> mOuter;
        ~Restore() { mRunning = mOuter; }
    } restore{mRunningWindow, outerRunning};
    if (auto* box = qobject_cast<QMessageBox*>(inWindow)) {
        mMessageBoxes.push_back({box->windowTitle(), box->text()});
    }
    QPointer<QWidget> window(inWindow);
    for (const Step::Action& action : inStep->mActions) {
        if (!window || !window->isVisible()) {
            mFailures << QStringLiteral("%1 closed before all its actions ran").arg(inStep->Window());
            return;
        }
        action(*window, mFailures);
    }
}

void ScriptedUser::Dismiss(QWidget* inWindow)
{
    mStuckTicks = 0;
    if (auto* dialog = qobject_cast<QDialog*>(inWindow)) {
        dialog->reject();
    } else {
        inWindow->close();
    }
}

} // namespace TestSupport
