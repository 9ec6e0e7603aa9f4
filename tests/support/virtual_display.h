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

} // namespace vexil::tests
