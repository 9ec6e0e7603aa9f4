#include "host/core/session.h"

#include "host/core/simulated_machine.h"
#include "host/core/utf8_path.h"
#include "host/platform/libraries.h"

namespace vexil::host {

namespace {

/// The file to load, on a machine that is in place.
std::filesystem::path prepare(const Machine& machine, const std::filesystem::path& programFolder,
                              const std::string& module) {
    if (machine.simulated) {
        const SimulatedMachine inPlace(programFolder, machine.scenario);
    }
    return module.empty() ? programFolder / platform::moduleFileName() : pathFromUtf8(module);
}

} // namespace

Session::Session(const Machine& machine, const std::filesystem::path& programFolder,
                 const std::string& module, const Direct3dProbe& direct3dProbe)
    : machine_(machine), library_(prepare(machine, programFolder, module), !module.empty()),
      cards_(scanCards(library_.module())), missingDirect3d_(direct3dProbe()) {}

std::vector<core::DeviceRecord> Session::records() const {
    std::vector<core::DeviceRecord> records;
    for (const auto& card : cards_) {
        records.push_back(card.record);
    }
    return records;
}

} // namespace vexil::host
