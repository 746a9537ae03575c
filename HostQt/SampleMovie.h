#pragma once

#include <QString>

#include "KOR/Time.h"

namespace HostQt {

// A short movie that the demo and the tests make for themselves: colour bars that move a step per
// frame, the frame's number drawn as a row of light and dark blocks (so every frame differs), and
// a steady tone. Video is MPEG-4 with a key frame every gopSize frames, audio AAC.
struct SampleMovie {
    int width = 320;
    int height = 180;
    KOR::FrameRate frameRate{25};
    int frames = 75;
    int gopSize = 12;
    int audioSampleRate = 48000; // 0 for a movie without sound
    int audioChannels = 2;
    double toneHz = 440.0;
};

// Writes inMovie to inPath in the container that the path's extension names (".mov", ".mp4",
// ".mkv" ...). False when the file cannot be written; a half-written file is removed.
bool WriteSampleMovie(const QString& inPath, const SampleMovie& inMovie);

} // namespace HostQt
