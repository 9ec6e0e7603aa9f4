#pragma once

#include <cstddef>
#include <cstdint>

// A Vulkan and a DXGI for tests: adapters that the two tell of as DXVK and its driver would.
namespace vexil::tests {

/// Handles of Vulkan are only passed on, so these stand for what they mean.
inline constexpr std::uintptr_t standInInstance = 0x1000;
inline constexpr std::uintptr_t cardWithAddress = 1;    ///< 0000:0a:00.0
inline constexpr std::uintptr_t cardWithoutAddress = 2; ///< its driver lacks the extension

/// The function of the DXGI, by name, that tells what it handed out.
struct GraphicsObjects {
    int factoriesMade = 0;
    int objectsAlive = 0; ///< of any kind, that nobody has released
};
inline constexpr const char* graphicsObjectsFunction = "VexilGraphicsObjects";
using GraphicsObjectsFunction = GraphicsObjects (*)();

} // namespace vexil::tests
