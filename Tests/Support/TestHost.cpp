#include "TestHost.h"

#include <QDir>
#include <QFile>
#include <QtEndian>

#include "DLG/Module.h"
#include "KOR/Paths.h"
#include "TL/AutoSave.h"
#include "UIF/Cursor.h"
#include "UIF/MessageBox.h"
#include "UIF/PlayerControl.h"
#include "UIF/Sound.h"
#include "zelcore/DebugService.h"
#include "zelui/UI_Node.h"

namespace TestSupport {

QString ScriptsDirectory() { return QStringLiteral(TARVIX_SOURCE_DIR "/Scripts"); }
QString StringTablePath() { return QStringLiteral(TARVIX_SOURCE_DIR "/Strings/Strings.json"); }

void WriteWav(const QString& inPath, const HostQt::WavLayout& inLayout, const std::vector<double>& inSamples,
              const QByteArray& inChunkBeforeData)
{
    QByteArray bytes = HostQt::WavHeader(inLayout, static_cast<std::int64_t>(inSamples.size()) / inLayout.channels);
    bytes.insert(bytes.size() - 8, inChunkBeforeData); // before the data chunk's header
    for (const double sample : inSamples) {
        HostQt::AppendWavSample(bytes, inLayout.format, sample);
    }
    qToLittleEndian(static_cast<quint32>(bytes.size() - 8), bytes.data() + 4); // the RIFF chunk's size
    QFile file(inPath);
    file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    file.write(bytes);
}

class TestHost::Wrappers : public UIF::PlayerService,
                           public TL::AutoSaveService,
                           public UIF::MessageBoxService,
                           public UIF::SoundService,
                           public zelui::ui::UI_NodeManager,
                           public zelcore::debug::DebugService,
                           public UIF::CursorService {
public:
    explicit Wrappers(const KOR::ServiceTable& inReal) : mReal(inReal) {}

    void StopAllPlayers() override
    {
        mCounts.sequence.emplace_back("stop players");
        mReal.players->StopAllPlayers();
    }
    void Block() override
    {
        ++mCounts.autoSaveBlocks;
        mCounts.sequence.emplace_back("block auto-save");
        mReal.autoSave->Block();
    }
    void Unblock() override
    {
        ++mCounts.autoSaveUnblocks;
        mCounts.sequence.emplace_back("unblock auto-save");
        mReal.autoSave->Unblock();
    }
    bool IsBlocked() const override { return mReal.autoSave->IsBlocked(); }
    long Show(const std::wstring& inText, const std::wstring& inCaption, unsigned long inButtons,
              unsigned long inIcon, long inDefaultResult) override
    {
        mCounts.messageBoxes.push_back({inText, inCaption, inButtons, inIcon});
        return mReal.messageBoxes->Show(inText, inCaption, inButtons, inIcon, inDefaultResult);
    }
    void Beep() override { ++mCounts.beeps; }
    void EndInputCapture(bool inRestoreFocus) override
    {
        mCounts.sequence.emplace_back("end input capture");
        mReal.nodeManager->EndInputCapture(inRestoreFocus);
    }
    bool HasModalWindow() const override { return mReal.nodeManager->HasModalWindow(); }
    zelui::ui::UI_NodePtr GetModalWindow() const override { return mReal.nodeManager->GetModalWindow(); }
    bool OfferBreak(const char* inExpression, const char*, int) override
    {
        mCounts.contractsFailed.emplace_back(inExpression);
        return false;
    }
    void Break() override {}
    void SetWaitCursor() override
    {
        ++mCounts.waitCursorsShown;
        mCounts.sequence.emplace_back("wait cursor");
        mReal.cursors->SetWaitCursor();
    }
    void RestoreCursor() override
    {
        ++mCounts.cursorsRestored;
        mCounts.sequence.emplace_back("restore cursor");
        mReal.cursors->RestoreCursor();
    }

    HostCounts mCounts;

private:
    KOR::ServiceTable mReal;
};

TestHost::TestHost(bool inWithMainWindow)
    : mHost(std::make_unique<HostQt::ReferenceHost>(HostQt::HostConfig{mSettings.path(), ScriptsDirectory()}))
{
    if (inWithMainWindow) {
        mMainWindow = std::make_unique<QWidget>();
        mMainWindow->setObjectName(QStringLiteral("MainWindow"));
        mMainWindow->resize(640, 400);
        mMainWindow->show();
        mHost->SetMainWindow(mMainWindow.get());
    }
    mWrappers = std::make_unique<Wrappers>(KOR::Services());
    KOR::ServiceTable& table = KOR::Services();
    table.players = mWrappers.get();
    table.autoSave = mWrappers.get();
    table.messageBoxes = mWrappers.get();
    table.sounds = mWrappers.get();
    table.nodeManager = mWrappers.get();
    table.debugger = mWrappers.get();
    table.cursors = mWrappers.get();
    DLG::SetModule(HostQt::LoadModuleObject(StringTablePath()));
}

TestHost::~TestHost()
{
    DLG::Terminate();
    KOR::Services() = mHost->InstalledServices();
    mHost.reset();
}

void TestHost::UseScripts(const QString& inDirectory)
{
    KOR::DirectoryRegistry::RegisterDirectory(L"vrel.scripts", inDirectory.toStdWString());
}

void TestHost::WriteScript(const QString& inFileName, const QByteArray& inContents) const
{
    QFile file(QDir(mScratch.path()).filePath(inFileName));
    file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    file.write(inContents);
}

void TestHost::Record(const std::string& inEvent) { mWrappers->mCounts.sequence.push_back(inEvent); }

HostCounts TestHost::Counts() const
{
    HostCounts counts = mWrappers->mCounts;
    counts.autoSaveBlockedNow = mWrappers->IsBlocked();
    return counts;
}

} // namespace TestSupport
