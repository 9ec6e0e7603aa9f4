#pragma once

#include "host/fake_module/fake_module.h"

namespace vexil::host::tests {

/// The fake module with healthy cards, whose two stress tests put questions to the GUI thread.
class AskingModule final : public FakeModule {
public:
    AskingModule() : FakeModule(FakeCase::Healthy) {}

    [[nodiscard]] std::unique_ptr<core::Test> createTest(std::int32_t id) const override;
};

/// What the tests report, each with a value behind ": ".
namespace said {
inline constexpr const char* thread = "THREAD"; ///< "gui" or "worker": where the widget was shown
inline constexpr const char* parent = "PARENT"; ///< the accessible name of the host's window
inline constexpr const char* title = "TITLE";   ///< a translated key
inline constexpr const char* answer = "ANSWER"; ///< to a dialog
inline constexpr const char* stoppedAfter =
    "STOPPED_AFTER"; ///< milliseconds from the interrupt to the answer
} // namespace said

} // namespace vexil::host::tests
