#pragma once

#include <optional>
#include <string>
#include <vector>

namespace DLG::SerialPorts {

// A serial port as the set-up dialog lists it: the text shown and the number the settings
// record keeps (the digits after "COM").
struct Port {
    std::wstring name;
    unsigned long number;
};

// A port name in the COM form: "COM" in any case, then at least one character of which the
// first is a decimal digit. The number is read from the leading digits ("COM3 " is 3).
std::optional<unsigned long> ComPortNumber(const std::wstring& inName);

// A terminal device as the system's device tree describes it.
struct TtyDevice {
    std::string sysName;  // "ttyS0", "ttyUSB1"
    std::string devNode;  // "/dev/ttyS0"
    bool hasParent;       // backed by a device (a UART, a USB adapter), not a virtual terminal
    std::string uartType; // the serial core's "type" attribute; "0" when no UART answers
};

// The COM number of a Linux serial device: ttyS<n> is COM(n+1), ttyUSB<n> COM(33+n),
// ttyACM<n> COM(65+n), for n from 0 to 31. Other names have none.
std::optional<unsigned long> PortNumberOfTty(const std::string& inSysName);

// The ports among inDevices that are present and have a COM number, by number.
std::vector<Port> PortsFromTtyDevices(const std::vector<TtyDevice>& inDevices);

// The machine's present serial ports; empty when none. On Windows in the order the system
// gives them, on Linux by port number.
std::vector<Port> EnumeratePorts();

#if defined(__linux__)
// The terminal devices of the device tree (libudev).
std::vector<TtyDevice> ListTtyDevices();
#endif

} // namespace DLG::SerialPorts
