#include "SerialDemo.h"

#include <QLabel>
#include <QTest>

#include <array>
#include <map>
#include <cstring>
#include <memory>

#include <boost/make_shared.hpp>

#include "BE/DeviceControl.h"
#include "DLG/ExportToTapeDialogImpl.h"
#include "DLG/Module.h"
#include "HostQt/SimulatedDeck.h"
#include "HostQt/Workspace.h"
#include "ScriptedUser.h"

namespace Demo {

namespace {

using Record = std::array<std::uint8_t, 32>;
using HostQt::SimulatedDeck;

constexpr KOR::FrameRate kDeckRate = KOR::kFrameRate_Video30;
const KOR::Time kTapeStart(108000, kDeckRate); // 01:00:00:00 on the tape
constexpr std::int64_t kExportFrames = 120;
constexpr int kWaitMilliseconds = 30000;

// The editor's device control record: protocol, port, two options and two flags at their offsets.
Record SetupRecord(std::uint16_t inProtocol)
{
    Record record{};
    const std::uint16_t fields[] = {inProtocol, 1, 1, 32};
    std::memcpy(&record[4], fields, sizeof(fields));
    record[24] = 1;
    record[25] = 1;
    return record;
}

// The options of the older export path: a delay of 13 eighths, the master and dependent flags set.
Record OptionsRecord()
{
    Record record{};
    const std::int16_t fields[] = {13, 0, 5};
    std::memcpy(&record[14], fields, sizeof(fields));
    record[27] = 1;
    record[28] = 1;
    record[29] = 1;
    return record;
}

template <class T>
T Field(const Record& inRecord, std::size_t inOffset)
{
    T value;
    std::memcpy(&value, &inRecord[inOffset], sizeof(T));
    return value;
}

// A request the set-up and options dialogs answer through: the demo's record, the parent, and
// what the dialog reports back.
template <class Interface>
class RecordRequest : public KOR::RefCounted<Interface> {
public:
    RecordRequest(Record& ioRecord, zelui::ui::UI_Node* inParent) : mRecord(ioRecord), mParent(inParent) {}
    zelui::ui::UI_Node* GetParentWindow() override { return mParent; }
    void SetCancelled(bool inCancelled) override { mCancelled = inCancelled; }
    void SetResultCode(long inCode) override { mResult = inCode; }
    bool mCancelled = true;
    long mResult = 0;

protected:
    Record& mRecord;

private:
    zelui::ui::UI_Node* mParent;
};

class SetupRequest : public RecordRequest<BE::ISerialSetupRequest> {
public:
    using RecordRequest::RecordRequest;
    std::uint8_t* GetSettingsRecord() override { return mRecord.data(); }
};

class OptionsRequest : public RecordRequest<BE::ISerialExportOptionsRequest> {
public:
    using RecordRequest::RecordRequest;
    std::uint8_t* GetOptionsRecord() override { return mRecord.data(); }
};

KOR::Timecode DeckTimecode(KOR::Time inTime)
{
    KOR::Timecode timecode;
    timecode.SetFormat(KOR::kTimecodeFormat_SMPTE30, kDeckRate);
    timecode.SetTime(inTime);
    return timecode;
}

// A deck that drops two frames during the recording; the plan follows the dialog's choices.
// Without "Activate recording deck" the deck is not controlled: no cue, no preroll, the movie
// plays out at once (the user starts the deck by hand).
SimulatedDeck::Plan DeckPlan(const DLG::ExportToTapeDialogImpl& inDialog)
{
    KOR::Time assemble;
    bool assembleAt = false, delay = false, preroll = false, abortAfter = false, renderAudio = false, report = false,
         activate = false;
    std::uint32_t delayFrames = 0, prerollFrames = 0, abortAfterCount = 1;
    inDialog.GetControlValues(assemble, assembleAt, delay, preroll, abortAfter, renderAudio, report, activate,
                              delayFrames, prerollFrames, abortAfterCount);
    SimulatedDeck::Plan plan;
    plan.rate = kDeckRate;
    plan.start = assembleAt ? assemble : kTapeStart;
    plan.lengthFrames = kExportFrames + (delay ? delayFrames : 0);
    plan.prerollFrames = preroll ? prerollFrames : 0;
    plan.cueMilliseconds = 800;
    plan.renderMilliseconds = renderAudio ? 600 : 0;
    plan.droppedAt = {40, 85};
    plan.abortAfterDropped = abortAfter ? abortAfterCount : 0;
    plan.controlled = activate;
    return plan;
}

// The host's export controller: the record button starts the simulated deck and, while it
// runs, aborts it; the deck's reports go to the dialog.
struct ExportController {
    std::unique_ptr<DLG::ExportToTapeDialogImpl> dialog;
    std::unique_ptr<SimulatedDeck> deck;

    void OnControlChanged(const std::wstring& inName)
    {
        if (inName != L"recordButton") {
            return;
        }
        if (deck->IsRunning()) {
            deck->Abort();
        } else {
            deck->Start(DeckPlan(*dialog));
        }
    }

    SimulatedDeck::Listener DeckListener()
    {
        return {[this](SimulatedDeck::State inState) { dialog->SetExportState(inState); },
                [this](KOR::Time inStart, KOR::Time inEnd, KOR::Time inNow) {
                    dialog->UpdateProgressTimecodes(DeckTimecode(inStart), DeckTimecode(inEnd), DeckTimecode(inNow));
                },
                [this](std::uint32_t inDropped) {
                    dialog->SetDroppedFramesString(std::to_wstring(inDropped) + L" (simulated deck)");
                }};
    }
};

QString StateName(std::uint32_t inState)
{
    return QString::fromStdWString(
        KOR::LoadStringW(DLG::GetResourceCollection(), DLG::ExportStateTextIDs(inState).first));
}

// The deck drops two frames; with inAbortOnDroppedFrames the export aborts itself at the second.
QString RunExportToTape(HostQt::Workspace& inWorkspace, bool inAbortOnDroppedFrames)
{
    ExportController controller;
    auto callback = boost::make_shared<DLG::ExportToTapeDialogImpl::ControlChangedFunction>(
        [&controller](const std::wstring& inName) { controller.OnControlChanged(inName); });
    controller.dialog = std::make_unique<DLG::ExportToTapeDialogImpl>(
        L"ExportToTapeDialog", inWorkspace.GetDrawSupplier(), inWorkspace.GetMainTopLevelWindow(), true, callback);
    controller.deck = std::make_unique<SimulatedDeck>(controller.DeckListener());
    const KOR::Time end = kTapeStart + KOR::Time(kExportFrames, kDeckRate);
    controller.dialog->SetControlValues(DeckTimecode(kTapeStart), DeckTimecode(end), DeckTimecode(kTapeStart),
                                        kTapeStart, true, false, false, true, inAbortOnDroppedFrames, false, true, 0,
                                        30, 2);
    controller.dialog->SetExportState(0);
    const bool closed = controller.dialog->DoModal();
    const bool controlled = DeckPlan(*controller.dialog).controlled;
    controller.deck->Abort();
    if (controller.deck->GetState() == SimulatedDeck::kIdle) {
        return QStringLiteral("simulated deck, no hardware: dialog closed before recording");
    }
    return QStringLiteral("simulated deck, no hardware: %1; %2; deck ended \"%3\" at %4 with %5 dropped frame(s)")
        .arg(closed ? QStringLiteral("closed by the host") : QStringLiteral("dialog closed"))
        .arg(controlled ? QStringLiteral("deck controlled") : QStringLiteral("deck not controlled, no cue or preroll"))
        .arg(StateName(controller.deck->GetState()))
        .arg(QString::fromStdWString(DeckTimecode(controller.deck->GetPosition()).GetString()))
        .arg(controller.deck->GetDroppedFrames());
}

// The export that the status dialog watches: the simulated deck, started as the dialog opens.
class DeckStatus : public KOR::RefCounted<BE::ISerialExportStatus> {
public:
    explicit DeckStatus(zelui::ui::UI_Node* inParent)
        : mParent(inParent), mDeck(SimulatedDeck::Listener{[](SimulatedDeck::State) {},
                                                           [](KOR::Time, KOR::Time, KOR::Time) {},
                                                           [](std::uint32_t) {}})
    {
        SimulatedDeck::Plan plan;
        plan.rate = kDeckRate;
        plan.start = kTapeStart;
        plan.lengthFrames = kExportFrames;
        plan.prerollFrames = 30;
        plan.cueMilliseconds = 500;
        plan.droppedAt = {20};
        mDeck.Start(plan);
    }
    zelui::ui::UI_Node* GetParentWindow() override { return mParent; }
    unsigned int GetExportState() const override { return mDeck.GetState(); }
    KOR::Timecode GetCurrentTimecode() const override { return DeckTimecode(mDeck.GetPosition()); }
    unsigned int GetDroppedFrames() const override { return mDeck.GetDroppedFrames(); }
    bool IsRunning() const override { return mDeck.IsRunning(); }
    void Abort() override { mDeck.Abort(); }
    const SimulatedDeck& Deck() const { return mDeck; }

private:
    zelui::ui::UI_Node* mParent;
    SimulatedDeck mDeck;
};

} // namespace

DemoDialog SerialSetupDemo(int inProtocol)
{
    return {QStringLiteral("Serial deck set-up (protocol %1 deck, this machine's ports)").arg(inProtocol),
            QStringLiteral("SerialSetupDialog"),
            [inProtocol](DemoState&, HostQt::Workspace& inWorkspace) {
                // The editor keeps its device settings: the next opening shows what OK wrote.
                static std::map<int, Record> records;
                Record& record =
                    records.try_emplace(inProtocol, SetupRecord(static_cast<std::uint16_t>(inProtocol))).first->second;
                KOR::InterfaceRef<SetupRequest> request(new SetupRequest(record, inWorkspace.GetMainTopLevelWindow()));
                const bool known =
                    DLG::DispatchDialog(DLG::kSerialSetupDialogID, KOR::InterfaceRef<KOR::KORUnknown>(request.Get()),
                                        inWorkspace.GetDrawSupplier(), inWorkspace.GetMainTopLevelWindow());
                return QStringLiteral("%1, result %2; protocol %3, port %4, options %5 and %6, flags %7 and %8")
                    .arg(known ? QStringLiteral("dispatched") : QStringLiteral("not dispatched"))
                    .arg(request->mResult)
                    .arg(Field<std::uint16_t>(record, 4))
                    .arg(Field<std::uint16_t>(record, 6))
                    .arg(Field<std::uint16_t>(record, 8))
                    .arg(Field<std::uint16_t>(record, 10))
                    .arg(record[24])
                    .arg(record[25]);
            },
            [](TestSupport::Step& ioStep) { ioStep.Click(QStringLiteral("1")); },
            QStringLiteral("SerialSetupDialog-Protocol%1").arg(inProtocol)};
}

DemoDialog SerialExportOptionsDemo()
{
    return {QStringLiteral("Serial export to tape options"), QStringLiteral("SerialExportOptionsDialog"),
            [](DemoState&, HostQt::Workspace& inWorkspace) {
                static Record record = OptionsRecord();
                KOR::InterfaceRef<OptionsRequest> request(
                    new OptionsRequest(record, inWorkspace.GetMainTopLevelWindow()));
                DLG::DispatchDialog(DLG::kSerialExportToTapeDialogID, KOR::InterfaceRef<KOR::KORUnknown>(request.Get()),
                                    inWorkspace.GetDrawSupplier(), inWorkspace.GetMainTopLevelWindow());
                return QStringLiteral("result %1; delay %2 eighths, offset %3, preroll %4, flags %5 %6 %7, mode %8")
                    .arg(request->mResult)
                    .arg(Field<std::int16_t>(record, 14))
                    .arg(Field<std::int16_t>(record, 16))
                    .arg(Field<std::int16_t>(record, 18))
                    .arg(record[26])
                    .arg(record[27])
                    .arg(record[28])
                    .arg(record[29]);
            },
            [](TestSupport::Step& ioStep) {
                ioStep.Click(QStringLiteral("11285")).Click(QStringLiteral("11280")).Click(QStringLiteral("1"));
            }};
}

DemoDialog ExportToTapeIdleDemo()
{
    return {QStringLiteral("Export to tape (simulated deck), ready"), QStringLiteral("ExportToTapeDialog"),
            [](DemoState&, HostQt::Workspace& inWorkspace) { return RunExportToTape(inWorkspace, false); },
            [](TestSupport::Step& ioStep) { ioStep.Press(Qt::Key_Escape); },
            QStringLiteral("ExportToTapeDialog-Ready")};
}

DemoDialog ExportToTapeToTheEndDemo()
{
    return {QStringLiteral("Export to tape (simulated deck), run to the end"), QStringLiteral("ExportToTapeDialog"),
            [](DemoState&, HostQt::Workspace& inWorkspace) { return RunExportToTape(inWorkspace, false); }, nullptr};
}

DemoDialog ExportToTapeAbortedDemo()
{
    return {QStringLiteral("Export to tape (simulated deck), aborted after dropped frames"),
            QStringLiteral("ExportToTapeDialog"),
            [](DemoState&, HostQt::Workspace& inWorkspace) { return RunExportToTape(inWorkspace, true); }, nullptr};
}

// Waits, as the user watching the dialog would, until the deck reports inState.
std::function<void(QWidget&)> UntilDeckState(std::uint32_t inState)
{
    return [inState](QWidget& inWindow) {
        auto* status = inWindow.findChild<QLabel*>(QStringLiteral("statusText"));
        if (!status || !QTest::qWaitFor([&] { return status->text() == StateName(inState); }, kWaitMilliseconds)) {
            qWarning("The simulated deck never reached state %u.", inState);
        }
    };
}

DemoDialog SerialExportStatusDemo()
{
    return {QStringLiteral("Export to tape status (simulated deck), aborted"),
            QStringLiteral("SerialExportStatusDialog"),
            [](DemoState&, HostQt::Workspace& inWorkspace) {
                KOR::InterfaceRef<DeckStatus> status(new DeckStatus(inWorkspace.GetMainTopLevelWindow()));
                DLG::DispatchDialog(DLG::kSerialExportStatusDialogID, KOR::InterfaceRef<KOR::KORUnknown>(status.Get()),
                                    inWorkspace.GetDrawSupplier(), inWorkspace.GetMainTopLevelWindow());
                return QStringLiteral("simulated deck, no hardware: ended \"%1\" at %2")
                    .arg(StateName(status->Deck().GetState()))
                    .arg(QString::fromStdWString(DeckTimecode(status->Deck().GetPosition()).GetString()));
            },
            nullptr};
}

std::function<void(QWidget&)> UntilStatusDialogState(std::uint32_t inState)
{
    return [inState](QWidget& inWindow) {
        auto* state = inWindow.findChild<QLabel*>(QStringLiteral("11290"));
        if (!state || !QTest::qWaitFor([&] { return state->text() == StateName(inState); }, kWaitMilliseconds)) {
            qWarning("The simulated deck never reached state %u.", inState);
        }
    };
}

} // namespace Demo
