#pragma once

#include <optional>
#include <string>

namespace vexil::tests {

/// An X server without a screen of glass, for as long as the object lives, and no longer than the process.
/// Linux only.
class VirtualDisplay {
public:
    /// `geometry` as "1280x1024x24".
    explicit VirtualDisplay(const std::string& geometry);
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;
    ~VirtualDisplay();

    /// As DISPLAY takes it; nothing where no server could be started.
    [[nodiscard]] const std::optional<std::string>& name() const { return name_; }

private:
    int server_ = -1;
    std::optional<std::string> name_;
};

/// Makes sure that the process has a display: that of the user, or a virtual one that lives as long as the
/// process. To be called before the first use of Direct3D or Qt. False if there is neither.
[[nodiscard]] bool provideDisplay();

} // namespace vexil::tests
