#include "utils/interaction/stop_watch.h"

#include "utils/interaction/test_context.h"

#include <chrono>
#include <utility>

namespace vexil::utils {

StopWatch::StopWatch(const TestContext* context, std::function<void()> stopped) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [context, stopped = std::move(stopped)] {
        if (context != nullptr && context->isCancelled()) {
            stopped();
        }
    });
    timer_.start(std::chrono::seconds(1));
}

} // namespace vexil::utils
