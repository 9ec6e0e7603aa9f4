#pragma once

#include "host/core/card.h"
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
    /// in place first. Throws `HostError` for a scenario, a module or a scan that fails.
    Session(const Machine& machine, const std::filesystem::path& programFolder, const std::string& module);

    [[nodiscard]] core::Module& module() const { return library_.module(); }
    [[nodiscard]] const Machine& machine() const { return machine_; }
    [[nodiscard]] const std::vector<Card>& cards() const { return cards_; }

    /// What the scan told of each card, without any hold on the module.
    [[nodiscard]] std::vector<core::DeviceRecord> records() const;

    /// The file name of the first of Direct3D's libraries that cannot be loaded; nothing if all can.
    [[nodiscard]] static std::optional<std::string> missingDirect3dLibrary();

private:
    Machine machine_;
    ModuleLibrary library_;
    // The weak references in them hold memory of the module: they go before it is unloaded.
    std::vector<Card> cards_;
};

} // namespace vexil::host
