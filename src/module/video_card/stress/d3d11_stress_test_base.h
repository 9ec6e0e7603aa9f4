#pragma once

#include "core/test.h"
#include "utils/parameters/test_parameter_duration_timeout.h"

#include <cstdint>

namespace vexil::module::video_card {

/// A test that runs for a set time.
class D3D11StressTestBase : public core::Test {
public:
    /// In whole minutes: half a minute is announced as 0.
    [[nodiscard]] std::uint32_t expectedDurationMinutes() const override;

protected:
    explicit D3D11StressTestBase(core::TestDescriptor descriptor);

    /// The duration as it is set now.
    [[nodiscard]] std::uint64_t durationSeconds() const;

private:
    utils::TestParameterDurationTimeout duration_;
};

} // namespace vexil::module::video_card
