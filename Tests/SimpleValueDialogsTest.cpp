// The simple value dialogs through their entry functions, answered by the scripted user on
// real windows, and the rules they keep in plain functions.

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include <functional>
#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DLG/DeleteMediaDialog.h"
#include "DLG/FitClipDialog.h"
#include "DLG/FontSizeDialog.h"
#include "DLG/NewTapeNameDialog.h"
#include "DLG/ProjectMakeOfflineFileDialog.h"
#include "DLG/RenameClipDialog.h"
#include "DLG/SetNumberedMarkerDialog.h"
#include "DLG/StringIDs.h"
#include "DLG/TransformOpacityDialog.h"
#include "DLG/TransformRotationDialog.h"
#include "DLG/TransformScaleDialog.h"
#include "HostQt/HotTextNumberWidget.h"
#include "DLG/Module.h"
#include "CheckedUser.h"
#include "TestHost.h"
#include "UIF/MessageBox.h"

namespace {

using TestSupport::CheckedUser;
using TestSupport::Step;
using TestSupport::TestHost;
using testing::IsEmpty;

using Actions = std::function<void(Step&)>;

// The named widget of inWindow; null, and a failure, when it has none.
template <class Widget = QWidget>
Widget* Find(QWidget& inWindow, const char* inName)
{
    auto* widget = inWindow.findChild<Widget*>(QString::fromLatin1(inName));
    if (!widget) {
        ADD_FAILURE() << "no " << inName;
    }
    return widget;
}

bool IsChecked(QWidget& inWindow, const char* inName)
{
    const auto* button = Find<QAbstractButton>(inWindow, inName);
    return button && button->isChecked();
}
bool IsEnabled(QWidget& inWindow, const char* inName)
{
    const QWidget* widget = Find(inWindow, inName);
    return widget && widget->isEnabled();
}
bool HasFocus(QWidget& inWindow, const char* inName)
{
    const QWidget* widget = Find(inWindow, inName);
    return widget && widget->hasFocus();
}

Actions FocusOn(const char* inName)
{
    return [=](Step& ioStep) { ioStep.Inspect([=](QWidget& inWindow) { EXPECT_TRUE(HasFocus(inWindow, inName)); }); };
}

std::wstring Text(unsigned int inID) { return DLG::LoadString(inID); }

// ---------------------------------------------------------------------------------------------
// Rules without a window

struct OpacityCase {
    double opacity;
    double percent;
};

TEST(TransformOpacity, FractionAndPercentConvertBothWays)
{
    using namespace DLG::TransformOpacity;
    for (const OpacityCase& c : {OpacityCase{0.5, 50.0}, OpacityCase{0.0, 0.0}, OpacityCase{1.0, 100.0},
                                 OpacityCase{0.25, 25.0}}) {
        EXPECT_EQ(OpacityToPercent(c.opacity), c.percent) << c.opacity;
        EXPECT_EQ(OpacityFromPercent(c.percent, 0.9), c.opacity) << c.percent;
    }
}

// 0.013 * 100 / 100 is not 0.013 in doubles: an untouched value must come back as it went in.
TEST(TransformOpacity, AnUntouchedPercentGivesTheSameOpacityBack)
{
    using namespace DLG::TransformOpacity;
    for (const double opacity : {0.013, 0.029, 0.7, 1.0 / 3.0}) {
        EXPECT_EQ(OpacityFromPercent(OpacityToPercent(opacity), opacity), opacity);
    }
    EXPECT_EQ(OpacityFromPercent(50.0, 0.013), 0.5);
}

TEST(FitClip, MessageByOptionsTheShorterClipWinning)
{
    const std::map<unsigned long, unsigned int> expected = {
        {0x0, 0}, {0x7C, 0}, {0x80, DLG::kStr_FitClipLonger}, {0x100, DLG::kStr_FitClipShorter},
        {0x180, DLG::kStr_FitClipShorter}, {0x1FC, DLG::kStr_FitClipShorter}};
    for (const auto& [options, message] : expected) {
        EXPECT_EQ(DLG::FitClipMessage(options), message) << std::hex << options;
    }
}

TEST(FitClip, ChoiceIsTheLastCheckedInTheOrderSpeedHeadTailOutIn)
{
    using namespace DLG;
    const std::map<unsigned long, unsigned long> expected = {
        {0, kFitClip_ChangeSpeed},
        {kFitClip_ChangeSpeed, kFitClip_ChangeSpeed},
        {kFitClip_TrimHead, kFitClip_TrimHead},
        {kFitClip_ChangeSpeed | kFitClip_TrimTail, kFitClip_TrimTail},
        {kFitClip_TrimHead | kFitClip_TrimTail, kFitClip_TrimTail},
        {kFitClip_IgnoreOutPoint | kFitClip_IgnoreInPoint, kFitClip_IgnoreInPoint},
        {kFitClip_TrimTail | kFitClip_IgnoreOutPoint, kFitClip_IgnoreOutPoint},
        {kFitClip_ClipLonger, kFitClip_ChangeSpeed},
    };
    for (const auto& [checked, choice] : expected) {
        EXPECT_EQ(FitClipChoice(checked), choice) << std::hex << checked;
    }
}

// ---------------------------------------------------------------------------------------------
// One number

struct NumberCase {
    const char* name;
    std::function<bool(double&)> entry;
    const char* window;
    double before;
    Actions actions;
    bool confirmed;
    double after;
    friend void PrintTo(const NumberCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class OneNumber : public testing::TestWithParam<NumberCase> {};

TEST_P(OneNumber, WrittenOnlyWhenConfirmed)
{
    TestHost host;
    CheckedUser user;
    GetParam().actions(user.On(QString::fromLatin1(GetParam().window)));
    double value = GetParam().before;
    EXPECT_EQ(GetParam().entry(value), GetParam().confirmed);
    EXPECT_EQ(value, GetParam().after);
    EXPECT_EQ(host.Counts().autoSaveBlocks, host.Counts().autoSaveUnblocks);
}

const auto kRotation = &DLG::TransformRotation::DoTransformRotationDialog;
const auto kOpacity = &DLG::TransformOpacity::DoTransformOpacityDialog;
const auto kFontSize = &DLG::FontSize::DoFontSizeDialog;

Actions ExpectShown(const char* inEdit, const char* inText)
{
    return [=](Step& ioStep) {
        ioStep.Inspect([=](QWidget& inWindow) {
            if (const auto* edit = Find<QAbstractSpinBox>(inWindow, inEdit)) {
                EXPECT_EQ(edit->text(), QString::fromUtf8(inText));
                EXPECT_TRUE(edit->hasFocus());
            }
        });
    };
}

INSTANTIATE_TEST_SUITE_P(
    Entries, OneNumber,
    testing::Values(
        NumberCase{"RotationTypedReplacesTheSelection", kRotation, "TransformRotationDialog", 30.0,
                   [](Step& s) {
                       ExpectShown("degreesNumberEdit", "30.0 °")(s);
                       s.Type("degreesNumberEdit", "-45.5").Press(Qt::Key_Return);
                   },
                   true, -45.5},
        // A clip turned many times over keeps its turns, untouched or typed.
        NumberCase{"RotationOfManyTurnsUntouched", kRotation, "TransformRotationDialog", 7200.0,
                   [](Step& s) { s.Press(Qt::Key_Return); }, true, 7200.0},
        NumberCase{"RotationOfManyTurnsTyped", kRotation, "TransformRotationDialog", 0.0,
                   [](Step& s) { s.Type("degreesNumberEdit", "-5400").Press(Qt::Key_Return); }, true, -5400.0},
        // Tab reaches Cancel; Enter there presses it, as Space does.
        NumberCase{"RotationEnterOnCancel", kRotation, "TransformRotationDialog", 30.0,
                   [](Step& s) {
                       s.Type("degreesNumberEdit", "90").Press(Qt::Key_Tab).Press(Qt::Key_Tab);
                       FocusOn("cancelButton")(s);
                       s.Press(Qt::Key_Enter, Qt::KeypadModifier);
                   },
                   false, 30.0},
        NumberCase{"OpacityInPercent", kOpacity, "TransformOpacityDialog", 0.8,
                   [](Step& s) {
                       ExpectShown("opacityNumberEdit", "80.0 %")(s);
                       s.Type("opacityNumberEdit", "50").Press(Qt::Key_Return);
                   },
                   true, 0.5},
        NumberCase{"OpacityUntouchedIsExact", kOpacity, "TransformOpacityDialog", 0.013,
                   [](Step& s) { s.Click("okButton"); }, true, 0.013},
        NumberCase{"FontSizeInPoints", kFontSize, "FontSizeDialog", 12.0,
                   [](Step& s) {
                       ExpectShown("sizeNumberEdit", "12.0 pt")(s);
                       s.Type("sizeNumberEdit", "36").Click("okButton");
                   },
                   true, 36.0}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

// ---------------------------------------------------------------------------------------------
// One name

struct NameCase {
    const char* name;
    std::function<bool(std::wstring&)> entry;
    const char* window;
    const char* edit;
    Actions actions;
    bool confirmed;
    std::wstring after;
    friend void PrintTo(const NameCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class OneName : public testing::TestWithParam<NameCase> {};

TEST_P(OneName, WrittenOnlyWhenConfirmed)
{
    TestHost host;
    CheckedUser user;
    const char* edit = GetParam().edit;
    Step& step = user.On(QString::fromLatin1(GetParam().window)).Inspect([edit](QWidget& inWindow) {
        if (const auto* field = Find<QLineEdit>(inWindow, edit)) {
            EXPECT_EQ(field->selectedText(), QStringLiteral("Before")) << "all the text is selected";
            EXPECT_TRUE(field->hasFocus());
        }
    });
    GetParam().actions(step);
    std::wstring name = L"Unchanged";
    EXPECT_EQ(GetParam().entry(name), GetParam().confirmed);
    EXPECT_EQ(name, GetParam().after);
    EXPECT_THAT(host.Counts().messageBoxes, IsEmpty());
}

// The dialogs start from "Before": the clip's name, the tape's default name. What the caller
// holds ("Unchanged") changes only when the user confirms.
const auto kRename = [](std::wstring& ioName) {
    std::wstring name = L"Before";
    if (!DLG::DoRenameClipDialog(name)) {
        return false;
    }
    ioName = name;
    return true;
};
const auto kTape = [](std::wstring& outName) { return DLG::DoNewTapeNameDialog(L"Before", outName); };

INSTANTIATE_TEST_SUITE_P(
    Entries, OneName,
    testing::Values(
        NameCase{"RenameTyped", kRename, "RenameClipDialog", "clipNameTextEdit",
                 [](Step& s) { s.Type("clipNameTextEdit", "Interview").Press(Qt::Key_Return); }, true, L"Interview"},
        NameCase{"RenameEscape", kRename, "RenameClipDialog", "clipNameTextEdit",
                 [](Step& s) { s.Type("clipNameTextEdit", "Interview").Press(Qt::Key_Escape); }, false, L"Unchanged"},
        // Only an empty name is refused; blanks are a name.
        NameCase{"RenameBlanksTaken", kRename, "RenameClipDialog", "clipNameTextEdit",
                 [](Step& s) { s.Retype("clipNameTextEdit", "  ").Press(Qt::Key_Return); }, true, L"  "},
        NameCase{"TapeDefaultTaken", kTape, "NewTapeNameDialog", "tapeNameTextEdit",
                 [](Step& s) { s.Press(Qt::Key_Return); }, true, L"Before"},
        NameCase{"TapeEmptyIsTakenAsEntered", kTape, "NewTapeNameDialog", "tapeNameTextEdit",
                 [](Step& s) { s.Retype("tapeNameTextEdit", "").Press(Qt::Key_Return); }, true, L""},
        NameCase{"TapeCancel", kTape, "NewTapeNameDialog", "tapeNameTextEdit",
                 [](Step& s) { s.Type("tapeNameTextEdit", "Reel 7").Click("cancelButton"); }, false, L"Unchanged"}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

// An empty name is refused with a message, and the dialog stays open with its text selected
// for typing again.
TEST(RenameClipDialog, EmptyNameShowsAMessageAndKeepsTheDialogOpen)
{
    TestHost host;
    CheckedUser user;
    user.On("RenameClipDialog").Retype("clipNameTextEdit", "").Click("okButton");
    user.On("MessageBox").Press(Qt::Key_Return);
    user.On("RenameClipDialog")
        .Inspect([](QWidget& inWindow) {
            if (const auto* field = Find<QLineEdit>(inWindow, "clipNameTextEdit")) {
                EXPECT_THAT(field->text().toStdString(), IsEmpty());
                // The message box has just closed: the window gets the focus back when it is active again.
                EXPECT_EQ(inWindow.focusWidget(), field);
            }
        })
        .Press(Qt::Key_Escape);
    std::wstring name = L"Clip 1";
    EXPECT_FALSE(DLG::DoRenameClipDialog(name));
    EXPECT_EQ(name, L"Clip 1");
    const auto boxes = host.Counts().messageBoxes;
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, Text(DLG::kStr_RenameClipEmptyName));
    EXPECT_EQ(boxes[0].caption, Text(DLG::kStr_RenameClipCaption));
    EXPECT_EQ(boxes[0].buttons, UIF::kMessageBox_OK);
    EXPECT_EQ(boxes[0].icon, UIF::kMessageBoxIcon_Error);
    EXPECT_EQ(user.MessageBoxes()[0].text, QStringLiteral("Please enter a name for the clip."));
}

// ---------------------------------------------------------------------------------------------
// Scale

struct Scale {
    double uniform;
    double horizontal;
    double vertical;
    bool isUniform;
    bool operator==(const Scale&) const = default;
    friend void PrintTo(const Scale& inScale, std::ostream* outStream)
    {
        *outStream << inScale.uniform << "/" << inScale.horizontal << "x" << inScale.vertical
                   << (inScale.isUniform ? " uniform" : " non-uniform");
    }
};

// Which of the two kinds of scale the window offers, seen on every control.
void ExpectMode(QWidget& inWindow, bool inUniform)
{
    EXPECT_EQ(IsChecked(inWindow, "Uniform"), inUniform);
    EXPECT_EQ(IsChecked(inWindow, "Non-Uniform"), !inUniform);
    EXPECT_EQ(IsEnabled(inWindow, "uniformScaleGroupBox"), inUniform);
    EXPECT_EQ(IsEnabled(inWindow, "uniformScaleNumberEdit"), inUniform);
    EXPECT_EQ(IsEnabled(inWindow, "nonUniformScaleGroupBox"), !inUniform);
    EXPECT_EQ(IsEnabled(inWindow, "horScaleNumberEdit"), !inUniform);
    EXPECT_EQ(IsEnabled(inWindow, "verScaleNumberEdit"), !inUniform);
}

Actions Mode(bool inUniform)
{
    return [=](Step& ioStep) { ioStep.Inspect([=](QWidget& inWindow) { ExpectMode(inWindow, inUniform); }); };
}

struct ScaleCase {
    const char* name;
    Scale before;
    std::vector<Actions> actions;
    bool confirmed;
    Scale after;
    friend void PrintTo(const ScaleCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class TransformScale : public testing::TestWithParam<ScaleCase> {};

TEST_P(TransformScale, ModesAreExclusiveAndAllFourWrittenOnConfirm)
{
    TestHost host;
    CheckedUser user;
    Step& step = user.On("TransformScaleDialog");
    for (const Actions& actions : GetParam().actions) {
        actions(step);
    }
    Scale scale = GetParam().before;
    EXPECT_EQ(DLG::TransformScale::DoTransformScaleDialog(scale.uniform, scale.horizontal, scale.vertical,
                                                          scale.isUniform),
              GetParam().confirmed);
    EXPECT_EQ(scale, GetParam().after);
}

const Scale kUniform{150.0, 80.0, 120.0, true};
const Scale kNonUniform{150.0, 80.0, 120.0, false};

Actions Do(std::function<void(Step&)> inActions) { return inActions; }

INSTANTIATE_TEST_SUITE_P(
    Entries, TransformScale,
    testing::Values(
        ScaleCase{"UniformTyped",
                  kUniform,
                  {Mode(true), FocusOn("uniformScaleNumberEdit"),
                   Do([](Step& s) { s.Type("uniformScaleNumberEdit", "200").Press(Qt::Key_Return); })},
                  true,
                  {200.0, 80.0, 120.0, true}},
        ScaleCase{"ClickNonUniformThenType",
                  kUniform,
                  {Do([](Step& s) { s.Click("Non-Uniform"); }), Mode(false),
                   Do([](Step& s) {
                       s.Retype("horScaleNumberEdit", "50").Retype("verScaleNumberEdit", "200").Press(Qt::Key_Return);
                   })},
                  true,
                  {150.0, 50.0, 200.0, false}},
        // Tab follows the layout: each radio button, then its own edits. Shift+Tab from the
        // horizontal edit reaches "Non-Uniform"; Up skips the disabled uniform edit to "Uniform",
        // Space picks it and Tab goes on to its edit.
        ScaleCase{"ByKeyboard",
                  kNonUniform,
                  {Do([](Step& s) { s.Press(Qt::Key_Tab, Qt::ShiftModifier); }), FocusOn("Non-Uniform"),
                   Do([](Step& s) { s.Press(Qt::Key_Up); }), FocusOn("Uniform"), Mode(false),
                   Do([](Step& s) { s.Press(Qt::Key_Space); }), Mode(true),
                   Do([](Step& s) { s.Press(Qt::Key_Tab); }), FocusOn("uniformScaleNumberEdit"),
                   Do([](Step& s) { s.Press(Qt::Key_Return); })},
                  true,
                  kUniform},
        ScaleCase{"EscapeAfterChanges",
                  kUniform,
                  {Do([](Step& s) {
                      s.Click("Non-Uniform").Retype("horScaleNumberEdit", "10").Press(Qt::Key_Escape);
                  })},
                  false,
                  kUniform}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

// ---------------------------------------------------------------------------------------------
// Numbered marker

const char* const kMarkerNumber = "markerNumberHotTextNumberReplacement";

TEST(SetNumberedMarkerDialog, ShowsTheNumberAndWritesTheName)
{
    TestHost host;
    CheckedUser user;
    user.On("SetNumberedMarkerDialog")
        .Inspect([](QWidget& inWindow) {
            auto* number = Find<HostQt::HotTextNumberWidget>(inWindow, kMarkerNumber);
            const auto* scripted = Find(inWindow, "markerNumberHotTextNumber");
            const auto* label = Find<QLabel>(inWindow, "markerNumberStaticText");
            const auto* name = Find<QLineEdit>(inWindow, "markerNameTextEdit");
            if (!number || !scripted || !label || !name) {
                return;
            }
            EXPECT_EQ(number->DisplayText(), QStringLiteral("42"));
            EXPECT_TRUE(number->isVisible());
            EXPECT_FALSE(number->isEnabled()) << "the caller chose the number";
            EXPECT_FALSE(scripted->isVisible());
            EXPECT_EQ(number->accessibleName(), QStringLiteral("Marker number"));
            EXPECT_EQ(label->buddy(), number);
            EXPECT_EQ(name->selectedText(), QStringLiteral("Chorus"));
            EXPECT_TRUE(name->hasFocus());
        })
        .Type("markerNameTextEdit", "Verse")
        .Press(Qt::Key_Return);
    std::wstring name = L"Chorus";
    EXPECT_TRUE(DLG::SetNumberedMarker::DoSetNumberedMarkerDialog(42, name));
    EXPECT_EQ(name, L"Verse");
}

TEST(SetNumberedMarkerDialog, CancelWritesNothing)
{
    TestHost host;
    CheckedUser user;
    user.On("SetNumberedMarkerDialog").Type("markerNameTextEdit", "Verse").Click("cancelButton");
    std::wstring name = L"Chorus";
    EXPECT_FALSE(DLG::SetNumberedMarker::DoSetNumberedMarkerDialog(3, name));
    EXPECT_EQ(name, L"Chorus");
}

// ---------------------------------------------------------------------------------------------
// Delete media

struct DeleteMediaCase {
    const char* name;
    Actions actions;
    bool confirmed;
    bool deleteMedia;
    friend void PrintTo(const DeleteMediaCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class DeleteMedia : public testing::TestWithParam<DeleteMediaCase> {};

// The caller passes false: the check box starts checked all the same, and what it last showed
// comes back whether the user confirmed or not.
TEST_P(DeleteMedia, CheckBoxReportedEvenWhenCancelled)
{
    TestHost host;
    CheckedUser user;
    Step& step = user.On("DeleteMediaDialog").Inspect([](QWidget& inWindow) {
        EXPECT_TRUE(IsChecked(inWindow, "deleteMediaCheckbox"));
        EXPECT_TRUE(HasFocus(inWindow, "deleteMediaCheckbox"));
    });
    GetParam().actions(step);
    bool deleteMedia = false;
    EXPECT_EQ(DLG::DeleteMedia::DoDeleteMediaDialog(deleteMedia), GetParam().confirmed);
    EXPECT_EQ(deleteMedia, GetParam().deleteMedia);
}

INSTANTIATE_TEST_SUITE_P(
    Entries, DeleteMedia,
    testing::Values(DeleteMediaCase{"Enter", [](Step& s) { s.Press(Qt::Key_Return); }, true, true},
                    DeleteMediaCase{"ClearedThenOk",
                                    [](Step& s) { s.Click("deleteMediaCheckbox").Click("okButton"); }, true, false},
                    DeleteMediaCase{"UntouchedCancel", [](Step& s) { s.Click("cancelButton"); }, false, true}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

// A dialog the user never saw reports no check box: deleting files on its say-so would be wrong.
TEST(DeleteMediaDialog, MissingScriptLeavesTheCallersValueAlone)
{
    TestHost host;
    host.UseScripts(host.ScratchDirectory());
    CheckedUser user;
    user.On("MessageBox").Press(Qt::Key_Return);
    bool deleteMedia = false;
    EXPECT_FALSE(DLG::DeleteMedia::DoDeleteMediaDialog(deleteMedia));
    EXPECT_FALSE(deleteMedia);
}

// ---------------------------------------------------------------------------------------------
// Make offline

struct OfflineCase {
    const char* name;
    Actions actions;
    bool confirmed;
    bool deleteFiles;
    friend void PrintTo(const OfflineCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class MakeOffline : public testing::TestWithParam<OfflineCase> {};

Actions Offline(bool inDelete)
{
    return [=](Step& ioStep) {
        ioStep.Inspect([=](QWidget& inWindow) {
            EXPECT_EQ(IsChecked(inWindow, "remainRadioButton"), !inDelete);
            EXPECT_EQ(IsChecked(inWindow, "deleteRadioButton"), inDelete);
        });
    };
}

// The caller passes true (its last choice): keeping the files is checked at start all the same.
TEST_P(MakeOffline, ExclusiveChoiceWrittenOnConfirm)
{
    TestHost host;
    CheckedUser user;
    Step& step = user.On("ProjectMakeOfflineFileDialog");
    Offline(false)(step);
    GetParam().actions(step);
    bool deleteFiles = true;
    EXPECT_EQ(DLG::DoProjectMakeOfflineFileDialog(deleteFiles), GetParam().confirmed);
    EXPECT_EQ(deleteFiles, GetParam().deleteFiles);
}

INSTANTIATE_TEST_SUITE_P(
    Entries, MakeOffline,
    testing::Values(OfflineCase{"Delete",
                                [](Step& s) {
                                    s.Click("deleteRadioButton");
                                    Offline(true)(s);
                                    s.Click("okButton");
                                },
                                true, true},
                    OfflineCase{"DeleteThenKeep",
                                [](Step& s) {
                                    s.Click("deleteRadioButton").Click("remainRadioButton");
                                    Offline(false)(s);
                                    s.Press(Qt::Key_Return);
                                },
                                true, false},
                    OfflineCase{"DeleteThenEscape",
                                [](Step& s) { s.Click("deleteRadioButton").Press(Qt::Key_Escape); }, false, true}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

// ---------------------------------------------------------------------------------------------
// Fit clip

const std::vector<const char*> kFitRadios = {"changeClipSpeedRadioButton", "trimClipsHeadRadioButton",
                                             "trimClipsTailRadioButton", "ignoreSequenceInPointRadioButton",
                                             "ignoreSequenceOutPointRadioButton"};
const std::vector<unsigned long> kFitBits = {0x4, 0x8, 0x10, 0x20, 0x40};

// The radio buttons checked, as choice bits.
unsigned long CheckedFitRadios(QWidget& inWindow)
{
    unsigned long checked = 0;
    for (size_t index = 0; index < kFitRadios.size(); ++index) {
        checked |= IsChecked(inWindow, kFitRadios[index]) ? kFitBits[index] : 0;
    }
    return checked;
}

Actions Checked(unsigned long inChecked)
{
    return [=](Step& ioStep) {
        ioStep.Inspect([=](QWidget& inWindow) { EXPECT_EQ(CheckedFitRadios(inWindow), inChecked); });
    };
}

struct FitClipCase {
    const char* name;
    unsigned long options;
    Actions actions;
    bool confirmed;
    unsigned long choice;
    friend void PrintTo(const FitClipCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class FitClip : public testing::TestWithParam<FitClipCase> {};

TEST_P(FitClip, OfferedChoicesExclusiveAndChoiceOrZero)
{
    TestHost host;
    CheckedUser user;
    const unsigned long options = GetParam().options;
    Step& step = user.On("FitClipDialog").Inspect([options](QWidget& inWindow) {
        for (size_t index = 0; index < kFitRadios.size(); ++index) {
            EXPECT_EQ(IsEnabled(inWindow, kFitRadios[index]), (options & kFitBits[index]) != 0) << kFitRadios[index];
        }
    });
    Checked(0x4)(step);
    GetParam().actions(step);
    unsigned long choice = 99;
    EXPECT_EQ(DLG::DoFitClipDialog(options, choice), GetParam().confirmed);
    EXPECT_EQ(choice, GetParam().choice);
}

INSTANTIATE_TEST_SUITE_P(
    Entries, FitClip,
    testing::Values(
        FitClipCase{"ClicksKeepOneChecked", 0x7C,
                    [](Step& s) {
                        s.Click("trimClipsHeadRadioButton");
                        Checked(0x8)(s);
                        s.Click("trimClipsTailRadioButton");
                        Checked(0x10)(s);
                        s.Click("trimClipsTailRadioButton");
                        Checked(0x10)(s);
                        s.Press(Qt::Key_Return);
                    },
                    true, 0x10},
        // Speed is checked but disabled: the focus starts on the first offered choice.
        FitClipCase{"ByKeyboard", 0x60,
                    [](Step& s) {
                        FocusOn("ignoreSequenceInPointRadioButton")(s);
                        s.Press(Qt::Key_Space);
                        Checked(0x20)(s);
                        s.Press(Qt::Key_Down);
                        FocusOn("ignoreSequenceOutPointRadioButton")(s);
                        Checked(0x20)(s);
                        s.Press(Qt::Key_Space);
                        Checked(0x40)(s);
                        s.Press(Qt::Key_Return);
                    },
                    true, 0x40},
        FitClipCase{"CancelGivesZero", 0x7C,
                    [](Step& s) { s.Click("trimClipsHeadRadioButton").Click("cancelButton"); }, false, 0}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

TEST(FitClipDialog, MessageFollowsTheOptions)
{
    TestHost host;
    const QString layoutText = QStringLiteral("The clip does not fit the space between the sequence's In and Out points. "
                                              "How should it fit?");
    const std::vector<std::pair<unsigned long, QString>> cases = {
        {0x4, layoutText},
        {0x84, QString::fromStdWString(Text(DLG::kStr_FitClipLonger))},
        {0x184, QString::fromStdWString(Text(DLG::kStr_FitClipShorter))},
    };
    for (const auto& [options, message] : cases) {
        CheckedUser user;
        user.On("FitClipDialog")
            .Inspect([message = message](QWidget& inWindow) {
                if (const auto* text = Find<QLabel>(inWindow, "fitClipStaticText")) {
                    EXPECT_EQ(text->text(), message);
                }
            })
            .Press(Qt::Key_Escape);
        unsigned long choice = 99;
        EXPECT_FALSE(DLG::DoFitClipDialog(options, choice));
    }
    EXPECT_THAT(Text(DLG::kStr_FitClipLonger), testing::Not(testing::StartsWith(L"<string")));
}

} // namespace
