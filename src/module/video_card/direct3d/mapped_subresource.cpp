#include "module/video_card/direct3d/mapped_subresource.h"

#include <memory>

namespace vexil::module::video_card {

ComShared<D3D11_MAPPED_SUBRESOURCE> mapSubresource(const ComShared<ID3D11DeviceContext>& context,
                                                   const ComShared<ID3D11Resource>& resource,
                                                   UINT subresource, D3D11_MAP type) {
    auto mapped = std::make_unique<D3D11_MAPPED_SUBRESOURCE>();
    if (FAILED(context->Map(resource.get(), subresource, type, 0, mapped.get()))) {
        return std::make_shared<D3D11_MAPPED_SUBRESOURCE>();
    }
    return {mapped.release(), [context, resource, subresource](D3D11_MAPPED_SUBRESOURCE* owned) {
                context->Unmap(resource.get(), subresource);
                delete owned;
            }};
}

} // namespace vexil::module::video_card
