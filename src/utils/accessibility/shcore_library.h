#pragma once

#include "core/library_loader.h"

#include <cstdint>
#include <optional>

namespace vexil::utils::accessibility {

/// "shcore.dll", which knows the resolution of each monitor. Where it is missing, nothing is known.
class ShcoreLibrary {
public:
    explicit ShcoreLibrary(Module& loader);
    ShcoreLibrary(const ShcoreLibrary&) = delete;
    ShcoreLibrary& operator=(const ShcoreLibrary&) = delete;
    ~ShcoreLibrary();

    /// Without this, Windows tells the process one resolution for all monitors. A refusal is ignored: someone
    /// has decided it before.
    void makeProcessPerMonitorAware();
    /// The effective horizontal resolution.
    [[nodiscard]] std::optional<std::int32_t> dpiOf(void* monitor);

private:
    Module& loader_;
    void* library_;
};

} // namespace vexil::utils::accessibility
