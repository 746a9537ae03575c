#include <QFile>
#include <QFileInfo>
#include <QString>

#include <memory>
#include <mutex>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/log.h>
#include <libavutil/mathematics.h>
}

#include "TL/Media.h"

namespace TL {

namespace {

struct FormatContextCloser {
    void operator()(AVFormatContext* inContext) const { avformat_close_input(&inContext); }
};
using FormatContextPtr = std::unique_ptr<AVFormatContext, FormatContextCloser>;

std::wstring FromAscii(const char* inText) { return QString::fromLatin1(inText ? inText : "").toStdWString(); }

bool IsDecodable(const AVCodecParameters& inParameters)
{
    return avcodec_find_decoder(inParameters.codec_id) != nullptr;
}

void DescribeVideo(AVFormatContext& inContext, AVStream& inStream, MediaInfo& ioInfo)
{
    const AVCodecParameters& parameters = *inStream.codecpar;
    ioInfo.hasVideo = true;
    ioInfo.videoCodec = FromAscii(avcodec_get_name(parameters.codec_id));
    ioInfo.width = parameters.width;
    ioInfo.height = parameters.height;
    const AVRational rate = av_guess_frame_rate(&inContext, &inStream, nullptr);
    if (rate.num > 0 && rate.den > 0) {
        ioInfo.frameRate = KOR::FrameRate(rate.num, rate.den);
    }
}

void DescribeAudio(const AVStream& inStream, MediaInfo& ioInfo)
{
    const AVCodecParameters& parameters = *inStream.codecpar;
    ioInfo.hasAudio = true;
    ioInfo.audioCodec = FromAscii(avcodec_get_name(parameters.codec_id));
    ioInfo.audioSampleRate = parameters.sample_rate;
    ioInfo.audioChannels = parameters.ch_layout.nb_channels;
}

// The first decodable video stream (cover pictures aside) and the first decodable audio stream.
void DescribeStreams(AVFormatContext& inContext, MediaInfo& ioInfo)
{
    for (unsigned int i = 0; i < inContext.nb_streams; ++i) {
        AVStream& stream = *inContext.streams[i];
        if (!IsDecodable(*stream.codecpar)) {
            continue;
        }
        const AVMediaType type = stream.codecpar->codec_type;
        if (type == AVMEDIA_TYPE_VIDEO && !ioInfo.hasVideo && !(stream.disposition & AV_DISPOSITION_ATTACHED_PIC)) {
            DescribeVideo(inContext, stream, ioInfo);
        } else if (type == AVMEDIA_TYPE_AUDIO && !ioInfo.hasAudio) {
            DescribeAudio(stream, ioInfo);
        }
    }
    if (inContext.duration != AV_NOPTS_VALUE && inContext.duration > 0) {
        ioInfo.duration = KOR::Time(av_rescale(inContext.duration, KOR::Time::kTicksPerSecond, AV_TIME_BASE));
    }
}

bool HasNeededStreams(const MediaInfo& inInfo, NeededStreams inNeeds)
{
    switch (inNeeds) {
    case NeededStreams::kVideo: return inInfo.hasVideo;
    case NeededStreams::kAudio: return inInfo.hasAudio;
    case NeededStreams::kVideoAndAudio: return inInfo.hasVideo && inInfo.hasAudio;
    case NeededStreams::kAny: break;
    }
    return inInfo.hasVideo || inInfo.hasAudio;
}

// FFmpeg's own complaints about a file would go to the terminal; the result says enough.
void SilenceFFmpegLog()
{
    static std::once_flag once;
    std::call_once(once, [] { av_log_set_level(AV_LOG_QUIET); });
}

std::int32_t OpenFailure(const QFileInfo& inFile)
{
    if (!inFile.exists()) {
        return kImporterResult_FileNotFound;
    }
    return inFile.isReadable() ? kImporterResult_UnsupportedFormat : kImporterResult_AccessDenied;
}

} // namespace

namespace Media {

std::int32_t GetInfoAboutMediaFile(const std::wstring& inPath, MediaInfo& outInfo, NeededStreams inNeeds)
{
    const QFileInfo file(QString::fromStdWString(inPath));
    if (!file.exists() || !file.isReadable() || file.isDir()) {
        return file.isDir() ? kImporterResult_UnsupportedFormat : OpenFailure(file);
    }
    SilenceFFmpegLog();
    AVFormatContext* opened = nullptr;
    const QByteArray path = QFile::encodeName(file.filePath());
    if (avformat_open_input(&opened, path.constData(), nullptr, nullptr) < 0) {
        return OpenFailure(file);
    }
    const FormatContextPtr context(opened);
    if (avformat_find_stream_info(context.get(), nullptr) < 0) {
        return kImporterResult_UnsupportedFormat;
    }
    MediaInfo info;
    info.containerName = FromAscii(context->iformat->name);
    DescribeStreams(*context, info);
    if (!HasNeededStreams(info, inNeeds)) {
        return kImporterResult_NoUsableStream;
    }
    outInfo = info;
    return kImporterResult_OK;
}

} // namespace Media

std::wstring ImporterResultToErrorString(std::int32_t inResult)
{
    switch (inResult) {
    case kImporterResult_OK: return L"The file can be used.";
    case kImporterResult_FileNotFound: return L"The file does not exist.";
    case kImporterResult_AccessDenied: return L"You are not allowed to read this file.";
    case kImporterResult_UnsupportedFormat: return L"This is not a kind of media file that can be imported.";
    case kImporterResult_NoUsableStream: return L"The file lacks the video or audio that the clip needs.";
    default: return L"The file could not be opened.";
    }
}

// The reference host keeps no undo history: an action without undo is simply carried out.
void ExecuteActionWithoutUndo(const std::function<void()>& inAction) { inAction(); }

} // namespace TL
