#pragma once

#include "platform/processor.h"
#include "system/cim/cim.h"

#include <cstdint>
#include <memory>

namespace vexil::module::cpu {

/// Everything outside the module that the processor's temperature is got from. Tests put a machine of their
/// own in its place.
class CpuMachine {
public:
    virtual ~CpuMachine() = default;
    virtual platform::CpuidRegisters cpuid(std::uint32_t leaf) = 0;
    virtual std::unique_ptr<system::Cim> makeCim() = 0;

    /// The library of the driver service, or null.
    virtual void* openDriverService() = 0;
    virtual void* resolve(void* library, const char* symbol) = 0;
    virtual void release(void* library) = 0;
};

/// The machine that the module runs on. Lives as long as the process.
[[nodiscard]] CpuMachine& systemCpuMachine();

} // namespace vexil::module::cpu
