#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QStorageInfo>
#include <QTemporaryFile>
#include <QString>

#include <dirent.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cwctype>
#include <filesystem>
#include <limits>
#include <memory>
#include <string_view>
#include <vector>

#include "KOR/DiskUtils.h"
#include "KOR/Paths.h"

namespace KOR {

namespace PathUtils {

namespace {

constexpr std::size_t kMaxFileNameBytes = 255;
constexpr std::wstring_view kForbiddenCharacters = L"<>:\"/\\|?*";
constexpr std::array<std::wstring_view, 4> kReservedNames = {L"CON", L"PRN", L"AUX", L"NUL"};

bool IsReservedDeviceName(const std::wstring& inName)
{
    // A device name stays reserved with any extension: "nul.txt" opens the device
    // too.
    const QString stem = QString::fromStdWString(inName.substr(0, inName.find(L'.'))).trimmed().toUpper();
    const std::wstring upper = stem.toStdWString();
    if (std::find(kReservedNames.begin(), kReservedNames.end(), upper) != kReservedNames.end()) {
        return true;
    }
    return upper.size() == 4 && (upper.starts_with(L"COM") || upper.starts_with(L"LPT")) && upper[3] >= L'1' &&
           upper[3] <= L'9';
}

constexpr std::wstring_view kSeparators = L"\\/";

bool IsSeparator(wchar_t inCharacter) { return kSeparators.find(inCharacter) != std::wstring_view::npos; }

std::filesystem::path NativePath(const std::wstring& inPath)
{
    return std::filesystem::path(QFile::encodeName(QString::fromStdWString(inPath)).toStdString());
}

// A path cut into its root ("/", "C:", "\\\\server\\share" or empty for a relative path) and its
// named steps.
struct PathSteps {
    std::wstring root;
    std::vector<std::wstring> steps;
};

std::size_t RootLength(const std::wstring& inPath)
{
    if (inPath.size() >= 2 && IsSeparator(inPath[0]) && IsSeparator(inPath[1])) {
        // A share: two separators, the server, one separator, the share name.
        std::size_t end = inPath.find_first_of(kSeparators, 2);
        end = end == std::wstring::npos ? inPath.size() : inPath.find_first_of(kSeparators, end + 1);
        return end == std::wstring::npos ? inPath.size() : end;
    }
    if (inPath.size() >= 2 && inPath[1] == L':' && std::iswalpha(inPath[0])) {
        return 2;
    }
    return !inPath.empty() && IsSeparator(inPath[0]) ? 1 : 0;
}

PathSteps SplitPath(const std::wstring& inPath)
{
    PathSteps split;
    const std::size_t rootLength = RootLength(inPath);
    split.root = inPath.substr(0, rootLength);
    std::size_t start = rootLength;
    while (start < inPath.size()) {
        std::size_t end = inPath.find_first_of(kSeparators, start);
        if (end == std::wstring::npos) {
            end = inPath.size();
        }
        if (end > start) {
            split.steps.push_back(inPath.substr(start, end - start));
        }
        start = end + 1;
    }
    return split;
}

bool IsAbsolute(const std::wstring& inRoot)
{
    return !inRoot.empty() && (IsSeparator(inRoot.back()) || inRoot.size() > 2 || inRoot.back() == L':');
}

bool SameRoot(const std::wstring& inFirst, const std::wstring& inSecond)
{
    // Drive letters name the same drive in either case; "/" and "\\" are one root.
    if (inFirst.size() != inSecond.size()) {
        return false;
    }
    return std::equal(inFirst.begin(), inFirst.end(), inSecond.begin(), [](wchar_t a, wchar_t b) {
        return std::towupper(a) == std::towupper(b) || (IsSeparator(a) && IsSeparator(b));
    });
}

wchar_t SeparatorOf(const std::wstring& inPath)
{
    const std::size_t at = inPath.find_first_of(kSeparators);
    return at == std::wstring::npos ? L'/' : inPath[at];
}

} // namespace

std::wstring GetFullDirectoryPart(const std::wstring& inPath)
{
    const std::size_t separator = inPath.find_last_of(kSeparators);
    if (separator == std::wstring::npos) {
        return {};
    }
    // A root keeps its separator ("/", "D:\\"): without it "D:" names the drive's current folder.
    const bool driveRoot = separator == 2 && inPath[1] == L':';
    return separator == 0 || driveRoot ? inPath.substr(0, separator + 1) : inPath.substr(0, separator);
}

bool IsDirectory(const std::wstring& inPath)
{
    std::error_code error;
    return !inPath.empty() && std::filesystem::is_directory(NativePath(inPath), error);
}

std::wstring CombinePaths(const std::wstring& inBase, const std::wstring& inRelative)
{
    PathSteps combined = SplitPath(inBase);
    for (const std::wstring& step : SplitPath(inRelative).steps) {
        if (step == L"..") {
            if (!combined.steps.empty()) {
                combined.steps.pop_back();
            }
        } else if (step != L".") {
            combined.steps.push_back(step);
        }
    }
    const wchar_t separator = SeparatorOf(inBase);
    std::wstring path = combined.root;
    if (!path.empty() && !IsSeparator(path.back()) && RootLength(inBase) < inBase.size()) {
        path += separator;
    }
    for (std::size_t i = 0; i < combined.steps.size(); ++i) {
        path += (i == 0 ? L"" : std::wstring(1, separator)) + combined.steps[i];
    }
    return path;
}

bool ArePathsRelative(const std::wstring& inFrom, const std::wstring& inTo, std::wstring& outRelative)
{
    const PathSteps from = SplitPath(GetFullDirectoryPart(inFrom));
    const PathSteps to = SplitPath(inTo);
    if (!IsAbsolute(from.root) || !SameRoot(from.root, to.root) || to.steps.empty()) {
        return false;
    }
    std::size_t common = 0;
    while (common < from.steps.size() && common + 1 < to.steps.size() && from.steps[common] == to.steps[common]) {
        ++common;
    }
    const wchar_t separator = SeparatorOf(inTo);
    std::wstring relative;
    for (std::size_t i = common; i < from.steps.size(); ++i) {
        relative += L"..";
        relative += separator;
    }
    for (std::size_t i = common; i < to.steps.size(); ++i) {
        relative += to.steps[i] + (i + 1 < to.steps.size() ? std::wstring(1, separator) : std::wstring());
    }
    outRelative = relative;
    return true;
}

bool ListFolderNames(const std::wstring& inFolder, std::vector<std::wstring>& outNames)
{
    // readdir rather than a directory iterator: the search lists thousands of names and needs
    // nothing but the names.
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(NativePath(inFolder).c_str()), closedir);
    if (!folder) {
        return false;
    }
    outNames.clear();
    errno = 0;
    while (const dirent* entry = readdir(folder.get())) {
        const std::string_view name(entry->d_name);
        if (name == "." || name == "..") {
            continue;
        }
        if (std::all_of(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
            outNames.emplace_back(name.begin(), name.end());
        } else {
            outNames.push_back(QFile::decodeName(entry->d_name).toStdWString());
        }
    }
    return errno == 0;
}

std::wstring GetFilePart(const std::wstring& inPath)
{
    const std::size_t separator = inPath.find_last_of(L"\\/");
    return separator == std::wstring::npos ? inPath : inPath.substr(separator + 1);
}

bool IsValidFileName(const std::wstring& inName)
{
    if (inName.find_first_not_of(L" \t") == std::wstring::npos) {
        return false;
    }
    const bool forbidden = std::any_of(inName.begin(), inName.end(), [](wchar_t c) {
        return c < 0x20 || c == 0x7F || kForbiddenCharacters.find(c) != std::wstring_view::npos;
    });
    if (forbidden || inName.back() == L'.' || inName.back() == L' ' || IsReservedDeviceName(inName)) {
        return false;
    }
    return static_cast<std::size_t>(QString::fromStdWString(inName).toUtf8().size()) <= kMaxFileNameBytes;
}

bool IsSameFile(const std::wstring& inFirst, const std::wstring& inSecond)
{
    std::error_code error;
    return std::filesystem::equivalent(std::filesystem::path(inFirst), std::filesystem::path(inSecond), error);
}

bool IsValidPath(const std::wstring& inPath)
{
    return !inPath.empty() && inPath.find(L'\0') == std::wstring::npos &&
           std::filesystem::path(inPath).is_absolute();
}

std::wstring ToNormalizedPath(const std::wstring& inPath)
{
    if (inPath.empty()) {
        return {};
    }
    const QString path = QString::fromStdWString(inPath);
    return QDir::cleanPath(QDir::isAbsolutePath(path) ? path : QDir::current().absoluteFilePath(path)).toStdWString();
}

std::wstring GetExtensionPart(const std::wstring& inPath)
{
    const std::wstring file = GetFilePart(inPath);
    const std::size_t dot = file.find_last_of(L'.');
    return dot == std::wstring::npos ? std::wstring() : file.substr(dot);
}

} // namespace PathUtils

namespace DiskUtils {

std::wstring MakeDiskSpaceString(std::uint64_t inBytes)
{
    return QLocale().formattedDataSize(static_cast<qint64>(std::min<std::uint64_t>(inBytes, std::numeric_limits<qint64>::max())), 1,
                                       QLocale::DataSizeTraditionalFormat)
        .toStdWString();
}

std::uint64_t GetFreeSpace(const std::wstring& inPath)
{
    const QStorageInfo volume(QString::fromStdWString(inPath));
    return volume.isValid() && volume.bytesAvailable() > 0 ? static_cast<std::uint64_t>(volume.bytesAvailable()) : 0;
}

} // namespace DiskUtils

Directory Directory::ConstructDirectory(const std::wstring& inPath) { return Directory(inPath); }

bool Directory::Exists() const { return PathUtils::IsDirectory(mPath); }

// Asking the file system for permission bits misjudges read-only mounts and access lists:
// creating a file is the answer.
bool Directory::IsDirectoryWriteable() const
{
    if (!Exists()) {
        return false;
    }
    QTemporaryFile probe(QDir(QString::fromStdWString(mPath)).filePath(QStringLiteral(".tarvix-write-check-XXXXXX")));
    return probe.open();
}

} // namespace KOR
