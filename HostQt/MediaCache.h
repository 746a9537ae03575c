#pragma once

#include <QString>
#include <QStringList>

namespace HostQt {

// The folder where the host keeps the files it makes from media (conformed audio); registered as
// "media.cache".
QString MediaCacheFolder();

// Where the conformed audio of stream inStreamIndex (counted among the file's audio streams) of
// the media file at inMediaPath lives at inSampleRate. The name carries a digest of the file's
// path, size and modification time, so a changed or replaced file needs conforming again; empty
// when the media file is missing.
QString ConformedAudioPath(const QString& inMediaPath, int inStreamIndex, int inSampleRate);

// The conformed audio files that exist for the media file at inMediaPath at inSampleRate, by
// stream.
QStringList ExistingConformedAudio(const QString& inMediaPath, int inSampleRate);

} // namespace HostQt
