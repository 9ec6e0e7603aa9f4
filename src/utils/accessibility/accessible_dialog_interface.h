#pragma once

namespace vexil::utils::accessibility {

/// Lets assistive technology see every `AccessibleDialogBase` of this process as the client area of a window.
/// Asked for by each dialog, done by the first.
void provideAccessibleInterfaces();

} // namespace vexil::utils::accessibility
