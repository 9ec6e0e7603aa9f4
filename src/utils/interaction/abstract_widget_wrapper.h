#pragma once

#include <cstdint>

class QWidget;

namespace vexil::utils {
class InputRequestCloser;
}

/// Draws a whole interaction with widgets of its own, on the GUI thread.
class AbstractWidgetWrapper {
public:
    virtual ~AbstractWidgetWrapper() = default;
    /// Returns the answer when the interaction is over. `parent` is the host's window and may be null,
    /// `closer` can end a dialog after a delay, `dpi` is the resolution that the dialogs are scaled for.
    virtual std::uint32_t showWidget(QWidget* parent, vexil::utils::InputRequestCloser* closer,
                                     std::int32_t dpi) = 0;
};
