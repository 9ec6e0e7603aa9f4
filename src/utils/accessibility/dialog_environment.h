#pragma once

#include "core/library_loader.h"
#include "platform/desktop.h"

#include <string>

namespace vexil::utils::accessibility {

/// Everything that the dialogs take from outside, so that tests can put a world of their own in its place.
class DialogEnvironment {
public:
    virtual ~DialogEnvironment() = default;
    [[nodiscard]] virtual platform::Desktop& desktop();
    /// The suite's loader.
    [[nodiscard]] virtual Module* loader();
    /// The application's stylesheet, UTF-8.
    [[nodiscard]] virtual std::string stylesheet();
    /// UTF-8; may be missing still. Empty if the suite has none.
    [[nodiscard]] virtual std::string temporaryFolder();
};

[[nodiscard]] DialogEnvironment& dialogEnvironment();

/// Puts `environment` in the place of the one before for as long as it lives itself. GUI thread only.
class DialogEnvironmentOverride {
public:
    explicit DialogEnvironmentOverride(DialogEnvironment& environment);
    DialogEnvironmentOverride(const DialogEnvironmentOverride&) = delete;
    DialogEnvironmentOverride& operator=(const DialogEnvironmentOverride&) = delete;
    ~DialogEnvironmentOverride();

private:
    DialogEnvironment* previous_;
};

} // namespace vexil::utils::accessibility
