#include "module/cpu/vxk_service_interface.h"

#include "module/cpu/cpu_machine.h"

namespace vexil::module::cpu {

VXKServiceInterface::VXKServiceInterface(CpuMachine& machine)
    : machine_(machine), library_(machine.openDriverService()) {
    if (library_ == nullptr) {
        return;
    }
    const auto create =
        reinterpret_cast<CreateVXKServiceFunction>(machine_.resolve(library_, "CreateVXKService"));
    service_ = create == nullptr ? nullptr : create();
}

VXKServiceInterface::~VXKServiceInterface() {
    if (library_ == nullptr) {
        return;
    }
    const auto destroy =
        reinterpret_cast<DestroyVXKServiceFunction>(machine_.resolve(library_, "DestroyVXKService"));
    if (destroy != nullptr) {
        // Also for a service that was not made: the library takes null, as it hands it out.
        destroy(service_);
    }
    machine_.release(library_);
}

bool VXKServiceInterface::isReady() { return service_ != nullptr && service_->isReady() != 0; }

std::int32_t VXKServiceInterface::readMsr(std::uint32_t reg, std::uint64_t& value) {
    return isReady() && service_->readMsr(reg, &value) == 0 ? succeeded : failed;
}

std::int32_t VXKServiceInterface::readPciConfig(const PciConfigRequest& request, std::uint32_t& value) {
    return isReady() && service_->readPciConfig(request, &value) == 0 ? succeeded : failed;
}

std::int32_t VXKServiceInterface::writePciConfig(const PciConfigRequest& request) {
    return isReady() && service_->writePciConfig(request) == 0 ? succeeded : failed;
}

} // namespace vexil::module::cpu
