// The present serial ports from SetupAPI's "Ports" class and each device's "PortName" value.

#include <windows.h>

#include <setupapi.h>

#include <vector>

#include "DLG/SerialPorts.h"

#pragma comment(lib, "setupapi.lib")

namespace DLG::SerialPorts {

namespace {

// The "PortName" value of one device; empty when its key or value cannot be read as a string.
std::wstring PortNameOf(HDEVINFO inDevices, SP_DEVINFO_DATA& inDevice)
{
    HKEY key = SetupDiOpenDevRegKey(inDevices, &inDevice, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_QUERY_VALUE);
    if (key == INVALID_HANDLE_VALUE) {
        return {};
    }
    // 256 characters for the value and one more for a terminator that the value may lack.
    wchar_t buffer[257] = {};
    DWORD type = 0;
    DWORD size = 256 * sizeof(wchar_t);
    const LONG status = RegQueryValueExW(key, L"PortName", nullptr, &type, reinterpret_cast<BYTE*>(buffer), &size);
    RegCloseKey(key);
    if (status != ERROR_SUCCESS || type != REG_SZ) {
        return {};
    }
    return std::wstring(buffer);
}

} // namespace

std::vector<Port> EnumeratePorts()
{
    std::vector<Port> ports;
    DWORD count = 0;
    SetupDiClassGuidsFromNameW(L"Ports", nullptr, 0, &count);
    if (count == 0) {
        return ports;
    }
    std::vector<GUID> classes(count);
    if (!SetupDiClassGuidsFromNameW(L"Ports", classes.data(), count, &count) || count == 0) {
        return ports;
    }
    HDEVINFO devices = SetupDiGetClassDevsW(&classes[0], nullptr, nullptr, DIGCF_PRESENT);
    if (devices == INVALID_HANDLE_VALUE) {
        return ports;
    }
    SP_DEVINFO_DATA device = {};
    device.cbSize = sizeof(device);
    for (DWORD index = 0; SetupDiEnumDeviceInfo(devices, index, &device); ++index) {
        const std::wstring name = PortNameOf(devices, device);
        if (const std::optional<unsigned long> number = ComPortNumber(name)) {
            ports.push_back({name, *number});
        }
    }
    SetupDiDestroyDeviceInfoList(devices);
    return ports;
}

} // namespace DLG::SerialPorts
