#pragma once

#include <QPointer>
#include <QWidget>

namespace zelui::controls {
class UI_HotTextNumber;
}

namespace HostQt {

// The widget behind zelui::controls::UI_HotTextNumber, named "UI_HotTextNumber" in layout
// scripts. It draws the control's text underlined as something to drag or click, and turns
// mouse and keys into the control's drags, steps and in-place editing. Its properties are the
// control's starting values when a script builds it.
class HotTextNumberWidget : public QWidget {
    Q_OBJECT
    Q_PROPERTY(double value MEMBER mValue)
    Q_PROPERTY(double minimum MEMBER mMinimum)
    Q_PROPERTY(double maximum MEMBER mMaximum)
    Q_PROPERTY(int decimals MEMBER mDecimals)
    Q_PROPERTY(double increment MEMBER mIncrement)
    Q_PROPERTY(QString label MEMBER mLabel)
    Q_PROPERTY(QString displayText READ DisplayText)
public:
    explicit HotTextNumberWidget(QWidget* inParent = nullptr);

    void SetNode(zelui::controls::UI_HotTextNumber* inNode);
    // Gives a control made for this widget the values the script set.
    void InitializeNode(zelui::controls::UI_HotTextNumber& ioNode) const;

    // What the widget shows: the control's text and its label.
    QString DisplayText() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* inEvent) override;
    void mousePressEvent(QMouseEvent* inEvent) override;
    void mouseMoveEvent(QMouseEvent* inEvent) override;
    void mouseReleaseEvent(QMouseEvent* inEvent) override;
    void keyPressEvent(QKeyEvent* inEvent) override;
    void focusOutEvent(QFocusEvent* inEvent) override;
    void hideEvent(QHideEvent* inEvent) override;

private:
    void CancelDrag();
    void Step(double inSteps, Qt::KeyboardModifiers inModifiers);
    double Factor(Qt::KeyboardModifiers inModifiers) const;

    zelui::controls::UI_HotTextNumber* mNode = nullptr;
    double mValue = 0.0;
    double mMinimum = 0.0;
    double mMaximum = 100.0;
    int mDecimals = 0;
    double mIncrement = 1.0;
    QString mLabel;

    bool mPressed = false;
    bool mPressConsumed = false;
    bool mDragging = false;
    int mPressX = 0;
    double mDragStart = 0.0;
};

} // namespace HostQt
