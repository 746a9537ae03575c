// The export-to-tape dialog as the host's export controller drives it.

#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string_view>

#include <boost/make_shared.hpp>

#include "CheckedUser.h"
#include "DLG/ExportToTapeDialogImpl.h"
#include "DLG/Module.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using DLG::ExportToTapeDialogImpl;
using TestSupport::CheckedUser;
using TestSupport::TestHost;

const QString kWindow = QStringLiteral("ExportToTapeDialog");

// The values in SetControlValues' order.
struct Values {
    KOR::Time assemble;
    std::array<bool, 7> bools; // activate, assemble, delay, preroll, abort after, render audio, report dropped
    std::array<std::uint32_t, 3> numbers;
};

void Set(ExportToTapeDialogImpl& ioDialog, const Values& inValues)
{
    const auto& b = inValues.bools;
    ioDialog.SetControlValues({}, {}, {}, inValues.assemble, b[0], b[1], b[2], b[3], b[4], b[5], b[6],
                              inValues.numbers[0], inValues.numbers[1], inValues.numbers[2]);
}

// Read back with the getter's order and put in the setter's, so that the two compare.
Values Get(const ExportToTapeDialogImpl& inDialog)
{
    Values values;
    auto& b = values.bools;
    inDialog.GetControlValues(values.assemble, b[1], b[2], b[3], b[4], b[5], b[6], b[0], values.numbers[0],
                              values.numbers[1], values.numbers[2]);
    return values;
}

bool operator==(const Values& inA, const Values& inB)
{
    return inA.assemble == inB.assemble && inA.bools == inB.bools && inA.numbers == inB.numbers;
}

std::ostream& operator<<(std::ostream& ioStream, const Values& inValues)
{
    ioStream << inValues.assemble.Ticks() << " ticks;";
    for (const bool value : inValues.bools) {
        ioStream << ' ' << value;
    }
    return ioStream << "; " << inValues.numbers[0] << ' ' << inValues.numbers[1] << ' ' << inValues.numbers[2];
}

std::unique_ptr<ExportToTapeDialogImpl> MakeDialog(bool inHasDeviceController,
                                                   std::vector<std::wstring>* outChanges = nullptr)
{
    auto callback = boost::make_shared<ExportToTapeDialogImpl::ControlChangedFunction>();
    if (outChanges) {
        *callback = [outChanges](const std::wstring& inName) { outChanges->push_back(inName); };
    }
    return std::make_unique<ExportToTapeDialogImpl>(L"ExportToTapeDialog", nullptr, nullptr, inHasDeviceController,
                                                    callback);
}

// Each flag alone, so that two swapped flags show; the numbers distinct for the same reason.
std::vector<Values> RoundTripCases()
{
    std::vector<Values> cases;
    for (std::size_t i = 0; i < 7; ++i) {
        Values values{KOR::Time(static_cast<std::int64_t>(i) * 30 + 108000, KOR::kFrameRate_Video30), {}, {12, 34, 56}};
        values.bools[i] = true;
        cases.push_back(values);
    }
    cases.push_back({KOR::Time(0), {true, true, true, true, true, true, true}, {0, 0, 1}});
    cases.push_back({KOR::Time(0), {}, {1'000'000'000, 999'999'999, 999}});
    return cases;
}

TEST(ExportToTapeDialog, ValuesRoundTripInBothOrdersWithoutUserInput)
{
    TestHost host;
    auto dialog = MakeDialog(true);
    for (const Values& values : RoundTripCases()) {
        Set(*dialog, values);
        EXPECT_EQ(Get(*dialog), values) << "before the dialog runs";
    }
    CheckedUser user;
    user.On(kWindow)
        .Inspect([&](QWidget&) {
            for (const Values& values : RoundTripCases()) {
                Set(*dialog, values);
                EXPECT_EQ(Get(*dialog), values) << "from the controls";
            }
        })
        .Inspect([&](QWidget&) { dialog->CloseDialog(); });
    EXPECT_TRUE(dialog->DoModal()) << "closed by the host";
    EXPECT_EQ(Get(*dialog), RoundTripCases().back()) << "the values the controls showed when it closed";
}

TEST(ExportToTapeDialog, NumberEditsKeepTheirLimits)
{
    TestHost host;
    auto dialog = MakeDialog(true);
    CheckedUser user;
    user.On(kWindow)
        .Inspect([&](QWidget&) {
            Set(*dialog, {KOR::Time(0), {}, {4'000'000'000U, 1'500'000'000U, 5000}});
            EXPECT_THAT(Get(*dialog).numbers, testing::ElementsAre(1'000'000'000U, 1'000'000'000U, 999U));
            Set(*dialog, {KOR::Time(0), {}, {0, 0, 0}});
            EXPECT_THAT(Get(*dialog).numbers, testing::ElementsAre(0U, 0U, 1U)) << "abort after needs a frame";
        })
        .Retype(QStringLiteral("abortAfterTextEdit"), QStringLiteral("25"))
        .Inspect([&](QWidget&) { EXPECT_EQ(Get(*dialog).numbers[2], 25U); })
        .Click(QStringLiteral("cancelButton"));
    EXPECT_FALSE(dialog->DoModal());
}

TEST(ExportToTapeDialog, ActivateBoxIsForcedOffWithoutADeviceController)
{
    TestHost host;
    const struct {
        bool hasDevice;
        bool shown;
        bool enabled;
    } cases[] = {{false, false, false}, {true, true, true}};
    for (const auto& c : cases) {
        auto dialog = MakeDialog(c.hasDevice);
        const Values values{KOR::Time(0), {true, false, false, false, false, false, false}, {0, 0, 1}};
        Set(*dialog, values);
        EXPECT_EQ(Get(*dialog).bools[0], c.shown) << "before the run";
        CheckedUser user;
        user.On(kWindow)
            .Inspect([&](QWidget& inWindow) {
                auto* box = inWindow.findChild<QCheckBox*>(QStringLiteral("activateRecordingBoxCheckbox"));
                EXPECT_EQ(box->isChecked(), c.shown);
                EXPECT_EQ(box->isEnabled(), c.enabled);
                Set(*dialog, values);
                EXPECT_EQ(box->isChecked(), c.shown) << "set again while running";
                EXPECT_EQ(Get(*dialog).bools[0], c.shown);
            })
            .Press(Qt::Key_Escape);
        EXPECT_FALSE(dialog->DoModal());
    }
}

TEST(ExportToTapeDialog, StateTableSetsStatusAndButtonTexts)
{
    TestHost host;
    const struct {
        std::uint32_t state;
        unsigned int status;
        unsigned int button;
    } cases[] = {{0, 11250, 11251}, {1, 11252, 11253}, {2, 11254, 11253}, {3, 11255, 11256},
                 {4, 11260, 11251}, {5, 11257, 11251}, {6, 11258, 11251}, {7, 11260, 11251},
                 {8, 11259, 11251}, {9, 11261, 11251}, {10, 11250, 11251}, {0xFFFFFFFF, 11250, 11251}};
    auto dialog = MakeDialog(true);
    dialog->SetExportState(3);
    CheckedUser user;
    user.On(kWindow)
        .Inspect([&](QWidget& inWindow) {
            auto* status = inWindow.findChild<QLabel*>(QStringLiteral("statusText"));
            auto* button = inWindow.findChild<QPushButton*>(QStringLiteral("recordButton"));
            EXPECT_EQ(status->text().toStdWString(), DLG::LoadString(11255)) << "the state set before the run";
            for (const auto& c : cases) {
                dialog->SetExportState(c.state);
                EXPECT_EQ(status->text().toStdWString(), DLG::LoadString(c.status)) << "state " << c.state;
                EXPECT_EQ(button->text().toStdWString(), DLG::LoadString(c.button)) << "state " << c.state;
            }
            dialog->SetActionButtonString(L"Go");
            EXPECT_EQ(button->text(), QStringLiteral("Go"));
        })
        .Press(Qt::Key_Escape);
    EXPECT_FALSE(dialog->DoModal());
}

TEST(ExportToTapeDialog, ProgressTextsAndTheirContract)
{
    TestHost host;
    auto dialog = MakeDialog(true);
    const auto timecode = [](std::int64_t inFrames) {
        KOR::Timecode result;
        result.SetFormat(KOR::kTimecodeFormat_SMPTE25, KOR::kFrameRate_PAL25);
        result.SetTime(KOR::Time(inFrames, KOR::kFrameRate_PAL25));
        return result;
    };
    EXPECT_THROW(dialog->UpdateProgressTimecodes(timecode(0), timecode(1), timecode(2)), zelcore::Error)
        << "no controls before the run";
    EXPECT_THROW(dialog->SetDroppedFramesString(L"3"), zelcore::Error);
    EXPECT_THROW(dialog->SetActionButtonString(L"Go"), zelcore::Error);
    dialog->SetControlValues(timecode(25), timecode(50), timecode(75), KOR::Time(0), false, false, false, false,
                             false, false, false, 0, 0, 1);
    const auto text = [](QWidget& inWindow, const char* inName) {
        return inWindow.findChild<QLabel*>(QString::fromLatin1(inName))->text();
    };
    CheckedUser user;
    user.On(kWindow)
        .Inspect([&](QWidget& inWindow) {
            EXPECT_EQ(text(inWindow, "startTimecodeText"), QStringLiteral("00:00:01:00")) << "the values' timecodes";
            EXPECT_EQ(text(inWindow, "endTimecodeText"), QStringLiteral("00:00:02:00"));
            EXPECT_EQ(text(inWindow, "currentTimecodeText"), QStringLiteral("00:00:03:00"));
        })
        .Inspect([&](QWidget& inWindow) {
            dialog->UpdateProgressTimecodes(timecode(90000), timecode(90000 + 25 * 60), timecode(90000 + 37));
            dialog->SetDroppedFramesString(L"3 frames");
            EXPECT_EQ(text(inWindow, "startTimecodeText"), QStringLiteral("01:00:00:00"));
            EXPECT_EQ(text(inWindow, "endTimecodeText"), QStringLiteral("01:01:00:00"));
            EXPECT_EQ(text(inWindow, "currentTimecodeText"), QStringLiteral("01:00:01:12"));
            EXPECT_EQ(text(inWindow, "numDroppedFrames"), QStringLiteral("3 frames"));
        })
        .Click(QStringLiteral("cancelButton"));
    EXPECT_FALSE(dialog->DoModal());
    dialog->CloseDialog(); // not running: nothing happens
    EXPECT_THROW(dialog->UpdateProgressTimecodes(timecode(0), timecode(1), timecode(2)), zelcore::Error)
        << "the run's controls are gone";
    EXPECT_THROW(dialog->SetDroppedFramesString(L"3"), zelcore::Error);
    EXPECT_THROW(dialog->SetActionButtonString(L"Go"), zelcore::Error);
}

// Enter must neither confirm nor stop an export: only the host's CloseDialog ends the run as confirmed.
TEST(ExportToTapeDialog, EnterLeavesTheDialogOpen)
{
    TestHost host;
    const char* const states[] = {"idle", "recording"};
    for (const char* state : states) {
        SCOPED_TRACE(state);
        auto dialog = MakeDialog(true);
        dialog->SetExportState(std::string_view(state) == "idle" ? 0 : 3);
        CheckedUser user;
        user.On(kWindow)
            .Click(QStringLiteral("framesTextEdit"))
            .Press(Qt::Key_Return)
            .Inspect([](QWidget& inWindow) { EXPECT_TRUE(inWindow.isVisible()); })
            .Press(Qt::Key_Escape);
        EXPECT_FALSE(dialog->DoModal());
    }
}

// A script may leave out the status text and the action button: the state still changes, and
// only the button's own setter needs its control.
TEST(ExportToTapeDialog, ScriptWithoutStatusAndActionButton)
{
    TestHost host;
    QFile original(TestSupport::ScriptsDirectory() + QStringLiteral("/ExportToTapeDialog.vrel"));
    ASSERT_TRUE(original.open(QIODevice::ReadOnly));
    QByteArray script = original.readAll();
    script.replace("name=\"statusText\"", "name=\"otherText\"").replace("name=\"recordButton\"", "name=\"otherButton\"");
    host.WriteScript(QStringLiteral("ExportToTapeDialog.vrel"), script);
    host.UseScripts(host.ScratchDirectory());
    std::unique_ptr<ExportToTapeDialogImpl> dialog;
    ASSERT_NO_THROW(dialog = MakeDialog(true));
    dialog->SetExportState(3);
    CheckedUser user;
    user.On(kWindow)
        .Inspect([&](QWidget&) {
            EXPECT_NO_THROW(dialog->SetExportState(3));
            try {
                dialog->SetActionButtonString(L"Go");
                ADD_FAILURE() << "no action button, yet no contract failure";
            } catch (const zelcore::Error& inError) {
                EXPECT_EQ(inError.Expression(), "mRecordButton != nullptr");
            }
        })
        .Press(Qt::Key_Escape);
    EXPECT_FALSE(dialog->DoModal());
}

TEST(ExportToTapeDialog, ChangesAreForwardedAndOnlyACheckedBoxReadsTrue)
{
    TestHost host;
    std::vector<std::wstring> changes;
    auto dialog = MakeDialog(true, &changes);
    Set(*dialog, {KOR::Time(0), {false, false, false, true, false, false, false}, {0, 0, 1}});
    CheckedUser user;
    user.On(kWindow)
        .Inspect([&](QWidget&) {
            Set(*dialog, {KOR::Time(0), {false, false, false, true, false, false, false}, {5, 6, 7}});
        })
        .Click(QStringLiteral("assembleAtTimecodeCheckbox"))
        .Click(QStringLiteral("activateRecordingBoxCheckbox"))
        .Click(QStringLiteral("recordButton"))
        .Inspect([&](QWidget& inWindow) {
            EXPECT_TRUE(Get(*dialog).bools[3]);
            auto* preroll = inWindow.findChild<QCheckBox*>(QStringLiteral("prerollCheckbox"));
            preroll->setTristate(true);
            preroll->setCheckState(Qt::PartiallyChecked);
            EXPECT_FALSE(Get(*dialog).bools[3]) << "a mixed box is not on";
            EXPECT_TRUE(Get(*dialog).bools[1]) << "clicked by the user";
        })
        .Press(Qt::Key_Escape);
    EXPECT_FALSE(dialog->DoModal());
    EXPECT_THAT(changes, testing::ElementsAre(L"assembleAtTimecodeCheckbox", L"activateRecordingBoxCheckbox",
                                              L"recordButton"));
}

} // namespace
