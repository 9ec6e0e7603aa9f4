#pragma once

#include "host/core/card.h"
#include "host/core/direct3d_need.h"
#include "host/core/machine.h"
#include "host/core/module_library.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vexil::host {

/// A machine with the module at work on it: loaded, and the cards scanned once.
class Session {
public:
    /// `module` is the path of the module, empty for the one beside the program. A simulated machine is put
    /// in place first, and Direct3D is asked for last: what the module has loaded by then is what counts.
    /// Throws `HostError` for a scenario, a module or a scan that fails.
    Session(const Machine& machine, const std::filesystem::path& programFolder, const std::string& module,
            const Direct3dProbe& direct3dProbe = missingDirect3dLibrary);

    [[nodiscard]] core::Module& module() const { return library_.module(); }
    [[nodiscard]] const Machine& machine() const { return machine_; }
    [[nodiscard]] const std::vector<Card>& cards() const { return cards_; }

    /// What the scan told of each card, without any hold on the module.
    [[nodiscard]] std::vector<core::DeviceRecord> records() const;

    /// The library of Direct3D that this machine lacks; nothing if it has them. Tests that need it are not
    /// offered.
    [[nodiscard]] const std::optional<std::string>& missingDirect3d() const { return missingDirect3d_; }

private:
    Machine machine_;
    ModuleLibrary library_;
    // The weak references in them hold memory of the module: they go before it is unloaded.
    std::vector<Card> cards_;
    std::optional<std::string> missingDirect3d_;
};

} // namespace vexil::host
