#pragma once

namespace vexil::tests {

/// Makes sure that the process has a display: that of the user, or a virtual one that lives as long as the
/// process. To be called before the first use of Direct3D or Qt. False if there is neither.
[[nodiscard]] bool provideDisplay();

} // namespace vexil::tests
