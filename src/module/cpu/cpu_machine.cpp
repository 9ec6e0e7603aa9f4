#include "module/cpu/cpu_machine.h"

#include "platform/driver_service_library.h"
#include "platform/processor_cim.h"
#include "platform/shared_library.h"

namespace vexil::module::cpu {

namespace {

class SystemCpuMachine final : public CpuMachine {
public:
    platform::CpuidRegisters cpuid(std::uint32_t leaf) override { return platform::cpuid(leaf); }
    std::unique_ptr<system::Cim> makeCim() override { return platform::makeProcessorCim(); }
    void* openDriverService() override { return platform::openDriverServiceLibrary(); }
    void* resolve(void* library, const char* symbol) override {
        return platform::librarySymbol(library, symbol);
    }
    void release(void* library) override { platform::closeLibrary(library); }
};

} // namespace

CpuMachine& systemCpuMachine() {
    static SystemCpuMachine machine;
    return machine;
}

} // namespace vexil::module::cpu
