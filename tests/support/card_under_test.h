#pragma once

#include "core/test.h"
#include "module/video_card/device.h"
#include "support/recording_reporter.h"
#include "support/simulated_direct3d_session.h"
#include "text_handlers.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vexil::tests {

/// A source of statistics that knows of free memory only.
class FreeMemory final : public module::video_card::VideoCardStatistics {
public:
    using Status = module::video_card::VideoCardStatisticsStatus;

    explicit FreeMemory(std::uint64_t bytes) : bytes_(bytes) {}

    [[nodiscard]] bool matches(const module::video_card::AdapterRecord&) const override { return true; }
    Status getTemperature(std::int64_t&) override { return Status::Unavailable; }
    Status getUsage(std::uint64_t&) override { return Status::Unavailable; }
    Status getTotalMemory(std::uint64_t&) override { return Status::Unavailable; }
    Status getFreeMemory(std::uint64_t& bytes) override {
        bytes = bytes_;
        return Status::Ok;
    }

private:
    std::uint64_t bytes_;
};

struct CardSetup {
    std::string name = "NVIDIA GeForce RTX 3060";
    std::uint32_t vendorId = 0x10DE;
    simulated::Direct3DSection direct3d;
    /// What the statistics know; nothing for a card without them.
    std::optional<std::uint64_t> freeMemory;
};

/// A simulated card as the scanner would build it, with all that a run needs.
class CardUnderTest {
public:
    explicit CardUnderTest(const CardSetup& setup = {})
        : log(std::make_shared<simulated::CallLog>()),
          card(std::make_shared<simulated::SimulatedCard>(
              simulated::Direct3DIdentity{setup.name, setup.vendorId, 1, 7}, setup.direct3d, log)),
          session_({card}) {
        module::video_card::AdapterRecord record;
        record.name = setup.name;
        record.location = "01:00.0";
        device = std::make_shared<module::video_card::Device>(
            record, module::video_card::DeviceServices{strings_, numbers_, 0});
        for (const auto& context : module::video_card::createAllDx11Contexts()) {
            device->setDirect3D(context);
        }
        if (setup.freeMemory) {
            device->setStatistics(std::make_unique<FreeMemory>(*setup.freeMemory));
        }
        setUpCalls = log->take();
        arguments.device = device;
        arguments.cancelRequested = &cancel;
        arguments.reporter = &reporter;
        arguments.systemEvents = std::make_shared<core::SystemEventState>();
    }

    std::uint8_t run(core::Test& test) { return test.execute(arguments); }

    std::shared_ptr<simulated::CallLog> log;
    std::shared_ptr<simulated::SimulatedCard> card;
    std::shared_ptr<module::video_card::Device> device;
    std::vector<std::string> setUpCalls; ///< those that made the card's first device
    RecordingReporter reporter;
    std::uint8_t cancel = 0;
    core::TestRunArguments arguments;

private:
    SimulatedDirect3DSession session_;
    sal::TextHandler strings_;
    sal::NumberText numbers_;
};

} // namespace vexil::tests
