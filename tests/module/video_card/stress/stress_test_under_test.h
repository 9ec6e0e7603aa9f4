#pragma once

#include "asking_reporter.h"
#include "gui_thread.h"
#include "module/video_card/stress/d3d11_stress_test.h"
#include "stress_fakes.h"
#include "support/card_under_test.h"

#include <cstdint>
#include <memory>
#include <string>

namespace vexil::tests {

/// A stress test with everything around it: a simulated card, scenes and a timer in the test's hand, a host.
class StressTestUnderTest {
public:
    explicit StressTestUnderTest(bool isWireframe) : test(isWireframe, services()) {
        card.device->setStatistics(std::make_unique<FakeSensors>(sensors));
        card.arguments.reporter = &reporter;
    }

    void set(const std::string& key, const std::string& value) {
        for (const auto& entry : test.parameters()) {
            if (entry.key == key) {
                entry.parameter->setValue(value);
            }
        }
    }
    /// With the GUI on this thread.
    std::uint8_t run() {
        std::uint8_t result = 0;
        onWorker([&] { result = test.execute(card.arguments); });
        return result;
    }

    FakeTimer timer;
    std::shared_ptr<FakeSensors::Values> sensors = std::make_shared<FakeSensors::Values>();
    WireframeScript wireframe;
    bool makesWireframe = true;
    WindowScript window;
    AskingReporter reporter;
    CardUnderTest card;
    module::video_card::D3D11StressTest test;

private:
    module::video_card::StressServices services() {
        return {&timer,
                [this](const module::video_card::Dx11Context&) {
                    return makesWireframe ? std::make_unique<FakeWireframeScene>(wireframe) : nullptr;
                },
                [this](const module::video_card::WindowSceneRequest& request) {
                    window.request = request;
                    auto scene = window.makesRenderer ? std::make_unique<FakeWindowScene>(window) : nullptr;
                    if (!scene) {
                        window.request.reset();
                    }
                    return scene;
                }};
    }
};

} // namespace vexil::tests
