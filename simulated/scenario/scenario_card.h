#pragma once

#include "simulated/scenario/adl_section.h"
#include "simulated/scenario/cuda_section.h"
#include "simulated/scenario/direct3d_section.h"
#include "simulated/scenario/kernel_graphics_section.h"
#include "simulated/scenario/nvapi_section.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vexil::simulated {

class FieldReader;

/// One card as the operating system of a simulated machine lists it.
struct ScenarioCard {
    std::string name;         ///< device description; may be empty
    std::string manufacturer; ///< may be empty
    std::string vendorId;     ///< four upper-case hexadecimal digits
    std::string deviceId;     ///< likewise
    std::string location;     ///< "bb:dd.f", lower-case hexadecimal
    bool hasInterface = true; ///< whether a display interface, and so a path and a LUID, exists
    std::uint64_t luid = 0;   ///< made up from the card's place in the scenario; never 0
    Direct3DSection direct3d;
    std::optional<CudaCardSection> cuda;   ///< nothing for a card that CUDA does not list
    std::optional<AdlCardSection> adl;     ///< only if ADL knows the card
    std::optional<NvapiCardSection> nvapi; ///< only if NVAPI knows the card
    KernelGraphicsSection kernelGraphics;

    /// The path of the card's display interface.
    [[nodiscard]] std::string devicePath() const;
    /// The location as the system writes it: "PCI bus 10, device 0, function 0".
    [[nodiscard]] std::string locationInformation() const;
};

/// Reads the identity fields of a card; `place` counts the cards of the scenario from 0.
[[nodiscard]] ScenarioCard readScenarioCard(FieldReader& reader, std::size_t place);

} // namespace vexil::simulated
