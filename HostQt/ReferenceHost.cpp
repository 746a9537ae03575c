// The reference host's services: workspace, players, message boxes, auto-save, backend
// properties, input capture and the debugger offer.

#include <QApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>

#include <algorithm>
#include <csignal>
#include <map>
#include <unordered_map>

#include "BE/Backend.h"
#include "BE/ProjectSettings.h"
#include "KOR/Timecode.h"
#include "UIF/Sound.h"

#include <boost/signals2/signal.hpp>
#include "HostQt/Cursor.h"
#include "HostQt/FileChooser.h"
#include "HostQt/NodePeer.h"
#include "HostQt/ProjectFile.h"
#include "HostQt/ReferenceHost.h"
#include "HostQt/Sequences.h"
#include "HostQt/ShortcutManager.h"
#include "HostQt/Workspace.h"
#include "HostQt/WorkQueue.h"
#include "KOR/Application.h"
#include "KOR/Paths.h"
#include "TL/AutoSave.h"
#include "TL/Media.h"
#include "UIF/MessageBox.h"
#include "UIF/PlayerControl.h"
#include "zelcore/DebugService.h"
#include "zelcore/Error.h"

namespace HostQt {

namespace {

QString ToQ(const std::wstring& inText) { return QString::fromStdWString(inText); }

class Players : public UIF::PlayerService {
public:
    void StopAllPlayers() override
    {
        for (const auto& stop : mStops) {
            stop();
        }
    }
    std::vector<std::function<void()>> mStops;
};

class AutoSave : public TL::AutoSaveService {
public:
    void Block() override { ++mBlocks; }
    void Unblock() override
    {
        if (mBlocks > 0) {
            --mBlocks;
        }
    }
    bool IsBlocked() const override { return mBlocks > 0; }

private:
    int mBlocks = 0;
};

struct ButtonAnswer {
    QMessageBox::StandardButton button;
    long answer;
};

std::vector<ButtonAnswer> ButtonSet(unsigned long inButtons)
{
    switch (inButtons) {
    case UIF::kMessageBox_OKCancel:
        return {{QMessageBox::Ok, UIF::kMessageBoxResult_OK}, {QMessageBox::Cancel, UIF::kMessageBoxResult_Cancel}};
    case UIF::kMessageBox_YesNo:
        return {{QMessageBox::Yes, UIF::kMessageBoxResult_Yes}, {QMessageBox::No, UIF::kMessageBoxResult_No}};
    case UIF::kMessageBox_YesNoCancel:
        return {{QMessageBox::Yes, UIF::kMessageBoxResult_Yes},
                {QMessageBox::No, UIF::kMessageBoxResult_No},
                {QMessageBox::Cancel, UIF::kMessageBoxResult_Cancel}};
    default:
        return {{QMessageBox::Ok, UIF::kMessageBoxResult_OK}};
    }
}

QMessageBox::Icon IconFor(unsigned long inIcon)
{
    switch (inIcon) {
    case UIF::kMessageBoxIcon_Question: return QMessageBox::Question;
    case UIF::kMessageBoxIcon_Information: return QMessageBox::Information;
    case UIF::kMessageBoxIcon_Warning: return QMessageBox::Warning;
    case UIF::kMessageBoxIcon_Error: return QMessageBox::Critical;
    default: return QMessageBox::NoIcon;
    }
}

class MessageBoxes : public UIF::MessageBoxService {
public:
    explicit MessageBoxes(Workspace& inWorkspace) : mWorkspace(inWorkspace) {}

    long Show(const std::wstring& inText, const std::wstring& inCaption, unsigned long inButtons,
              unsigned long inIcon, long inDefaultResult) override
    {
        QMessageBox box(IconFor(inIcon), ToQ(inCaption), ToQ(inText), QMessageBox::NoButton, Parent());
        box.setObjectName(QStringLiteral("MessageBox"));
        const std::vector<ButtonAnswer> buttons = ButtonSet(inButtons);
        for (const ButtonAnswer& entry : buttons) {
            QPushButton* button = box.addButton(entry.button);
            if (entry.answer == inDefaultResult || (inDefaultResult == 0 && &entry == &buttons.front())) {
                box.setDefaultButton(button);
            }
        }
        const auto chosen = static_cast<QMessageBox::StandardButton>(box.exec());
        for (const ButtonAnswer& entry : buttons) {
            if (entry.button == chosen) {
                return entry.answer;
            }
        }
        return buttons.size() == 1 ? buttons.front().answer : UIF::kMessageBoxResult_Cancel;
    }

private:
    QWidget* Parent() const
    {
        if (QWidget* modal = QApplication::activeModalWidget()) {
            return modal;
        }
        zelui::ui::UI_Node* main = mWorkspace.GetMainTopLevelWindow();
        return main ? PeerWidget<QWidget>(main) : nullptr;
    }
    Workspace& mWorkspace;
};

// QSettings in a JSON file: a flat object of the properties.
bool ReadJsonSettings(QIODevice& inDevice, QSettings::SettingsMap& outMap)
{
    const QByteArray data = inDevice.readAll();
    if (data.trimmed().isEmpty()) {
        return true;
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(data, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject()) {
        return false;
    }
    outMap = document.object().toVariantMap();
    return true;
}

bool WriteJsonSettings(QIODevice& inDevice, const QSettings::SettingsMap& inMap)
{
    return inDevice.write(QJsonDocument(QJsonObject::fromVariantMap(inMap)).toJson()) >= 0;
}

QSettings::Format JsonSettingsFormat()
{
    static const QSettings::Format format = QSettings::registerFormat(QStringLiteral("json"), &ReadJsonSettings,
                                                                      &WriteJsonSettings, Qt::CaseSensitive);
    return format;
}

// Backend properties in a JSON settings file. A file that cannot be parsed is set aside as
// "<name>.corrupt" and the properties start from their defaults.
class SettingsBackendImpl : public BE::Backend {
public:
    explicit SettingsBackendImpl(const QString& inPath) : mSettings(OpenSettings(inPath)) {}

    std::wstring GetStringProperty(const std::wstring& inKey, const std::wstring& inDefault) const override
    {
        const QVariant value = mSettings->value(ToQ(inKey));
        return value.typeId() == QMetaType::QString ? value.toString().toStdWString() : inDefault;
    }
    void SetStringProperty(const std::wstring& inKey, const std::wstring& inValue) override
    {
        Write(inKey, ToQ(inValue));
    }
    long GetIntProperty(const std::wstring& inKey, long inDefault) const override
    {
        bool ok = false;
        const long value = static_cast<long>(mSettings->value(ToQ(inKey)).toLongLong(&ok));
        return ok ? value : inDefault;
    }
    void SetIntProperty(const std::wstring& inKey, long inValue) override
    {
        Write(inKey, static_cast<qlonglong>(inValue));
    }
    bool GetBoolProperty(const std::wstring& inKey, bool inDefault) const override
    {
        const QVariant value = mSettings->value(ToQ(inKey));
        return value.typeId() == QMetaType::Bool ? value.toBool() : inDefault;
    }
    void SetBoolProperty(const std::wstring& inKey, bool inValue) override { Write(inKey, inValue); }
    double GetDoubleProperty(const std::wstring& inKey, double inDefault) const override
    {
        bool ok = false;
        const double value = mSettings->value(ToQ(inKey)).toDouble(&ok);
        return ok ? value : inDefault;
    }
    void SetDoubleProperty(const std::wstring& inKey, double inValue) override { Write(inKey, inValue); }

private:
    static std::unique_ptr<QSettings> OpenSettings(const QString& inPath)
    {
        auto settings = std::make_unique<QSettings>(inPath, JsonSettingsFormat());
        if (settings->status() == QSettings::FormatError) {
            settings.reset();
            const QString aside = inPath + QStringLiteral(".corrupt");
            QFile::remove(aside);
            QFile::rename(inPath, aside);
            settings = std::make_unique<QSettings>(inPath, JsonSettingsFormat());
        }
        return settings;
    }

    // Each write reaches the disk at once, through a temporary file renamed over the old one.
    void Write(const std::wstring& inKey, const QVariant& inValue)
    {
        mSettings->setValue(ToQ(inKey), inValue);
        mSettings->sync();
    }

    std::unique_ptr<QSettings> mSettings;
};

class NodeManager : public zelui::ui::UI_NodeManager {
public:
    void EndInputCapture(bool inRestoreFocus) override
    {
        if (QWidget* grabber = QWidget::mouseGrabber()) {
            grabber->releaseMouse();
        }
        if (QWidget* grabber = QWidget::keyboardGrabber()) {
            grabber->releaseKeyboard();
            if (inRestoreFocus) {
                grabber->setFocus(Qt::OtherFocusReason);
            }
        }
    }
    bool HasModalWindow() const override { return QApplication::activeModalWidget() != nullptr; }
    zelui::ui::UI_NodePtr GetModalWindow() const override
    {
        QWidget* modal = QApplication::activeModalWidget();
        return modal ? new zelui::ui::UI_Node(std::make_unique<zelui::ui::NodePeer>(modal)) : nullptr;
    }
};

// A contract failure breaks into the debugger only when TARVIX_BREAK_ON_CONTRACT is set.
class Debugger : public zelcore::debug::DebugService {
public:
    bool OfferBreak(const char*, const char*, int) override { return qEnvironmentVariableIsSet("TARVIX_BREAK_ON_CONTRACT"); }
    void Break() override { std::raise(SIGTRAP); }
};

class StringTableModule : public KOR::Module {
public:
    explicit StringTableModule(std::unordered_map<unsigned int, std::wstring> inStrings)
        : mStrings(std::move(inStrings))
    {
    }
    bool FindString(unsigned int inID, std::wstring& outText) const override
    {
        const auto found = mStrings.find(inID);
        if (found == mStrings.end()) {
            return false;
        }
        outText = found->second;
        return true;
    }

private:
    std::unordered_map<unsigned int, std::wstring> mStrings;
};

using Notify = std::function<void()>;

class VideoSettings : public KOR::RefCounted<BE::IVideoSettings> {
public:
    VideoSettings(KOR::FrameRate inRate, Notify inNotify) : mRate(inRate), mNotify(std::move(inNotify)) {}
    KOR::FrameRate GetFrameRate() const override { return mRate; }
    void SetFrameRate(KOR::FrameRate inRate) override
    {
        mRate = inRate;
        mNotify();
    }

private:
    KOR::FrameRate mRate;
    Notify mNotify;
};

class AudioSettings : public KOR::RefCounted<BE::IAudioSettings> {
public:
    AudioSettings(KOR::FrameRate inRate, Notify inNotify) : mRate(inRate), mNotify(std::move(inNotify)) {}
    KOR::FrameRate GetSampleRate() const override { return mRate; }
    void SetSampleRate(KOR::FrameRate inRate) override
    {
        mRate = inRate;
        mNotify();
    }

private:
    KOR::FrameRate mRate;
    Notify mNotify;
};

// "30000/1001" or "25".
KOR::FrameRate ReadRate(const QJsonValue& inValue, KOR::FrameRate inDefault)
{
    const QStringList parts = inValue.toVariant().toString().split(QLatin1Char('/'));
    bool numeratorOk = false;
    bool denominatorOk = parts.size() == 1;
    const qint64 numerator = parts.value(0).toLongLong(&numeratorOk);
    const qint64 denominator = parts.size() == 2 ? parts[1].toLongLong(&denominatorOk) : 1;
    return numeratorOk && denominatorOk && numerator >= 0 && denominator > 0 ? KOR::FrameRate(numerator, denominator)
                                                                            : inDefault;
}

class ProjectSettings : public KOR::RefCounted<BE::IProjectSettings> {
public:
    explicit ProjectSettings(const QJsonObject& inTimecode)
        : mDisplayFormat(inTimecode.value(QStringLiteral("displayFormat")).toInt(KOR::kTimecodeFormat_SMPTE30)),
          mAudioDisplayFormat(
              inTimecode.value(QStringLiteral("audioDisplayFormat")).toInt(KOR::kTimecodeFormat_AudioSamples)),
          mVideo(new VideoSettings(ReadRate(inTimecode.value(QStringLiteral("videoFrameRate")), KOR::kFrameRate_Video30),
                                   [this] { mChanged(); })),
          mAudio(new AudioSettings(ReadRate(inTimecode.value(QStringLiteral("audioRate")), KOR::kFrameRate_Audio48000),
                                   [this] { mChanged(); }))
    {
    }

    unsigned int GetTimeDisplayFormat() const override { return mDisplayFormat; }
    void SetTimeDisplayFormat(unsigned int inFormat) override
    {
        mDisplayFormat = inFormat;
        mChanged();
    }
    unsigned int GetAudioTimeDisplayFormat() const override { return mAudioDisplayFormat; }
    void SetAudioTimeDisplayFormat(unsigned int inFormat) override
    {
        mAudioDisplayFormat = inFormat;
        mChanged();
    }
    KOR::InterfaceRef<BE::IVideoSettings> GetVideoSettings() const override { return mVideo; }
    KOR::InterfaceRef<BE::IAudioSettings> GetAudioSettings() const override { return mAudio; }
    boost::signals2::connection ConnectSettingsChanged(const boost::function<void()>& inListener) override
    {
        return mChanged.connect(inListener);
    }

private:
    unsigned int mDisplayFormat;
    unsigned int mAudioDisplayFormat;
    boost::signals2::signal<void()> mChanged;
    KOR::InterfaceRef<BE::IVideoSettings> mVideo;
    KOR::InterfaceRef<BE::IAudioSettings> mAudio;
};

QString RateText(KOR::FrameRate inRate)
{
    return inRate.Denominator() == 1 ? QString::number(inRate.Numerator())
                                     : QStringLiteral("%1/%2").arg(inRate.Numerator()).arg(inRate.Denominator());
}

QJsonObject TimecodeObject(const BE::IProjectSettings& inSettings)
{
    return {{QStringLiteral("displayFormat"), static_cast<int>(inSettings.GetTimeDisplayFormat())},
            {QStringLiteral("videoFrameRate"), RateText(inSettings.GetVideoSettings()->GetFrameRate())},
            {QStringLiteral("audioDisplayFormat"), static_cast<int>(inSettings.GetAudioTimeDisplayFormat())},
            {QStringLiteral("audioRate"), RateText(inSettings.GetAudioSettings()->GetSampleRate())}};
}

class PropertyBag : public KOR::RefCounted<BE::IPropertyBag> {
public:
    bool GetBoolProperty(const std::wstring& inKey, bool inDefault) const override
    {
        const auto value = mBools.find(inKey);
        return value == mBools.end() ? inDefault : value->second;
    }
    void SetBoolProperty(const std::wstring& inKey, bool inValue) override { mBools[inKey] = inValue; }

private:
    std::map<std::wstring, bool> mBools;
};

// A media of the project file. Its state is what the disk says when the project is read and
// after each relink; its descriptor is a digest of the path it was imported from.
class Media : public KOR::RefCounted<BE::IMedia> {
public:
    Media(std::wstring inName, std::wstring inPath, int inStills, bool inHasVideo, bool inHasAudio)
        : mName(std::move(inName)), mPath(std::move(inPath)), mStills(inStills), mHasVideo(inHasVideo),
          mHasAudio(inHasAudio), mDescriptor(Digest(mPath))
    {
    }
    std::wstring GetName() const override { return mName; }
    std::wstring GetFilePath() const override { return mPath; }
    int GetStillCount() const override { return mStills; }
    int GetState() const override
    {
        return QFileInfo::exists(ToQ(mPath)) ? BE::kMediaState_Online : BE::kMediaState_Offline;
    }
    bool IsFileMedia() const override { return true; }
    bool HasVideo() const override { return mHasVideo; }
    bool HasAudio() const override { return mHasAudio; }
    KOR::InterfaceID GetImplementationID() const override { return BE::GetTarvixLinkMediaImplementationID(); }
    BE::MediaFileDescriptor GetFileDescriptor() const override { return mDescriptor; }
    KOR::InterfaceRef<BE::IPropertyBag> GetPropertyBag() const override { return mProperties; }
    void Relink(const std::wstring& inPath) override { mPath = inPath; }
    void SetStreams(bool inHasVideo, bool inHasAudio) override
    {
        mHasVideo = inHasVideo;
        mHasAudio = inHasAudio;
    }

private:
    static BE::MediaFileDescriptor Digest(const std::wstring& inPath)
    {
        const QByteArray digest = QCryptographicHash::hash(ToQ(inPath).toUtf8(), QCryptographicHash::Md5);
        BE::MediaFileDescriptor descriptor{};
        std::copy_n(digest.begin(), descriptor.size(), descriptor.begin());
        return descriptor;
    }

    std::wstring mName;
    std::wstring mPath;
    int mStills;
    bool mHasVideo;
    bool mHasAudio;
    BE::MediaFileDescriptor mDescriptor;
    KOR::InterfaceRef<BE::IPropertyBag> mProperties{new PropertyBag};
};

// "media": [{"name": ..., "path": ..., "stills": n, "video": false, "audio": false}], "stills"
// only for a numbered sequence, "video" and "audio" only when the file lacks them.
std::vector<BE::MediaRef> ReadMedia(const QJsonArray& inItems)
{
    std::vector<BE::MediaRef> media;
    for (const QJsonValue& item : inItems) {
        const QJsonObject object = item.toObject();
        media.emplace_back(new Media(object.value(QStringLiteral("name")).toString().toStdWString(),
                                     object.value(QStringLiteral("path")).toString().toStdWString(),
                                     object.value(QStringLiteral("stills")).toInt(),
                                     object.value(QStringLiteral("video")).toBool(true),
                                     object.value(QStringLiteral("audio")).toBool(true)));
    }
    return media;
}

QJsonArray WriteMedia(const std::vector<BE::MediaRef>& inMedia)
{
    QJsonArray items;
    for (const BE::MediaRef& media : inMedia) {
        QJsonObject object{{QStringLiteral("name"), ToQ(media->GetName())}, {QStringLiteral("path"), ToQ(media->GetFilePath())}};
        if (media->GetStillCount() > 0) {
            object.insert(QStringLiteral("stills"), media->GetStillCount());
        }
        if (!media->HasVideo()) {
            object.insert(QStringLiteral("video"), false);
        }
        if (!media->HasAudio()) {
            object.insert(QStringLiteral("audio"), false);
        }
        items.append(object);
    }
    return items;
}

// The media of the project file's "clips": {"name": ..., "path": ..., "audioOnly": true} (also
// "video": false or "audio": false when the file lacks the stream).
std::vector<BE::MediaRef> ReadClipMedia(const QJsonArray& inClips)
{
    std::vector<BE::MediaRef> media;
    for (const QJsonValue& value : inClips) {
        const QJsonObject clip = value.toObject();
        const bool audioOnly = clip.value(QStringLiteral("audioOnly")).toBool();
        media.emplace_back(new Media(clip.value(QStringLiteral("name")).toString().toStdWString(),
                                     clip.value(QStringLiteral("path")).toString().toStdWString(), 0,
                                     !audioOnly && clip.value(QStringLiteral("video")).toBool(true),
                                     clip.value(QStringLiteral("audio")).toBool(true)));
    }
    return media;
}

// inClips with each clip's path as its media has it now (a relink moves it).
QJsonArray WriteClipPaths(QJsonArray inClips, const std::vector<BE::MediaRef>& inClipMedia)
{
    for (qsizetype index = 0; index < inClips.size() && index < static_cast<qsizetype>(inClipMedia.size()); ++index) {
        QJsonObject clip = inClips[index].toObject();
        clip.insert(QStringLiteral("path"), ToQ(inClipMedia[static_cast<std::size_t>(index)]->GetFilePath()));
        inClips[index] = clip;
    }
    return inClips;
}

// A project as its file describes it: the bin's master clips are the file's "clips" and then
// its imported "media"; child clips and sequences refer to them by name. What the model does
// not cover is kept as it was read and written back when the project is saved.
class Project : public KOR::RefCounted<BE::IProject> {
public:
    Project(std::wstring inName, std::wstring inPath, QJsonObject inDocument)
        : mName(std::move(inName)), mPath(std::move(inPath)), mDocument(std::move(inDocument)),
          mSettings(new ProjectSettings(mDocument.value(QStringLiteral("timecode")).toObject())),
          mAudioClips(ReadAudioClips(mDocument.value(QStringLiteral("clips")).toArray())),
          mColorMattes(ReadColorMattes(mDocument.value(QStringLiteral("colorMattes")).toArray())),
          mClipMedia(ReadClipMedia(mDocument.value(QStringLiteral("clips")).toArray())),
          mMedia(ReadMedia(mDocument.value(QStringLiteral("media")).toArray()))
    {
        for (const BE::MediaRef& media : mClipMedia) {
            mMasterClips.push_back(MakeMasterClip(media->GetName(), media));
        }
        for (const BE::MediaRef& media : mMedia) {
            mMasterClips.push_back(MakeMasterClip(media->GetName(), media));
        }
        const KOR::FrameRate rate = mSettings->GetVideoSettings()->GetFrameRate();
        const MasterClipLookup lookup = [this](const QString& inClipName) { return FindMasterClip(inClipName); };
        mChildClips = ReadChildClips(mDocument.value(QStringLiteral("childClips")).toArray(), rate, lookup);
        mSequences = ReadSequences(mDocument.value(QStringLiteral("sequences")).toArray(), rate, lookup);
        mSavedDocument = Document();
    }
    std::wstring GetName() const override { return mName; }
    std::wstring GetFilePath() const override { return mPath; }
    KOR::InterfaceRef<BE::IProjectSettings> GetProjectSettings() const override { return mSettings; }
    std::vector<BE::AudioClipRef> GetAudioClips() const override { return mAudioClips; }
    std::vector<BE::ColorMatteRef> GetColorMattes() const override { return mColorMattes; }
    std::vector<BE::MediaRef> GetMedia() const override { return mMedia; }
    std::vector<BE::MasterClipRef> GetMasterClips() const override { return mMasterClips; }
    std::vector<BE::ChildClipRef> GetChildClips() const override { return mChildClips; }
    std::vector<BE::SequenceRef> GetSequences() const override { return mSequences; }
    bool HasUnsavedChanges() const override { return Document() != mSavedDocument; }
    BE::MediaRef AddMedia(const std::wstring& inName, const std::wstring& inFilePath, int inStillCount) override
    {
        // The streams are those of the file as it is now; a missing file needs none of them.
        TL::MediaInfo info;
        const bool opened = TL::Media::GetInfoAboutMediaFile(inFilePath, info) >= 0;
        BE::MediaRef media = mMedia.emplace_back(
            new Media(inName, inFilePath, inStillCount, opened && info.hasVideo, opened && info.hasAudio));
        mMasterClips.push_back(MakeMasterClip(inName, media));
        return media;
    }
    long SaveToFile(const std::wstring& inFilePath, bool inAsCopy) override
    {
        const QJsonObject document = Document();
        const long result = WriteProjectFile(document, ToQ(inFilePath));
        if (result == BE::kSave_OK && !inAsCopy) {
            mPath = inFilePath;
            mSavedDocument = document;
        }
        return result;
    }

private:
    BE::MasterClipRef FindMasterClip(const QString& inName) const
    {
        const auto found = std::find_if(mMasterClips.begin(), mMasterClips.end(), [&](const BE::MasterClipRef& inClip) {
            return inClip->GetName() == inName.toStdWString();
        });
        return found == mMasterClips.end() ? BE::MasterClipRef() : *found;
    }

    QJsonObject Document() const
    {
        QJsonObject document = mDocument;
        document.insert(QStringLiteral("name"), ToQ(mName));
        document.insert(QStringLiteral("timecode"), TimecodeObject(*mSettings));
        const QJsonArray clips = mDocument.value(QStringLiteral("clips")).toArray();
        document.insert(QStringLiteral("clips"), WriteAudioClips(WriteClipPaths(clips, mClipMedia), mAudioClips));
        if (!mColorMattes.empty()) {
            document.insert(QStringLiteral("colorMattes"),
                            WriteColorMattes(mDocument.value(QStringLiteral("colorMattes")).toArray(), mColorMattes));
        }
        if (!mMedia.empty()) {
            document.insert(QStringLiteral("media"), WriteMedia(mMedia));
        }
        return document;
    }

    std::wstring mName;
    std::wstring mPath;
    QJsonObject mDocument;
    QJsonObject mSavedDocument;
    KOR::InterfaceRef<BE::IProjectSettings> mSettings;
    std::vector<BE::AudioClipRef> mAudioClips;
    std::vector<BE::ColorMatteRef> mColorMattes;
    std::vector<BE::MediaRef> mClipMedia;
    std::vector<BE::MediaRef> mMedia;
    std::vector<BE::MasterClipRef> mMasterClips;
    std::vector<BE::ChildClipRef> mChildClips;
    std::vector<BE::SequenceRef> mSequences;
};

class Sounds : public UIF::SoundService {
public:
    void Beep() override { QApplication::beep(); }
};

QJsonObject ReadJsonObject(const QByteArray& inJson, const QString& inWhat)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(inJson, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject()) {
        throw zelcore::Error((inWhat + QStringLiteral(": ") + error.errorString()).toStdWString());
    }
    return document.object();
}

} // namespace

TabView::TabView(Workspace& inWorkspace, std::wstring inName, UIF::Commander* inSuper)
    : mWorkspace(inWorkspace), mName(std::move(inName)), mSuper(inSuper)
{
}

void TabView::SwitchTarget() { mWorkspace.SetCommandTarget(this); }

Workspace::Workspace() = default;
Workspace::~Workspace() = default;

void Workspace::SetMainWindow(QWidget* inWindow)
{
    mMainNode = inWindow ? new zelui::ui::UI_Node(std::make_unique<zelui::ui::NodePeer>(inWindow)) : nullptr;
}

// The editor's name is the Qt application's.
class HostApplication : public KOR::Application {
public:
    std::wstring GetName() const override { return QCoreApplication::applicationName().toStdWString(); }
};

struct ReferenceHost::Services {
    Workspace workspace;
    Players players;
    MessageBoxes messageBoxes{workspace};
    Sounds sounds;
    AutoSave autoSave;
    std::unique_ptr<SettingsBackendImpl> backend;
    NodeManager nodeManager;
    Debugger debugger;
    SteadyClock clock;
    WorkQueue workQueue;
    OverrideCursors cursors;
    std::unique_ptr<ShortcutManager> shortcuts;
    HostApplication application;
    std::unique_ptr<UIF::FileChooserService> fileChooser;
};

ReferenceHost::ReferenceHost(const HostConfig& inConfig) : mServices(std::make_unique<Services>())
{
    QDir().mkpath(inConfig.settingsDirectory);
    mServices->backend =
        std::make_unique<SettingsBackendImpl>(QDir(inConfig.settingsDirectory).filePath(QStringLiteral("Backend.json")));
    KOR::DirectoryRegistry::RegisterDirectory(L"vrel.scripts", inConfig.scriptsDirectory.toStdWString());
    // The user's documents of the editor (key sets among them) live beside its settings.
    const QString documents = QDir(inConfig.settingsDirectory).filePath(QStringLiteral("Documents"));
    KOR::DirectoryRegistry::RegisterDirectory(L"lumoradocuments", documents.toStdWString());
    const QString mediaCache = QDir(inConfig.settingsDirectory).filePath(QStringLiteral("Media Cache"));
    QDir().mkpath(mediaCache);
    KOR::DirectoryRegistry::RegisterDirectory(L"media.cache", mediaCache.toStdWString());
    KOR::DirectoryRegistry::RegisterDirectory(
        L"userdocuments", QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdWString());
    mServices->shortcuts = std::make_unique<ShortcutManager>(
        QDir(inConfig.settingsDirectory).filePath(QStringLiteral("KeySetPresets")), documents);

    mTable.workspace = &mServices->workspace;
    mTable.players = &mServices->players;
    mTable.messageBoxes = &mServices->messageBoxes;
    mTable.sounds = &mServices->sounds;
    mTable.autoSave = &mServices->autoSave;
    mTable.backend = mServices->backend.get();
    mTable.nodeManager = &mServices->nodeManager;
    mTable.debugger = &mServices->debugger;
    mTable.workQueue = &mServices->workQueue;
    mTable.clock = &mServices->clock;
    mTable.cursors = &mServices->cursors;
    mTable.shortcuts = mServices->shortcuts.get();
    mTable.application = &mServices->application;
    mTable.help = ReferenceHelpService();
    mServices->fileChooser = MakeFileChooserService(mServices->workspace);
    mTable.fileChooser = mServices->fileChooser.get();
    RegisterImporterRegistry();
    mPrevious = KOR::Services();
    KOR::Services() = mTable;
}

// Requests still running end while every service is in place.
ReferenceHost::~ReferenceHost()
{
    mServices->workQueue.Shutdown();
    UnregisterImporterRegistry();
    KOR::Services() = mPrevious;
}

void ReferenceHost::SetMainWindow(QWidget* inWindow) { mServices->workspace.SetMainWindow(inWindow); }

void ReferenceHost::AddPlayer(std::function<void()> inStop) { mServices->players.mStops.push_back(std::move(inStop)); }

Workspace& ReferenceHost::GetWorkspace() { return mServices->workspace; }

KOR::ObjectPtr<KOR::Module, KOR::AtomicValue> LoadModuleObject(const QString& inStringTablePath)
{
    QFile file(inStringTablePath);
    if (!file.open(QIODevice::ReadOnly)) {
        throw zelcore::Error((QStringLiteral("Cannot read the string table ") + inStringTablePath).toStdWString());
    }
    const QJsonObject strings = ReadJsonObject(file.readAll(), inStringTablePath).value(QStringLiteral("strings")).toObject();
    std::unordered_map<unsigned int, std::wstring> table;
    for (auto entry = strings.begin(); entry != strings.end(); ++entry) {
        bool ok = false;
        const unsigned int id = entry.key().toUInt(&ok);
        if (ok) {
            table.emplace(id, entry.value().toString().toStdWString());
        }
    }
    KOR::DirectoryRegistry::RegisterDirectory(
        L"module.resources", QFileInfo(inStringTablePath).absoluteDir().filePath(QStringLiteral("Images")).toStdWString());
    KOR::DirectoryRegistry::RegisterDirectory(
        L"legal.notices", QFileInfo(inStringTablePath).absoluteDir().filePath(QStringLiteral("Notices")).toStdWString());
    KOR::DirectoryRegistry::RegisterDirectory(
        L"module.templates", QFileInfo(inStringTablePath).absoluteDir().filePath(QStringLiteral("Templates")).toStdWString());
    return KOR::ObjectPtr<KOR::Module, KOR::AtomicValue>(new StringTableModule(std::move(table)));
}

BE::ProjectRef LoadProject(const QByteArray& inJson, const QString& inFilePath)
{
    const QJsonObject project = ReadJsonObject(inJson, inFilePath);
    const QString name = project.value(QStringLiteral("name")).toString(QFileInfo(inFilePath).completeBaseName());
    return BE::ProjectRef(new Project(name.toStdWString(), inFilePath.toStdWString(), project));
}

} // namespace HostQt
