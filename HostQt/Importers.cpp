// The host's class registry and its importer registry: still images are what Qt's image readers
// take, audio and video what FFmpeg's demuxers take.

#include <QImageReader>

#include <algorithm>
#include <map>
#include <sstream>

extern "C" {
#include <libavformat/avformat.h>
}

#include "HostQt/FileChooser.h"
#include "KOR/Paths.h"
#include "ML/ImportableFileTypes.h"

namespace KOR {

namespace {

std::map<ClassID, ClassFactory>& Factories()
{
    static std::map<ClassID, ClassFactory> factories;
    return factories;
}

} // namespace

InterfaceRef<KORUnknown> CreateClassInstanceRef(const ClassID& inClass)
{
    const auto found = Factories().find(inClass);
    return found == Factories().end() ? InterfaceRef<KORUnknown>() : found->second();
}

ClassFactory RegisterClassFactory(const ClassID& inClass, ClassFactory inFactory)
{
    ClassFactory previous;
    if (const auto found = Factories().find(inClass); found != Factories().end()) {
        previous = std::move(found->second);
        Factories().erase(found);
    }
    if (inFactory) {
        Factories().emplace(inClass, std::move(inFactory));
    }
    return previous;
}

} // namespace KOR

namespace ML {

const KOR::InterfaceID IImporterRegistry::kIID = {0x8D, 0xB7, 0x3A, 0x9C, 0x52, 0x6F, 0x41, 0x45,
                                                  0xB4, 0x54, 0x98, 0x60, 0x3C, 0x92, 0x0F, 0xC2};
IImporterRegistry::~IImporterRegistry() = default;

std::set<std::wstring> ImportableFileTypeUtils::GetImportableFileExtensions()
{
    const auto registry =
        KOR::InterfaceRef<IImporterRegistry>::Query(KOR::CreateClassInstanceRef(kImporterRegistryClassID));
    return registry ? registry->GetImportableExtensions() : std::set<std::wstring>();
}

} // namespace ML

namespace HostQt {

namespace {

std::wstring Upper(const std::string& inAscii)
{
    std::wstring upper;
    for (const char c : inAscii) {
        upper += static_cast<wchar_t>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    }
    return upper;
}

void AddList(const char* inCommaList, std::set<std::wstring>& ioItems)
{
    std::istringstream list(inCommaList ? inCommaList : "");
    for (std::string item; std::getline(list, item, ',');) {
        if (!item.empty()) {
            ioItems.insert(Upper(item));
        }
    }
}

// FFmpeg reads single images through its image file demuxer and the per-format "_pipe" ones.
bool ReadsStills(const AVInputFormat& inFormat)
{
    const std::string name = inFormat.name ? inFormat.name : "";
    const std::string pipe = "_pipe";
    return name == "image2" ||
           (name.size() > pipe.size() && name.compare(name.size() - pipe.size(), pipe.size(), pipe) == 0);
}

// What Qt's image readers take, and the images that FFmpeg reads (EXR, DPX and others Qt lacks).
// The image file demuxer names no extensions: it reads what the image file muxer of its name writes.
std::set<std::wstring> StillExtensions()
{
    std::set<std::wstring> stills;
    for (const QByteArray& format : QImageReader::supportedImageFormats()) {
        stills.insert(Upper(format.toStdString()));
    }
    void* iterator = nullptr;
    while (const AVInputFormat* format = av_demuxer_iterate(&iterator)) {
        if (ReadsStills(*format)) {
            AddList(format->extensions, stills);
        }
    }
    const AVOutputFormat* imageFiles = av_guess_format("image2", nullptr, nullptr);
    if (imageFiles && av_find_input_format("image2")) {
        AddList(imageFiles->extensions, stills);
    }
    return stills;
}

// Whether a muxer writes sound or pictures: subtitle, text and metadata formats write neither.
bool CarriesAudioOrVideo(const AVOutputFormat& inFormat)
{
    return inFormat.audio_codec != AV_CODEC_ID_NONE || inFormat.video_codec != AV_CODEC_ID_NONE;
}

// The extensions of the containers that carry audio or video and that FFmpeg reads: a demuxer's
// own extensions when a muxer of its name writes sound or pictures, and the extensions of such a
// muxer whose container a demuxer of the same name reads back (the WAV and AIFF demuxers, for
// one, recognise their files by content and name no extension).
std::set<std::wstring> ContainerExtensions()
{
    std::set<std::wstring> mediaMuxers;
    void* iterator = nullptr;
    while (const AVOutputFormat* format = av_muxer_iterate(&iterator)) {
        if (CarriesAudioOrVideo(*format)) {
            AddList(format->name, mediaMuxers);
        }
    }
    const auto isMedia = [&](const std::set<std::wstring>& inNames) {
        return std::any_of(inNames.begin(), inNames.end(),
                           [&](const std::wstring& inName) { return mediaMuxers.count(inName) > 0; });
    };
    std::set<std::wstring> extensions;
    std::set<std::wstring> readable;
    iterator = nullptr;
    while (const AVInputFormat* format = av_demuxer_iterate(&iterator)) {
        std::set<std::wstring> names;
        AddList(format->name, names);
        if (isMedia(names)) {
            AddList(format->extensions, extensions);
        }
        readable.insert(names.begin(), names.end());
    }
    iterator = nullptr;
    while (const AVOutputFormat* format = av_muxer_iterate(&iterator)) {
        std::set<std::wstring> names;
        AddList(format->name, names);
        const bool readBack =
            std::any_of(names.begin(), names.end(), [&](const std::wstring& inName) { return readable.count(inName); });
        if (CarriesAudioOrVideo(*format) && readBack) {
            AddList(format->extensions, extensions);
        }
    }
    return extensions;
}

struct KnownTypes {
    std::set<std::wstring> stills;
    std::set<std::wstring> importable;
};

// Asked once: neither Qt's plug-ins nor FFmpeg's demuxers change while the host runs.
const KnownTypes& Types()
{
    static const KnownTypes types = [] {
        KnownTypes known{StillExtensions(), ContainerExtensions()};
        known.importable.insert(known.stills.begin(), known.stills.end());
        return known;
    }();
    return types;
}

class ImporterRegistry : public KOR::RefCounted<ML::IImporterRegistry> {
public:
    bool IsStillImporterAvailable(const std::wstring& inFileName) const override
    {
        std::wstring extension = KOR::PathUtils::GetExtensionPart(inFileName);
        if (extension.empty()) {
            return false;
        }
        std::wstring upper;
        for (const wchar_t c : extension.substr(1)) {
            upper += c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c;
        }
        return Types().stills.count(upper) > 0;
    }
    std::set<std::wstring> GetImportableExtensions() const override { return Types().importable; }
};

KOR::ClassFactory gReplacedImporters;

} // namespace

void RegisterImporterRegistry()
{
    gReplacedImporters = KOR::RegisterClassFactory(ML::kImporterRegistryClassID, [] {
        return KOR::InterfaceRef<KOR::KORUnknown>(new ImporterRegistry);
    });
}

void UnregisterImporterRegistry()
{
    KOR::RegisterClassFactory(ML::kImporterRegistryClassID, std::move(gReplacedImporters));
}

} // namespace HostQt
