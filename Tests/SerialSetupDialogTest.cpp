// The serial deck set-up dialog over a settings record, driven by a scripted user.

#include <QCheckBox>
#include <QComboBox>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <functional>

#include "BE/DeviceControl.h"
#include "CheckedUser.h"
#include "DLG/DeviceControlSerialSetupDialog.h"
#include "DLG/Module.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using DLG::CDeviceControlSerialSetupDialog;
using TestSupport::CheckedUser;
using TestSupport::Step;
using TestSupport::TestHost;

using Record = std::array<std::uint8_t, 32>;

const QString kWindow = QStringLiteral("SerialSetupDialog");
const QString kProtocol = QStringLiteral("11300");
const QString kPort = QStringLiteral("11301");
const QString kGeneral = QStringLiteral("11302");
const QString kProtocolFlag = QStringLiteral("11303");
const QString kFirstOption = QStringLiteral("11304");

// Bytes that no field of the dialog covers keep a pattern, so that a stray write shows.
Record PatternedRecord(std::uint16_t inProtocol, std::uint16_t inPort, std::uint16_t inFirst, std::uint16_t inSecond,
                       std::uint8_t inProtocolFlag, std::uint8_t inGeneralFlag)
{
    Record record;
    for (std::size_t i = 0; i < record.size(); ++i) {
        record[i] = static_cast<std::uint8_t>(0xA5 ^ (i * 37));
    }
    std::memcpy(&record[4], &inProtocol, 2);
    std::memcpy(&record[6], &inPort, 2);
    std::memcpy(&record[8], &inFirst, 2);
    std::memcpy(&record[10], &inSecond, 2);
    record[24] = inProtocolFlag;
    record[25] = inGeneralFlag;
    return record;
}

const std::vector<DLG::SerialPorts::Port> kTwoPorts = {{L"COM3", 3}, {L"COM5", 5}};

QString Text(unsigned int inID) { return QString::fromStdWString(DLG::LoadString(inID)); }

long RunDialog(Record& ioRecord, const std::vector<DLG::SerialPorts::Port>& inPorts,
               const std::function<void(Step&)>& inUser)
{
    CheckedUser user;
    inUser(user.On(kWindow));
    CDeviceControlSerialSetupDialog dialog(ioRecord.data(), nullptr, inPorts);
    return dialog.DoModal();
}

TEST(SerialSetupDialog, OkWritesOnlyTheDocumentedFields)
{
    TestHost host;
    const struct {
        const char* name;
        Record before;
        std::vector<DLG::SerialPorts::Port> ports;
        std::function<void(Step&)> user;
        Record after;
    } cases[] = {
        {"unchanged values are written back as they were", PatternedRecord(1, 5, 3, 16, 0, 1), kTwoPorts,
         [](Step& s) { s.Click(QStringLiteral("1")); }, PatternedRecord(1, 5, 3, 16, 0, 1)},
        {"option 2 survives while the protocol is 1", PatternedRecord(1, 3, 2, 32, 1, 0), kTwoPorts,
         [](Step& s) { s.Choose(kProtocol, Text(11439)).Press(Qt::Key_Return); }, PatternedRecord(1, 3, 2, 32, 0, 0)},
        {"another protocol drops option 3 back to 1", PatternedRecord(1, 3, 3, 32, 1, 0), kTwoPorts,
         [](Step& s) { s.Choose(kProtocol, Text(11440)).Click(QStringLiteral("1")); },
         PatternedRecord(16, 3, 1, 32, 1, 0)},
        {"protocol 16 to 4 clears the dependent flag", PatternedRecord(16, 5, 1, 1, 1, 1), kTwoPorts,
         [](Step& s) { s.Choose(kProtocol, Text(11444)).Click(QStringLiteral("1")); },
         PatternedRecord(4, 5, 1, 1, 0, 1)},
        {"a port no longer present becomes the first listed", PatternedRecord(18, 9, 1, 64, 0, 0), kTwoPorts,
         [](Step& s) { s.Click(QStringLiteral("1")); }, PatternedRecord(18, 3, 1, 64, 0, 0)},
        {"no port present stores the absent selection", PatternedRecord(20, 2, 1, 128, 1, 0), {},
         [](Step& s) { s.Click(QStringLiteral("1")); }, PatternedRecord(20, 0xFFFF, 1, 128, 1, 0)},
        {"unknown codes select the first items; option 2 needs protocol 1 stored", PatternedRecord(99, 3, 2, 7, 1, 1),
         kTwoPorts,
         [](Step& s) { s.Click(QStringLiteral("1")); }, PatternedRecord(1, 3, 1, 32, 0, 1)},
        {"the user's choices", PatternedRecord(4, 3, 1, 32, 0, 0), kTwoPorts,
         [](Step& s) {
             s.Choose(kProtocol, Text(11446))
                 .Choose(kPort, QStringLiteral("COM5"))
                 .Choose(QStringLiteral("11305"), Text(11453))
                 .Click(kProtocolFlag)
                 .Click(kGeneral)
                 .Click(QStringLiteral("1"));
         },
         PatternedRecord(20, 5, 1, 128, 1, 1)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Record record = c.before;
        EXPECT_EQ(RunDialog(record, c.ports, c.user), 1);
        EXPECT_EQ(record, c.after);
    }
}

TEST(SerialSetupDialog, CancelLeavesTheRecordByteForByte)
{
    TestHost host;
    const std::function<void(Step&)> endings[] = {
        [](Step& s) { s.Click(QStringLiteral("2")); },
        [](Step& s) { s.Press(Qt::Key_Escape); },
        [](Step& s) { s.Close(); },
        // The focus is on the protocol flag, the last control clicked; Cancel is three tabs on.
        [](Step& s) {
            s.Press(Qt::Key_Tab).Press(Qt::Key_Tab).Press(Qt::Key_Tab);
            s.Inspect([](QWidget& inWindow) {
                ASSERT_NE(inWindow.focusWidget(), nullptr);
                EXPECT_EQ(inWindow.focusWidget()->objectName(), QStringLiteral("2"));
            });
            s.Press(Qt::Key_Return);
        },
    };
    for (const auto& ending : endings) {
        const Record before = PatternedRecord(1, 5, 3, 16, 0, 1);
        Record record = before;
        const long result = RunDialog(record, kTwoPorts, [&](Step& s) {
            s.Choose(kProtocol, Text(11441)).Choose(kPort, QStringLiteral("COM3")).Click(kGeneral).Click(kProtocolFlag);
            ending(s);
        });
        EXPECT_EQ(result, 2);
        EXPECT_EQ(record, before);
    }
}

TEST(SerialSetupDialog, ListsAndCheckBoxesFollowTheProtocol)
{
    TestHost host;
    const auto items = [](QWidget& inWindow, const QString& inList) {
        QStringList texts;
        auto* list = inWindow.findChild<QComboBox*>(inList);
        for (int i = 0; i < list->count(); ++i) {
            texts << list->itemText(i);
        }
        return texts;
    };
    const auto box = [](QWidget& inWindow, const QString& inName) { return inWindow.findChild<QCheckBox*>(inName); };
    Record record = PatternedRecord(1, 5, 2, 16, 1, 1);
    RunDialog(record, kTwoPorts, [&](Step& s) {
        s.Inspect([&](QWidget& w) {
             EXPECT_EQ(items(w, kProtocol), (QStringList{Text(11439), Text(11440), Text(11441), Text(11444),
                                                         Text(11445), Text(11446)}));
             EXPECT_EQ(items(w, kPort), (QStringList{QStringLiteral("COM3"), QStringLiteral("COM5")}));
             EXPECT_EQ(items(w, kFirstOption), (QStringList{Text(11456), Text(11457), Text(11458)}));
             EXPECT_EQ(items(w, QStringLiteral("11305")),
                       (QStringList{Text(11452), Text(11451), Text(11450), Text(11454), Text(11453)}));
             EXPECT_EQ(w.findChild<QComboBox*>(kPort)->currentText(), QStringLiteral("COM5"));
             EXPECT_EQ(w.findChild<QComboBox*>(kFirstOption)->currentText(), Text(11457));
             EXPECT_FALSE(box(w, kProtocolFlag)->isEnabled()) << "protocol 1 has no dependent flag";
             EXPECT_FALSE(box(w, kProtocolFlag)->isChecked());
             EXPECT_TRUE(box(w, kGeneral)->isChecked());
         })
            .Click(kGeneral)
            .Choose(kProtocol, Text(11441))
            .Inspect([&](QWidget& w) {
                EXPECT_EQ(items(w, kFirstOption), QStringList{Text(11456)});
                EXPECT_TRUE(box(w, kProtocolFlag)->isEnabled());
                EXPECT_TRUE(box(w, kProtocolFlag)->isChecked()) << "shows the record's flag";
                EXPECT_TRUE(box(w, kGeneral)->isChecked()) << "a change of protocol shows the record again";
            })
            .Click(QStringLiteral("2"));
    });
}

// The host's request, recording what the dialog asked of it and in which order.
class SetupRequest : public KOR::RefCounted<BE::ISerialSetupRequest> {
public:
    SetupRequest(std::vector<std::string>& outCalls, bool& outReleased) : mCalls(outCalls), mReleased(outReleased) {}
    ~SetupRequest() override { mReleased = true; }
    std::uint8_t* GetSettingsRecord() override
    {
        mCalls.push_back("record");
        return mRecord.data();
    }
    zelui::ui::UI_Node* GetParentWindow() override
    {
        mCalls.push_back("parent");
        return nullptr;
    }
    void SetCancelled(bool inCancelled) override { mCalls.push_back(inCancelled ? "cancelled" : "confirmed"); }
    void SetResultCode(long inCode) override { mCalls.push_back("result " + std::to_string(inCode)); }
    Record mRecord = PatternedRecord(16, 1, 1, 32, 0, 0);

private:
    std::vector<std::string>& mCalls;
    bool& mReleased;
};

TEST(SerialSetupDialog, DispatchUsesTheRequestInOrderAndReleasesIt)
{
    TestHost host;
    const struct {
        QString button;
        std::vector<std::string> calls;
    } cases[] = {
        {QStringLiteral("1"), {"record", "parent", "confirmed", "result 1"}},
        {QStringLiteral("2"), {"record", "parent", "cancelled", "result 2"}},
    };
    for (const auto& c : cases) {
        std::vector<std::string> calls;
        bool released = false;
        {
            CheckedUser user;
            user.On(kWindow).Click(c.button);
            EXPECT_TRUE(DLG::DispatchDialog(DLG::kSerialSetupDialogID,
                                            KOR::InterfaceRef<KOR::KORUnknown>(new SetupRequest(calls, released)),
                                            nullptr, nullptr));
        }
        EXPECT_EQ(calls, c.calls);
        EXPECT_TRUE(released);
    }
}

} // namespace
