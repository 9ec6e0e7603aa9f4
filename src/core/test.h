#pragma once

#include "core/test_descriptor.h"
#include "core/test_result.h"
#include "core/test_run_arguments.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vexil::core {

class Device;

/// A diagnostic that the host can run on one device. An object knows no device until it is run.
class Test {
public:
    struct ParameterEntry {
        std::string key;
        TestParameter* parameter; ///< owned by the test that embeds it
    };

    explicit Test(TestDescriptor descriptor);
    Test(const Test&) = delete;
    Test& operator=(const Test&) = delete;
    virtual ~Test() = default;

    /// Runs the test to its end on the calling thread and returns a `TestResult`. Failures of the hardware or
    /// of an interface come back as result and message, never as an exception.
    virtual std::uint8_t execute(const TestRunArguments& arguments) = 0;
    /// True would keep any other exclusive test from running meanwhile. No test of this module asks for it.
    [[nodiscard]] virtual bool requiresExclusiveRun() const { return false; }
    [[nodiscard]] virtual std::uint32_t expectedDurationMinutes() const { return 1; }
    /// Whether the test is offered for `device`. `holder` keeps the device alive during the question.
    [[nodiscard]] virtual bool isSupported(Device* device, std::shared_ptr<Device> holder) const = 0;

    [[nodiscard]] std::int32_t id() const { return descriptor_.id; }
    [[nodiscard]] const TestDescriptor& descriptor() const { return descriptor_; }
    /// In the order in which they were added.
    [[nodiscard]] const std::vector<ParameterEntry>& parameters() const { return parameters_; }

protected:
    /// Registers a parameter under its own key. The parameter must live as long as the test.
    void addParameter(TestParameter* parameter);

private:
    TestDescriptor descriptor_;
    std::vector<ParameterEntry> parameters_;
};

} // namespace vexil::core
