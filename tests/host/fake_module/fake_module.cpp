#include "host/fake_module/fake_module.h"

#include "host/fake_module/fake_tests.h"
#include "module/video_card/catalogue.h"

#include <cstdlib>
#include <stdexcept>
#include <string_view>

namespace vexil::host::tests {

namespace {

class FakeScanner final : public core::DeviceScanner {
public:
    explicit FakeScanner(FakeCase fakeCase) : case_(fakeCase) {}

    void scan(std::shared_ptr<core::DeviceScanListener> listener) override {
        devices_.clear();
        if (case_ == FakeCase::ScanThrows) {
            throw std::runtime_error("Unknown processor: Fake 9000");
        }
        if (case_ != FakeCase::NoCards) {
            devices_ = makeDevices();
        }
        for (const auto& device : devices_) {
            listener->deviceFound(device->record());
        }
        listener->scanFinished();
    }

    void checkPresence(std::shared_ptr<core::DeviceScanListener> listener) override {
        listener->presenceChecked(case_ != FakeCase::NoCards);
    }

    [[nodiscard]] std::weak_ptr<core::Device> findDevice(std::string id) const override {
        for (const auto& device : devices_) {
            if (device->id() == id) {
                return device;
            }
        }
        return {};
    }

    [[nodiscard]] std::vector<std::weak_ptr<core::Device>> devices() const override {
        return {devices_.begin(), devices_.end()};
    }

private:
    [[nodiscard]] std::vector<std::shared_ptr<FakeDevice>> makeDevices() const {
        core::DeviceRecord first{"0100", "FAKE_UDI_1", "NVIDIA_GRAPHICS_CARD", {}, {}, {}, {}, true};
        first.rows = {{"UDI", "FAKE_UDI_1"}, {"LOCATION", "PCI bus 1, device 0, function 0"}};
        first.notices = {"CUDA_DRIVER_OUT_TO_DATE"};
        core::DeviceRecord second{"0a00", "", "Fast <Card> & \"Friends\"", {}, {}, {}, {}, true};
        second.rows = {{"LOCATION", "PCI bus 10, device 0, function 0"}};
        if (case_ == FakeCase::SameId) {
            second.id = first.id;
        }
        return {std::make_shared<FakeDevice>(first, true), std::make_shared<FakeDevice>(second, false)};
    }

    FakeCase case_;
    std::vector<std::shared_ptr<FakeDevice>> devices_;
};

} // namespace

FakeCase fakeCaseOfProcess() {
    struct Name {
        std::string_view text;
        FakeCase fakeCase;
    };
    const char* value = std::getenv("VEXIL_FAKE_MODULE");
    const std::string_view text = value == nullptr ? "" : value;
    for (const auto& name :
         {Name{"healthy", FakeCase::Healthy}, Name{"no-cards", FakeCase::NoCards},
          Name{"same-id", FakeCase::SameId}, Name{"scan-throws", FakeCase::ScanThrows},
          Name{"no-worker", FakeCase::NoWorker}, Name{"gives-no-module", FakeCase::GivesNoModule}}) {
        if (name.text == text) {
            return name.fakeCase;
        }
    }
    return FakeCase::Scripted;
}

FakeDevice::FakeDevice(const core::DeviceRecord& record, bool hasCuda) : record_(record), hasCuda_(hasCuda) {
    id_ = record.id;
    displayName_ = record.name;
    if (!record.udi.empty()) {
        udi_ = std::make_unique<std::string>(record.udi);
    }
}

FakeModule::FakeModule(FakeCase fakeCase)
    : case_(fakeCase), scanner_(std::make_shared<FakeScanner>(fakeCase)),
      dispatcher_(std::make_shared<utils::GeneralDiagnosticDispatcher>(
          fakeCase == FakeCase::NoWorker ? 1U : 3U, [](std::uint64_t) {})) {}

std::unique_ptr<core::Test> FakeModule::createTest(std::int32_t id) const {
    return makeFakeTest(id, case_ == FakeCase::Scripted || case_ == FakeCase::SameId);
}

std::vector<std::int32_t> FakeModule::testIds() const {
    std::vector<std::int32_t> ids;
    for (const auto& row : module::video_card::catalogue) {
        ids.push_back(row.id);
    }
    return ids;
}

} // namespace vexil::host::tests
