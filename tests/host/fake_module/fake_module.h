#pragma once

#include "core/device.h"
#include "core/module.h"
#include "utils/general_diagnostic_dispatcher.h"

#include <memory>
#include <string>
#include <vector>

namespace vexil::host::tests {

/// What the module shows of its cards and tests.
enum class FakeCase {
    Scripted,     ///< two cards, and each test ends in another way
    Healthy,      ///< the same cards, and every test passes
    NoCards,      ///< nothing is found
    SameId,       ///< two cards with one id
    ScanThrows,   ///< the scan ends with an exception
    NoWorker,     ///< healthy, on a dispatcher whose pool is empty
    GivesNoModule ///< the export answers null
};

/// The case that the environment variable VEXIL_FAKE_MODULE names: "healthy", "no-cards", "same-id",
/// "scan-throws", "no-worker", "gives-no-module"; scripted for anything else.
[[nodiscard]] FakeCase fakeCaseOfProcess();

/// A card that supports everything, or everything without CUDA.
class FakeDevice final : public core::Device {
public:
    FakeDevice(const core::DeviceRecord& record, bool hasCuda);

    [[nodiscard]] std::string id() const override { return id_; }
    [[nodiscard]] std::string displayName() const override { return displayName_; }
    [[nodiscard]] bool hasUdi() const override { return udi_ != nullptr; }
    [[nodiscard]] std::string udi() const override { return udi_ ? *udi_ : std::string(); }
    [[nodiscard]] std::vector<core::KeyValue> properties() const override { return {}; }
    [[nodiscard]] std::vector<std::string> notices() const override { return record_.notices; }
    [[nodiscard]] bool isPresent() const override { return true; }
    void refresh() override {}

    [[nodiscard]] const core::DeviceRecord& record() const { return record_; }
    [[nodiscard]] bool hasCuda() const { return hasCuda_; }

private:
    core::DeviceRecord record_;
    bool hasCuda_;
};

/// A module with the catalogue of the real one, whose tests do what their row of the script says. Test 21 is
/// listed and not made.
class FakeModule : public core::Module {
public:
    explicit FakeModule(FakeCase fakeCase);

    [[nodiscard]] std::unique_ptr<core::Test> createTest(std::int32_t id) const override;
    [[nodiscard]] std::int32_t moduleId() const override { return 7; }
    [[nodiscard]] std::string shortName() const override { return "VC"; }
    [[nodiscard]] std::string nameKey() const override { return "VIDEO_CARD"; }
    [[nodiscard]] core::ModuleVersion moduleVersion() const override { return {5, 2, 0, ""}; }
    [[nodiscard]] std::shared_ptr<core::DeviceScanner> deviceScanner() const override { return scanner_; }
    [[nodiscard]] std::shared_ptr<core::DiagnosticDispatcher> dispatcher() const override {
        return dispatcher_;
    }
    void shutdown() override {}
    [[nodiscard]] std::vector<std::int32_t> testIds() const override;
    [[nodiscard]] std::vector<std::int32_t> toolIds() const override { return {}; }
    [[nodiscard]] std::string description() const override { return {}; }

private:
    FakeCase case_;
    std::shared_ptr<core::DeviceScanner> scanner_;
    std::shared_ptr<core::DiagnosticDispatcher> dispatcher_;
};

} // namespace vexil::host::tests
