#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The arithmetic of trimming media: which part of a media file its uses need, and where a cut may
// start so that the new file's times stay whole frames and samples. Times are KOR::Time ticks.

namespace HostQt::ProjectManagement {

// One use of a media: a clip on a sequence or a child clip, from its in point up to its out
// point, and the length of one frame at the rate its times are counted in.
struct Use {
    std::int64_t in = 0;
    std::int64_t out = 0;
    std::int64_t frameTicks = 0;
};

// A part of a media file: from start up to (not including) end.
struct Span {
    std::int64_t start = 0;
    std::int64_t end = 0;
    friend bool operator==(const Span&, const Span&) = default;
};

// The part of a media that its uses need with inHandleFrames frames (each use at its own rate)
// before and after each, clamped to [0, inMediaEnd]. An empty span when there are no uses.
Span NeededSpan(const std::vector<Use>& inUses, int inHandleFrames, std::int64_t inMediaEnd);

// The smallest length that every unit of inUnits divides (units of 0 or less are ignored; 1 when
// none is left): cut starts on this grid are whole frames, samples and time-base steps at once.
std::int64_t CutGrid(const std::vector<std::int64_t>& inUnits);

// The last point of the grid at or before inTime (inTime >= 0).
std::int64_t AlignDown(std::int64_t inTime, std::int64_t inGrid);

// The file name a media gets in the new project: the clip's name (its own copy of the media's
// extension dropped) with the media's extension when renaming, the media's own file name
// otherwise; characters no file name may hold become "_".
std::wstring CopyName(const std::wstring& inClipName, const std::wstring& inMediaFileName, bool inRename);

// inName, or "Base (2).ext", "Base (3).ext" ... : the first that inTaken does not hold (compared
// without regard to case, as some file systems do).
std::wstring UniqueName(const std::wstring& inName, const std::vector<std::wstring>& inTaken);

// The files of a numbered still sequence of inCount frames that starts at inFirstFrame: the last
// run of digits in the file name (its extension aside) counts up, kept at its width. Just
// inFirstFrame when the name holds no digits.
std::vector<std::wstring> NumberedFrames(const std::wstring& inFirstFrame, int inCount);

} // namespace HostQt::ProjectManagement
