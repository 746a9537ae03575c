// The serial export options dialog over its record, the export status dialog, and the
// dispatch of all four identifiers.

#include <QCheckBox>
#include <QLineEdit>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cwctype>
#include <cstring>
#include <functional>

#include "BE/ColorMatte.h"
#include "BE/DeviceControl.h"
#include "CheckedUser.h"
#include "DLG/Module.h"
#include "DLG/DeviceControlSerialSetupDialog.h"
#include "DLG/SerialExportOptionsDialog.h"
#include "DLG/SerialExportStatusDialog.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using DLG::SerialExportOptionsDialog;
using TestSupport::CheckedUser;
using TestSupport::Step;
using TestSupport::TestHost;

using Record = std::array<std::uint8_t, 32>;

const QString kWindow = QStringLiteral("SerialExportOptionsDialog");
const QString kMaster = QStringLiteral("11280");
const QString kDependent = QStringLiteral("11286");

struct Options {
    std::int16_t eighths;
    std::int16_t second;
    std::int16_t third;
    std::uint8_t flag;
    std::uint8_t master;
    std::uint8_t dependent;
    std::uint8_t mode;
};

Record PatternedRecord(const Options& inOptions)
{
    Record record;
    for (std::size_t i = 0; i < record.size(); ++i) {
        record[i] = static_cast<std::uint8_t>(0x3C ^ (i * 29));
    }
    std::memcpy(&record[14], &inOptions.eighths, 2);
    std::memcpy(&record[16], &inOptions.second, 2);
    std::memcpy(&record[18], &inOptions.third, 2);
    record[26] = inOptions.flag;
    record[27] = inOptions.master;
    record[28] = inOptions.dependent;
    record[29] = inOptions.mode;
    return record;
}

QString Text(unsigned int inID) { return QString::fromStdWString(DLG::LoadString(inID)); }

long RunOptions(Record& ioRecord, const std::function<void(Step&)>& inUser)
{
    CheckedUser user;
    inUser(user.On(kWindow));
    SerialExportOptionsDialog dialog(ioRecord.data(), nullptr);
    return dialog.DoModal();
}

TEST(SerialExportOptionsDialog, OkWritesTheSevenFields)
{
    TestHost host;
    const QString ok = QStringLiteral("1");
    const struct {
        const char* name;
        Options before;
        std::function<void(Step&)> user;
        Options after;
    } cases[] = {
        {"13 eighths show 1 and come back as 8",
         {13, 100, 5, 1, 1, 1, 1},
         [&](Step& s) { s.Click(ok); },
         {8, 100, 5, 1, 1, 1, 1}},
        {"negative eighths show -1, which the edit does not read as a number",
         {-13, 0, 0, 0, 0, 0, 0},
         [&](Step& s) { s.Click(ok); },
         {0, 0, 0, 0, 0, 0, 0}},
        {"entered values, the eighths multiplied",
         {0, 0, 0, 0, 0, 0, 1},
         [&](Step& s) {
             s.Retype(QStringLiteral("11283"), QStringLiteral("25"))
                 .Retype(QStringLiteral("11282"), QStringLiteral("1200"))
                 .Retype(QStringLiteral("11284"), QStringLiteral("3"))
                 .Click(QStringLiteral("11285"))
                 .Choose(QStringLiteral("11281"), Text(11489))
                 .Click(ok);
         },
         {200, 1200, 3, 1, 0, 0, 0}},
        {"values beyond 16 bits are cut",
         {0, 0, 0, 0, 0, 0, 1},
         [&](Step& s) {
             s.Retype(QStringLiteral("11283"), QStringLiteral("70000"))
                 .Retype(QStringLiteral("11282"), QStringLiteral("65535"))
                 .Click(ok);
         },
         {static_cast<std::int16_t>(560000 & 0xFFFF), -1, 0, 0, 0, 0, 1}},
        {"keys other than digits are refused",
         {0, 0, 0, 0, 0, 0, 1},
         [&](Step& s) { s.Retype(QStringLiteral("11284"), QStringLiteral("-1a2.")).Click(ok); },
         {0, 0, 12, 0, 0, 0, 1}},
        {"an unknown mode selects the first item",
         {0, 0, 0, 0, 0, 0, 7},
         [&](Step& s) { s.Click(ok); },
         {0, 0, 0, 0, 0, 0, 1}},
        {"master cleared: dependent cleared and stored as 0",
         {8, 0, 0, 0, 1, 1, 1},
         [&](Step& s) { s.Click(kMaster).Click(ok); },
         {8, 0, 0, 0, 0, 0, 1}},
        {"master set: dependent shows its stored flag",
         {8, 0, 0, 0, 0, 1, 1},
         [&](Step& s) { s.Click(kMaster).Click(ok); },
         {8, 0, 0, 0, 1, 1, 1}},
        {"master set again forgets the user's dependent click",
         {8, 0, 0, 0, 1, 0, 1},
         [&](Step& s) { s.Click(kDependent).Click(kMaster).Click(kMaster).Click(ok); },
         {8, 0, 0, 0, 1, 0, 1}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Record record = PatternedRecord(c.before);
        EXPECT_EQ(RunOptions(record, c.user), 1);
        EXPECT_EQ(record, PatternedRecord(c.after));
    }
}

TEST(SerialExportOptionsDialog, ShowsTheRecordAndCancelWritesNothing)
{
    TestHost host;
    const Record before = PatternedRecord({13, 42, 7, 1, 0, 1, 0});
    Record record = before;
    const long result = RunOptions(record, [](Step& s) {
        s.Inspect([](QWidget& w) {
             EXPECT_EQ(w.findChild<QLineEdit*>(QStringLiteral("11283"))->text(), QStringLiteral("1"));
             EXPECT_EQ(w.findChild<QLineEdit*>(QStringLiteral("11282"))->text(), QStringLiteral("42"));
             EXPECT_FALSE(w.findChild<QCheckBox*>(kDependent)->isEnabled());
             EXPECT_FALSE(w.findChild<QCheckBox*>(kDependent)->isChecked());
         })
            .Retype(QStringLiteral("11283"), QStringLiteral("9"))
            .Click(kMaster)
            .Inspect([](QWidget& w) {
                EXPECT_TRUE(w.findChild<QCheckBox*>(kDependent)->isEnabled());
                EXPECT_TRUE(w.findChild<QCheckBox*>(kDependent)->isChecked());
            })
            .Press(Qt::Key_Escape);
    });
    EXPECT_EQ(result, 2);
    EXPECT_EQ(record, before);
}

// The host's side of the three serial dialogs.
class OptionsRequest : public KOR::RefCounted<BE::ISerialExportOptionsRequest> {
public:
    std::uint8_t* GetOptionsRecord() override { return mRecord.data(); }
    zelui::ui::UI_Node* GetParentWindow() override { return nullptr; }
    void SetCancelled(bool inCancelled) override { mCancelled = inCancelled; }
    void SetResultCode(long inCode) override { mResult = inCode; }
    Record mRecord = PatternedRecord({13, 0, 0, 0, 0, 0, 1});
    bool mCancelled = false;
    long mResult = 0;
};

class SetupRequest : public KOR::RefCounted<BE::ISerialSetupRequest> {
public:
    std::uint8_t* GetSettingsRecord() override { return mRecord.data(); }
    zelui::ui::UI_Node* GetParentWindow() override { return nullptr; }
    void SetCancelled(bool) override {}
    void SetResultCode(long inCode) override { mResult = inCode; }
    Record mRecord{};
    long mResult = 0;
};

class ExportStatus : public KOR::RefCounted<BE::ISerialExportStatus> {
public:
    zelui::ui::UI_Node* GetParentWindow() override { return nullptr; }
    unsigned int GetExportState() const override { return 3; }
    KOR::Timecode GetCurrentTimecode() const override
    {
        KOR::Timecode timecode;
        timecode.SetFormat(KOR::kTimecodeFormat_SMPTE25, KOR::kFrameRate_PAL25);
        timecode.SetTime(KOR::Time(90000 + 12, KOR::kFrameRate_PAL25));
        return timecode;
    }
    unsigned int GetDroppedFrames() const override { return 2; }
    bool IsRunning() const override { return mRunning; }
    void Abort() override
    {
        ++mAborts;
        mRunning = false;
    }
    bool mRunning = true;
    int mAborts = 0;
};

class MatteName : public KOR::RefCounted<BE::IColorMatteNameParameters> {
public:
    std::wstring GetName() const override { return L"Matte"; }
    void SetName(const std::wstring&) override {}
};

TEST(SerialDispatch, EveryIdentifierOpensItsDialog)
{
    TestHost host;
    KOR::InterfaceRef<OptionsRequest> options(new OptionsRequest);
    KOR::InterfaceRef<SetupRequest> setup(new SetupRequest);
    KOR::InterfaceRef<ExportStatus> status(new ExportStatus);
    CheckedUser user;
    user.On(kWindow).Click(QStringLiteral("1"));
    user.On(QStringLiteral("SerialSetupDialog")).Click(QStringLiteral("1"));
    user.On(QStringLiteral("SerialExportStatusDialog"))
        .Inspect([](QWidget& w) {
            EXPECT_EQ(w.findChild<QWidget*>(QStringLiteral("11290"))->property("text").toString(),
                      QString::fromStdWString(DLG::LoadString(11255)));
            EXPECT_EQ(w.findChild<QWidget*>(QStringLiteral("11291"))->property("text").toString(),
                      QStringLiteral("01:00:00:12"));
            EXPECT_EQ(w.findChild<QWidget*>(QStringLiteral("11292"))->property("text").toString(),
                      QStringLiteral("Dropped frames: 2"));
        })
        .Click(QStringLiteral("2"));
    user.On(QStringLiteral("ColorMatteNameDialog")).Press(Qt::Key_Escape);
    const std::pair<const std::wstring&, KOR::InterfaceRef<KOR::KORUnknown>> dispatches[] = {
        {DLG::kSerialExportToTapeDialogID, KOR::InterfaceRef<KOR::KORUnknown>(options.Get())},
        {DLG::kSerialSetupDialogID, KOR::InterfaceRef<KOR::KORUnknown>(setup.Get())},
        {DLG::kSerialExportStatusDialogID, KOR::InterfaceRef<KOR::KORUnknown>(status.Get())},
        {DLG::kColorMatteNameDialogID, KOR::InterfaceRef<KOR::KORUnknown>(new MatteName)},
    };
    for (const auto& [id, parameters] : dispatches) {
        EXPECT_TRUE(DLG::DispatchDialog(id, parameters, nullptr, nullptr));
    }
    EXPECT_EQ(options->mResult, 1);
    EXPECT_EQ(options->mRecord, PatternedRecord({8, 0, 0, 0, 0, 0, 1}));
    EXPECT_EQ(setup->mResult, 1);
    EXPECT_EQ(status->mAborts, 1);
}

TEST(SerialDispatch, StatusDialogEndsWithTheExportOrAbortsIt)
{
    TestHost host;
    const struct {
        const char* name;
        bool runningAtStart;
        std::function<void(Step&, ExportStatus&)> user; // null: no window may show
        int aborts;
    } cases[] = {
        {"the export ends while shown", true,
         [](Step& s, ExportStatus& io) { s.Inspect([&io](QWidget&) { io.mRunning = false; }); }, 0},
        {"the export is over before it shows", false, nullptr, 0},
        {"Escape aborts", true, [](Step& s, ExportStatus&) { s.Press(Qt::Key_Escape); }, 1},
        {"closing the window aborts", true, [](Step& s, ExportStatus&) { s.Close(); }, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        KOR::InterfaceRef<ExportStatus> status(new ExportStatus);
        status->mRunning = c.runningAtStart;
        CheckedUser user;
        if (c.user) {
            c.user(user.On(QStringLiteral("SerialExportStatusDialog")), *status);
        }
        EXPECT_TRUE(DLG::DispatchDialog(DLG::kSerialExportStatusDialogID,
                                        KOR::InterfaceRef<KOR::KORUnknown>(status.Get()), nullptr, nullptr));
        EXPECT_EQ(status->mAborts, c.aborts);
    }
}

// A request that tells when the module lets go of it.
template <class Request>
class Released : public Request {
public:
    explicit Released(bool& outReleased) : mReleased(outReleased) {}
    ~Released() override { mReleased = true; }

private:
    bool& mReleased;
};

using MakeParameters = std::function<KOR::InterfaceRef<KOR::KORUnknown>(bool& outReleased)>;

template <class Request>
KOR::InterfaceRef<KOR::KORUnknown> MakeReleased(bool& outReleased)
{
    return KOR::InterfaceRef<KOR::KORUnknown>(new Released<Request>(outReleased));
}

TEST(SerialDispatch, IdentifiersMatchExactlyAndTheParametersAreReleased)
{
    TestHost host;
    const struct {
        const wchar_t* id;
        QString window;
        QString button;
        MakeParameters parameters;
    } cases[] = {
        {L"com.tarvix.dialogs.SerialExportToTape.Modal", kWindow, QStringLiteral("2"), &MakeReleased<OptionsRequest>},
        {L"com.tarvix.dialogs.SerialSetup.Modal", QStringLiteral("SerialSetupDialog"), QStringLiteral("2"),
         &MakeReleased<SetupRequest>},
        {L"com.tarvix.dialogs.SerialExportStatusDialog.Modal", QStringLiteral("SerialExportStatusDialog"),
         QStringLiteral("2"), &MakeReleased<ExportStatus>},
    };
    for (const auto& c : cases) {
        const std::wstring exact = c.id;
        std::wstring lower = exact;
        std::transform(lower.begin(), lower.end(), lower.begin(), [](wchar_t inChar) { return std::towlower(inChar); });
        const struct {
            const char* name;
            std::wstring id;
            bool opens;
        } variants[] = {{"exact", exact, true}, {"lower case", lower, false}, {"trailing blank", exact + L" ", false}};
        for (const auto& v : variants) {
            SCOPED_TRACE(QString::fromStdWString(exact).toStdString() + ", " + v.name);
            bool released = false;
            {
                CheckedUser user;
                if (v.opens) {
                    user.On(c.window).Click(c.button);
                }
                EXPECT_EQ(DLG::DispatchDialog(v.id, c.parameters(released), nullptr, nullptr), v.opens);
            }
            EXPECT_TRUE(released);
        }
    }
}

using Creator = void (*)(const std::wstring&, KOR::InterfaceRef<KOR::KORUnknown>,
                         const zelui::drawbot::SupplierInterface*, zelui::ui::UI_Node*);

// Each creator checks its identifier first, then needs its own request interface.
TEST(SerialDispatch, CreatorsCheckTheirIdentifierAndInterface)
{
    TestHost host;
    class Plain : public KOR::RefCounted<KOR::KORUnknown> {};
    const struct {
        const char* name;
        Creator create;
        const std::wstring& id;
        std::string idContract;
    } cases[] = {
        {"options", &DLG::CreateSerialExportOptionsDialog, DLG::kSerialExportToTapeDialogID,
         "inDialogID == kSerialExportToTapeDialogID"},
        {"set-up", &DLG::CreateSerialSetupDialog, DLG::kSerialSetupDialogID, "inDialogID == kSerialSetupDialogID"},
        {"status", &DLG::CreateSerialExportStatusDialog, DLG::kSerialExportStatusDialogID,
         "inDialogID == kSerialExportStatusDialogID"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        CheckedUser user; // no window may open
        try {
            c.create(DLG::kColorMatteNameDialogID, KOR::InterfaceRef<KOR::KORUnknown>(new Plain), nullptr, nullptr);
            ADD_FAILURE() << "a wrong identifier raised nothing";
        } catch (const zelcore::Error& inError) {
            EXPECT_EQ(inError.Expression(), c.idContract);
        }
        try {
            c.create(c.id, KOR::InterfaceRef<KOR::KORUnknown>(new Plain), nullptr, nullptr);
            ADD_FAILURE() << "parameters without the request interface raised nothing";
        } catch (const zelcore::Error& inError) {
            EXPECT_EQ(inError.Message(), L"A NULL interface pointer has been dereferenced.");
        }
    }
}

// A host that hands over no record gets a contract failure, not a dialog that writes through null.
TEST(SerialDispatch, NullRecordBreaksTheContract)
{
    TestHost host;
    class NoOptions : public OptionsRequest {
    public:
        std::uint8_t* GetOptionsRecord() override { return nullptr; }
    };
    class NoSettings : public SetupRequest {
    public:
        std::uint8_t* GetSettingsRecord() override { return nullptr; }
    };
    const std::pair<const std::wstring&, KOR::InterfaceRef<KOR::KORUnknown>> cases[] = {
        {DLG::kSerialExportToTapeDialogID, KOR::InterfaceRef<KOR::KORUnknown>(new NoOptions)},
        {DLG::kSerialSetupDialogID, KOR::InterfaceRef<KOR::KORUnknown>(new NoSettings)},
    };
    for (const auto& [id, parameters] : cases) {
        CheckedUser user; // no window may open
        try {
            DLG::DispatchDialog(id, parameters, nullptr, nullptr);
            ADD_FAILURE() << "a null record raised nothing";
        } catch (const zelcore::Error& inError) {
            EXPECT_EQ(inError.Expression(), "record != nullptr");
        }
    }
}

} // namespace
