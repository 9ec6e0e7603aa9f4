#include "module/video_card/direct3d/dx11_reset_guard.h"

#include <utility>

namespace vexil::module::video_card {

Dx11ResetGuard::~Dx11ResetGuard() {
    auto& current = *lock_.slot();
    current.context->ClearState();
    current.context->Flush();
    auto fresh = createDx11Context(current.adapterInfo);
    std::swap(current.context, fresh.context);
    std::swap(current.device, fresh.device);
}

} // namespace vexil::module::video_card
