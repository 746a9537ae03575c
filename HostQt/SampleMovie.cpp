#include "HostQt/SampleMovie.h"

#include <QFile>

#include <cmath>
#include <memory>
#include <numbers>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
}

namespace HostQt {

namespace {

struct CodecContextFree {
    void operator()(AVCodecContext* inContext) const { avcodec_free_context(&inContext); }
};
struct FrameFree {
    void operator()(AVFrame* inFrame) const { av_frame_free(&inFrame); }
};
struct PacketFree {
    void operator()(AVPacket* inPacket) const { av_packet_free(&inPacket); }
};
using CodecContextPtr = std::unique_ptr<AVCodecContext, CodecContextFree>;
using FramePtr = std::unique_ptr<AVFrame, FrameFree>;
using PacketPtr = std::unique_ptr<AVPacket, PacketFree>;

// The output file with its muxer; closes and frees both.
class Output {
public:
    ~Output()
    {
        if (mContext && !(mContext->oformat->flags & AVFMT_NOFILE)) {
            avio_closep(&mContext->pb);
        }
        avformat_free_context(mContext);
    }
    AVFormatContext* mContext = nullptr;
};

// One encoder feeding one stream of the output.
struct Track {
    CodecContextPtr codec;
    AVStream* stream = nullptr;
    FramePtr frame;
    std::int64_t nextPts = 0;
    bool finished = false;
};

bool OpenTrack(Output& ioOutput, Track& ioTrack)
{
    if (ioOutput.mContext->oformat->flags & AVFMT_GLOBALHEADER) {
        ioTrack.codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    }
    if (avcodec_open2(ioTrack.codec.get(), nullptr, nullptr) < 0) {
        return false;
    }
    ioTrack.stream = avformat_new_stream(ioOutput.mContext, nullptr);
    if (!ioTrack.stream || avcodec_parameters_from_context(ioTrack.stream->codecpar, ioTrack.codec.get()) < 0) {
        return false;
    }
    ioTrack.stream->time_base = ioTrack.codec->time_base;
    ioTrack.frame.reset(av_frame_alloc());
    return ioTrack.frame != nullptr;
}

bool MakeVideoTrack(Output& ioOutput, const SampleMovie& inMovie, Track& outTrack)
{
    const AVCodec* encoder = avcodec_find_encoder(AV_CODEC_ID_MPEG4);
    outTrack.codec.reset(encoder ? avcodec_alloc_context3(encoder) : nullptr);
    if (!outTrack.codec) {
        return false;
    }
    AVCodecContext& codec = *outTrack.codec;
    codec.width = inMovie.width;
    codec.height = inMovie.height;
    codec.time_base = AVRational{static_cast<int>(inMovie.frameRate.Denominator()),
                                 static_cast<int>(inMovie.frameRate.Numerator())};
    codec.framerate = AVRational{codec.time_base.den, codec.time_base.num};
    codec.gop_size = inMovie.gopSize;
    codec.max_b_frames = 0;
    codec.pix_fmt = AV_PIX_FMT_YUV420P;
    codec.bit_rate = 600000;
    if (!OpenTrack(ioOutput, outTrack)) {
        return false;
    }
    AVFrame& frame = *outTrack.frame;
    frame.format = codec.pix_fmt;
    frame.width = codec.width;
    frame.height = codec.height;
    return av_frame_get_buffer(&frame, 0) >= 0;
}

bool MakeAudioTrack(Output& ioOutput, const SampleMovie& inMovie, Track& outTrack)
{
    const AVCodec* encoder = avcodec_find_encoder(AV_CODEC_ID_AAC);
    outTrack.codec.reset(encoder ? avcodec_alloc_context3(encoder) : nullptr);
    if (!outTrack.codec) {
        return false;
    }
    AVCodecContext& codec = *outTrack.codec;
    codec.sample_fmt = AV_SAMPLE_FMT_FLTP;
    codec.sample_rate = inMovie.audioSampleRate;
    av_channel_layout_default(&codec.ch_layout, inMovie.audioChannels);
    codec.bit_rate = 128000;
    codec.time_base = AVRational{1, inMovie.audioSampleRate};
    if (!OpenTrack(ioOutput, outTrack)) {
        return false;
    }
    AVFrame& frame = *outTrack.frame;
    frame.format = codec.sample_fmt;
    frame.sample_rate = codec.sample_rate;
    frame.nb_samples = codec.frame_size;
    return av_channel_layout_copy(&frame.ch_layout, &codec.ch_layout) >= 0 && av_frame_get_buffer(&frame, 0) >= 0;
}

// Bars that move a pixel column pair per frame, and the frame number as 12 blocks along the top.
void DrawPicture(AVFrame& ioFrame, std::int64_t inIndex)
{
    constexpr int kBlocks = 12;
    const int blockWidth = ioFrame.width / kBlocks;
    for (int y = 0; y < ioFrame.height; ++y) {
        std::uint8_t* row = ioFrame.data[0] + y * ioFrame.linesize[0];
        for (int x = 0; x < ioFrame.width; ++x) {
            const bool counterRow = y < 16 && x / blockWidth < kBlocks;
            row[x] = counterRow ? ((inIndex >> (x / blockWidth)) & 1 ? 235 : 16)
                                : static_cast<std::uint8_t>(16 + ((x + 2 * inIndex) / 40 % 8) * 27);
        }
    }
    for (int plane = 1; plane <= 2; ++plane) {
        for (int y = 0; y < ioFrame.height / 2; ++y) {
            std::uint8_t* row = ioFrame.data[plane] + y * ioFrame.linesize[plane];
            for (int x = 0; x < ioFrame.width / 2; ++x) {
                row[x] = static_cast<std::uint8_t>(128 + (plane == 1 ? 1 : -1) * (((2 * x + 2 * inIndex) / 40 % 8) * 12 - 42));
            }
        }
    }
}

void FillTone(AVFrame& ioFrame, std::int64_t inFirstSample, double inToneHz)
{
    for (int channel = 0; channel < ioFrame.ch_layout.nb_channels; ++channel) {
        auto* samples = reinterpret_cast<float*>(ioFrame.data[channel]);
        for (int i = 0; i < ioFrame.nb_samples; ++i) {
            const double t = static_cast<double>(inFirstSample + i) / ioFrame.sample_rate;
            samples[i] = static_cast<float>(0.3 * std::sin(2 * std::numbers::pi * inToneHz * (1 + 0.5 * channel) * t));
        }
    }
}

// Sends inFrame (null to drain) and writes every packet the encoder gives back.
bool Encode(Output& ioOutput, Track& ioTrack, AVFrame* inFrame)
{
    if (avcodec_send_frame(ioTrack.codec.get(), inFrame) < 0) {
        return false;
    }
    PacketPtr packet(av_packet_alloc());
    while (true) {
        const int received = avcodec_receive_packet(ioTrack.codec.get(), packet.get());
        if (received == AVERROR(EAGAIN) || received == AVERROR_EOF) {
            return true;
        }
        if (received < 0) {
            return false;
        }
        av_packet_rescale_ts(packet.get(), ioTrack.codec->time_base, ioTrack.stream->time_base);
        packet->stream_index = ioTrack.stream->index;
        if (av_interleaved_write_frame(ioOutput.mContext, packet.get()) < 0) {
            return false;
        }
    }
}

// The next frame of a track, or its drain once it has all it needs.
bool WriteNext(Output& ioOutput, Track& ioTrack, const SampleMovie& inMovie, bool inVideo)
{
    const std::int64_t end = inVideo ? inMovie.frames
                                     : av_rescale(inMovie.frames, inMovie.audioSampleRate * inMovie.frameRate.Denominator(),
                                                  inMovie.frameRate.Numerator());
    if (ioTrack.nextPts >= end) {
        ioTrack.finished = true;
        return Encode(ioOutput, ioTrack, nullptr);
    }
    AVFrame& frame = *ioTrack.frame;
    if (av_frame_make_writable(&frame) < 0) {
        return false;
    }
    if (inVideo) {
        DrawPicture(frame, ioTrack.nextPts);
    } else {
        FillTone(frame, ioTrack.nextPts, inMovie.toneHz);
    }
    frame.pts = ioTrack.nextPts;
    ioTrack.nextPts += inVideo ? 1 : frame.nb_samples;
    return Encode(ioOutput, ioTrack, &frame);
}

bool WriteMovie(const QByteArray& inPath, const SampleMovie& inMovie)
{
    Output output;
    if (avformat_alloc_output_context2(&output.mContext, nullptr, nullptr, inPath.constData()) < 0) {
        return false;
    }
    Track video;
    Track audio;
    audio.finished = inMovie.audioSampleRate <= 0;
    if (!MakeVideoTrack(output, inMovie, video) || (!audio.finished && !MakeAudioTrack(output, inMovie, audio))) {
        return false;
    }
    if (avio_open(&output.mContext->pb, inPath.constData(), AVIO_FLAG_WRITE) < 0 ||
        avformat_write_header(output.mContext, nullptr) < 0) {
        return false;
    }
    while (!video.finished || !audio.finished) {
        const bool videoFirst = audio.finished || (!video.finished && av_compare_ts(video.nextPts, video.codec->time_base,
                                                                                      audio.nextPts, audio.codec->time_base) <= 0);
        if (!WriteNext(output, videoFirst ? video : audio, inMovie, videoFirst)) {
            return false;
        }
    }
    return av_write_trailer(output.mContext) >= 0;
}

} // namespace

bool WriteSampleMovie(const QString& inPath, const SampleMovie& inMovie)
{
    if (WriteMovie(QFile::encodeName(inPath), inMovie)) {
        return true;
    }
    QFile::remove(inPath);
    return false;
}

} // namespace HostQt
