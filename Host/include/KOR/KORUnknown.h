#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include "KOR/HostAPI.h"

namespace KOR {

// Interfaces are identified by 16 bytes, compared as a whole.
using InterfaceID = std::array<std::uint8_t, 16>;

// The root of every reference-counted host object.
class HOST_API KORUnknown {
public:
    static const InterfaceID kIID;

    virtual std::uint32_t AddRef() = 0;
    virtual std::uint32_t Release() = 0;
    // On success *outObject holds an add-ref'd pointer to the asked interface.
    virtual bool QueryInterface(const InterfaceID& inID, void** outObject) = 0;

protected:
    virtual ~KORUnknown();
};

// Reference counting shared by host and test objects that implement KORUnknown interfaces.
template <class Interface>
class RefCounted : public Interface {
public:
    std::uint32_t AddRef() override { return mRefs.fetch_add(1, std::memory_order_relaxed) + 1; }
    std::uint32_t Release() override
    {
        const std::uint32_t left = mRefs.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0) {
            delete this;
        }
        return left;
    }
    bool QueryInterface(const InterfaceID& inID, void** outObject) override
    {
        if (inID == KORUnknown::kIID || inID == Interface::kIID) {
            AddRef();
            *outObject = static_cast<Interface*>(this);
            return true;
        }
        *outObject = nullptr;
        return false;
    }

private:
    std::atomic<std::uint32_t> mRefs{0};
};

} // namespace KOR
