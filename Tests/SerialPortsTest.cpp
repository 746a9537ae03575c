// The COM name rule, the Linux device-to-port rule and the port list of a faked device tree.

#include <gtest/gtest.h>

#include "DLG/SerialPorts.h"

namespace {

using DLG::SerialPorts::TtyDevice;

TEST(SerialPorts, ComNamesAreAcceptedByTheirFirstFourCharacters)
{
    const struct {
        const wchar_t* name;
        std::optional<unsigned long> number;
    } cases[] = {
        {L"COM1", 1},       {L"com12", 12},   {L"COM3 ", 3},      {L"cOm7x", 7},  {L"COM255", 255},
        {L"COM", std::nullopt}, {L"COMx1", std::nullopt}, {L"LPT1", std::nullopt}, {L"", std::nullopt},
        {L"CON1", std::nullopt}, {L" COM1", std::nullopt},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(DLG::SerialPorts::ComPortNumber(c.name), c.number) << std::wstring(c.name).size();
    }
}

TEST(SerialPorts, LinuxDevicesMapToPortNumbersByFamily)
{
    const struct {
        const char* sysName;
        std::optional<unsigned long> number;
    } cases[] = {
        {"ttyS0", 1},    {"ttyS3", 4},     {"ttyS31", 32},   {"ttyUSB0", 33},  {"ttyUSB31", 64},
        {"ttyACM0", 65}, {"ttyACM2", 67},  {"ttyS32", std::nullopt}, {"ttyUSB100", std::nullopt},
        {"ttyS", std::nullopt}, {"ttySx", std::nullopt}, {"tty0", std::nullopt}, {"ttyprintk", std::nullopt},
        {"ttyAMA0", std::nullopt}, {"ttyS-1", std::nullopt},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(DLG::SerialPorts::PortNumberOfTty(c.sysName), c.number) << c.sysName;
    }
}

TEST(SerialPorts, FakedDeviceTreeListsThePresentPortsByNumber)
{
    const std::vector<TtyDevice> tree = {
        {"ttyUSB1", "/dev/ttyUSB1", true, ""},
        {"tty0", "/dev/tty0", false, ""},          // a virtual console
        {"ttyS1", "/dev/ttyS1", true, "0"},        // a legacy port where no UART answers
        {"ttyS0", "/dev/ttyS0", true, "4"},        // a 16550A
        {"ttyACM0", "/dev/ttyACM0", true, ""},
        {"ptmx", "/dev/ptmx", false, ""},
        {"ttyS2", "/dev/ttyS2", false, "4"},       // no device behind it
        {"ttyAMA0", "/dev/ttyAMA0", true, "0"},
    };
    const std::vector<DLG::SerialPorts::Port> ports = DLG::SerialPorts::PortsFromTtyDevices(tree);
    ASSERT_EQ(ports.size(), 3U);
    EXPECT_EQ(ports[0].name, L"COM1 (/dev/ttyS0)");
    EXPECT_EQ(ports[0].number, 1U);
    EXPECT_EQ(ports[1].name, L"COM34 (/dev/ttyUSB1)");
    EXPECT_EQ(ports[1].number, 34U);
    EXPECT_EQ(ports[2].name, L"COM65 (/dev/ttyACM0)");
    EXPECT_EQ(ports[2].number, 65U);
    EXPECT_TRUE(DLG::SerialPorts::PortsFromTtyDevices({}).empty()) << "no port present";
}

} // namespace
