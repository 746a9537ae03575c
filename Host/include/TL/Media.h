#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "KOR/HostAPI.h"
#include "KOR/Time.h"

namespace TL {

// What the host learns about a media file by opening it.
struct MediaInfo {
    bool hasVideo = false;
    bool hasAudio = false;
    KOR::Time duration;
    std::wstring containerName; // the demuxer's short name: "wav", "mov,mp4,m4a,3gp,3g2,mj2" ...
    std::wstring videoCodec;    // the decoder's short name, empty without video
    std::wstring audioCodec;
    int width = 0;
    int height = 0;
    KOR::FrameRate frameRate;
    int audioSampleRate = 0;
    int audioChannels = 0;
};

// What an importer answers about a file: 0 when it can be used, negative when not.
inline constexpr std::int32_t kImporterResult_OK = 0;
inline constexpr std::int32_t kImporterResult_FileNotFound = static_cast<std::int32_t>(0xA0060001);
inline constexpr std::int32_t kImporterResult_AccessDenied = static_cast<std::int32_t>(0xA0060002);
inline constexpr std::int32_t kImporterResult_UnsupportedFormat = static_cast<std::int32_t>(0xA0060003);
inline constexpr std::int32_t kImporterResult_NoUsableStream = static_cast<std::int32_t>(0xA0060004);

// The streams a clip needs from its file.
enum class NeededStreams { kAny, kVideo, kAudio, kVideoAndAudio };

namespace Media {
// Opens inPath and reports its streams, duration and codecs. A negative result when the file is
// missing, cannot be read, is no media the host can decode, or lacks a stream of inNeeds.
HOST_API std::int32_t GetInfoAboutMediaFile(const std::wstring& inPath, MediaInfo& outInfo,
                                            NeededStreams inNeeds = NeededStreams::kAny);
} // namespace Media

// A sentence for the user that says what an importer result means.
HOST_API std::wstring ImporterResultToErrorString(std::int32_t inResult);

// Runs inAction as a change of the project that does not enter the undo history.
HOST_API void ExecuteActionWithoutUndo(const std::function<void()>& inAction);

} // namespace TL
