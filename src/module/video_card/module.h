#pragma once

#include "core/module.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vexil::module::video_card {

class DeviceScanner;
class Machine;
class VideoCardDispatcher;

/// The module as the host gets it. Its worker threads run from the moment that it is made; nothing touches a
/// card until the host scans.
class Module final : public core::Module {
public:
    /// `hardwareThreads` as the standard library reports it, 0 if unknown.
    Module(Machine& machine, unsigned hardwareThreads);

    [[nodiscard]] std::unique_ptr<core::Test> createTest(std::int32_t id) const override;
    [[nodiscard]] std::int32_t moduleId() const override { return 7; }
    [[nodiscard]] std::string shortName() const override { return "VC"; }
    [[nodiscard]] std::string nameKey() const override;
    [[nodiscard]] core::ModuleVersion moduleVersion() const override;
    [[nodiscard]] std::shared_ptr<core::DeviceScanner> deviceScanner() const override;
    [[nodiscard]] std::shared_ptr<core::DiagnosticDispatcher> dispatcher() const override;
    void shutdown() override {}
    [[nodiscard]] std::vector<std::int32_t> testIds() const override { return testIds_; }
    [[nodiscard]] std::vector<std::int32_t> toolIds() const override { return {}; }
    [[nodiscard]] std::string description() const override { return {}; }

private:
    // Given back in the opposite order: the workers end before the devices that they may use.
    std::vector<std::int32_t> testIds_;
    std::shared_ptr<DeviceScanner> scanner_;
    std::shared_ptr<VideoCardDispatcher> dispatcher_;
};

} // namespace vexil::module::video_card
