#pragma once

#include <functional>

class QWidget;

namespace vexil::utils {

/// Runs the function on the application's thread and returns when it has ended; throws what it threw. Returns
/// without a call where there is no application, or where it ends before its event loop gets to the function.
void runOnGuiThread(const std::function<void()>& function);

/// Puts the window before all others, also for a process in the background. On the GUI thread.
void bringForward(QWidget& window);

} // namespace vexil::utils
