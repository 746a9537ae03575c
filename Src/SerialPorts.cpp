#include "DLG/SerialPorts.h"

#include <algorithm>
#include <array>
#include <cwctype>

namespace DLG::SerialPorts {

namespace {

struct TtyFamily {
    const char* prefix;
    unsigned long firstPort;
};

// Blocks of 32 numbers per kind of device, so that a USB adapter plugged in later does not
// move the numbers of the ports already set up.
constexpr std::array<TtyFamily, 3> kTtyFamilies = {{{"ttyS", 1}, {"ttyUSB", 33}, {"ttyACM", 65}}};
constexpr unsigned long kPortsPerFamily = 32;

bool IsDigit(wchar_t inChar) { return inChar >= L'0' && inChar <= L'9'; }

std::wstring Widened(const std::string& inText) { return std::wstring(inText.begin(), inText.end()); }

} // namespace

std::optional<unsigned long> ComPortNumber(const std::wstring& inName)
{
    if (inName.size() < 4 || !IsDigit(inName[3])) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < 3; ++i) {
        if (static_cast<wchar_t>(std::towupper(static_cast<wint_t>(inName[i]))) != L"COM"[i]) {
            return std::nullopt;
        }
    }
    unsigned long number = 0;
    for (std::size_t i = 3; i < inName.size() && IsDigit(inName[i]); ++i) {
        number = number * 10 + static_cast<unsigned long>(inName[i] - L'0');
    }
    return number;
}

std::optional<unsigned long> PortNumberOfTty(const std::string& inSysName)
{
    for (const TtyFamily& family : kTtyFamilies) {
        const std::string prefix = family.prefix;
        if (inSysName.size() <= prefix.size() || inSysName.compare(0, prefix.size(), prefix) != 0) {
            continue;
        }
        const std::string digits = inSysName.substr(prefix.size());
        if (digits.size() > 2 ||
            !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) {
            return std::nullopt;
        }
        unsigned long index = 0;
        for (const char digit : digits) {
            index = index * 10 + static_cast<unsigned long>(digit - '0');
        }
        if (index >= kPortsPerFamily) {
            return std::nullopt;
        }
        return family.firstPort + index;
    }
    return std::nullopt;
}

std::vector<Port> PortsFromTtyDevices(const std::vector<TtyDevice>& inDevices)
{
    std::vector<Port> ports;
    for (const TtyDevice& device : inDevices) {
        const std::optional<unsigned long> number = PortNumberOfTty(device.sysName);
        if (!number || !device.hasParent || device.uartType == "0") {
            continue;
        }
        ports.push_back({L"COM" + std::to_wstring(*number) + L" (" + Widened(device.devNode) + L")", *number});
    }
    std::sort(ports.begin(), ports.end(), [](const Port& a, const Port& b) { return a.number < b.number; });
    return ports;
}

#if defined(__linux__)
std::vector<Port> EnumeratePorts() { return PortsFromTtyDevices(ListTtyDevices()); }
#elif !defined(_WIN32)
std::vector<Port> EnumeratePorts() { return {}; }
#endif

} // namespace DLG::SerialPorts
