// Conforming audio: every audio stream of the scope's media decoded with libavcodec, resampled
// with libswresample to the project's rate as interleaved 32-bit floats and written as a WAV file
// into the media cache. A file is written under a temporary name and renamed only once complete,
// so a stopped or failed conform never leaves a file that counts as done.

#include "HostQt/Conform.h"

#include <QFileInfo>
#include <QSaveFile>
#include <QString>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libswresample/swresample.h>
}

#include "BE/ProjectSettings.h"
#include "HostQt/MediaCache.h"
#include "ML/ConformUtils.h"

namespace HostQt {

namespace {

std::mutex gOpenProjectMutex;
BE::ProjectRef gOpenProject;

// Progress is posted each time this much more of the scope's audio is done.
constexpr double kProgressStep = 0.002;
// A WAV file's sizes are 32-bit; its header is kept to the plain and extensible formats below.
constexpr std::uint64_t kWavSizeLimit = 0xFFFFFFFFull;
constexpr std::uint16_t kFormat_Float = 3;
constexpr std::uint16_t kFormat_Extensible = 0xFFFE;
// The extensible chunk's sub-format: the GUID of IEEE floats.
constexpr char kSubFormat_Float[] = "\x03\x00\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71";

struct FormatContextCloser {
    void operator()(AVFormatContext* inContext) const { avformat_close_input(&inContext); }
};
using FormatContextPtr = std::unique_ptr<AVFormatContext, FormatContextCloser>;
struct CodecContextFreer {
    void operator()(AVCodecContext* inContext) const { avcodec_free_context(&inContext); }
};
using CodecContextPtr = std::unique_ptr<AVCodecContext, CodecContextFreer>;
struct ResamplerFreer {
    void operator()(SwrContext* inContext) const { swr_free(&inContext); }
};
using ResamplerPtr = std::unique_ptr<SwrContext, ResamplerFreer>;
struct PacketFreer {
    void operator()(AVPacket* inPacket) const { av_packet_free(&inPacket); }
};
using PacketPtr = std::unique_ptr<AVPacket, PacketFreer>;
struct FrameFreer {
    void operator()(AVFrame* inFrame) const { av_frame_free(&inFrame); }
};
using FramePtr = std::unique_ptr<AVFrame, FrameFreer>;

// One audio stream of a media file that has no conformed file yet.
struct PendingStream {
    std::wstring mediaName;
    QString mediaPath;
    int audioIndex = 0;  // among the file's audio streams
    int streamIndex = 0; // among all its streams
    double seconds = 0;
    QString target;
};

std::wstring ToW(const QString& inText) { return inText.toStdWString(); }

std::wstring ErrorText(int inError)
{
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(inError, text, sizeof text);
    return QString::fromUtf8(text).toStdWString();
}

FormatContextPtr OpenMedia(const QString& inPath)
{
    AVFormatContext* context = nullptr;
    if (avformat_open_input(&context, QFile::encodeName(inPath).constData(), nullptr, nullptr) < 0) {
        return nullptr;
    }
    return FormatContextPtr(context);
}

double StreamSeconds(const AVFormatContext& inContext, const AVStream& inStream)
{
    if (inStream.duration > 0 && inStream.time_base.den > 0) {
        return static_cast<double>(inStream.duration) * av_q2d(inStream.time_base);
    }
    return inContext.duration > 0 ? static_cast<double>(inContext.duration) / AV_TIME_BASE : 0.0;
}

// The media of a scope, each file once, in the order the scope names them.
class ScopeMedia {
public:
    void Add(const BE::MediaRef& inMedia)
    {
        if (inMedia && mPaths.insert(inMedia->GetFilePath()).second) {
            mMedia.push_back(inMedia);
        }
    }
    void Add(const BE::MasterClipRef& inClip)
    {
        if (inClip) {
            Add(inClip->GetMedia());
        }
    }
    void Add(const BE::ChildClipRef& inClip)
    {
        if (inClip) {
            Add(inClip->GetMasterClip());
        }
    }
    void Add(const BE::ClipRef& inClip)
    {
        if (inClip) {
            Add(inClip->GetMasterClip());
        }
    }
    void Add(const BE::SequenceRef& inSequence)
    {
        if (inSequence) {
            AddAll(inSequence->GetClips());
        }
    }
    template <class Item>
    void AddAll(const std::vector<Item>& inItems)
    {
        for (const Item& item : inItems) {
            Add(item);
        }
    }
    const std::vector<BE::MediaRef>& Media() const { return mMedia; }

private:
    std::set<std::wstring> mPaths;
    std::vector<BE::MediaRef> mMedia;
};

// The audio streams of inMedia without a conformed file at inRate. Only the file's header is
// read unless inMeasure: then the streams' durations are worked out too, which may decode a little.
// A file that cannot be opened as media has its one stream reported, so that the conform
// says why it fails.
void AddPendingStreams(const BE::MediaRef& inMedia, int inRate, bool inMeasure, std::vector<PendingStream>& ioPending)
{
    if (!inMedia->IsFileMedia() || !inMedia->HasAudio() || inMedia->GetState() != BE::kMediaState_Online) {
        return;
    }
    const QString path = QString::fromStdWString(inMedia->GetFilePath());
    const FormatContextPtr context = OpenMedia(path);
    if (!context) {
        ioPending.push_back({inMedia->GetName(), path, 0, -1, 0.0, ConformedAudioPath(path, 0, inRate)});
        return;
    }
    // Some containers name their streams only once packets are read: the header alone would hide
    // their audio from the quick question.
    if (inMeasure || context->nb_streams == 0 || (context->ctx_flags & AVFMTCTX_NOHEADER)) {
        avformat_find_stream_info(context.get(), nullptr);
    }
    int audioIndex = 0;
    for (unsigned int i = 0; i < context->nb_streams; ++i) {
        const AVStream& stream = *context->streams[i];
        if (stream.codecpar->codec_type != AVMEDIA_TYPE_AUDIO) {
            continue;
        }
        const QString target = ConformedAudioPath(path, audioIndex, inRate);
        if (target.isEmpty() || !QFileInfo(target).isFile()) {
            ioPending.push_back(
                {inMedia->GetName(), path, audioIndex, static_cast<int>(i), StreamSeconds(*context, stream), target});
        }
        ++audioIndex;
    }
}

void Put(QByteArray& ioBytes, std::uint64_t inValue, int inBytes)
{
    for (int i = 0; i < inBytes; ++i) {
        ioBytes.append(static_cast<char>((inValue >> (8 * i)) & 0xFF));
    }
}

// A float WAV header for inDataBytes of samples; more than two channels take the extensible
// format, with inChannelMask saying which speakers the channels are for.
QByteArray FloatWavHeader(int inChannels, int inRate, std::uint64_t inChannelMask, std::uint64_t inDataBytes)
{
    const std::uint64_t blockAlign = 4ull * static_cast<std::uint64_t>(inChannels);
    const bool extensible = inChannels > 2;
    QByteArray format;
    Put(format, extensible ? kFormat_Extensible : kFormat_Float, 2);
    Put(format, static_cast<std::uint64_t>(inChannels), 2);
    Put(format, static_cast<std::uint64_t>(inRate), 4);
    Put(format, static_cast<std::uint64_t>(inRate) * blockAlign, 4);
    Put(format, blockAlign, 2);
    Put(format, 32, 2);
    if (extensible) {
        Put(format, 22, 2); // the extension's size
        Put(format, 32, 2); // valid bits
        Put(format, inChannelMask & 0xFFFFFFFFull, 4);
        format.append(kSubFormat_Float, 16);
    }
    QByteArray header("RIFF");
    Put(header, 4 + 8 + static_cast<std::uint64_t>(format.size()) + 8 + inDataBytes, 4);
    header += "WAVEfmt ";
    Put(header, static_cast<std::uint64_t>(format.size()), 4);
    header += format;
    header += "data";
    Put(header, inDataBytes, 4);
    return header;
}

// The speakers of inLayout as a WAV channel mask (the same bits); a layout that names no speakers
// is taken as the usual one for its channel count.
std::uint64_t SpeakerMask(const AVChannelLayout& inLayout)
{
    if (inLayout.order == AV_CHANNEL_ORDER_NATIVE) {
        return inLayout.u.mask;
    }
    AVChannelLayout usual{};
    av_channel_layout_default(&usual, inLayout.nb_channels);
    const std::uint64_t mask = usual.order == AV_CHANNEL_ORDER_NATIVE ? usual.u.mask : 0;
    av_channel_layout_uninit(&usual);
    return mask;
}

enum class Outcome { kDone, kAborted, kFailed };

// Decodes, resamples and writes one stream. Reports the seconds of the stream done so far
// after each block and stops when the abort says so.
class StreamConformer {
public:
    StreamConformer(const PendingStream& inStream, int inRate, const KOR::InterfaceRef<MF::IAbort>& inAbort,
                    std::function<void(double)> inReport)
        : mStream(inStream), mRate(inRate), mAbort(inAbort), mReport(std::move(inReport))
    {
    }

    Outcome Run(std::wstring& outFailure)
    {
        const Outcome outcome = Conform();
        if (outcome == Outcome::kFailed) {
            outFailure = mStream.mediaName + L": " + mFailure;
        }
        return outcome;
    }

private:
    Outcome Fail(std::wstring inWhy)
    {
        mFailure = std::move(inWhy);
        return Outcome::kFailed;
    }

    bool Aborted() const { return mAbort && mAbort->IsAborted(); }

    Outcome Conform()
    {
        if (Aborted()) {
            return Outcome::kAborted;
        }
        if (mStream.streamIndex < 0 || mStream.target.isEmpty()) {
            return Fail(L"the file cannot be read as media");
        }
        if (const Outcome opened = Open(); opened != Outcome::kDone) {
            return opened;
        }
        mOutput.setFileName(mStream.target);
        if (!mOutput.open(QIODevice::WriteOnly) || !WriteHeader(0)) {
            return Fail(L"the media cache cannot be written: " + ToW(mOutput.errorString()));
        }
        if (const Outcome decoded = DecodeAll(); decoded != Outcome::kDone) {
            mOutput.cancelWriting();
            return decoded;
        }
        if (!mOutput.seek(0) || !WriteHeader(mDataBytes) || !mOutput.commit()) {
            return Fail(L"the media cache cannot be written: " + ToW(mOutput.errorString()));
        }
        return Outcome::kDone;
    }

    Outcome Open()
    {
        mFormat = OpenMedia(mStream.mediaPath);
        if (!mFormat || avformat_find_stream_info(mFormat.get(), nullptr) < 0 ||
            mStream.streamIndex >= static_cast<int>(mFormat->nb_streams)) {
            return Fail(L"the file cannot be read as media");
        }
        for (unsigned int i = 0; i < mFormat->nb_streams; ++i) {
            mFormat->streams[i]->discard =
                static_cast<int>(i) == mStream.streamIndex ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
        }
        const AVStream& stream = *mFormat->streams[mStream.streamIndex];
        const AVCodec* codec = avcodec_find_decoder(stream.codecpar->codec_id);
        if (!codec) {
            return Fail(L"no decoder for its audio (" +
                        QString::fromLatin1(avcodec_get_name(stream.codecpar->codec_id)).toStdWString() + L")");
        }
        mDecoder.reset(avcodec_alloc_context3(codec));
        if (!mDecoder || avcodec_parameters_to_context(mDecoder.get(), stream.codecpar) < 0) {
            return Fail(L"its audio decoder cannot be set up");
        }
        mDecoder->pkt_timebase = stream.time_base;
        if (const int error = avcodec_open2(mDecoder.get(), codec, nullptr); error < 0) {
            return Fail(L"its audio decoder cannot be opened: " + ErrorText(error));
        }
        mChannels = mDecoder->ch_layout.nb_channels;
        if (mChannels <= 0) {
            return Fail(L"its audio has no channels");
        }
        mChannelMask = SpeakerMask(mDecoder->ch_layout);
        mPacket.reset(av_packet_alloc());
        mFrame.reset(av_frame_alloc());
        return mPacket && mFrame ? Outcome::kDone : Fail(L"out of memory");
    }

    Outcome DecodeAll()
    {
        while (true) {
            const int read = av_read_frame(mFormat.get(), mPacket.get());
            if (read == AVERROR_EOF) {
                break;
            }
            if (read < 0) {
                return Fail(L"reading failed: " + ErrorText(read));
            }
            if (mPacket->stream_index != mStream.streamIndex) {
                av_packet_unref(mPacket.get());
                continue;
            }
            const int sent = avcodec_send_packet(mDecoder.get(), mPacket.get());
            av_packet_unref(mPacket.get());
            // A damaged packet is skipped, as players do; the rest of the stream still counts.
            if (sent < 0 && sent != AVERROR_INVALIDDATA) {
                return Fail(L"decoding failed: " + ErrorText(sent));
            }
            if (const Outcome received = ReceiveFrames(); received != Outcome::kDone) {
                return received;
            }
        }
        avcodec_send_packet(mDecoder.get(), nullptr);
        if (const Outcome received = ReceiveFrames(); received != Outcome::kDone) {
            return received;
        }
        return mResampler ? Convert(nullptr, 0) : Outcome::kDone;
    }

    Outcome ReceiveFrames()
    {
        while (true) {
            const int received = avcodec_receive_frame(mDecoder.get(), mFrame.get());
            if (received == AVERROR(EAGAIN) || received == AVERROR_EOF) {
                return Outcome::kDone;
            }
            if (received == AVERROR_INVALIDDATA) {
                continue;
            }
            if (received < 0) {
                return Fail(L"decoding failed: " + ErrorText(received));
            }
            const Outcome converted = ConvertFrame();
            av_frame_unref(mFrame.get());
            if (converted != Outcome::kDone) {
                return converted;
            }
            if (Aborted()) {
                return Outcome::kAborted;
            }
            mReport(static_cast<double>(mInputFrames) / mInputRate);
        }
    }

    // The resampler is made for the first frame's format (the decoder may tell it only then); a
    // stream that changes its format part way is refused rather than written wrong.
    Outcome ConvertFrame()
    {
        const AVFrame& frame = *mFrame;
        if (frame.ch_layout.nb_channels != mChannels) {
            return Fail(L"its audio changes format part way");
        }
        if (!mResampler) {
            if (const Outcome made = MakeResampler(frame); made != Outcome::kDone) {
                return made;
            }
        } else if (frame.sample_rate != mInputRate || frame.format != mInputFormat) {
            return Fail(L"its audio changes format part way");
        }
        mInputFrames += frame.nb_samples;
        return Convert(const_cast<const std::uint8_t**>(frame.extended_data), frame.nb_samples);
    }

    Outcome MakeResampler(const AVFrame& inFrame)
    {
        AVChannelLayout layout{};
        if (inFrame.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC) {
            av_channel_layout_default(&layout, inFrame.ch_layout.nb_channels);
        } else if (av_channel_layout_copy(&layout, &inFrame.ch_layout) < 0) {
            return Fail(L"out of memory");
        }
        SwrContext* resampler = nullptr;
        const int made =
            swr_alloc_set_opts2(&resampler, &layout, AV_SAMPLE_FMT_FLT, mRate, &layout,
                                static_cast<AVSampleFormat>(inFrame.format), inFrame.sample_rate, 0, nullptr);
        av_channel_layout_uninit(&layout);
        mResampler.reset(resampler);
        if (made < 0 || swr_init(mResampler.get()) < 0) {
            return Fail(L"its audio cannot be resampled");
        }
        mInputRate = inFrame.sample_rate;
        mInputFormat = inFrame.format;
        return Outcome::kDone;
    }

    // inSamples null drains what the resampler still holds.
    Outcome Convert(const std::uint8_t** inSamples, int inCount)
    {
        const int room = swr_get_out_samples(mResampler.get(), inCount);
        if (room < 0) {
            return Fail(L"its audio cannot be resampled");
        }
        mBuffer.resize(static_cast<std::size_t>(room + 1) * static_cast<std::size_t>(mChannels));
        auto* out = reinterpret_cast<std::uint8_t*>(mBuffer.data());
        const int converted = swr_convert(mResampler.get(), &out, room + 1, inSamples, inCount);
        if (converted < 0) {
            return Fail(L"its audio cannot be resampled");
        }
        const auto bytes =
            static_cast<std::uint64_t>(converted) * static_cast<std::uint64_t>(mChannels) * sizeof(float);
        if (mDataBytes + bytes + static_cast<std::uint64_t>(mHeaderBytes) > kWavSizeLimit) {
            return Fail(L"its audio is too long for a WAV file");
        }
        if (mOutput.write(reinterpret_cast<const char*>(mBuffer.data()), static_cast<qint64>(bytes)) !=
            static_cast<qint64>(bytes)) {
            return Fail(L"the media cache cannot be written: " + ToW(mOutput.errorString()));
        }
        mDataBytes += bytes;
        return Outcome::kDone;
    }

    bool WriteHeader(std::uint64_t inDataBytes)
    {
        const QByteArray header = FloatWavHeader(mChannels, mRate, mChannelMask, inDataBytes);
        mHeaderBytes = header.size();
        return mOutput.write(header) == header.size();
    }

    const PendingStream& mStream;
    const int mRate;
    const KOR::InterfaceRef<MF::IAbort>& mAbort;
    std::function<void(double)> mReport;
    FormatContextPtr mFormat;
    CodecContextPtr mDecoder;
    ResamplerPtr mResampler;
    PacketPtr mPacket;
    FramePtr mFrame;
    QSaveFile mOutput;
    std::vector<float> mBuffer;
    std::wstring mFailure;
    std::int64_t mInputFrames = 0;
    std::uint64_t mDataBytes = 0;
    qsizetype mHeaderBytes = 0;
    int mInputRate = 1;
    int mInputFormat = -1;
    int mChannels = 0;
    std::uint64_t mChannelMask = 0;
};

void Post(const std::wstring& inStation, KOR::MessagePtr inMessage)
{
    if (!inStation.empty()) {
        KOR::StationUtils::PostMessage(inStation, std::move(inMessage));
    }
}

// Conforms inPending in order, posting on inStation. True when something is left undone.
bool ConformPending(const std::vector<PendingStream>& inPending, int inRate, const std::wstring& inStation,
                    const KOR::InterfaceRef<MF::IAbort>& inAbort)
{
    double total = 0;
    for (const PendingStream& stream : inPending) {
        total += stream.seconds;
    }
    Post(inStation, std::make_shared<ML::AudioConformationStarted>(static_cast<int>(inPending.size()), total));
    std::wstring failures;
    bool aborted = false;
    double doneBefore = 0;
    for (std::size_t index = 0; index < inPending.size() && !aborted; ++index) {
        const PendingStream& stream = inPending[index];
        double lastPosted = -1; // each stream starts with a message that names its media
        const auto post = [&](double inSeconds) {
            const double done = doneBefore + std::min(inSeconds, stream.seconds);
            const double fraction = total > 0 ? std::min(done / total, 1.0) : 0.0;
            if (fraction - lastPosted >= kProgressStep || lastPosted < 0) {
                lastPosted = fraction;
                Post(inStation, std::make_shared<ML::AudioConformationProgress>(
                                    stream.mediaName, static_cast<int>(index), static_cast<float>(fraction)));
            }
        };
        post(0);
        std::wstring failure;
        const Outcome outcome = StreamConformer(stream, inRate, inAbort, post).Run(failure);
        aborted = outcome == Outcome::kAborted;
        if (outcome == Outcome::kFailed) {
            failures += (failures.empty() ? L"" : L"\n") + failure;
        }
        doneBefore += stream.seconds;
    }
    const bool completed = !aborted && failures.empty();
    Post(inStation, std::make_shared<ML::AudioConformationFinished>(completed, failures));
    return !completed;
}

bool NeedsConformMedia(const ScopeMedia& inScope, int inRate, bool inConform, const std::wstring& inStation,
                       const KOR::InterfaceRef<MF::IAbort>& inAbort)
{
    std::vector<PendingStream> pending;
    for (const BE::MediaRef& media : inScope.Media()) {
        AddPendingStreams(media, inRate, inConform, pending);
        if (!inConform && !pending.empty()) {
            return true;
        }
    }
    return inConform ? ConformPending(pending, inRate, inStation, inAbort) : false;
}

} // namespace

void SetOpenProject(BE::ProjectRef inProject)
{
    std::lock_guard lock(gOpenProjectMutex);
    gOpenProject = std::move(inProject);
}

BE::ProjectRef GetOpenProject()
{
    std::lock_guard lock(gOpenProjectMutex);
    return gOpenProject;
}

int ConformSampleRate(const BE::ProjectRef& inProject)
{
    const auto settings = inProject ? inProject->GetProjectSettings() : nullptr;
    const auto audio = settings ? settings->GetAudioSettings() : nullptr;
    const double rate = audio ? audio->GetSampleRate().ToDouble() : 0.0;
    return rate >= 1.0 ? static_cast<int>(std::lround(rate)) : kDefaultConformSampleRate;
}

} // namespace HostQt

namespace ML {

namespace {

void AddScope(HostQt::ScopeMedia& ioMedia, const BE::ProjectRef& inProject)
{
    ioMedia.AddAll(inProject->GetMasterClips());
}
void AddScope(HostQt::ScopeMedia& ioMedia, const BE::TrackItemSelectionRef& inSelection)
{
    ioMedia.AddAll(inSelection->GetClips());
}
void AddScope(HostQt::ScopeMedia& ioMedia, const BE::ProjectItemSelectionRef& inSelection)
{
    ioMedia.AddAll(inSelection->GetMasterClips());
    ioMedia.AddAll(inSelection->GetChildClips());
    ioMedia.AddAll(inSelection->GetSequences());
}
template <class Item>
void AddScope(HostQt::ScopeMedia& ioMedia, const Item& inItem)
{
    ioMedia.Add(inItem);
}

template <class Scope>
bool Resolve(const Scope& inScope, const BE::ProjectRef& inRateProject, bool inConform, const std::wstring& inStation,
             const KOR::InterfaceRef<MF::IAbort>& inAbort)
{
    HostQt::ScopeMedia media;
    if (inScope) {
        AddScope(media, inScope);
    }
    return HostQt::NeedsConformMedia(media, HostQt::ConformSampleRate(inRateProject), inConform, inStation, inAbort);
}

} // namespace

// A whole project conforms at its own rate; the other scopes at the open project's.
bool ConformUtils::NeedsConform(const KOR::InterfaceRef<BE::IProject>& inProject, bool inConform,
                                const std::wstring& inStation, const KOR::InterfaceRef<MF::IAbort>& inAbort)
{
    return Resolve(inProject, inProject, inConform, inStation, inAbort);
}

bool ConformUtils::NeedsConform(const KOR::InterfaceRef<BE::ITrackItemSelection>& inSelection, bool inConform,
                                const std::wstring& inStation, const KOR::InterfaceRef<MF::IAbort>& inAbort)
{
    return Resolve(inSelection, HostQt::GetOpenProject(), inConform, inStation, inAbort);
}

bool ConformUtils::NeedsConform(const KOR::InterfaceRef<BE::IClip>& inClip, bool inConform,
                                const std::wstring& inStation, const KOR::InterfaceRef<MF::IAbort>& inAbort)
{
    return Resolve(inClip, HostQt::GetOpenProject(), inConform, inStation, inAbort);
}

bool ConformUtils::NeedsConform(const KOR::InterfaceRef<BE::ISequence>& inSequence, bool inConform,
                                const std::wstring& inStation, const KOR::InterfaceRef<MF::IAbort>& inAbort)
{
    return Resolve(inSequence, HostQt::GetOpenProject(), inConform, inStation, inAbort);
}

bool ConformUtils::NeedsConform(const KOR::InterfaceRef<BE::IChildClip>& inChildClip, bool inConform,
                                const std::wstring& inStation, const KOR::InterfaceRef<MF::IAbort>& inAbort)
{
    return Resolve(inChildClip, HostQt::GetOpenProject(), inConform, inStation, inAbort);
}

bool ConformUtils::NeedsConform(const KOR::InterfaceRef<BE::IProjectItemSelection>& inSelection, bool inConform,
                                const std::wstring& inStation, const KOR::InterfaceRef<MF::IAbort>& inAbort)
{
    return Resolve(inSelection, HostQt::GetOpenProject(), inConform, inStation, inAbort);
}

bool ConformUtils::NeedsConform(const KOR::InterfaceRef<BE::IMasterClip>& inMasterClip, bool inConform,
                                const std::wstring& inStation, const KOR::InterfaceRef<MF::IAbort>& inAbort)
{
    return Resolve(inMasterClip, HostQt::GetOpenProject(), inConform, inStation, inAbort);
}

} // namespace ML
