#pragma once

#include "simulated/scenario/nvapi_section.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace vexil::simulated {

struct Scenario;

/// The GPUs that the stand-in of NVAPI tells of, and how it behaves.
struct NvapiMachine {
    NvapiSection library;
    std::vector<NvapiCardSection> gpus;
};

[[nodiscard]] NvapiMachine nvapiMachineOf(const Scenario& scenario);

/// Puts a machine in place for the functions handed out, those already handed out included. From any thread.
void setNvapiMachine(NvapiMachine machine);

/// `nvapi_QueryInterface`: a function by its id, or null for one that is unknown or that the machine's NVAPI
/// is to lack.
[[nodiscard]] void* queryNvapi(std::uint32_t functionId);

} // namespace vexil::simulated
