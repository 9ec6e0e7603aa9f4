#pragma once

#include <cstdint>

namespace vexil::core {

/// What one run of a test says about the card. The numbers are the contract with the host.
/// Only a wrong value read back from the card is `Failed`: an interface that refuses to work says nothing
/// about the hardware, and leaves the run `NotCompleted`.
struct TestResult {
    static constexpr std::uint8_t DeviceUnavailable = 0; ///< the device is gone; no message was sent
    static constexpr std::uint8_t Passed = 1;
    static constexpr std::uint8_t CleanupFailed =
        2; ///< GPU memory could not be released, the outcome is void
    static constexpr std::uint8_t Failed = 3;
    static constexpr std::uint8_t NotSupported = 4;
    static constexpr std::uint8_t NotCompleted = 5; ///< stopped without a verdict

    TestResult() = delete;
};

} // namespace vexil::core
