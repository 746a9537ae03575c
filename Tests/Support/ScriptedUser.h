#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <functional>
#include <memory>

namespace TestSupport {

// Moves the mouse over inWidget with the main button held, as in a drag.
void MoveMouse(QWidget* inWidget, QPoint inPosition, Qt::KeyboardModifiers inModifiers = Qt::NoModifier);
// Presses the main button at inStart, moves sideways a pixel at a time by inDx, and releases,
// with inModifiers held throughout.
void DragAcross(QWidget* inWidget, QPoint inStart, int inDx, Qt::KeyboardModifiers inModifiers = Qt::NoModifier);

// What a modal message box said, as the user saw it.
struct SeenMessageBox {
    QString caption;
    QString text;
};

// One visit of the user to a modal window, named by its object name (a dialog's node name, or
// "MessageBox" for the host's message boxes). Its actions run in order with real input events.
class Step {
public:
    explicit Step(QString inWindow) : mWindow(std::move(inWindow)) {}

    // Types inText into the named control, key by key, at its cursor (replacing a selection).
    Step& Type(const QString& inControl, const QString& inText);
    // Replaces the named control's text: select all, delete, type.
    Step& Retype(const QString& inControl, const QString& inText);
    // Clicks the named control; in a message box, the button with that text.
    Step& Click(const QString& inControl);
    // Chooses the item inItem of the named drop-down list with the keyboard: Home, then Down
    // until it shows; each key that moves the selection is a change the dialog hears of.
    Step& Choose(const QString& inControl, const QString& inItem);
    // Drags across the named control by inDx pixels with the main button, in small moves.
    Step& Drag(const QString& inControl, int inDx, Qt::KeyboardModifiers inModifiers = Qt::NoModifier);
    // Presses a key in the window's focused control.
    Step& Press(Qt::Key inKey, Qt::KeyboardModifiers inModifiers = Qt::NoModifier);
    // Closes the window as its title bar's close button does.
    Step& Close();
    // Looks at the window without changing it.
    Step& Inspect(std::function<void(QWidget&)> inCheck);
    // Saves a picture of the window.
    Step& Grab(const QString& inPngPath);

    // In a file chooser. Selects the named items of its list as clicks do, Ctrl held from the
    // second on; waits for the folder's listing to show them.
    Step& SelectItems(const QStringList& inNames);
    // Goes to inFolder: types it into the file-name box and presses Return.
    Step& ChangeFolder(const QString& inFolder);
    // Chooses the file type at inIndex in the type box with the arrow keys.
    Step& ChooseType(int inIndex);
    // Clicks the chooser's Open (or Save, Choose) button.
    Step& Confirm();

    const QString& Window() const { return mWindow; }

private:
    friend class ScriptedUser;
    using Action = std::function<void(QWidget&, QStringList&)>;
    QString mWindow;
    std::vector<Action> mActions;
};

// Answers every modal window that opens, in the order the steps were given. A modal window
// that no step expects, or one left open after its steps, is a failure; it is dismissed so
// that the code under test can go on.
class ScriptedUser : public QObject {
public:
    ScriptedUser();
    ~ScriptedUser() override;

    Step& On(const QString& inWindow);
    const std::vector<SeenMessageBox>& MessageBoxes() const { return mMessageBoxes; }
    // Everything that went wrong, steps never reached included. Stops watching.
    QStringList Finish();

private:
    void Tick();
    void RunStep(QWidget* inWindow, std::shared_ptr<Step> inStep);
    void Dismiss(QWidget* inWindow);

    std::deque<std::shared_ptr<Step>> mSteps;
    std::vector<SeenMessageBox> mMessageBoxes;
    QStringList mFailures;
    QTimer mTimer;
    int mScheduled = 0;
    QPointer<QWidget> mLastWindow;
    QPointer<QWidget> mRunningWindow; // whose step is running now
    int mStuckTicks = 0;
};

} // namespace TestSupport
