#pragma once

#include "core/vxk_service.h"

#include <cstdint>

namespace vexil::module::cpu {

class CpuMachine;

/// Owns the driver service and the library that it comes from. Where library, service or driver is missing,
/// every operation answers `failed`, and nothing is raised.
class VXKServiceInterface {
public:
    static constexpr std::int32_t succeeded = 0;
    static constexpr std::int32_t failed = 1;

    /// `machine` must outlive the object.
    explicit VXKServiceInterface(CpuMachine& machine);
    VXKServiceInterface(const VXKServiceInterface&) = delete;
    VXKServiceInterface& operator=(const VXKServiceInterface&) = delete;
    ~VXKServiceInterface();

    /// Whether the driver is usable now. Every other operation asks it first.
    [[nodiscard]] bool isReady();
    std::int32_t readMsr(std::uint32_t reg, std::uint64_t& value);
    std::int32_t readPciConfig(const PciConfigRequest& request, std::uint32_t& value);
    std::int32_t writePciConfig(const PciConfigRequest& request);

private:
    CpuMachine& machine_;
    void* library_ = nullptr;
    VXKService* service_ = nullptr;
};

} // namespace vexil::module::cpu
