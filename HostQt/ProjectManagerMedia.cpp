// Copying and cutting media files for the project manager, with FFmpeg's libavformat for movies.

#include "HostQt/ProjectManagerMedia.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <memory>
#include <numeric>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/mathematics.h>
}

#include "KOR/Time.h"
#include "TL/ProjectManager.h"

namespace HostQt::ProjectManagement {

namespace {

constexpr qint64 kCopyBlock = 1024 * 1024;
constexpr int kIOBufferSize = 64 * 1024;
constexpr AVRational kTickBase{1, static_cast<int>(KOR::Time::kTicksPerSecond)};

long WriteFailure(int inErrno)
{
    switch (inErrno) {
    case ENOSPC:
    case EDQUOT:
        return TL::ProjectManager::kError_DiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
        return TL::ProjectManager::kError_AccessDenied;
    case EEXIST:
        return TL::ProjectManager::kError_DestinationExists;
    default:
        return TL::ProjectManager::kError_WriteFault;
    }
}

long OpenFailure(const QString& inPath)
{
    return QFileInfo::exists(inPath) ? TL::ProjectManager::kError_ReadFailed : TL::ProjectManager::kError_SourceMissing;
}

} // namespace

Sink::Sink(QString inPath, Progress inProgress) : mPath(std::move(inPath)), mProgress(std::move(inProgress)) {}

Sink::~Sink()
{
    if (mFile >= 0) {
        ::close(mFile);
    }
}

bool Sink::Fail(long inCode)
{
    if (mFailure == 0) {
        mFailure = inCode;
    }
    return false;
}

long Sink::Open()
{
    if (mPath.isEmpty()) {
        return 0;
    }
    mFile = ::open(QFile::encodeName(mPath).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (mFile < 0) {
        Fail(WriteFailure(errno));
    }
    return mFailure;
}

bool Sink::Write(const void* inData, std::size_t inSize)
{
    if (mFailure != 0) {
        return false;
    }
    if (mFile >= 0) {
        const char* data = static_cast<const char*>(inData);
        for (std::size_t done = 0; done < inSize;) {
            const ssize_t written = ::pwrite(mFile, data + done, inSize - done, static_cast<off_t>(mPosition + done));
            if (written < 0 && errno == EINTR) {
                continue;
            }
            if (written <= 0) {
                return Fail(WriteFailure(written < 0 ? errno : ENOSPC));
            }
            done += static_cast<std::size_t>(written);
        }
    }
    mPosition += inSize;
    mSize = std::max(mSize, mPosition);
    mWritten += inSize;
    if (mProgress && !mProgress(mWritten)) {
        return Fail(TL::ProjectManager::kResult_Cancelled);
    }
    return true;
}

bool Sink::KeepGoing()
{
    if (mFailure == 0 && mProgress && !mProgress(mWritten)) {
        Fail(TL::ProjectManager::kResult_Cancelled);
    }
    return mFailure == 0;
}

void Sink::Count(std::uint64_t inBytes)
{
    mPosition += inBytes;
    mSize = std::max(mSize, mPosition);
    mWritten += inBytes;
}

std::int64_t Sink::Seek(std::int64_t inOffset, int inWhence)
{
    const std::int64_t base = inWhence == SEEK_SET   ? 0
                              : inWhence == SEEK_CUR ? static_cast<std::int64_t>(mPosition)
                                                     : static_cast<std::int64_t>(mSize);
    if (base + inOffset < 0) {
        return -1;
    }
    mPosition = static_cast<std::uint64_t>(base + inOffset);
    return static_cast<std::int64_t>(mPosition);
}

long Sink::Close()
{
    if (mFile >= 0) {
        if (::close(mFile) != 0) {
            Fail(WriteFailure(errno));
        }
        mFile = -1;
    }
    return mFailure;
}

namespace {

// The parts of a WAV file that a cut keeps: its format chunk as it stands and its samples.
struct WavParts {
    QByteArray formatChunk; // header and body
    qint64 dataOffset = 0;
    qint64 dataSize = 0;
    int blockAlign = 0;
    int sampleRate = 0;
};

bool ReadWavParts(QFile& ioFile, WavParts& outParts)
{
    const QByteArray riff = ioFile.read(12);
    if (riff.size() < 12 || !riff.startsWith("RIFF") || riff.mid(8, 4) != "WAVE") {
        return false;
    }
    while (!ioFile.atEnd()) {
        const qint64 at = ioFile.pos();
        const QByteArray header = ioFile.read(8);
        if (header.size() < 8) {
            return false;
        }
        const qint64 size = qFromLittleEndian<quint32>(header.constData() + 4);
        if (header.startsWith("fmt ")) {
            const QByteArray body = ioFile.read(size);
            if (body.size() < 16) {
                return false;
            }
            const int tag = qFromLittleEndian<quint16>(body.constData());
            if (tag != 1 && tag != 3 && tag != 0xFFFE) {
                return false; // compressed: a demuxer cuts it
            }
            outParts.formatChunk = header + body + (size % 2 ? ioFile.read(1) : QByteArray());
            outParts.sampleRate = static_cast<int>(qFromLittleEndian<quint32>(body.constData() + 4));
            outParts.blockAlign = qFromLittleEndian<quint16>(body.constData() + 12);
        } else if (header.startsWith("data")) {
            outParts.dataOffset = at + 8;
            outParts.dataSize = std::min(size, ioFile.size() - outParts.dataOffset);
            return !outParts.formatChunk.isEmpty() && outParts.blockAlign > 0 && outParts.sampleRate > 0;
        } else if (!ioFile.seek(at + 8 + size + size % 2)) {
            return false;
        }
    }
    return false;
}

// Whether a WAV file of inParts' format chunk and inBytes of samples has a RIFF size that fits its
// 32 bits: a cut of a file larger than that (its data size field left at its largest by a
// recorder that never finished it) is no WAV file.
bool FitsRiff(const WavParts& inParts, qint64 inBytes)
{
    const qint64 riffSize = 4 + inParts.formatChunk.size() + 8 + inBytes + inBytes % 2;
    return riffSize <= std::numeric_limits<quint32>::max();
}

std::int64_t SampleTicks(int inSampleRate) { return KOR::Time::kTicksPerSecond / inSampleRate; }

struct FormatCloser {
    void operator()(AVFormatContext* inContext) const { avformat_close_input(&inContext); }
};
using InputPtr = std::unique_ptr<AVFormatContext, FormatCloser>;

struct PacketFree {
    void operator()(AVPacket* inPacket) const { av_packet_free(&inPacket); }
};
using PacketPtr = std::unique_ptr<AVPacket, PacketFree>;

long OpenInput(const QString& inPath, InputPtr& outInput)
{
    AVFormatContext* context = nullptr;
    if (avformat_open_input(&context, QFile::encodeName(inPath).constData(), nullptr, nullptr) < 0) {
        return OpenFailure(inPath);
    }
    outInput.reset(context);
    return avformat_find_stream_info(context, nullptr) < 0 ? TL::ProjectManager::kError_ReadFailed : 0;
}

bool IsCopiedStream(const AVStream& inStream)
{
    const AVMediaType type = inStream.codecpar->codec_type;
    return (type == AVMEDIA_TYPE_VIDEO && !(inStream.disposition & AV_DISPOSITION_ATTACHED_PIC)) ||
           type == AVMEDIA_TYPE_AUDIO;
}

// Ticks of one step of inBase; 0 when a step is no whole number of ticks.
std::int64_t BaseTicks(AVRational inBase)
{
    const std::int64_t ticks = KOR::Time::kTicksPerSecond * inBase.num;
    return inBase.den > 0 && ticks % inBase.den == 0 ? ticks / inBase.den : 0;
}

bool IsStillFormat(const AVFormatContext& inContext)
{
    const std::string_view name = inContext.iformat->name;
    return (inContext.iformat->flags & AVFMT_NOTIMESTAMPS) || name.starts_with("image2") || name.ends_with("_pipe");
}

std::int64_t ToTicks(std::int64_t inTime, AVRational inBase) { return av_rescale_q(inTime, inBase, kTickBase); }
std::int64_t FromTicks(std::int64_t inTicks, AVRational inBase) { return av_rescale_q(inTicks, kTickBase, inBase); }

// Whether a cut written under inFileName keeps its first key frame's delay and its audio pre-roll
// exactly: MOV and MP4 (and M4A) record them in an edit list; other muxers would move them to 0.
bool KeepsEditList(const QString& inFileName)
{
    const AVOutputFormat* format = av_guess_format(nullptr, QFile::encodeName(inFileName).constData(), nullptr);
    if (!format) {
        return false;
    }
    const std::string_view name = format->name;
    return name == "mov" || name == "mp4" || name == "ipod";
}

int FirstVideoStream(const AVFormatContext& inContext)
{
    for (unsigned int i = 0; i < inContext.nb_streams; ++i) {
        if (IsCopiedStream(*inContext.streams[i]) && inContext.streams[i]->codecpar->codec_type == AVMEDIA_TYPE_VIDEO) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

std::int64_t PacketTime(const AVPacket& inPacket)
{
    return inPacket.pts != AV_NOPTS_VALUE ? inPacket.pts : inPacket.dts;
}

// The time (in ticks) of the last key frame of stream inVideo at or before inTicks. Seeking
// backwards lands on it with the demuxers that keep an index; the others are read from the start.
long FindKeyFrame(AVFormatContext& ioInput, int inVideo, std::int64_t inTicks, Sink& ioSink, std::int64_t& outTicks)
{
    const AVRational base = ioInput.streams[inVideo]->time_base;
    const std::int64_t target = FromTicks(inTicks, base);
    PacketPtr packet(av_packet_alloc());
    if (av_seek_frame(&ioInput, inVideo, target, AVSEEK_FLAG_BACKWARD) >= 0) {
        while (av_read_frame(&ioInput, packet.get()) >= 0) {
            const bool video = packet->stream_index == inVideo;
            const bool found = video && (packet->flags & AV_PKT_FLAG_KEY) && PacketTime(*packet) <= target;
            const std::int64_t time = PacketTime(*packet);
            av_packet_unref(packet.get());
            if (video) {
                if (found) {
                    outTicks = ToTicks(time, base);
                    return 0;
                }
                break;
            }
        }
    }
    if (avformat_seek_file(&ioInput, -1, std::numeric_limits<std::int64_t>::min(), 0, 0, 0) < 0) {
        return TL::ProjectManager::kError_TrimFailed;
    }
    std::int64_t last = AV_NOPTS_VALUE;
    while (av_read_frame(&ioInput, packet.get()) >= 0) {
        if (!ioSink.KeepGoing()) {
            return ioSink.Failure();
        }
        if (packet->stream_index == inVideo && (packet->flags & AV_PKT_FLAG_KEY) && PacketTime(*packet) <= target) {
            last = PacketTime(*packet);
        }
        av_packet_unref(packet.get());
    }
    if (last == AV_NOPTS_VALUE) {
        return TL::ProjectManager::kError_TrimFailed;
    }
    outTicks = ToTicks(last, base);
    return 0;
}

int WriteToSink(void* inSink, std::uint8_t* inData, int inSize)
{
    return static_cast<Sink*>(inSink)->Write(inData, static_cast<std::size_t>(inSize)) ? inSize : AVERROR_EXIT;
}

std::int64_t SeekSink(void* inSink, std::int64_t inOffset, int inWhence)
{
    Sink& sink = *static_cast<Sink*>(inSink);
    if (inWhence & AVSEEK_SIZE) {
        return static_cast<std::int64_t>(sink.Size());
    }
    return sink.Seek(inOffset, inWhence & ~AVSEEK_FORCE);
}

// An output whose bytes go to a Sink.
class Output {
public:
    ~Output()
    {
        if (mContext) {
            avformat_free_context(mContext);
        }
        if (mIO) {
            av_freep(&mIO->buffer);
            avio_context_free(&mIO);
        }
    }

    bool Open(const QString& inFileName, Sink& ioSink)
    {
        if (avformat_alloc_output_context2(&mContext, nullptr, nullptr, QFile::encodeName(inFileName).constData()) <
            0) {
            return false;
        }
        auto* buffer = static_cast<unsigned char*>(av_malloc(kIOBufferSize));
        mIO =
            buffer ? avio_alloc_context(buffer, kIOBufferSize, 1, &ioSink, nullptr, &WriteToSink, &SeekSink) : nullptr;
        if (!mIO) {
            av_free(buffer);
            return false;
        }
        mContext->pb = mIO;
        mContext->flags |= AVFMT_FLAG_CUSTOM_IO;
        return true;
    }

    AVFormatContext* operator->() const { return mContext; }
    AVFormatContext* Get() const { return mContext; }

private:
    AVFormatContext* mContext = nullptr;
    AVIOContext* mIO = nullptr;
};

// Where each input stream goes in the output (-1: left out).
bool AddStreams(const AVFormatContext& inInput, bool inFromStart, Output& ioOutput, std::vector<int>& outMap)
{
    outMap.assign(inInput.nb_streams, -1);
    for (unsigned int i = 0; i < inInput.nb_streams; ++i) {
        const AVStream& in = *inInput.streams[i];
        if (!IsCopiedStream(in)) {
            continue;
        }
        AVStream* out = avformat_new_stream(ioOutput.Get(), nullptr);
        if (!out || avcodec_parameters_copy(out->codecpar, in.codecpar) < 0) {
            return false;
        }
        // A copy that starts inside the stream has no encoder priming at its start: what it needs
        // before its first sample is the pre-roll packet, which the edit list hides.
        if (!inFromStart) {
            out->codecpar->initial_padding = 0;
        }
        out->codecpar->codec_tag = 0;
        out->time_base = in.time_base;
        outMap[i] = out->index;
    }
    return true;
}

// MOV and MP4 record a stream's late start as an edit in the movie's time scale, 1/1000 s unless
// told otherwise: a scale that every copied stream's time base divides keeps those starts exact.
// Other muxers leave the option unused.
std::int64_t MovieTimescale(const AVFormatContext& inInput, const std::vector<int>& inMap)
{
    std::int64_t scale = 1000;
    for (std::size_t i = 0; i < inMap.size(); ++i) {
        if (inMap[i] >= 0 && inInput.streams[i]->time_base.num == 1) {
            const std::int64_t widened = std::lcm(scale, static_cast<std::int64_t>(inInput.streams[i]->time_base.den));
            scale = widened <= std::numeric_limits<int>::max() ? widened : scale;
        }
    }
    return scale;
}

std::int64_t DecodeTime(const AVPacket& inPacket)
{
    return inPacket.dts != AV_NOPTS_VALUE ? inPacket.dts : inPacket.pts;
}

// Whether a packet of the input belongs to the cut: video from the key frame at inKey (in decoding
// order, ioKeyDts is set when it comes) up to the end, so every frame shown before the end comes
// with the frames it refers to; audio that sounds anywhere from the cut start up to the end.
bool IsInCut(const AVPacket& inPacket, bool inVideo, std::int64_t inKey, std::int64_t& ioKeyDts, std::int64_t inCut,
             std::int64_t inEnd)
{
    if (inVideo) {
        if (ioKeyDts == AV_NOPTS_VALUE && (inPacket.flags & AV_PKT_FLAG_KEY) && PacketTime(inPacket) == inKey) {
            ioKeyDts = DecodeTime(inPacket);
        }
        return ioKeyDts != AV_NOPTS_VALUE && DecodeTime(inPacket) >= ioKeyDts && DecodeTime(inPacket) < inEnd;
    }
    const std::int64_t time = PacketTime(inPacket);
    return time + inPacket.duration > inCut && time < inEnd;
}

// The longest audio packet of the copied streams, in ticks: how far before the cut reading starts
// so that the packet before the first one in the cut is read, as the decoder's pre-roll.
std::int64_t AudioPacketTicks(const AVFormatContext& inInput, const std::vector<int>& inMap)
{
    std::int64_t longest = 0;
    for (std::size_t i = 0; i < inMap.size(); ++i) {
        const AVCodecParameters& codec = *inInput.streams[i]->codecpar;
        if (inMap[i] >= 0 && codec.codec_type == AVMEDIA_TYPE_AUDIO && codec.frame_size > 0 && codec.sample_rate > 0) {
            longest = std::max(longest, av_rescale(codec.frame_size, KOR::Time::kTicksPerSecond, codec.sample_rate));
        }
    }
    return longest;
}

// Writes ioPacket, times moved back by inCut, to the output stream its input stream maps to; false
// when the output failed.
bool WriteShifted(AVPacket& ioPacket, const AVFormatContext& inInput, Output& ioOutput, const std::vector<int>& inMap,
                  std::int64_t inCut)
{
    const auto index = static_cast<std::size_t>(ioPacket.stream_index);
    const AVRational base = inInput.streams[index]->time_base;
    const std::int64_t shift = FromTicks(inCut, base);
    ioPacket.pts = ioPacket.pts == AV_NOPTS_VALUE ? AV_NOPTS_VALUE : ioPacket.pts - shift;
    ioPacket.dts = ioPacket.dts == AV_NOPTS_VALUE ? AV_NOPTS_VALUE : ioPacket.dts - shift;
    ioPacket.stream_index = inMap[index];
    ioPacket.pos = -1;
    av_packet_rescale_ts(&ioPacket, base, ioOutput->streams[inMap[index]]->time_base);
    return av_interleaved_write_frame(ioOutput.Get(), &ioPacket) >= 0;
}

long MuxCut(AVFormatContext& ioInput, int inVideo, std::int64_t inKeyTicks, std::int64_t inCut, std::int64_t inEnd,
            const QString& inFileName, Sink& ioSink)
{
    Output output;
    std::vector<int> map;
    if (!output.Open(inFileName, ioSink) || !AddStreams(ioInput, inCut == 0, output, map)) {
        return TL::ProjectManager::kError_TrimFailed;
    }
    AVDictionary* options = nullptr;
    av_dict_set_int(&options, "movie_timescale", MovieTimescale(ioInput, map), 0);
    const int header = avformat_write_header(output.Get(), &options);
    av_dict_free(&options);
    if (header < 0) {
        return ioSink.Failure() ? ioSink.Failure() : TL::ProjectManager::kError_TrimFailed;
    }
    // Reading starts one audio packet before the cut (at an earlier key frame than inKeyTicks,
    // maybe, whose frames are left out) for the pre-roll. ioInput is at its start, where the
    // encoder's priming packets (before time 0, which no seek reaches) are read too.
    const std::int64_t readFrom = std::min(inKeyTicks, inCut) - AudioPacketTicks(ioInput, map);
    const int seekStream = inVideo >= 0 ? inVideo : -1;
    const std::int64_t seekTo = inVideo >= 0 ? FromTicks(readFrom, ioInput.streams[inVideo]->time_base)
                                             : av_rescale_q(readFrom, kTickBase, AV_TIME_BASE_Q);
    if (readFrom > 0 && av_seek_frame(&ioInput, seekStream, seekTo, AVSEEK_FLAG_BACKWARD) < 0) {
        return TL::ProjectManager::kError_TrimFailed;
    }
    PacketPtr packet(av_packet_alloc());
    std::vector<bool> finished(ioInput.nb_streams, false);
    for (std::size_t i = 0; i < map.size(); ++i) {
        finished[i] = map[i] < 0;
    }
    // Per audio stream, the last packet before the cut until the first one in it comes.
    std::vector<PacketPtr> preRoll(ioInput.nb_streams);
    std::vector<bool> started(ioInput.nb_streams, false);
    std::int64_t keyDts = AV_NOPTS_VALUE;
    int read = 0;
    while (std::find(finished.begin(), finished.end(), false) != finished.end() &&
           (read = av_read_frame(&ioInput, packet.get())) >= 0) {
        if (!ioSink.KeepGoing()) {
            return ioSink.Failure();
        }
        const auto index = static_cast<std::size_t>(packet->stream_index);
        if (index >= map.size() || map[index] < 0 || finished[index]) {
            av_packet_unref(packet.get());
            continue; // a stream the copy leaves out, or one that appeared while reading
        }
        const AVRational base = ioInput.streams[index]->time_base;
        const std::int64_t end = FromTicks(inEnd, base);
        const bool video = static_cast<int>(index) == inVideo;
        const std::int64_t key = video ? FromTicks(inKeyTicks, base) : 0;
        if ((video ? DecodeTime(*packet) : PacketTime(*packet)) >= end) {
            finished[index] = true;
        } else if (IsInCut(*packet, video, key, keyDts, FromTicks(inCut, base), end)) {
            if (!video && !started[index] && preRoll[index] &&
                !WriteShifted(*preRoll[index], ioInput, output, map, inCut)) {
                return ioSink.Failure() ? ioSink.Failure() : TL::ProjectManager::kError_TrimFailed;
            }
            started[index] = true;
            if (!WriteShifted(*packet, ioInput, output, map, inCut)) {
                return ioSink.Failure() ? ioSink.Failure() : TL::ProjectManager::kError_TrimFailed;
            }
        } else if (!video && !started[index] && PacketTime(*packet) != AV_NOPTS_VALUE) {
            if (!preRoll[index]) {
                preRoll[index].reset(av_packet_alloc());
            }
            av_packet_unref(preRoll[index].get());
            av_packet_move_ref(preRoll[index].get(), packet.get());
        }
        av_packet_unref(packet.get());
    }
    if (read < 0 && read != AVERROR_EOF) {
        return TL::ProjectManager::kError_ReadFailed;
    }
    if (av_write_trailer(output.Get()) < 0) {
        return ioSink.Failure() ? ioSink.Failure() : TL::ProjectManager::kError_TrimFailed;
    }
    avio_flush(output->pb);
    return ioSink.Failure();
}

} // namespace

long ProbeMedia(const QString& inPath, MediaLayout& outLayout)
{
    QFile file(inPath);
    if (!file.open(QIODevice::ReadOnly)) {
        return OpenFailure(inPath);
    }
    outLayout = {};
    WavParts wav;
    if (ReadWavParts(file, wav) && KOR::Time::kTicksPerSecond % wav.sampleRate == 0) {
        if (!FitsRiff(wav, wav.dataSize)) {
            return 0; // copied whole
        }
        outLayout.kind = CutKind::kWav;
        outLayout.duration = wav.dataSize / wav.blockAlign * SampleTicks(wav.sampleRate);
        outLayout.units = {SampleTicks(wav.sampleRate)};
        return 0;
    }
    InputPtr input;
    if (OpenInput(inPath, input) != 0 || IsStillFormat(*input) || !KeepsEditList(QFileInfo(inPath).fileName())) {
        return 0; // copied whole
    }
    for (unsigned int i = 0; i < input->nb_streams; ++i) {
        if (IsCopiedStream(*input->streams[i])) {
            outLayout.kind = CutKind::kStreams;
            outLayout.units.push_back(BaseTicks(input->streams[i]->time_base));
        }
    }
    outLayout.duration = input->duration > 0 ? av_rescale_q(input->duration, AV_TIME_BASE_Q, kTickBase)
                                             : std::numeric_limits<std::int64_t>::max() / 2;
    return 0;
}

long CopyWhole(const QString& inPath, Sink& ioSink)
{
    // Counting needs only the length: the file is not even opened.
    const QFileInfo info(inPath);
    if (ioSink.IsCounting()) {
        if (!info.exists()) {
            return TL::ProjectManager::kError_SourceMissing;
        }
        if (!info.isReadable()) {
            return TL::ProjectManager::kError_ReadFailed;
        }
        ioSink.Count(static_cast<std::uint64_t>(info.size()));
        return 0;
    }
    QFile file(inPath);
    if (!file.open(QIODevice::ReadOnly)) {
        return OpenFailure(inPath);
    }
    for (;;) {
        const QByteArray block = file.read(kCopyBlock);
        if (block.isEmpty()) {
            return file.error() == QFile::NoError ? 0 : TL::ProjectManager::kError_ReadFailed;
        }
        if (!ioSink.Write(block.constData(), static_cast<std::size_t>(block.size()))) {
            return ioSink.Failure();
        }
    }
}

long CutWav(const QString& inPath, Span inSpan, Sink& ioSink)
{
    QFile file(inPath);
    WavParts wav;
    if (!file.open(QIODevice::ReadOnly)) {
        return OpenFailure(inPath);
    }
    if (!ReadWavParts(file, wav)) {
        return TL::ProjectManager::kError_TrimFailed;
    }
    const std::int64_t sampleTicks = SampleTicks(wav.sampleRate);
    const qint64 frames = wav.dataSize / wav.blockAlign;
    const qint64 first = std::clamp<qint64>(inSpan.start / sampleTicks, 0, frames);
    const qint64 last = std::clamp<qint64>((inSpan.end + sampleTicks - 1) / sampleTicks, first, frames);
    const qint64 bytes = (last - first) * wav.blockAlign;
    if (!FitsRiff(wav, bytes)) {
        return TL::ProjectManager::kError_TrimFailed;
    }
    QByteArray header = "RIFF" + QByteArray(4, '\0') + "WAVE" + wav.formatChunk + "data" + QByteArray(4, '\0');
    qToLittleEndian(static_cast<quint32>(header.size() - 8 + bytes + bytes % 2), header.data() + 4);
    qToLittleEndian(static_cast<quint32>(bytes), header.data() + header.size() - 4);
    if (!ioSink.Write(header.constData(), static_cast<std::size_t>(header.size()))) {
        return ioSink.Failure();
    }
    if (ioSink.IsCounting()) {
        ioSink.Count(static_cast<std::uint64_t>(bytes + bytes % 2));
        return 0;
    }
    if (!file.seek(wav.dataOffset + first * wav.blockAlign)) {
        return TL::ProjectManager::kError_ReadFailed;
    }
    const qint64 blockBytes = kCopyBlock / wav.blockAlign * wav.blockAlign;
    for (qint64 left = bytes; left > 0;) {
        const QByteArray block = file.read(std::min(left, blockBytes));
        if (block.isEmpty()) {
            return TL::ProjectManager::kError_ReadFailed;
        }
        if (!ioSink.Write(block.constData(), static_cast<std::size_t>(block.size()))) {
            return ioSink.Failure();
        }
        left -= block.size();
    }
    return bytes % 2 && !ioSink.Write("", 1) ? ioSink.Failure() : 0;
}

long CutStreams(const QString& inPath, Span inSpan, std::int64_t inGrid, Sink& ioSink, std::int64_t& outCutStart)
{
    InputPtr input;
    if (const long opened = OpenInput(inPath, input); opened != 0) {
        return opened;
    }
    const int video = FirstVideoStream(*input);
    std::int64_t key = inSpan.start;
    if (video >= 0) {
        if (const long found = FindKeyFrame(*input, video, inSpan.start, ioSink, key); found != 0) {
            return found;
        }
        // The cut reads from the start of a file it has not read yet.
        if (const long reopened = OpenInput(inPath, input); reopened != 0) {
            return reopened;
        }
    }
    outCutStart = AlignDown(std::max<std::int64_t>(key, 0), inGrid);
    return MuxCut(*input, video, key, outCutStart, inSpan.end, QFileInfo(inPath).fileName(), ioSink);
}

} // namespace HostQt::ProjectManagement
