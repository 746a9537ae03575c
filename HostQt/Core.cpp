// The host's foundation on the standard library and Qt: errors, contracts, reference counting,
// string tables, folders and files, and the service table.

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QString>

#include <charconv>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <mutex>

#include "BE/Backend.h"
#include "BE/ColorMatte.h"
#include "BE/Media.h"
#include "BE/Project.h"
#include "BE/ProjectItem.h"
#include "BE/ProjectSettings.h"
#include "BE/Sequence.h"
#include "MF/Abort.h"
#include "TL/ProjectManager.h"
#include "KOR/Timecode.h"
#include "UIF/KeyFilter.h"
#include "UIF/Sound.h"
#include "UIF/TimecodeInfo.h"
#include "zelcore/Utility.h"
#include "KOR/Allocator.h"
#include "KOR/InterfaceRef.h"
#include "KOR/Module.h"
#include "KOR/Paths.h"
#include "KOR/Services.h"
#include "TL/AutoSave.h"
#include "UIF/MessageBox.h"
#include "UIF/PlayerControl.h"
#include "UIF/Workspace.h"
#include "zelcore/DebugService.h"
#include "zelcore/Error.h"
#include "zelui/UI_Node.h"
#include "zelui/drawbot.h"

namespace KOR {

void* Allocator::Allocate(std::size_t inSize)
{
    if (void* block = std::malloc(inSize)) {
        return block;
    }
    throw std::bad_alloc();
}

void Allocator::Free(void* inBlock) { std::free(inBlock); }

const InterfaceID KORUnknown::kIID = {0x4b, 0x4f, 0x52, 0x55, 0x6e, 0x6b, 0x6e, 0x6f,
                                      0x77, 0x6e, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01};
KORUnknown::~KORUnknown() = default;

void ThrowNullInterfaceDereference() { zelcore::config::ThrowError(zelcore::messages::kNullInterfaceDereference); }

ResourceCollection::~ResourceCollection() = default;
Module::~Module() = default;

std::wstring LoadStringW(const ResourceCollection& inResources, unsigned int inID)
{
    std::wstring text;
    if (inResources.FindString(inID, text)) {
        return text;
    }
    return L"<string " + std::to_wstring(inID) + L">";
}

std::wstring Localize(const std::wstring& inKeyWithDefault)
{
    static const std::wstring kKeyPrefix = L"$$$/";
    if (inKeyWithDefault.compare(0, kKeyPrefix.size(), kKeyPrefix) != 0) {
        return inKeyWithDefault;
    }
    const auto separator = inKeyWithDefault.find(L'=');
    return separator == std::wstring::npos ? inKeyWithDefault : inKeyWithDefault.substr(separator + 1);
}

ServiceTable& Services()
{
    static ServiceTable table;
    return table;
}

namespace {
std::mutex gDirectoryMutex;
QHash<QString, QString>& Directories()
{
    static QHash<QString, QString> directories;
    return directories;
}
} // namespace

std::wstring DirectoryRegistry::FindDirectory(const std::wstring& inName)
{
    std::lock_guard lock(gDirectoryMutex);
    return Directories().value(QString::fromStdWString(inName)).toStdWString();
}

void DirectoryRegistry::RegisterDirectory(const std::wstring& inName, const std::wstring& inPath)
{
    std::lock_guard lock(gDirectoryMutex);
    Directories().insert(QString::fromStdWString(inName), QString::fromStdWString(inPath));
}

namespace PathUtils {

std::wstring AddTrailingSlash(const std::wstring& inPath)
{
    if (inPath.empty() || inPath.back() == L'/' || inPath.back() == L'\\') {
        return inPath;
    }
    return inPath + L'/';
}

bool ExistsOnDisk(const std::wstring& inPath) { return QFileInfo::exists(QString::fromStdWString(inPath)); }

} // namespace PathUtils

class File::Impl {
public:
    explicit Impl(const std::wstring& inPath) : mFile(QString::fromStdWString(inPath)) {}
    QFile mFile;
};

File::File(const std::wstring& inPath) : mImpl(std::make_unique<Impl>(inPath)) {}
File::~File() = default;

bool File::Open(Mode) { return mImpl->mFile.open(QIODevice::ReadOnly); }

std::int64_t File::SizeOnDisk() const { return QFileInfo(mImpl->mFile.fileName()).size(); }

File::Result File::Read(void* outBuffer, std::int64_t inSize, std::int64_t& outRead)
{
    outRead = 0;
    while (outRead < inSize) {
        const qint64 got = mImpl->mFile.read(static_cast<char*>(outBuffer) + outRead, inSize - outRead);
        if (got < 0) {
            return -1;
        }
        if (got == 0) {
            break;
        }
        outRead += got;
    }
    return outRead == inSize ? 0 : -2;
}

void File::Close() { mImpl->mFile.close(); }

} // namespace KOR

namespace zelcore {

namespace {
std::string Narrow(const std::wstring& inText) { return QString::fromStdWString(inText).toStdString(); }
} // namespace

Error::Error(std::wstring inMessage, std::string inExpression, std::string inFile, int inLine)
    : mMessage(std::move(inMessage)), mExpression(std::move(inExpression)), mFile(std::move(inFile)), mLine(inLine),
      mWhat(Narrow(mMessage))
{
    if (!mExpression.empty()) {
        mWhat += " (" + mExpression + " at " + mFile + ":" + std::to_string(mLine) + ")";
    }
}

Error::~Error() = default;

const char* Error::what() const noexcept { return mWhat.c_str(); }

namespace config {

void ThrowError(const std::wstring& inMessage) { throw Error(KOR::Localize(inMessage)); }

void ThrowError(const std::wstring& inMessage, const char* inExpression, const char* inFile, int inLine)
{
    throw Error(KOR::Localize(inMessage), inExpression, inFile, inLine);
}

} // namespace config

namespace debug {

DebugService::~DebugService() = default;

bool BreakAfterContractDialog(const char* inExpression, const char* inFile, int inLine)
{
    DebugService* debugger = KOR::Services().debugger;
    return debugger && debugger->OfferBreak(inExpression, inFile, inLine);
}

void ZEL_DebugBreak()
{
    if (DebugService* debugger = KOR::Services().debugger) {
        debugger->Break();
    }
}

} // namespace debug

namespace contract {

void Fail(const wchar_t* inMessage, const char* inExpression, const char* inFile, int inLine)
{
    if (debug::BreakAfterContractDialog(inExpression, inFile, inLine)) {
        debug::ZEL_DebugBreak();
    }
    config::ThrowError(inMessage, inExpression, inFile, inLine);
}

} // namespace contract

} // namespace zelcore

namespace TL {

AutoSaveService::~AutoSaveService() = default;

void BlockAutoSave()
{
    if (AutoSaveService* autoSave = KOR::Services().autoSave) {
        autoSave->Block();
    }
}

void UnblockAutoSave()
{
    if (AutoSaveService* autoSave = KOR::Services().autoSave) {
        autoSave->Unblock();
    }
}

} // namespace TL

namespace UIF {

PlayerService::~PlayerService() = default;

void PlayerControl::StopAllPlayers()
{
    if (PlayerService* players = KOR::Services().players) {
        players->StopAllPlayers();
    }
}

MessageBoxService::~MessageBoxService() = default;

long MessageBoxW(const std::wstring& inText, const std::wstring& inCaption, unsigned long inButtons,
                 unsigned long inIcon, long inDefaultResult)
{
    MessageBoxService* boxes = KOR::Services().messageBoxes;
    return boxes ? boxes->Show(inText, inCaption, inButtons, inIcon, inDefaultResult) : kMessageBoxResult_Cancel;
}

Commander::~Commander() = default;
TabView::~TabView() = default;
Workspace::~Workspace() = default;

Workspace& Workspace::Instance()
{
    Workspace* workspace = GetPtr();
    if (!workspace) {
        zelcore::config::ThrowError(L"$$$/UIF/Error/NoWorkspace=The host has no workspace.");
    }
    return *workspace;
}

Workspace* Workspace::GetPtr() { return KOR::Services().workspace; }

} // namespace UIF

namespace BE {

Backend::~Backend() = default;
Backend* GetBackend() { return KOR::Services().backend; }

const KOR::InterfaceID IProject::kIID = {0x42, 0x45, 0x49, 0x50, 0x72, 0x6f, 0x6a, 0x65,
                                         0x63, 0x74, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01};
IProject::~IProject() = default;
std::vector<ColorMatteRef> IProject::GetColorMattes() const { return {}; }
std::vector<MediaRef> IProject::GetMedia() const { return {}; }
MediaRef IProject::AddMedia(const std::wstring&, const std::wstring&, int) { return {}; }
std::vector<MasterClipRef> IProject::GetMasterClips() const { return {}; }
std::vector<ChildClipRef> IProject::GetChildClips() const { return {}; }
std::vector<SequenceRef> IProject::GetSequences() const { return {}; }
bool IProject::HasUnsavedChanges() const { return false; }

const KOR::InterfaceID IMasterClip::kIID = {0x42, 0x45, 0x4d, 0x61, 0x73, 0x74, 0x65, 0x72, 0x43, 0x6c, 0x69, 0x70, 0x00, 0x00, 0x00, 0x01};
IMasterClip::~IMasterClip() = default;
const KOR::InterfaceID IChildClip::kIID = {0x42, 0x45, 0x43, 0x68, 0x69, 0x6c, 0x64, 0x43, 0x6c, 0x69, 0x70, 0x00, 0x00, 0x00, 0x00, 0x01};
IChildClip::~IChildClip() = default;
const KOR::InterfaceID IClip::kIID = {0x42, 0x45, 0x43, 0x6c, 0x69, 0x70, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01};
IClip::~IClip() = default;
const KOR::InterfaceID ISequence::kIID = {0x42, 0x45, 0x53, 0x65, 0x71, 0x75, 0x65, 0x6e, 0x63, 0x65, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01};
ISequence::~ISequence() = default;
const KOR::InterfaceID ITrackItemSelection::kIID = {0x42, 0x45, 0x54, 0x72, 0x61, 0x63, 0x6b, 0x49, 0x74, 0x65, 0x6d, 0x53, 0x65, 0x6c, 0x00, 0x01};
ITrackItemSelection::~ITrackItemSelection() = default;
const KOR::InterfaceID IProjectItemSelection::kIID = {0x42, 0x45, 0x50, 0x72, 0x6f, 0x6a, 0x49, 0x74, 0x65, 0x6d, 0x53, 0x65, 0x6c, 0x00, 0x00, 0x01};
IProjectItemSelection::~IProjectItemSelection() = default;

const KOR::InterfaceID IMedia::kIID = {0x42, 0x45, 0x4d, 0x65, 0x64, 0x69, 0x61, 0x00,
                                       0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01};
IMedia::~IMedia() = default;
const KOR::InterfaceID IPropertyBag::kIID = {0x42, 0x45, 0x50, 0x72, 0x6f, 0x70, 0x42, 0x61,
                                             0x67, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01};
IPropertyBag::~IPropertyBag() = default;
const KOR::InterfaceID IProjectItem::kIID = {0x42, 0x45, 0x50, 0x72, 0x6f, 0x6a, 0x49, 0x74,
                                             0x65, 0x6d, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01};
IProjectItem::~IProjectItem() = default;

KOR::InterfaceID GetTarvixLinkMediaImplementationID()
{
    return {0x42, 0x45, 0x4c, 0x69, 0x6e, 0x6b, 0x4d, 0x65, 0x64, 0x69, 0x61, 0x00, 0x00, 0x00, 0x00, 0x01};
}

const KOR::InterfaceID IColorMatteNameParameters::kIID = {0x42, 0x45, 0x43, 0x6f, 0x6c, 0x6f, 0x72, 0x4d,
                                                          0x61, 0x74, 0x74, 0x65, 0x4e, 0x61, 0x6d, 0x65};
IColorMatteNameParameters::~IColorMatteNameParameters() = default;

const KOR::InterfaceID IColorMatte::kIID = {0x42, 0x45, 0x43, 0x6f, 0x6c, 0x6f, 0x72, 0x4d,
                                            0x61, 0x74, 0x74, 0x65, 0x00, 0x00, 0x00, 0x01};
IColorMatte::~IColorMatte() = default;

} // namespace BE

namespace MF {
const KOR::InterfaceID IAbort::kIID = {0x4d, 0x46, 0x41, 0x62, 0x6f, 0x72, 0x74, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01};
IAbort::~IAbort() = default;
} // namespace MF

namespace TL::ProjectManager {
const KOR::InterfaceID IProjectManagerOperation::kIID = {0x54, 0x4c, 0x50, 0x72, 0x6f, 0x6a, 0x4d, 0x61, 0x6e, 0x61, 0x67, 0x65, 0x72, 0x4f, 0x70, 0x01};
IProjectManagerOperation::~IProjectManagerOperation() = default;
} // namespace TL::ProjectManager

namespace zelui {

namespace drawbot {
SupplierInterface::~SupplierInterface() = default;
}

namespace ui {

UI_NodeManager::~UI_NodeManager() = default;
UI_NodeManager* UI_NodeManager::Get() { return KOR::Services().nodeManager; }

} // namespace ui
} // namespace zelui

namespace UIF {

SoundService::~SoundService() = default;

void Beep()
{
    if (SoundService* sounds = KOR::Services().sounds) {
        sounds->Beep();
    }
}

bool KeyFilterStandard::AcceptUnsignedInteger(wchar_t inChar) { return inChar >= L'0' && inChar <= L'9'; }

bool KeyFilterStandard::AcceptSignedInteger(wchar_t inChar)
{
    return AcceptUnsignedInteger(inChar) || inChar == L'-' || inChar == L'+';
}

bool KeyFilterStandard::AcceptUnsignedFloat(wchar_t inChar)
{
    return AcceptUnsignedInteger(inChar) || inChar == L'.' || inChar == L',';
}

bool KeyFilterStandard::AcceptSignedFloat(wchar_t inChar)
{
    return AcceptUnsignedFloat(inChar) || inChar == L'-' || inChar == L'+';
}

bool KeyFilterStandard::AcceptTimecodeDelimiter(wchar_t inChar) { return KOR::Timecode::IsDelimiter(inChar); }

TimecodeNotifier::~TimecodeNotifier() = default;

} // namespace UIF

namespace zelcore::utility {

double StringToNumber(const std::wstring& inText)
{
    std::string text;
    for (const wchar_t c : inText) {
        text.push_back(c == L',' ? '.' : (c < 128 ? static_cast<char>(c) : '?'));
    }
    std::size_t start = text.find_first_not_of(" \t");
    if (start == std::string::npos) {
        return 0.0;
    }
    if (text[start] == '+') {
        ++start;
    }
    // from_chars reads the same whatever the process's locale.
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data() + start, text.data() + text.size(), value,
                                              std::chars_format::general);
    return error != std::errc() || !std::isfinite(value) ? 0.0 : value;
}

std::wstring NumberToHexString(unsigned long inNumber)
{
    static constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
    std::wstring text;
    do {
        text.insert(text.begin(), kDigits[inNumber % 16]);
        inNumber /= 16;
    } while (inNumber != 0);
    return text;
}

} // namespace zelcore::utility

namespace BE {

const KOR::InterfaceID IVideoSettings::kIID = {0x42, 0x45, 0x56, 0x69, 0x64, 0x65, 0x6f, 0x53,
                                               0x65, 0x74, 0x74, 0x69, 0x6e, 0x67, 0x73, 0x01};
IVideoSettings::~IVideoSettings() = default;
const KOR::InterfaceID IAudioSettings::kIID = {0x42, 0x45, 0x41, 0x75, 0x64, 0x69, 0x6f, 0x53,
                                               0x65, 0x74, 0x74, 0x69, 0x6e, 0x67, 0x73, 0x01};
IAudioSettings::~IAudioSettings() = default;
const KOR::InterfaceID IProjectSettings::kIID = {0x42, 0x45, 0x50, 0x72, 0x6f, 0x6a, 0x53, 0x65,
                                                 0x74, 0x74, 0x69, 0x6e, 0x67, 0x73, 0x00, 0x01};
IProjectSettings::~IProjectSettings() = default;

} // namespace BE
