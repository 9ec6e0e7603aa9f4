#pragma once

#include "core/shared_api.h"

#include <cstddef>
#include <cstdint>

/// What both PCI operations of the driver service take.
struct PciConfigRequest {
    std::uint64_t bus = 0;
    std::uint32_t device = 0;
    std::uint32_t function = 0;
    std::uint32_t offset = 0;       ///< of the register in configuration space
    std::uint32_t width = 0;        ///< in bytes
    std::uint32_t* value = nullptr; ///< for writes only
};
static_assert(offsetof(PciConfigRequest, device) == 8);
static_assert(offsetof(PciConfigRequest, width) == 20);
static_assert(offsetof(PciConfigRequest, value) == 24);

/// The suite's driver service, through which registers are reached that only kernel code may touch. Its 30
/// slots are the interface of a closed library, so their order is fixed; this system uses four of them. The
/// operations answer 0 for success.
class VEXIL_SHARED_API VXKService {
public:
    VXKService();
    VXKService(const VXKService& other);
    VXKService& operator=(const VXKService& other);
    virtual ~VXKService();

    /// Not 0 when the driver is usable.
    virtual std::int32_t isReady() = 0;
    virtual std::int32_t readPciConfig(const PciConfigRequest& request, std::uint32_t* result) = 0;
    virtual std::int32_t writePciConfig(const PciConfigRequest& request) = 0;
    virtual void reserved4() = 0;
    virtual void reserved5() = 0;
    virtual std::int32_t readMsr(std::uint32_t reg, std::uint64_t* result) = 0;
    virtual void reserved7() = 0;
    virtual void reserved8() = 0;
    virtual void reserved9() = 0;
    virtual void reserved10() = 0;
    virtual void reserved11() = 0;
    virtual void reserved12() = 0;
    virtual void reserved13() = 0;
    virtual void reserved14() = 0;
    virtual void reserved15() = 0;
    virtual void reserved16() = 0;
    virtual void reserved17() = 0;
    virtual void reserved18() = 0;
    virtual void reserved19() = 0;
    virtual void reserved20() = 0;
    virtual void reserved21() = 0;
    virtual void reserved22() = 0;
    virtual void reserved23() = 0;
    virtual void reserved24() = 0;
    virtual void reserved25() = 0;
    virtual void reserved26() = 0;
    virtual void reserved27() = 0;
    virtual void reserved28() = 0;
    virtual void reserved29() = 0;
};

/// What the service's library exports.
using CreateVXKServiceFunction = VXKService* (*)();
using DestroyVXKServiceFunction = void (*)(VXKService*);
