#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <functional>
#include <vector>

#include "BE/Sequence.h"

namespace HostQt {

// Finds the master clip that a project file names; null when it names none.
using MasterClipLookup = std::function<BE::MasterClipRef(const QString& inName)>;

BE::MasterClipRef MakeMasterClip(std::wstring inName, BE::MediaRef inMedia);

// A project file's "sequences": {"name": ..., "frameRate": "30000/1001", "items": [{"clip": master
// clip name, "track": "V1" or "A2", "start": frame, "in": frame, "out": frame}]}, frames counted at
// the sequence's rate (inDefaultRate when it has none). Items whose clip is unknown are left out.
std::vector<BE::SequenceRef> ReadSequences(const QJsonArray& inSequences, KOR::FrameRate inDefaultRate,
                                           const MasterClipLookup& inLookup);
// A project file's "childClips": {"name": ..., "clip": master clip name, "in": frame, "out": frame}
// at inRate.
std::vector<BE::ChildClipRef> ReadChildClips(const QJsonArray& inChildClips, KOR::FrameRate inRate,
                                             const MasterClipLookup& inLookup);

// Selections as a host view would hand them over.
BE::TrackItemSelectionRef MakeTrackItemSelection(std::vector<BE::ClipRef> inClips);
BE::ProjectItemSelectionRef MakeProjectItemSelection(std::vector<BE::MasterClipRef> inMasterClips,
                                                     std::vector<BE::ChildClipRef> inChildClips,
                                                     std::vector<BE::SequenceRef> inSequences);

// "V1" is the first video track, "A2" the second audio track; false for anything else.
bool ParseTrackName(const QString& inName, BE::TrackKind& outKind, int& outIndex);

} // namespace HostQt
