#pragma once

#include <memory>

namespace vexil::tests {

/// Makes sure that the process has a display on which Qt shows windows: that of the user, or where it has
/// none, as only Linux knows, a virtual one that lives as long as the process. To be called before the first
/// use of Direct3D or Qt. False if there is neither.
[[nodiscard]] bool provideDisplay();

/// For the programs that a test starts: on Linux a virtual display of 1920 by 1080 that nobody else uses, for
/// as long as the object lives; on Windows, which has one display for all, that one.
class OwnDisplay {
public:
    OwnDisplay();
    OwnDisplay(const OwnDisplay&) = delete;
    OwnDisplay& operator=(const OwnDisplay&) = delete;
    ~OwnDisplay();

    /// False where no virtual one could be started.
    [[nodiscard]] bool isThere() const;

private:
    struct Display;
    std::unique_ptr<Display> display_;
};

} // namespace vexil::tests
