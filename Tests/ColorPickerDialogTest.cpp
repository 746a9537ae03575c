// The colour picker's container and dialog: one change per update, the handlers, and the
// dialog through its entry function with real input.

#include <QApplication>
#include <QTest>
#include <QWidget>

#include <cstring>
#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ColorPicker/ColorPickerDialog.h"
#include "ColorPicker/ColorPickerDlog.h"
#include "ColorPicker/ColorPickerViews.h"
#include "CheckedUser.h"
#include "TestHost.h"

namespace {

using DLG::ColorPicker::ColorPickerDlog;
using DLG::ColorPicker::ColorPickerModel;
using DLG::ColorPicker::UI_ColorPickerControlsContainer;
using TestSupport::CheckedUser;
using Color = KOR::ParamColor<unsigned long>;
using zelui::controls::UI_HotTextNumber;

constexpr const wchar_t* kFieldIDs[] = {L"HotText_Hue",   L"HotText_Sat",   L"HotText_Bri",   L"HotText_Red",
                                        L"HotText_Green", L"HotText_Blue",  L"HotText_HSL_H", L"HotText_HSL_S",
                                        L"HotText_HSL_L", L"HotText_YUV_Y", L"HotText_YUV_U", L"HotText_YUV_V"};

class ColorPickerTest : public testing::Test {
protected:
    boost::intrusive_ptr<ColorPickerDlog> MakeDialog(Color inColor)
    {
        return new ColorPickerDlog(mHost.Workspace().GetDrawSupplier(), nullptr, inColor, L"Color Picker");
    }

    static std::vector<double> FieldValues(const UI_ColorPickerControlsContainer& inContainer)
    {
        std::vector<double> values;
        for (const wchar_t* id : kFieldIDs) {
            values.push_back(inContainer.FindChild<UI_HotTextNumber>(id)->GetValue());
        }
        return values;
    }

    static QWidget* Child(QWidget& inWindow, const char* inName)
    {
        auto* child = inWindow.findChild<QWidget*>(QString::fromLatin1(inName));
        EXPECT_NE(child, nullptr) << inName;
        return child;
    }

    TestSupport::TestHost mHost{true};
};

TEST_F(ColorPickerTest, AnUpdateAppliesOnlyItsFirstDifference)
{
    const auto dialog = MakeDialog(Color(10, 20, 30));
    UI_ColorPickerControlsContainer& picker = *dialog->GetContainer();
    const std::vector<double> fieldsBefore = FieldValues(picker);

    ColorPickerModel changed = picker.GetConstModel();
    changed.SetMode(kTarvixColorPickerMode_Red);
    changed.SetRed(200);
    picker.ModelUpdate(&changed);
    EXPECT_EQ(picker.GetConstModel().GetMode(), kTarvixColorPickerMode_Red);
    EXPECT_EQ(picker.GetConstModel().GetColorRGB(), Color(10, 20, 30)) << "the colour waits for the next update";
    EXPECT_EQ(FieldValues(picker), fieldsBefore) << "a mode change leaves every field as it was";

    picker.ModelUpdate(&changed);
    EXPECT_EQ(picker.GetConstModel().GetColorRGB(), Color(200, 20, 30));
    EXPECT_EQ(picker.FindChild<UI_HotTextNumber>(L"HotText_Red")->GetValue(), 200.0);
    EXPECT_EQ(picker.FindChild<UI_HotTextNumber>(L"HotText_YUV_Y")->GetValue(), picker.GetConstModel().GetYUV_Y());
    EXPECT_EQ(picker.GetConstModel().GetHexString(), L"C8141E");
}

TEST_F(ColorPickerTest, FieldsStoreWhatTheyShowInTheirOwnUnits)
{
    const auto dialog = MakeDialog(Color(255, 0, 0));
    UI_ColorPickerControlsContainer& picker = *dialog->GetContainer();
    const auto saturation = picker.FindChild<UI_HotTextNumber>(L"HotText_Sat");
    saturation->SetValue(50.0);
    picker.HotTextNumberChanged(saturation.get(), zelui::controls::kInteractive_Begin);
    EXPECT_EQ(picker.GetConstModel().GetSaturation(), 1.0F) << "only value messages count";
    picker.HotTextNumberChanged(saturation.get(), UI_ColorPickerControlsContainer::kValueChangedMessage);
    EXPECT_FLOAT_EQ(picker.GetConstModel().GetSaturation(), 0.5F);
    EXPECT_EQ(picker.GetConstModel().GetColorRGB(), Color(255, 128, 128));

    const auto u = picker.FindChild<UI_HotTextNumber>(L"HotText_YUV_U");
    EXPECT_EQ(u->GetMinimum(), -128.0);
    EXPECT_EQ(u->GetMaximum(), 127.0);
    EXPECT_THROW(picker.FindChild<UI_HotTextNumber>(L"Hex"), zelcore::Error) << "the hex field is a text edit";
}

TEST_F(ColorPickerTest, ViewPositionsSetTheModesComponents)
{
    const auto dialog = MakeDialog(Color(40, 80, 120));
    UI_ColorPickerControlsContainer& picker = *dialog->GetContainer();
    ColorPickerModel changed = picker.GetConstModel();
    changed.SetSquareViewCoords({255.0F, 0.0F});
    picker.ModelUpdate(&changed);
    EXPECT_EQ(picker.GetConstModel().GetSaturation(), 1.0F);
    EXPECT_EQ(picker.GetConstModel().GetBrightness(), 0.0F);
    EXPECT_EQ(picker.GetConstModel().GetColorRGB(), Color(0, 0, 0));

    changed = picker.GetConstModel();
    changed.SetMode(kTarvixColorPickerMode_YUV_Y);
    picker.ModelUpdate(&changed);
    changed = picker.GetConstModel();
    changed.SetSquareViewCoords({0.0F, 255.0F});
    picker.ModelUpdate(&changed);
    EXPECT_EQ(picker.GetConstModel().GetYUV_U(), -128);
    EXPECT_EQ(picker.GetConstModel().GetYUV_V(), 127);
    EXPECT_EQ(picker.FindChild<UI_HotTextNumber>(L"HotText_YUV_V")->GetValue(), 127.0);
}

TEST_F(ColorPickerTest, HexTextWebMaskSafeColourAndChip)
{
    const auto dialog = MakeDialog(Color(0x9F, 0x40, 0x1F));
    UI_ColorPickerControlsContainer& picker = *dialog->GetContainer();
    const auto hex = picker.FindChild<zelui::controls::UI_TextEdit>(L"Hex");
    hex->SetText(L"xyz");
    picker.TextEditChanged();
    EXPECT_EQ(picker.GetConstModel().GetColorRGB(), Color(0x9F, 0x40, 0x1F));
    EXPECT_EQ(hex->GetText(), L"9F401F") << "an unreadable text gives way to the colour's";

    const auto webSafe = picker.FindChild<zelui::controls::UI_CheckBox>(L"WebSafeCheckbox");
    webSafe->SetChecked(true);
    picker.WebSafeCheckboxChanged();
    EXPECT_EQ(picker.GetMaskedColor(), Color(0x80, 0x40, 0x00));
    EXPECT_EQ(picker.FindChild<UI_HotTextNumber>(L"HotText_Red")->GetValue(), 0x9F) << "the fields stay unmasked";
    EXPECT_EQ(hex->GetText(), L"804000");
    ColorPickerModel upperChip = picker.GetConstModel();
    upperChip.SetChipViewCoords({10.5F, 5.5F});
    picker.ModelUpdate(&upperChip);
    webSafe->SetChecked(false);
    picker.WebSafeCheckboxChanged();
    EXPECT_EQ(picker.GetMaskedColor(), Color(0x9F, 0x40, 0x1F)) << "the chip's masked look is not stored";

    hex->SetText(L"ff0000");
    picker.TextEditChanged();
    EXPECT_EQ(picker.GetConstModel().GetColorRGB(), Color(255, 0, 0));
    const auto ntscButton = picker.FindChild<zelui::controls::UI_PictureButton>(L"NTSCButton");
    EXPECT_TRUE(ntscButton->IsVisible()) << "pure red is not broadcast-safe";
    // Each press applies one replacement; red's first is still a little too strong.
    ntscButton->Press();
    EXPECT_EQ(picker.GetConstModel().GetColorRGB(), Color(201, 0, 0));
    ntscButton->Press();
    EXPECT_EQ(picker.GetConstModel().GetColorRGB(), Color(186, 0, 0));
    hex->SetText(L"b40000");
    picker.TextEditChanged();
    EXPECT_FALSE(ntscButton->IsVisible()) << "(180, 0, 0) is broadcast-safe";

    // The original half of the chip brings the opening colour back, as often as it is clicked.
    for (int click = 0; click < 2; ++click) {
        hex->SetText(L"123456");
        picker.TextEditChanged();
        ColorPickerModel changed = picker.GetConstModel();
        changed.SetChipViewCoords({10.5F, 70.5F});
        picker.ModelUpdate(&changed);
        EXPECT_EQ(picker.GetConstModel().GetColorRGB(), Color(0x9F, 0x40, 0x1F)) << "click " << click;
    }
}

// Each row changes two parts of a record; only the one tested first may take effect.
TEST_F(ColorPickerTest, TheFirstOfTwoDifferencesWins)
{
    using Change = std::function<void(ColorPickerModel&)>;
    using Applied = std::function<bool(const ColorPickerModel&)>;
    const Change hsb = [](ColorPickerModel& ioModel) { ioModel.SetHue(120.0F); };
    const Applied hsbApplied = [](const ColorPickerModel& inModel) { return inModel.GetHue() == 120.0F; };
    const Change rgb = [](ColorPickerModel& ioModel) { ioModel.SetBlue(7); };
    const Applied rgbApplied = [](const ColorPickerModel& inModel) { return inModel.GetBlue() == 7; };
    const Change hsl = [](ColorPickerModel& ioModel) { ioModel.SetHSL_L(0.9F); };
    const Applied hslApplied = [](const ColorPickerModel& inModel) { return inModel.GetHSL_L() == 0.9F; };
    const Change yuv = [](ColorPickerModel& ioModel) { ioModel.SetYUV_Y(33); };
    const Applied yuvApplied = [](const ColorPickerModel& inModel) { return inModel.GetYUV_Y() == 33; };
    const Change square = [](ColorPickerModel& ioModel) { ioModel.SetSquareViewCoords({51.0F, 102.0F}); };
    const Applied squareApplied = [](const ColorPickerModel& inModel) { return inModel.GetSaturation() == 0.2F; };
    const Change slider = [](ColorPickerModel& ioModel) { ioModel.SetSliderViewCoords({0.0F, 255.0F}); };
    const Applied sliderApplied = [](const ColorPickerModel& inModel) { return inModel.GetHue() == 359.0F; };
    const Change chip = [](ColorPickerModel& ioModel) { ioModel.SetChipViewCoords({10.5F, 70.5F}); };
    const Applied chipApplied = [](const ColorPickerModel& inModel) { return inModel.GetBlue() == 160; };
    const Change hex = [](ColorPickerModel& ioModel) { ioModel.SetHexString(L"000000"); };
    const Applied hexApplied = [](const ColorPickerModel& inModel) { return inModel.GetBlue() == 0; };
    const struct {
        const char* name;
        Change first;
        Applied firstApplied;
        Change second;
        Applied secondApplied;
    } rows[] = {
        {"HSB before RGB", hsb, hsbApplied, rgb, rgbApplied},
        {"RGB before HSL", rgb, rgbApplied, hsl, hslApplied},
        {"HSL before YUV", hsl, hslApplied, yuv, yuvApplied},
        {"YUV before the square", yuv, yuvApplied, square, squareApplied},
        {"square before slider", square, squareApplied, slider, sliderApplied},
        {"slider before chip", slider, sliderApplied, chip, chipApplied},
        {"chip before hex", chip, chipApplied, hex, hexApplied},
    };
    for (const auto& row : rows) {
        const auto dialog = MakeDialog(Color(40, 80, 160));
        UI_ColorPickerControlsContainer& picker = *dialog->GetContainer();
        picker.InitRGB(Color(10, 20, 30)); // away from the opening colour, which the chip brings back
        ColorPickerModel changed = picker.GetConstModel();
        row.first(changed);
        row.second(changed);
        picker.ModelUpdate(&changed);
        EXPECT_TRUE(row.firstApplied(picker.GetConstModel())) << row.name;
        EXPECT_FALSE(row.secondApplied(picker.GetConstModel())) << row.name;
    }
}

TEST_F(ColorPickerTest, ControlsAreFoundByTheirIdentifiers)
{
    const auto dialog = MakeDialog(Color(1, 2, 3));
    const UI_ColorPickerControlsContainer& picker = *dialog->GetContainer();
    const char* const radios[] = {"Hue",   "Saturation", "Brightness", "Red",   "Green", "Blue",
                                  "HSL_H", "HSL_S",      "HSL_L",      "YUV_Y", "YUV_U", "YUV_V"};
    for (const char* radio : radios) {
        const std::wstring id(radio, radio + std::strlen(radio));
        ASSERT_NE(picker.FindChild<zelui::controls::UI_RadioButton>(id), nullptr) << radio;
        EXPECT_EQ(picker.FindChild<zelui::controls::UI_RadioButton>(id)->IsChecked(), id == L"Hue") << radio;
    }
    for (const wchar_t* id : kFieldIDs) {
        EXPECT_TRUE(picker.FindChild<UI_HotTextNumber>(id)->IsEnabled()) << "the user can reach every field";
    }
}

TEST_F(ColorPickerTest, CancelLeavesTheCallersColourHowEverItEnds)
{
    for (const bool byEscape : {false, true}) {
        CheckedUser user;
        auto& step = user.On(QStringLiteral("ColorPickerDialog")).Retype(QStringLiteral("Hex"), QStringLiteral("00ff00"));
        step.Press(Qt::Key_Tab);
        byEscape ? step.Press(Qt::Key_Escape) : step.Click(QStringLiteral("cancelButton"));
        Color out(0x01020304);
        EXPECT_FALSE(DLG::ColorPickerDialog::PickColor(Color(10, 20, 30), out));
        EXPECT_EQ(out, Color(0x01020304));
    }
}

TEST_F(ColorPickerTest, EnterConfirmsTheTypedHexTextMasked)
{
    CheckedUser user;
    user.On(QStringLiteral("ColorPickerDialog"))
        .Click(QStringLiteral("WebSafeCheckbox"))
        .Retype(QStringLiteral("Hex"), QStringLiteral("9f401f"))
        .Press(Qt::Key_Return);
    Color out;
    EXPECT_TRUE(DLG::ColorPickerDialog::PickColor(Color(1, 2, 3), out));
    EXPECT_EQ(out, Color(0x80, 0x40, 0x00));
}

// Click the square's bottom left in hue mode (black), then one step up with the arrow key.
TEST_F(ColorPickerTest, MouseAndArrowKeysOnTheSquare)
{
    CheckedUser user;
    user.On(QStringLiteral("ColorPickerDialog"))
        .Inspect([](QWidget& inWindow) {
            QWidget* square = Child(inWindow, "SquareView");
            QTest::mouseClick(square, Qt::LeftButton, {}, QPoint(0, square->height() - 1));
            QTest::keyClick(square, Qt::Key_Up);
            QTest::keyClick(square, Qt::Key_Right, Qt::ShiftModifier);
        })
        .Click(QStringLiteral("okButton"));
    Color out;
    EXPECT_TRUE(DLG::ColorPickerDialog::PickColor(Color(255, 0, 0), out));
    // Brightness 1/255 and saturation 10/255 of red: (1, 1, 1) once rounded.
    EXPECT_EQ(out, Color(1, 1, 1));
}

TEST_F(ColorPickerTest, TypedFieldsRecomputeTheColour)
{
    CheckedUser user;
    user.On(QStringLiteral("ColorPickerDialog"))
        .Type(QStringLiteral("HotText_Red"), QStringLiteral("200"))
        .Press(Qt::Key_Return)
        .Type(QStringLiteral("HotText_YUV_U"), QStringLiteral("0"))
        .Press(Qt::Key_Return)
        .Click(QStringLiteral("okButton"));
    Color out;
    EXPECT_TRUE(DLG::ColorPickerDialog::PickColor(Color(0, 0, 0), out));
    // Red 200 is Y 60, U -34, V 100; with U 0 blue rises to Y, and green stays clipped at 0.
    EXPECT_EQ(out, Color(200, 0, 60));
}

TEST_F(ColorPickerTest, ClosingTheWindowConfirmsWhatIsBeingTyped)
{
    CheckedUser user;
    user.On(QStringLiteral("ColorPickerDialog"))
        .Click(QStringLiteral("Red"))
        .Retype(QStringLiteral("Hex"), QStringLiteral("00ff00"))
        .Close();
    Color out;
    EXPECT_TRUE(DLG::ColorPickerDialog::PickColor(Color(7, 8, 9), out));
    EXPECT_EQ(out, Color(0, 255, 0));
}

} // namespace
