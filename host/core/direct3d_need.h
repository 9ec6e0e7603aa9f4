#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace vexil::host {

/// The file name of the first of Direct3D's libraries that cannot be loaded; nothing if all can.
[[nodiscard]] std::optional<std::string> missingDirect3dLibrary();

/// How the host asks that; tests put their own answer in its place.
using Direct3dProbe = std::function<std::optional<std::string>()>;

/// Whether the test of an id does its work through Direct3D. The video memory tests say that they support
/// every card, even on a machine without Direct3D, so the host must know by itself.
[[nodiscard]] bool needsDirect3d(std::int32_t testId);

} // namespace vexil::host
