#pragma once

#include "core/test_run_arguments.h"
#include "utils/interaction/test_context.h"

namespace vexil::utils::legacy {

/// What the arguments of a running test tell its dialogs: whether the user has stopped it. Everything else
/// that older dialogs ask is answered with nothing.
class Context final : public TestContext {
public:
    /// `arguments` may be null, and must live as long as the context otherwise.
    explicit Context(const core::TestRunArguments* arguments) : arguments_(arguments) {}

    [[nodiscard]] std::uint32_t unused1() const override { return 0; }
    [[nodiscard]] std::uint32_t unused2() const override { return 0; }
    [[nodiscard]] std::uint32_t unused3() const override { return 0; }
    [[nodiscard]] std::uint32_t unused4() const override { return 0; }
    [[nodiscard]] bool isCancelled() const override {
        return arguments_ != nullptr && arguments_->cancelRequested != nullptr &&
               *arguments_->cancelRequested != 0;
    }
    [[nodiscard]] std::uint32_t unused6() const override { return 0; }
    [[nodiscard]] std::map<std::string, std::string> values() const override { return {}; }
    [[nodiscard]] std::vector<std::string> entries() const override { return {}; }

private:
    const core::TestRunArguments* arguments_;
};

} // namespace vexil::utils::legacy
