// The arithmetic of trimming and naming, kept apart from the files so it can be tested alone.

#include "HostQt/ProjectManagerPlan.h"

#include <algorithm>
#include <cwctype>
#include <limits>
#include <numeric>

namespace HostQt::ProjectManagement {

Span NeededSpan(const std::vector<Use>& inUses, int inHandleFrames, std::int64_t inMediaEnd)
{
    if (inUses.empty()) {
        return {};
    }
    Span span{std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()};
    for (const Use& use : inUses) {
        const std::int64_t handle = static_cast<std::int64_t>(std::max(inHandleFrames, 0)) * use.frameTicks;
        span.start = std::min(span.start, use.in - handle);
        span.end = std::max(span.end, use.out + handle);
    }
    span.start = std::clamp<std::int64_t>(span.start, 0, inMediaEnd);
    span.end = std::clamp<std::int64_t>(span.end, span.start, inMediaEnd);
    return span;
}

std::int64_t CutGrid(const std::vector<std::int64_t>& inUnits)
{
    std::int64_t grid = 1;
    for (const std::int64_t unit : inUnits) {
        if (unit > 0) {
            grid = std::lcm(grid, unit);
        }
    }
    return grid;
}

std::int64_t AlignDown(std::int64_t inTime, std::int64_t inGrid)
{
    return inGrid > 0 ? inTime - inTime % inGrid : inTime;
}

namespace {

std::wstring Extension(const std::wstring& inFileName)
{
    const std::size_t dot = inFileName.rfind(L'.');
    return dot == std::wstring::npos || dot == 0 ? std::wstring() : inFileName.substr(dot);
}

std::wstring Lower(std::wstring inText)
{
    std::transform(inText.begin(), inText.end(), inText.begin(), [](wchar_t c) { return std::towlower(c); });
    return inText;
}

std::wstring SafeFileName(std::wstring inName)
{
    for (wchar_t& c : inName) {
        if (c < 0x20 || std::wstring_view(L"/\\:*?\"<>|").find(c) != std::wstring_view::npos) {
            c = L'_';
        }
    }
    return inName.empty() || inName == L"." || inName == L".." ? L"_" : inName;
}

} // namespace

std::wstring CopyName(const std::wstring& inClipName, const std::wstring& inMediaFileName, bool inRename)
{
    if (!inRename || inClipName.empty()) {
        return SafeFileName(inMediaFileName);
    }
    const std::wstring extension = Extension(inMediaFileName);
    std::wstring base = inClipName;
    if (!extension.empty() && Lower(Extension(base)) == Lower(extension)) {
        base.resize(base.size() - extension.size());
    }
    return SafeFileName(base + extension);
}

std::wstring UniqueName(const std::wstring& inName, const std::vector<std::wstring>& inTaken)
{
    auto taken = [&](const std::wstring& inCandidate) {
        return std::any_of(inTaken.begin(), inTaken.end(),
                           [&](const std::wstring& inOther) { return Lower(inOther) == Lower(inCandidate); });
    };
    if (!taken(inName)) {
        return inName;
    }
    const std::wstring extension = Extension(inName);
    const std::wstring base = inName.substr(0, inName.size() - extension.size());
    for (int number = 2;; ++number) {
        const std::wstring candidate = base + L" (" + std::to_wstring(number) + L")" + extension;
        if (!taken(candidate)) {
            return candidate;
        }
    }
}

std::vector<std::wstring> NumberedFrames(const std::wstring& inFirstFrame, int inCount)
{
    const std::size_t nameStart = inFirstFrame.find_last_of(L"/\\") + 1;
    const std::size_t dot = inFirstFrame.rfind(L'.');
    const std::size_t stem = dot == std::wstring::npos || dot <= nameStart ? inFirstFrame.size() : dot;
    std::size_t end = stem;
    while (end > nameStart && !std::iswdigit(inFirstFrame[end - 1])) {
        --end;
    }
    std::size_t begin = end;
    while (begin > nameStart && std::iswdigit(inFirstFrame[begin - 1])) {
        --begin;
    }
    if (begin == end || inCount <= 1) {
        return {inFirstFrame};
    }
    const std::size_t width = end - begin;
    const unsigned long long first = std::stoull(inFirstFrame.substr(begin, width));
    std::vector<std::wstring> frames;
    for (int i = 0; i < inCount; ++i) {
        std::wstring number = std::to_wstring(first + static_cast<unsigned long long>(i));
        number.insert(0, number.size() < width ? width - number.size() : 0, L'0');
        frames.push_back(inFirstFrame.substr(0, begin) + number + inFirstFrame.substr(end));
    }
    return frames;
}

} // namespace HostQt::ProjectManagement
