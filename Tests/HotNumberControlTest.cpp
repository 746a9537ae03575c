// The module's hot number on a real widget: typing, clamping, dragging.

#include <QImage>
#include <QLineEdit>
#include <QTest>

#include <algorithm>
#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ControlWindow.h"
#include "ScriptedUser.h"
#include "DLG/HotNumberControl.h"
#include "KOR/Stations.h"

namespace {

using TestSupport::ControlWindow;
using zelui::controls::InteractivePhase;

struct FilterCase {
    double minimum;
    int places;
    const char* typed;
    const char* shown;
    int beeps;
    friend void PrintTo(const FilterCase& inCase, std::ostream* outStream) { *outStream << inCase.typed; }
};

class InPlaceKeyFilter : public testing::TestWithParam<FilterCase> {};

TEST_P(InPlaceKeyFilter, AdmitsOnlyWhatTheNumberCanHold)
{
    ControlWindow window;
    DLG::HotNumberControl control(nullptr, window.Node());
    control.SetMinimum(GetParam().minimum);
    control.SetMaximum(1000.0);
    control.SetDecimalPlaces(GetParam().places);
    control.SetEnabled(true);
    ControlWindow::Place(control);
    QTest::mouseClick(HostQt::PeerWidget<QWidget>(&control), Qt::LeftButton);
    QLineEdit* field = ControlWindow::InPlaceField(control);
    ASSERT_NE(field, nullptr);
    QTest::keyClick(field, Qt::Key_Backspace);
    QTest::keyClicks(field, QString::fromLatin1(GetParam().typed));
    EXPECT_EQ(field->text(), QString::fromLatin1(GetParam().shown));
    EXPECT_EQ(window.Host().Counts().beeps, GetParam().beeps);
}

INSTANTIATE_TEST_SUITE_P(
    Settings, InPlaceKeyFilter,
    testing::Values(FilterCase{-96.0, 1, "-12.5", "-12.5", 0}, FilterCase{-96.0, 0, "-12.5", "-125", 1},
                    FilterCase{0.0, 0, "-1.5", "15", 2}, FilterCase{0.0, 2, "-1.5x", "1.5", 2},
                    FilterCase{0.0, 2, "1,5", "1,5", 0}));

TEST(HotNumberControl, TypedValuesAreClampedWithOneBeep)
{
    ControlWindow window;
    DLG::HotNumberControl control(nullptr, window.Node());
    control.SetMinimum(-96.0);
    control.SetMaximum(96.0);
    control.SetDecimalPlaces(1);
    control.SetEnabled(true);
    control.UpdateStringFromValue();
    ControlWindow::Place(control);
    int changes = 0;
    control.NotifyWhenChanged([&] { ++changes; });

    ControlWindow::TypeIn(control, QStringLiteral("200"));
    EXPECT_EQ(control.GetValue(), 96.0);
    EXPECT_EQ(control.GetText(), L"96.0");
    EXPECT_EQ(window.Host().Counts().beeps, 1);
    EXPECT_EQ(ControlWindow::InPlaceField(control), nullptr) << "Enter closes the field";

    ControlWindow::TypeIn(control, QStringLiteral("-100"));
    EXPECT_EQ(control.GetValue(), -96.0);
    EXPECT_EQ(window.Host().Counts().beeps, 2);

    ControlWindow::TypeIn(control, QStringLiteral("-3.5"));
    EXPECT_EQ(control.GetValue(), -3.5);
    EXPECT_EQ(window.Host().Counts().beeps, 2);
    EXPECT_EQ(changes, 3);
    EXPECT_TRUE(control.IsInRange(96.0));
    EXPECT_FALSE(control.IsInRange(96.05));
}

TEST(HotNumberControl, EscapeInTheFieldKeepsTheValue)
{
    ControlWindow window;
    DLG::HotNumberControl control(nullptr, window.Node());
    control.SetMaximum(100.0);
    control.SetValue(42.0);
    control.SetEnabled(true);
    ControlWindow::Place(control);
    QTest::mouseClick(HostQt::PeerWidget<QWidget>(&control), Qt::LeftButton);
    QTest::keyClicks(ControlWindow::InPlaceField(control), QStringLiteral("7"));
    QTest::keyClick(ControlWindow::InPlaceField(control), Qt::Key_Escape);
    EXPECT_EQ(control.GetValue(), 42.0);
    EXPECT_EQ(ControlWindow::InPlaceField(control), nullptr);
}

// A scripted control stepping by 0.1 is replaced by one that steps by the default increment.
TEST(HotNumberControl, ReplacementCopiesTheSettingsButNotTheIncrement)
{
    ControlWindow window;
    zelui::controls::UI_HotTextNumber original(nullptr, window.Node());
    original.SetValue(-6.0);
    original.SetMinimum(-96.0);
    original.SetMaximum(96.0);
    original.SetDecimalPlaces(1);
    original.SetIncrement(0.1);
    original.SetTextLabel(L"dB");
    original.SetOverwritePostLabel(true);
    original.SetFormatFlags(zelui::controls::kNumberFormat_ShowPlusSign);

    DLG::HotNumberControl replacement(original);
    EXPECT_EQ(replacement.GetValue(), -6.0);
    EXPECT_EQ(replacement.GetMinimum(), -96.0);
    EXPECT_EQ(replacement.GetMaximum(), 96.0);
    EXPECT_EQ(replacement.GetDecimalPlaces(), 1);
    EXPECT_EQ(replacement.GetTextLabel(), L"dB");
    EXPECT_TRUE(replacement.GetOverwritePostLabel());
    EXPECT_EQ(replacement.GetFormatFlags(), zelui::controls::kNumberFormat_ShowPlusSign);
    EXPECT_EQ(replacement.GetIncrement(), zelui::controls::UI_HotTextNumber::kDefaultIncrement);

    original.SetVisible(false);
    replacement.SetEnabled(true);
    QWidget* widget = ControlWindow::Place(replacement);
    TestSupport::DragAcross(widget, QPoint(20, 10), 5);
    EXPECT_EQ(replacement.GetValue(), -1.0) << "five pixels, five whole steps";
}

TEST(HotNumberControl, ADragReachesListenersAsOneChangeAndEscapeTakesItBack)
{
    ControlWindow window;
    DLG::HotNumberControl control(nullptr, window.Node());
    control.SetMaximum(1000.0);
    control.SetValue(10.0);
    control.SetEnabled(true);
    QWidget* widget = ControlWindow::Place(control);
    std::vector<InteractivePhase> phases;
    int changes = 0;
    control.NotifyWhenInteractiveChange([&](InteractivePhase inPhase) {
        if (phases.empty() || phases.back() != inPhase) {
            phases.push_back(inPhase);
        }
    });
    control.NotifyWhenChanged([&] { ++changes; });

    TestSupport::DragAcross(widget, QPoint(50, 10), 20);
    EXPECT_EQ(control.GetValue(), 30.0);
    EXPECT_EQ(control.GetText(), L"30");
    EXPECT_THAT(phases, testing::ElementsAre(InteractivePhase::kBegin, InteractivePhase::kContinue,
                                             InteractivePhase::kFinish));
    EXPECT_EQ(changes, 1);

    phases.clear();
    QTest::mousePress(widget, Qt::LeftButton, Qt::ShiftModifier, QPoint(50, 10));
    for (int x = 49; x >= 40; --x) {
        TestSupport::MoveMouse(widget, QPoint(x, 10), Qt::ShiftModifier);
    }
    EXPECT_EQ(control.GetValue(), 0.0) << "Shift steps ten at a time, down to the minimum";
    QTest::keyClick(widget, Qt::Key_Escape);
    QTest::mouseRelease(widget, Qt::LeftButton, Qt::NoModifier, QPoint(40, 10));
    EXPECT_EQ(control.GetValue(), 30.0);
    EXPECT_EQ(phases.back(), InteractivePhase::kCancel);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(ControlWindow::InPlaceField(control), nullptr) << "the release of a drag opens no field";
}

TEST(HotNumberControl, StartsDisabledWithAStationThatEndsWithIt)
{
    ControlWindow window;
    std::wstring station;
    {
        DLG::HotNumberControl control(nullptr, window.Node());
        station = control.GetStationName();
        EXPECT_TRUE(KOR::StationRegistry::IsRegistered(station));
        EXPECT_FALSE(control.IsEnabled());
        control.SetValueUnknown(true);
        control.UpdateStringFromValue();
        EXPECT_EQ(control.GetText(), zelui::controls::UI_HotTextNumber::GetUnknownValueText());
        QTest::mouseClick(ControlWindow::Place(control), Qt::LeftButton);
        EXPECT_EQ(ControlWindow::InPlaceField(control), nullptr) << "a disabled control opens no field";
    }
    EXPECT_FALSE(KOR::StationRegistry::IsRegistered(station));
}

// WCAG's relative luminance and contrast ratio.
double Luminance(const QColor& inColor)
{
    const auto channel = [](double inValue) {
        return inValue <= 0.03928 ? inValue / 12.92 : std::pow((inValue + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(inColor.redF()) + 0.7152 * channel(inColor.greenF()) + 0.0722 * channel(inColor.blueF());
}

double Contrast(const QColor& inA, const QColor& inB)
{
    const double a = Luminance(inA);
    const double b = Luminance(inB);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

// A disabled number is still read (a marker's number): its text keeps a contrast of 4.5:1 with
// the window, on a light and on a dark palette.
TEST(HotNumberControl, DisabledTextStaysReadable)
{
    ControlWindow window;
    DLG::HotNumberControl control(nullptr, window.Node());
    control.SetValue(3);
    control.UpdateStringFromValue();
    QWidget* place = ControlWindow::Place(control);
    QPalette dark = place->palette();
    dark.setColor(QPalette::Window, QColor(53, 53, 53));
    dark.setColor(QPalette::WindowText, QColor(230, 230, 230));
    for (const QPalette& palette : {place->palette(), dark}) {
        place->setPalette(palette);
        const QColor background = palette.color(QPalette::Active, QPalette::Window);
        const QImage picture = place->grab().toImage();
        double strongest = 1.0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                strongest = std::max(strongest, Contrast(picture.pixelColor(x, y), background));
            }
        }
        EXPECT_GE(strongest, 4.5) << "on a window of " << background.name().toStdString();
    }
}

} // namespace
