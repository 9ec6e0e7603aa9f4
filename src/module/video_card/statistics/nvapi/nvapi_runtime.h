#pragma once

#include "core/library_loader.h"
#include "module/video_card/statistics/nvapi/nvapi_access.h"

namespace vexil::module::video_card {

/// The two ways to NVAPI, both needed: the access layer serves the published functions, and each source loads
/// the library a second time for one function that the layer does not offer. Both outlive every source.
struct NvapiRuntime {
    NvapiAccess& access;
    ::Module& loader;
};

/// Over the display driver's library and the suite's loader. Lives as long as the process.
[[nodiscard]] const NvapiRuntime& systemNvapi();

} // namespace vexil::module::video_card
