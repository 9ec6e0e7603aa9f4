#pragma once

#include <cstdint>
#include <string>

namespace vexil::system {
class Cim;
}

namespace vexil::module::cpu {

class VXKServiceInterface;

struct AmdProcessor {
    std::int32_t family = 0;
    std::int32_t model = 0;
};

/// Out of a caption like "AMD64 Family 25 Model 33 Stepping 0". A number that is none, or does not fit, is 0.
/// Throws `std::runtime_error` without the words, and `std::out_of_range` where the caption ends with one.
[[nodiscard]] AmdProcessor parseCaption(const std::string& caption);

/// Asks the CIM repository for the caption of the first processor. Throws as `parseCaption` does, and
/// `std::runtime_error` if there is no answer.
[[nodiscard]] AmdProcessor lookUpAmdProcessor(system::Cim& cim);

using AmdReader = std::int32_t (*)(VXKServiceInterface& service, double& celsius);

/// How that processor's temperature is read. Throws `std::runtime_error` naming family and model for one
/// that is not known.
[[nodiscard]] AmdReader readerFor(const AmdProcessor& processor);

} // namespace vexil::module::cpu
