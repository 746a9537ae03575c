// The terminal devices of the device tree, through libudev.

#include <libudev.h>

#include <memory>

#include "DLG/SerialPorts.h"

namespace DLG::SerialPorts {

namespace {

struct UdevDeleter {
    void operator()(udev* inUdev) const { udev_unref(inUdev); }
    void operator()(udev_enumerate* inEnumerate) const { udev_enumerate_unref(inEnumerate); }
    void operator()(udev_device* inDevice) const { udev_device_unref(inDevice); }
};

std::string Text(const char* inText) { return inText ? inText : ""; }

} // namespace

std::vector<TtyDevice> ListTtyDevices()
{
    std::vector<TtyDevice> devices;
    const std::unique_ptr<udev, UdevDeleter> context(udev_new());
    if (!context) {
        return devices;
    }
    const std::unique_ptr<udev_enumerate, UdevDeleter> enumerate(udev_enumerate_new(context.get()));
    if (!enumerate || udev_enumerate_add_match_subsystem(enumerate.get(), "tty") < 0 ||
        udev_enumerate_scan_devices(enumerate.get()) < 0) {
        return devices;
    }
    udev_list_entry* entry = nullptr;
    udev_list_entry_foreach(entry, udev_enumerate_get_list_entry(enumerate.get()))
    {
        const std::unique_ptr<udev_device, UdevDeleter> device(
            udev_device_new_from_syspath(context.get(), udev_list_entry_get_name(entry)));
        if (!device) {
            continue;
        }
        // The parent belongs to the device and is not released on its own.
        devices.push_back({Text(udev_device_get_sysname(device.get())), Text(udev_device_get_devnode(device.get())),
                           udev_device_get_parent(device.get()) != nullptr,
                           Text(udev_device_get_sysattr_value(device.get(), "type"))});
    }
    return devices;
}

} // namespace DLG::SerialPorts
