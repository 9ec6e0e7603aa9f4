#include "register_files_linux.h"

#include "driver_service.h"
#include "platform/linux/system_roots.h"

#include <fcntl.h>
#include <sched.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace vexil::driver_service {

namespace fs = std::filesystem;

namespace {

constexpr std::int32_t succeeded = 0;
constexpr std::int32_t failed = 1;
constexpr std::uint32_t configurationSpace = 4096;

/// An open file; negative for one that the user may not open.
class File {
public:
    File(const fs::path& path, int mode) : descriptor_(open(path.c_str(), mode | O_CLOEXEC)) {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
    }

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    bool read(void* data, std::size_t size, std::uint32_t offset) const {
        return isOpen() && pread(descriptor_, data, size, offset) == static_cast<ssize_t>(size);
    }
    bool write(const void* data, std::size_t size, std::uint32_t offset) const {
        return isOpen() && pwrite(descriptor_, data, size, offset) == static_cast<ssize_t>(size);
    }

private:
    int descriptor_;
};

bool isValid(const PciConfigRequest& request) {
    const bool hasWidth = request.width == 1 || request.width == 2 || request.width == 4;
    return request.bus <= 0xFF && request.device <= 0x1F && request.function <= 7 && hasWidth &&
           request.offset <= configurationSpace - request.width && request.offset % request.width == 0;
}

} // namespace

fs::path RegisterFiles::msrFile(int processor) const {
    return deviceRoot_ / "cpu" / std::to_string(processor) / "msr";
}

fs::path RegisterFiles::configFile(const PciConfigRequest& request) const {
    char address[32];
    std::snprintf(address, sizeof(address), "0000:%02x:%02x.%x", static_cast<unsigned>(request.bus),
                  request.device, request.function);
    return sysRoot_ / "bus/pci/devices" / address / "config";
}

std::int32_t RegisterFiles::isReady() {
    // Everybody may read the beginning of the configuration space, only root may write to it.
    const bool ready =
        File(msrFile(0), O_RDONLY).isOpen() || File(configFile(PciConfigRequest{}), O_RDWR).isOpen();
    return ready ? 1 : 0;
}

std::int32_t RegisterFiles::readPciConfig(const PciConfigRequest& request, std::uint32_t* result) {
    std::uint32_t value = 0;
    if (result == nullptr || !isValid(request) ||
        !File(configFile(request), O_RDONLY).read(&value, request.width, request.offset)) {
        return failed;
    }
    *result = value;
    return succeeded;
}

std::int32_t RegisterFiles::writePciConfig(const PciConfigRequest& request) {
    const bool written =
        request.value != nullptr && isValid(request) &&
        File(configFile(request), O_WRONLY).write(request.value, request.width, request.offset);
    return written ? succeeded : failed;
}

std::int32_t RegisterFiles::readMsr(std::uint32_t reg, std::uint64_t* result) {
    std::uint64_t value = 0;
    // The number of the register is the place in the file.
    if (result == nullptr ||
        !File(msrFile(std::max(0, sched_getcpu())), O_RDONLY).read(&value, sizeof(value), reg)) {
        return failed;
    }
    *result = value;
    return succeeded;
}

std::unique_ptr<VXKService> makeService() {
    return std::make_unique<RegisterFiles>(platform::deviceRoot(), platform::sysfsRoot());
}

} // namespace vexil::driver_service
