#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <optional>
#include <vector>

#include "BE/AudioClip.h"
#include "BE/ColorMatte.h"

namespace HostQt {

// The largest absolute sample of a WAV file, over all channels, as a linear amplitude (1.0 is
// full scale). Reads integer PCM of 8, 16, 24 or 32 bits and floats of 32 or 64 bits, plain or
// in the extensible format. Nothing when the file is missing or holds no such audio.
std::optional<double> MeasureWavPeak(const QString& inPath);

// The audio clips among a project file's "clips": those marked "audioOnly" or carrying a
// "peakAmplitude". A clip's peak is measured from its media file when that reads as WAV, and
// otherwise is the "peakAmplitude" the project file recorded (unknown when it recorded none).
std::vector<BE::AudioClipRef> ReadAudioClips(const QJsonArray& inClips);
// inClips with each audio clip's peak as last known, for the project file; a clip whose peak is
// unknown is left as it was.
QJsonArray WriteAudioClips(QJsonArray inClips, const std::vector<BE::AudioClipRef>& inAudioClips);

// The colour mattes of a project file's "colorMattes": {"name": ..., "color": "#RRGGBB"}. An entry
// without such a colour is no matte of the model; it is kept as read.
std::vector<BE::ColorMatteRef> ReadColorMattes(const QJsonArray& inMattes);
// inMattes with each matte's colour as it is now.
QJsonArray WriteColorMattes(QJsonArray inMattes, const std::vector<BE::ColorMatteRef>& inColorMattes);

// Writes inProject as JSON to inPath through a temporary file that replaces the old one only
// when complete, so that a failed save leaves the previous file as it was. Returns BE::kSave_OK
// or the BE::kSaveError_ code of what went wrong.
long WriteProjectFile(const QJsonObject& inProject, const QString& inPath);

} // namespace HostQt
