#include "driver_service.h"
#include "driver_service_base.h"

namespace vexil::driver_service {

namespace {

constexpr std::int32_t failed = 1;

/// A stand-in brings no driver for the kernel with it, so it is never ready.
class NoDriver final : public DriverServiceBase {
public:
    std::int32_t isReady() override { return 0; }
    std::int32_t readPciConfig(const PciConfigRequest&, std::uint32_t*) override { return failed; }
    std::int32_t writePciConfig(const PciConfigRequest&) override { return failed; }
    std::int32_t readMsr(std::uint32_t, std::uint64_t*) override { return failed; }
};

} // namespace

std::unique_ptr<VXKService> makeService() { return std::make_unique<NoDriver>(); }

} // namespace vexil::driver_service
