#include <QString>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>

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

} // namespace

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

bool IsDirectory(const std::wstring& inPath)
{
    std::error_code error;
    return !inPath.empty() && std::filesystem::is_directory(std::filesystem::path(inPath), error);
}

bool IsValidPath(const std::wstring& inPath)
{
    return !inPath.empty() && inPath.find(L'\0') == std::wstring::npos &&
           std::filesystem::path(inPath).is_absolute();
}

std::wstring GetFullDirectoryPart(const std::wstring& inPath)
{
    const std::size_t separator = inPath.find_last_of(L"\\/");
    if (separator == std::wstring::npos) {
        return {};
    }
    return separator == 0 ? inPath.substr(0, 1) : inPath.substr(0, separator);
}

std::wstring GetExtensionPart(const std::wstring& inPath)
{
    const std::wstring file = GetFilePart(inPath);
    const std::size_t dot = file.find_last_of(L'.');
    return dot == std::wstring::npos ? std::wstring() : file.substr(dot);
}

} // namespace PathUtils

} // namespace KOR
