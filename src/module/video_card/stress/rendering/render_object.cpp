#include "module/video_card/stress/rendering/render_object.h"

namespace vexil::module::video_card {

void drawRenderObject(ID3D11DeviceContext& context, const RenderObject& object) {
    static constexpr UINT stride = renderVertexBytes;
    static constexpr UINT offset = 0;
    auto* const vertices = object.vertexBuffer.get();
    context.IASetInputLayout(object.inputLayout.get());
    context.VSSetShader(object.vertexShader.get(), nullptr, 0);
    context.PSSetShader(object.pixelShader.get(), nullptr, 0);
    context.IASetVertexBuffers(0, 1, &vertices, &stride, &offset);
    context.IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY_TRIANGLELIST);
    context.IASetIndexBuffer(object.indexBuffer.get(), DXGI_FORMAT_R32_UINT, 0);
    context.DrawIndexed(static_cast<UINT>(object.indexCount), 0, 0);
}

} // namespace vexil::module::video_card
