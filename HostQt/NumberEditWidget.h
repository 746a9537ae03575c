#pragma once

#include <QDoubleSpinBox>

namespace HostQt {

// The widget behind zelui::controls::UI_NumberEdit, named "UI_NumberEdit" in layout scripts.
// It remembers the exact value it was given until the user changes it, so a value with more
// decimal places than the field shows survives a dialog that only looked at it.
class NumberEditWidget : public QDoubleSpinBox {
    Q_OBJECT
public:
    explicit NumberEditWidget(QWidget* inParent = nullptr);

    void SetExactValue(double inValue);
    double ExactValue();

private:
    double mExact = 0.0;
    double mShownExact = 0.0; // mExact rounded to the places shown
    bool mHasExact = false;
};

} // namespace HostQt
