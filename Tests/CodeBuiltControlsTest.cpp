// Controls, panels, views and dialogs built in code on the reference host, and the project's colour mattes.

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BE/Project.h"
#include "ControlWindow.h"
#include "HostQt/ReferenceHost.h"
#include "ScriptedUser.h"
#include "zelcore/Error.h"
#include "zelui/Controls.h"
#include "zelui/UI_Container.h"
#include "zelui/UI_Dialog.h"
#include "zelui/UI_SubView.h"

namespace {

using TestSupport::ControlWindow;
using TestSupport::ScriptedUser;
using testing::ElementsAre;
using testing::IsEmpty;
using zelui::controls::UI_Button;
using zelui::controls::UI_RadioGroup;
using zelui::controls::UI_TextEdit;
using zelui::ui::Rect;

template <class W = QWidget>
W* WidgetOf(const zelui::ui::UI_Node& inNode)
{
    return HostQt::PeerWidget<W>(&inNode);
}

// ---------------------------------------------------------------------------------------------
// Radio groups

// Where a person clicks a radio button: on its indicator.
QPoint Indicator(QWidget& inButton)
{
    QStyleOptionButton option;
    option.initFrom(&inButton);
    return inButton.style()->subElementRect(QStyle::SE_RadioButtonIndicator, &option, &inButton).center();
}

struct RadioCase {
    const char* name;
    int selected; // before the user acts; -1 for none
    int target;   // the button clicked, or focused before the key
    Qt::Key key;  // Qt::Key_unknown: a click
    int selectedAfter;
    int notices;
    friend void PrintTo(const RadioCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class RadioGroupByUser : public testing::TestWithParam<RadioCase> {};

TEST_P(RadioGroupByUser, KeepsOneSelectedAndTellsOncePerChange)
{
    ControlWindow window;
    boost::intrusive_ptr<UI_RadioGroup> group(new UI_RadioGroup(nullptr, window.Node()));
    group->SetBounds({10, 10, 120, 80});
    for (const wchar_t* id : {L"Red", L"Green", L"Blue"}) {
        group->AddRadioButton(id, std::wstring(id, 1) + L":", {0, 24 * group->GetButtonCount(), 100, 20});
    }
    group->SetSelectedIndex(GetParam().selected);
    int notices = 0;
    group->NotifyWhenChanged([&] { ++notices; });

    QWidget* target = WidgetOf(*group->GetButton(GetParam().target));
    if (GetParam().key == Qt::Key_unknown) {
        QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, Indicator(*target));
    } else {
        target->setFocus(Qt::OtherFocusReason);
        QTest::keyClick(target, GetParam().key);
    }

    EXPECT_EQ(group->GetSelectedIndex(), GetParam().selectedAfter);
    EXPECT_EQ(notices, GetParam().notices);
    int checked = 0;
    for (int i = 0; i < group->GetButtonCount(); ++i) {
        checked += group->GetButton(i)->IsChecked();
    }
    EXPECT_EQ(checked, GetParam().selectedAfter >= 0 ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    Actions, RadioGroupByUser,
    testing::Values(RadioCase{"ClickAnother", 0, 2, Qt::Key_unknown, 2, 1},
                    RadioCase{"ClickTheSelectedOne", 1, 1, Qt::Key_unknown, 1, 0},
                    RadioCase{"ClickWithNoneSelected", -1, 1, Qt::Key_unknown, 1, 1},
                    RadioCase{"ArrowDown", 0, 0, Qt::Key_Down, 1, 1},
                    RadioCase{"ArrowUp", 2, 2, Qt::Key_Up, 1, 1},
                    RadioCase{"ArrowPastTheFirst", 0, 0, Qt::Key_Up, 0, 0},
                    RadioCase{"SpaceOnAnother", 0, 2, Qt::Key_Space, 2, 1}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

TEST(RadioGroup, ButtonsAreNamedAndPlacedAndSettingTheSelectionTellsNoOne)
{
    ControlWindow window;
    boost::intrusive_ptr<UI_RadioGroup> group(new UI_RadioGroup(nullptr, window.Node()));
    group->SetBounds({10, 10, 120, 60});
    group->AddRadioButton(L"Hue", L"H:", {0, 0, 60, 20});
    const auto saturation = group->AddRadioButton(L"Saturation", L"S:", {0, 30, 60, 20});
    int notices = 0;
    group->NotifyWhenChanged([&] { ++notices; });

    auto* found = HostQt::PeerWidget<QWidget>(window.Node())->findChild<QRadioButton*>(QStringLiteral("Saturation"));
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found, WidgetOf(*saturation));
    EXPECT_EQ(found->text(), QStringLiteral("S:"));
    EXPECT_EQ(saturation->GetBounds(), (Rect{0, 30, 60, 20})) << "in the group's own coordinates";
    EXPECT_EQ(group->GetSelectedIndex(), -1);

    group->SetSelectedIndex(1);
    group->SetSelectedIndex(0);
    EXPECT_TRUE(group->GetButton(0)->IsChecked());
    EXPECT_FALSE(group->GetButton(1)->IsChecked());
    group->SetSelectedIndex(-1);
    EXPECT_EQ(group->GetSelectedIndex(), -1);
    EXPECT_FALSE(group->GetButton(0)->IsChecked());
    EXPECT_EQ(notices, 0);
}

// ---------------------------------------------------------------------------------------------
// Containers

class SizedContainer : public zelui::ui::UI_Container {
public:
    using UI_Container::UI_Container;
    void UI_SizeChanged(const Rect& inBounds) override { sizes.push_back(inBounds); }
    std::vector<Rect> sizes;
};

TEST(Container, FindsChildrenByIdAndRaisesTheHostErrorForAnotherKind)
{
    ControlWindow window;
    boost::intrusive_ptr<SizedContainer> panel(new SizedContainer(nullptr, window.Node()));
    boost::intrusive_ptr<UI_Button> button(new UI_Button(nullptr, panel->GetContentView(), L"Safe Colour"));
    panel->AddChild(button, L"NTSCButton", {5, 6, 90, 24});

    EXPECT_EQ(panel->FindChildByID(L"NTSCButton"), button);
    EXPECT_EQ(panel->FindChild<UI_Button>(L"NTSCButton"), button);
    EXPECT_EQ(panel->FindChildByID(L"Hex"), nullptr);
    EXPECT_EQ(panel->FindChild<UI_TextEdit>(L"Hex"), nullptr) << "a missing child is no error";
    try {
        panel->FindChild<UI_TextEdit>(L"NTSCButton");
        ADD_FAILURE() << "a button taken for a text field";
    } catch (const zelcore::Error& inError) {
        EXPECT_EQ(inError.Message(), L"Invalid type conversion.");
    }

    QWidget* buttonWidget = WidgetOf(*button);
    EXPECT_EQ(buttonWidget->objectName(), QStringLiteral("NTSCButton"));
    EXPECT_EQ(buttonWidget->geometry(), QRect(5, 6, 90, 24));
    EXPECT_EQ(buttonWidget->parentWidget(), WidgetOf(*panel->GetContentView()));
    EXPECT_TRUE(buttonWidget->isVisible());
}

TEST(Container, TellsItsSizeAndScrollsAContentLargerThanItself)
{
    ControlWindow window;
    boost::intrusive_ptr<SizedContainer> panel(new SizedContainer(nullptr, window.Node()));
    panel->SetContentSize(300, 200);
    panel->SetBounds({0, 0, 200, 100});
    panel->SetBounds({0, 0, 320, 100});
    EXPECT_THAT(panel->sizes, ElementsAre(Rect{0, 0, 200, 100}, Rect{0, 0, 320, 100}));

    auto* area = WidgetOf<QScrollArea>(*panel);
    ASSERT_NE(area, nullptr);
    EXPECT_EQ(area->frameShape(), QFrame::NoFrame);
    EXPECT_EQ(area->widget()->size(), QSize(300, 200)) << "the content keeps its own size";
    EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0) << "wide enough";
    EXPECT_GT(area->verticalScrollBar()->maximum(), 0) << "too low: it scrolls";
}

// ---------------------------------------------------------------------------------------------
// Dialogs built in code

const QString kProbeDialog = QStringLiteral("probeDialog");

class ProbeDialog : public zelui::ui::OS_Dialog {
public:
    ProbeDialog(zelui::ui::UI_Node* inParent, bool inConsumeKeys)
        : OS_Dialog(nullptr, inParent, L"Probe"), mConsumeKeys(inConsumeKeys)
    {
        SetName(kProbeDialog.toStdWString());
    }

    bool UI_DoKeyboardEvent(zelui::ui::UI_Node* inNode, const zelui::ui::KeyboardEvent& inEvent) override
    {
        EXPECT_EQ(inNode, this);
        if (inEvent.keyDown) {
            keys.push_back(inEvent.keyCode);
        }
        if (throwOnKey) {
            zelcore::config::ThrowError(L"$$$/Test/KeyHook=The key hook failed.");
        }
        return mConsumeKeys;
    }
    bool UI_DoMouseEvent(zelui::ui::UI_Node*, const zelui::ui::MouseEvent& inEvent) override
    {
        mice.push_back(inEvent);
        return true;
    }
    void UI_SizeChanged(const Rect& inBounds) override { sizes.push_back(inBounds); }

    std::vector<int> keys;
    std::vector<zelui::ui::MouseEvent> mice;
    std::vector<Rect> sizes;
    bool throwOnKey = false;

private:
    bool mConsumeKeys;
};

struct DialogKeyCase {
    const char* name;
    bool consume;
    Qt::Key key;
    int hookKey;
    zelui::ui::UI_Dialog::Response response;
    friend void PrintTo(const DialogKeyCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class CodeBuiltDialogKeys : public testing::TestWithParam<DialogKeyCase> {};

TEST_P(CodeBuiltDialogKeys, GoToTheHookBeforeTheDialog)
{
    ControlWindow window;
    boost::intrusive_ptr<ProbeDialog> dialog(new ProbeDialog(window.Node(), GetParam().consume));
    dialog->SetContentSize(240, 120);
    bool openAfterKey = false;
    ScriptedUser user;
    TestSupport::Step& step = user.On(kProbeDialog).Press(GetParam().key);
    if (GetParam().consume) {
        step.Inspect([&](QWidget& inWindow) { openAfterKey = inWindow.isVisible(); }).Close();
    }
    EXPECT_EQ(dialog->RunModal(), GetParam().response);
    EXPECT_THAT(user.Finish(), IsEmpty());
    EXPECT_THAT(dialog->keys, ElementsAre(GetParam().hookKey));
    EXPECT_EQ(openAfterKey, GetParam().consume) << "a consumed key does not end the dialog";
}

INSTANTIATE_TEST_SUITE_P(
    Keys, CodeBuiltDialogKeys,
    testing::Values(DialogKeyCase{"EnterConfirms", false, Qt::Key_Return, zelui::ui::kKey_Return, 1},
                    DialogKeyCase{"EscapeCancels", false, Qt::Key_Escape, zelui::ui::kKey_Escape, 0},
                    DialogKeyCase{"ConsumedEnter", true, Qt::Key_Return, zelui::ui::kKey_Return, 0},
                    DialogKeyCase{"ConsumedEscape", true, Qt::Key_Escape, zelui::ui::kKey_Escape, 0}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

TEST(CodeBuiltDialog, IsTheWindowOfItsControlsAndTellsClicksAndSizes)
{
    ControlWindow window;
    boost::intrusive_ptr<ProbeDialog> dialog(new ProbeDialog(window.Node(), false));
    boost::intrusive_ptr<UI_Button> button(new UI_Button(nullptr, dialog.get(), L"Safe Colour"));
    button->SetName(L"safeButton");
    button->SetBounds({150, 10, 80, 26});
    int presses = 0;
    button->NotifyWhenChanged([&] { ++presses; });
    dialog->SetContentSize(240, 120);

    ScriptedUser user;
    user.On(kProbeDialog)
        .Click(QStringLiteral("safeButton"))
        .Inspect([&](QWidget& inWindow) {
            EXPECT_EQ(inWindow.windowTitle(), QStringLiteral("Probe"));
            EXPECT_EQ(inWindow.parentWidget(), WidgetOf(*window.Node()));
            EXPECT_EQ(WidgetOf(*button)->parentWidget(), &inWindow);
            EXPECT_EQ(inWindow.minimumSize(), QSize(240, 120));
            QTest::mouseClick(&inWindow, Qt::LeftButton, Qt::NoModifier, QPoint(30, 40));
            inWindow.resize(300, 150);
            EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog->sizes.empty() && dialog->sizes.back().width == 300; }));
        })
        .Close();
    dialog->RunModal();
    EXPECT_THAT(user.Finish(), IsEmpty());

    EXPECT_EQ(presses, 1);
    using Type = zelui::ui::MouseEvent::Type;
    std::vector<std::pair<Type, QPoint>> mice;
    for (const auto& event : dialog->mice) {
        mice.emplace_back(event.type, QPoint(event.x, event.y));
    }
    EXPECT_THAT(mice, ElementsAre(std::pair(Type::kDown, QPoint(30, 40)), std::pair(Type::kUp, QPoint(30, 40)),
                                  std::pair(Type::kClick, QPoint(30, 40))))
        << "the button's click is the button's alone";
    ASSERT_FALSE(dialog->sizes.empty());
    EXPECT_EQ(dialog->sizes.front(), (Rect{0, 0, 240, 120})) << "the size it opened with";
    EXPECT_EQ(dialog->sizes.back(), (Rect{0, 0, 300, 150}));
}

TEST(CodeBuiltDialog, AHookThatRaisesEndsTheRunWithItsError)
{
    ControlWindow window;
    boost::intrusive_ptr<ProbeDialog> dialog(new ProbeDialog(window.Node(), false));
    dialog->throwOnKey = true;
    ScriptedUser user;
    user.On(kProbeDialog).Press(Qt::Key_A);
    EXPECT_THROW(dialog->RunModal(), zelcore::Error);
    EXPECT_THAT(user.Finish(), IsEmpty());
}

TEST(CodeBuiltDialog, ItsWindowGoesWithIt)
{
    ControlWindow window;
    boost::intrusive_ptr<ProbeDialog> dialog(new ProbeDialog(window.Node(), false));
    const QPointer<QWidget> dialogWindow = WidgetOf(*dialog);
    ASSERT_FALSE(dialogWindow.isNull());
    dialog.reset();
    EXPECT_TRUE(dialogWindow.isNull());
}

// ---------------------------------------------------------------------------------------------
// Text fields built in code

struct TextCase {
    const char* name;
    bool whenFinished;
    int maxLength;
    const char* typed; // empty: the user only clicks into the field
    std::vector<Qt::Key> keys;
    std::vector<std::string> heard; // the notices with the text then, and the dialog's response, in order
    friend void PrintTo(const TextCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class CodeBuiltTextField : public testing::TestWithParam<TextCase> {};

TEST_P(CodeBuiltTextField, TellsItsChangesBeforeTheDialogEnds)
{
    ControlWindow window;
    boost::intrusive_ptr<ProbeDialog> dialog(new ProbeDialog(window.Node(), false));
    boost::intrusive_ptr<UI_TextEdit> hex(new UI_TextEdit(nullptr, dialog.get()));
    hex->SetName(L"Hex");
    hex->SetBounds({10, 10, 100, 24});
    hex->SetText(L"000000");
    hex->SetMaxLength(GetParam().maxLength);
    hex->SetNotifyWhenFinished(GetParam().whenFinished);
    boost::intrusive_ptr<UI_TextEdit> other(new UI_TextEdit(nullptr, dialog.get()));
    other->SetBounds({10, 40, 100, 24});
    dialog->SetContentSize(200, 80);

    std::vector<std::string> heard;
    hex->NotifyWhenChanged([&] {
        const std::wstring text = hex->GetText();
        heard.push_back("changed " + std::string(text.begin(), text.end()));
    });
    dialog->SetResponseHandler([&](zelui::ui::UI_Dialog::Response& ioResponse) {
        heard.push_back("response " + std::to_string(ioResponse));
        return true;
    });

    ScriptedUser user;
    const QString typed = QString::fromLatin1(GetParam().typed);
    TestSupport::Step& step = typed.isEmpty() ? user.On(kProbeDialog).Click(QStringLiteral("Hex"))
                                              : user.On(kProbeDialog).Retype(QStringLiteral("Hex"), typed);
    for (const Qt::Key key : GetParam().keys) {
        step.Press(key);
    }
    dialog->RunModal();
    EXPECT_THAT(user.Finish(), IsEmpty());
    EXPECT_EQ(heard, GetParam().heard);
}

INSTANTIATE_TEST_SUITE_P(
    Notices, CodeBuiltTextField,
    testing::Values(
        TextCase{"AtEachKeyByDefault", false, 0, "ff8", {Qt::Key_Return},
                 {"changed ", "changed f", "changed ff", "changed ff8", "response 1"}},
        TextCase{"OnceOnEnterThenTheDialogConfirms", true, 0, "ff8000", {Qt::Key_Return},
                 {"changed ff8000", "response 1"}},
        TextCase{"AtMostTheMaximumLength", true, 6, "ff8000aa", {Qt::Key_Return}, {"changed ff8000", "response 1"}},
        TextCase{"WhenTheFocusLeaves", true, 0, "abc", {Qt::Key_Tab, Qt::Key_Escape},
                 {"changed abc", "response 0"}},
        TextCase{"NotForAnUntouchedText", true, 0, "", {Qt::Key_Tab, Qt::Key_Return}, {"response 1"}}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

// ---------------------------------------------------------------------------------------------
// Views built in code: exact colours

using zelui::drawbot::RGBColor;

constexpr RGBColor kGround{0x10, 0x20, 0x30};
constexpr RGBColor kFrame{0xF0, 0x80, 0x00};

class SwatchView : public zelui::ui::UI_SubView {
public:
    using UI_SubView::UI_SubView;
    void UI_Draw(zelui::drawbot::DrawInterface& ioDrawer) override
    {
        ++draws;
        ioDrawer.FillRect(GetLocalRect(), kGround);
        // A 2 x 2 picture blown up to 20 x 20; the top bytes are the view's own business.
        ioDrawer.DrawPixels({mPixels.data(), 2, 2}, {0, 0, 20, 20});
        ioDrawer.FrameRect({20, 0, 20, 20}, kFrame);
        ioDrawer.FrameEllipse({40, 0, 20, 20}, kFrame);
    }
    int draws = 0;

private:
    std::array<std::uint32_t, 4> mPixels{0x00FF0000, 0xAB00FF00, 0x000000FF, 0xFF123456};
};

QColor Q(const RGBColor& inColor) { return QColor(inColor.red, inColor.green, inColor.blue); }

// Windows are painted, and grabbed to pictures, into targets with and without alpha.
class DrawnViewTarget : public testing::TestWithParam<QImage::Format> {};

TEST_P(DrawnViewTarget, HasTheExactColoursItDrew)
{
    ControlWindow window;
    boost::intrusive_ptr<SwatchView> view(new SwatchView(nullptr, window.Node(), L"SquareView"));
    view->SetBounds({5, 5, 60, 20});
    QImage image(60, 20, GetParam());
    image.fill(Qt::transparent);
    WidgetOf(*view)->render(&image);

    struct Probe {
        QPoint at;
        QColor color;
    };
    // The corners of each enlarged pixel, so that smoothing would show.
    for (const Probe& probe : {Probe{{0, 0}, QColor(0xFF, 0, 0)}, Probe{{9, 9}, QColor(0xFF, 0, 0)},
                               Probe{{10, 0}, QColor(0, 0xFF, 0)}, Probe{{19, 9}, QColor(0, 0xFF, 0)},
                               Probe{{0, 10}, QColor(0, 0, 0xFF)}, Probe{{9, 19}, QColor(0, 0, 0xFF)},
                               Probe{{10, 10}, QColor(0x12, 0x34, 0x56)}, Probe{{19, 19}, QColor(0x12, 0x34, 0x56)},
                               Probe{{20, 0}, Q(kFrame)}, Probe{{39, 19}, Q(kFrame)}, Probe{{30, 10}, Q(kGround)},
                               Probe{{50, 10}, Q(kGround)}}) {
        EXPECT_EQ(image.pixelColor(probe.at), probe.color) << probe.at.x() << "," << probe.at.y();
    }
    EXPECT_NE(image.pixelColor(50, 0), Q(kGround)) << "the ellipse's outline touches the top";
}

INSTANTIATE_TEST_SUITE_P(Formats, DrawnViewTarget,
                         testing::Values(QImage::Format_ARGB32_Premultiplied, QImage::Format_RGB32,
                                         QImage::Format_ARGB32),
                         [](const auto& inInfo) {
                             return std::string(inInfo.param == QImage::Format_RGB32 ? "RGB32"
                                                : inInfo.param == QImage::Format_ARGB32 ? "ARGB32"
                                                                                       : "ARGB32Premultiplied");
                         });

TEST(DrawnView, SeveralRequestsAreOneDrawing)
{
    ControlWindow window;
    boost::intrusive_ptr<SwatchView> view(new SwatchView(nullptr, window.Node(), L"SliderView"));
    view->SetBounds({5, 5, 60, 20});
    ASSERT_TRUE(QTest::qWaitFor([&] { return view->draws > 0; }));
    view->draws = 0;
    view->Invalidate();
    view->Invalidate();
    view->Invalidate();
    ASSERT_TRUE(QTest::qWaitFor([&] { return view->draws > 0; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(view->draws, 1);
}

// ---------------------------------------------------------------------------------------------
// Picture buttons

TEST(PictureButton, DrawsTheImageItsSupplierNamesAtEachPaint)
{
    ControlWindow window;
    boost::intrusive_ptr<zelui::controls::UI_PictureButton> button(
        new zelui::controls::UI_PictureButton(nullptr, window.Node()));
    button->SetBounds({10, 10, 40, 40});
    button->SetToolTip(L"Use the nearest broadcast-safe colour");
    std::wstring name = L"ntsc-warning";
    int asked = 0;
    button->SetImageSupplier([&] {
        ++asked;
        return name;
    });
    int presses = 0;
    button->NotifyWhenChanged([&] { ++presses; });

    QWidget* widget = WidgetOf(*button);
    const QImage warning = widget->grab().toImage();
    name.clear();
    const QImage bare = widget->grab().toImage();
    EXPECT_EQ(asked, 2);
    EXPECT_NE(warning.pixelColor(20, 24), bare.pixelColor(20, 24)) << "the triangle's middle";
    EXPECT_EQ(bare.pixelColor(20, 24), bare.pixelColor(4, 4)) << "no image: the button alone";
    EXPECT_EQ(button->GetAccessibleName(), L"Use the nearest broadcast-safe colour");
    EXPECT_EQ(widget->toolTip(), QStringLiteral("Use the nearest broadcast-safe colour"));

    QTest::mouseClick(widget, Qt::LeftButton);
    EXPECT_EQ(presses, 1);
}

// ---------------------------------------------------------------------------------------------
// The project's colour mattes

TEST(ProjectColorMattes, AreReadChangedAndSavedBack)
{
    const QByteArray json = R"({"name": "Mattes", "colorMattes": [
        {"name": "Title Background", "color": "#1A2B4C"},
        {"name": "Sky", "color": "blue"},
        {"name": "Alarm Red", "color": "#ff0000", "duration": "00:00:05:00"}]})";
    const BE::ProjectRef project = HostQt::LoadProject(json, QStringLiteral("/tmp/Mattes.tvx"));
    const std::vector<BE::ColorMatteRef> mattes = project->GetColorMattes();
    ASSERT_EQ(mattes.size(), 2u) << "a colour that does not read is no matte of the model";
    EXPECT_EQ(mattes[0]->GetName(), L"Title Background");
    EXPECT_EQ(mattes[0]->GetColor(), KOR::ParamColor<unsigned long>(0x1A, 0x2B, 0x4C));
    EXPECT_EQ(mattes[1]->GetColor(), KOR::ParamColor<unsigned long>(0xFF, 0x00, 0x00));

    mattes[1]->SetColor(KOR::ParamColor<unsigned long>(0xFF000000UL | 0x00C900UL | 0xC9UL));
    EXPECT_EQ(mattes[1]->GetColor(), KOR::ParamColor<unsigned long>(0xC9, 0xC9, 0x00)) << "no alpha";

    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Mattes.tvx"));
    ASSERT_EQ(project->SaveToFile(path.toStdWString(), false), BE::kSave_OK);
    QFile saved(path);
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    const QByteArray contents = saved.readAll();
    const QJsonArray written = QJsonDocument::fromJson(contents).object().value(QStringLiteral("colorMattes")).toArray();
    ASSERT_EQ(written.size(), 3);
    EXPECT_EQ(written.at(1).toObject().value(QStringLiteral("color")).toString(), QStringLiteral("blue"))
        << "kept as read";
    EXPECT_EQ(written.at(2).toObject().value(QStringLiteral("color")).toString(), QStringLiteral("#C9C900"));
    EXPECT_EQ(written.at(2).toObject().value(QStringLiteral("duration")).toString(), QStringLiteral("00:00:05:00"));

    const BE::ProjectRef reread = HostQt::LoadProject(contents, path);
    ASSERT_EQ(reread->GetColorMattes().size(), 2u);
    EXPECT_EQ(reread->GetColorMattes()[0]->GetColor(), KOR::ParamColor<unsigned long>(0x1A, 0x2B, 0x4C));
    EXPECT_EQ(reread->GetColorMattes()[1]->GetColor(), KOR::ParamColor<unsigned long>(0xC9, 0xC9, 0x00));
}

} // namespace
