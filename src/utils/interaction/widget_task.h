#pragma once

#include "utils/interaction/input_request_closer.h"

#include <cstdint>
#include <utility>

class QWidget;

namespace vexil::utils {

/// What a test wants to be done on the GUI thread.
class WidgetTaskInterface {
public:
    virtual ~WidgetTaskInterface() = default;
    /// Returns the answer. `parent` is the host's window and may be null.
    virtual std::uint32_t show(QWidget* parent, InputRequestCloser* closer, std::int32_t dpi) = 0;
};

/// What a widget answers that threw: the test ends without a verdict.
inline constexpr std::uint32_t widgetThrew = 5;

template <typename Callable>
class WidgetTask final : public WidgetTaskInterface {
public:
    explicit WidgetTask(Callable callable) : callable_(std::move(callable)) {}

    std::uint32_t show(QWidget* parent, InputRequestCloser* closer, std::int32_t dpi) override {
        try {
            return callable_(parent, closer, dpi);
        } catch (...) {
            return widgetThrew;
        }
    }

private:
    Callable callable_;
};

} // namespace vexil::utils
