#include "module/video_card/stress/wireframe_stress_test_wrapper.h"

namespace vexil::module::video_card {

std::uint32_t WireframeStressTestWrapper::showWidget(QWidget*, utils::InputRequestCloser*, std::int32_t) {
    (*work_)();
    return 0;
}

} // namespace vexil::module::video_card
