#pragma once

#include "platform/linux/kernel_graphics/drm_fdinfo.h"

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace vexil::platform {

/// Finds the open files of graphics drivers over all processes that the user may look into. Looking through
/// them all takes longer than a query may, so only the first call does that; each later one looks at the
/// processes that are new and at some of the others.
class DrmClients {
public:
    /// Open files that one call looks at, about.
    static constexpr std::size_t linksOfCall = 128;

    explicit DrmClients(std::filesystem::path procRoot) : procRoot_(std::move(procRoot)) {}

    /// Every client on the card of that PCI address, once for each client id.
    [[nodiscard]] std::vector<DrmFdInfo> read(const std::string& pciAddress);

private:
    void refresh();
    /// Answers how many links it looked at.
    std::size_t examine(unsigned process);

    std::filesystem::path procRoot_;
    std::map<unsigned, std::vector<std::filesystem::path>> files_; ///< fdinfo files by process
    unsigned lastExamined_ = 0;
    bool first_ = true;
};

} // namespace vexil::platform
