#pragma once

#include "module/video_card/stress/d3d11_stress_test_base.h"
#include "module/video_card/stress/load_controller.h"
#include "module/video_card/stress/stress_services.h"
#include "module/video_card/test_parameter_screen_dimensions.h"
#include "utils/parameters/test_parameter_burn_in.h"
#include "utils/parameters/test_parameter_infinite.h"
#include "utils/parameters/test_parameter_load.h"

namespace vexil::module::video_card {

/// Loads a card with rendering for a set time, and samples frame rate, temperature and usage. One class is
/// two tests: an animation in a window of its own (id 5), whose pictures are judged, and a wireframe without
/// any window (id 21), in which only the card's health counts.
class D3D11StressTest final : public D3D11StressTestBase {
public:
    explicit D3D11StressTest(bool wireframe, StressServices services = systemStressServices());

    std::uint8_t execute(const core::TestRunArguments& arguments) override;
    /// True for a card with a Direct3D device that is not the system's software adapter.
    [[nodiscard]] bool isSupported(core::Device* device, std::shared_ptr<core::Device> holder) const override;

    /// As the last run left it.
    [[nodiscard]] const LoadController& loadController() const { return loadController_; }

private:
    void prepareBurnIn();

    utils::TestParameterBurnIn burnIn_;
    utils::TestParameterInfinite infinite_;
    utils::TestParameterLoad load_;
    TestParameterScreenDimensions screenDimensions_;
    LoadController loadController_;
    bool wireframe_;
    StressServices services_;
};

} // namespace vexil::module::video_card
