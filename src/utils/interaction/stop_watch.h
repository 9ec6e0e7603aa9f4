#pragma once

#include <QtCore/QTimer>

#include <functional>

class TestContext;

namespace vexil::utils {

/// Looks once a second whether the test has been stopped while a dialog is open. On the GUI thread.
class StopWatch {
public:
    /// Calls `stopped` at each look that finds a stop. Without a context there is none to be found.
    StopWatch(const TestContext* context, std::function<void()> stopped);

private:
    QTimer timer_;
};

} // namespace vexil::utils
