#pragma once

#include "host/core/gui.h"

#include <filesystem>
#include <memory>

namespace vexil::host {

/// The GUI in its library, which is loaded when a test needs it: with Qt comes Direct3D, and a simulated
/// machine must have put its own in place by then.
class LoadedGui final : public Gui {
public:
    /// The library stands in `programFolder`.
    explicit LoadedGui(std::filesystem::path programFolder) : programFolder_(std::move(programFolder)) {}

    [[nodiscard]] bool hasDisplay() const override;
    /// Throws `InternalError` naming what cannot be loaded.
    void run(bool visible, const Language& language, const std::string& translationContext,
             const Work& work) override;

private:
    std::filesystem::path programFolder_;
    std::unique_ptr<Gui> gui_;
};

} // namespace vexil::host
