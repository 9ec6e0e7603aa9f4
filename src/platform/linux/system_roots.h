#pragma once

#include <cstdlib>
#include <filesystem>

namespace vexil::platform {

/// Where a tree of the kernel's files stands: at its usual place, or where the environment variable says.
/// That is how the libraries over sysfs and procfs are shown another machine's files.
[[nodiscard]] inline std::filesystem::path systemRoot(const char* variable, const char* usual) {
    const char* value = std::getenv(variable);
    return value == nullptr || *value == '\0' ? usual : value;
}

inline std::filesystem::path sysfsRoot() { return systemRoot("VEXIL_SYSFS_ROOT", "/sys"); }
inline std::filesystem::path procfsRoot() { return systemRoot("VEXIL_PROC_ROOT", "/proc"); }
inline std::filesystem::path deviceRoot() { return systemRoot("VEXIL_DEV_ROOT", "/dev"); }

} // namespace vexil::platform
