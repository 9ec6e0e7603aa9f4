#pragma once

#include "simulated/direct3d/device_context_state_proxy.h"

#include <d3d11.h>

namespace vexil::simulated {

/// Hands every call on to a real device context.
class DeviceContextProxy : public DeviceContextStateProxy {
public:
    using DeviceContextStateProxy::DeviceContextStateProxy;

    void STDMETHODCALLTYPE GetDevice(ID3D11Device** device) override {
        forward<&ID3D11DeviceContext::GetDevice>("GetDevice", device);
    }
    HRESULT STDMETHODCALLTYPE GetPrivateData(REFGUID guid, UINT* dataSize, void* data) override {
        return forward<&ID3D11DeviceContext::GetPrivateData>("GetPrivateData", guid, dataSize, data);
    }
    HRESULT STDMETHODCALLTYPE SetPrivateData(REFGUID guid, UINT dataSize, const void* data) override {
        return forward<&ID3D11DeviceContext::SetPrivateData>("SetPrivateData", guid, dataSize, data);
    }
    HRESULT STDMETHODCALLTYPE SetPrivateDataInterface(REFGUID guid, const IUnknown* data) override {
        return forward<&ID3D11DeviceContext::SetPrivateDataInterface>("SetPrivateDataInterface", guid, data);
    }
    void STDMETHODCALLTYPE VSSetConstantBuffers(UINT startSlot, UINT numBuffers,
                                                ID3D11Buffer* const* constantBuffers) override {
        forward<&ID3D11DeviceContext::VSSetConstantBuffers>("VSSetConstantBuffers", startSlot, numBuffers,
                                                            constantBuffers);
    }
    void STDMETHODCALLTYPE PSSetShaderResources(
        UINT startSlot, UINT numViews, ID3D11ShaderResourceView* const* shaderResourceViews) override {
        forward<&ID3D11DeviceContext::PSSetShaderResources>("PSSetShaderResources", startSlot, numViews,
                                                            shaderResourceViews);
    }
    void STDMETHODCALLTYPE PSSetShader(ID3D11PixelShader* pixelShader,
                                       ID3D11ClassInstance* const* classInstances,
                                       UINT numClassInstances) override {
        forward<&ID3D11DeviceContext::PSSetShader>("PSSetShader", pixelShader, classInstances,
                                                   numClassInstances);
    }
    void STDMETHODCALLTYPE PSSetSamplers(UINT startSlot, UINT numSamplers,
                                         ID3D11SamplerState* const* samplers) override {
        forward<&ID3D11DeviceContext::PSSetSamplers>("PSSetSamplers", startSlot, numSamplers, samplers);
    }
    void STDMETHODCALLTYPE VSSetShader(ID3D11VertexShader* vertexShader,
                                       ID3D11ClassInstance* const* classInstances,
                                       UINT numClassInstances) override {
        forward<&ID3D11DeviceContext::VSSetShader>("VSSetShader", vertexShader, classInstances,
                                                   numClassInstances);
    }
    void STDMETHODCALLTYPE DrawIndexed(UINT indexCount, UINT startIndexLocation,
                                       INT baseVertexLocation) override {
        forward<&ID3D11DeviceContext::DrawIndexed>("DrawIndexed", indexCount, startIndexLocation,
                                                   baseVertexLocation);
    }
    void STDMETHODCALLTYPE Draw(UINT vertexCount, UINT startVertexLocation) override {
        forward<&ID3D11DeviceContext::Draw>("Draw", vertexCount, startVertexLocation);
    }
    HRESULT STDMETHODCALLTYPE Map(ID3D11Resource* resource, UINT subresource, D3D11_MAP mapType,
                                  UINT mapFlags, D3D11_MAPPED_SUBRESOURCE* mappedResource) override {
        return forward<&ID3D11DeviceContext::Map>("Map", resource, subresource, mapType, mapFlags,
                                                  mappedResource);
    }
    void STDMETHODCALLTYPE Unmap(ID3D11Resource* resource, UINT subresource) override {
        forward<&ID3D11DeviceContext::Unmap>("Unmap", resource, subresource);
    }
    void STDMETHODCALLTYPE PSSetConstantBuffers(UINT startSlot, UINT numBuffers,
                                                ID3D11Buffer* const* constantBuffers) override {
        forward<&ID3D11DeviceContext::PSSetConstantBuffers>("PSSetConstantBuffers", startSlot, numBuffers,
                                                            constantBuffers);
    }
    void STDMETHODCALLTYPE IASetInputLayout(ID3D11InputLayout* inputLayout) override {
        forward<&ID3D11DeviceContext::IASetInputLayout>("IASetInputLayout", inputLayout);
    }
    void STDMETHODCALLTYPE IASetVertexBuffers(UINT startSlot, UINT numBuffers,
                                              ID3D11Buffer* const* vertexBuffers, const UINT* strides,
                                              const UINT* offsets) override {
        forward<&ID3D11DeviceContext::IASetVertexBuffers>("IASetVertexBuffers", startSlot, numBuffers,
                                                          vertexBuffers, strides, offsets);
    }
    void STDMETHODCALLTYPE IASetIndexBuffer(ID3D11Buffer* indexBuffer, DXGI_FORMAT format,
                                            UINT offset) override {
        forward<&ID3D11DeviceContext::IASetIndexBuffer>("IASetIndexBuffer", indexBuffer, format, offset);
    }
    void STDMETHODCALLTYPE DrawIndexedInstanced(UINT indexCountPerInstance, UINT instanceCount,
                                                UINT startIndexLocation, INT baseVertexLocation,
                                                UINT startInstanceLocation) override {
        forward<&ID3D11DeviceContext::DrawIndexedInstanced>("DrawIndexedInstanced", indexCountPerInstance,
                                                            instanceCount, startIndexLocation,
                                                            baseVertexLocation, startInstanceLocation);
    }
    void STDMETHODCALLTYPE DrawInstanced(UINT vertexCountPerInstance, UINT instanceCount,
                                         UINT startVertexLocation, UINT startInstanceLocation) override {
        forward<&ID3D11DeviceContext::DrawInstanced>("DrawInstanced", vertexCountPerInstance, instanceCount,
                                                     startVertexLocation, startInstanceLocation);
    }
    void STDMETHODCALLTYPE GSSetConstantBuffers(UINT startSlot, UINT numBuffers,
                                                ID3D11Buffer* const* constantBuffers) override {
        forward<&ID3D11DeviceContext::GSSetConstantBuffers>("GSSetConstantBuffers", startSlot, numBuffers,
                                                            constantBuffers);
    }
    void STDMETHODCALLTYPE GSSetShader(ID3D11GeometryShader* shader,
                                       ID3D11ClassInstance* const* classInstances,
                                       UINT numClassInstances) override {
        forward<&ID3D11DeviceContext::GSSetShader>("GSSetShader", shader, classInstances, numClassInstances);
    }
    void STDMETHODCALLTYPE IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY topology) override {
        forward<&ID3D11DeviceContext::IASetPrimitiveTopology>("IASetPrimitiveTopology", topology);
    }
    void STDMETHODCALLTYPE VSSetShaderResources(
        UINT startSlot, UINT numViews, ID3D11ShaderResourceView* const* shaderResourceViews) override {
        forward<&ID3D11DeviceContext::VSSetShaderResources>("VSSetShaderResources", startSlot, numViews,
                                                            shaderResourceViews);
    }
    void STDMETHODCALLTYPE VSSetSamplers(UINT startSlot, UINT numSamplers,
                                         ID3D11SamplerState* const* samplers) override {
        forward<&ID3D11DeviceContext::VSSetSamplers>("VSSetSamplers", startSlot, numSamplers, samplers);
    }
    void STDMETHODCALLTYPE Begin(ID3D11Asynchronous* async) override {
        forward<&ID3D11DeviceContext::Begin>("Begin", async);
    }
    void STDMETHODCALLTYPE End(ID3D11Asynchronous* async) override {
        forward<&ID3D11DeviceContext::End>("End", async);
    }
    HRESULT STDMETHODCALLTYPE GetData(ID3D11Asynchronous* async, void* data, UINT dataSize,
                                      UINT getDataFlags) override {
        return forward<&ID3D11DeviceContext::GetData>("GetData", async, data, dataSize, getDataFlags);
    }
    void STDMETHODCALLTYPE SetPredication(ID3D11Predicate* predicate, BOOL predicateValue) override {
        forward<&ID3D11DeviceContext::SetPredication>("SetPredication", predicate, predicateValue);
    }
    void STDMETHODCALLTYPE GSSetShaderResources(
        UINT startSlot, UINT numViews, ID3D11ShaderResourceView* const* shaderResourceViews) override {
        forward<&ID3D11DeviceContext::GSSetShaderResources>("GSSetShaderResources", startSlot, numViews,
                                                            shaderResourceViews);
    }
    void STDMETHODCALLTYPE GSSetSamplers(UINT startSlot, UINT numSamplers,
                                         ID3D11SamplerState* const* samplers) override {
        forward<&ID3D11DeviceContext::GSSetSamplers>("GSSetSamplers", startSlot, numSamplers, samplers);
    }
    void STDMETHODCALLTYPE OMSetRenderTargets(UINT numViews, ID3D11RenderTargetView* const* renderTargetViews,
                                              ID3D11DepthStencilView* depthStencilView) override {
        forward<&ID3D11DeviceContext::OMSetRenderTargets>("OMSetRenderTargets", numViews, renderTargetViews,
                                                          depthStencilView);
    }
    void STDMETHODCALLTYPE OMSetRenderTargetsAndUnorderedAccessViews(
        UINT numRTVs, ID3D11RenderTargetView* const* renderTargetViews,
        ID3D11DepthStencilView* depthStencilView, UINT uAVStartSlot, UINT numUAVs,
        ID3D11UnorderedAccessView* const* unorderedAccessViews, const UINT* uAVInitialCounts) override {
        forward<&ID3D11DeviceContext::OMSetRenderTargetsAndUnorderedAccessViews>(
            "OMSetRenderTargetsAndUnorderedAccessViews", numRTVs, renderTargetViews, depthStencilView,
            uAVStartSlot, numUAVs, unorderedAccessViews, uAVInitialCounts);
    }
    void STDMETHODCALLTYPE OMSetBlendState(ID3D11BlendState* blendState, const FLOAT blendFactor[4],
                                           UINT sampleMask) override {
        forward<&ID3D11DeviceContext::OMSetBlendState>("OMSetBlendState", blendState, blendFactor,
                                                       sampleMask);
    }
    void STDMETHODCALLTYPE OMSetDepthStencilState(ID3D11DepthStencilState* depthStencilState,
                                                  UINT stencilRef) override {
        forward<&ID3D11DeviceContext::OMSetDepthStencilState>("OMSetDepthStencilState", depthStencilState,
                                                              stencilRef);
    }
    void STDMETHODCALLTYPE SOSetTargets(UINT numBuffers, ID3D11Buffer* const* sOTargets,
                                        const UINT* offsets) override {
        forward<&ID3D11DeviceContext::SOSetTargets>("SOSetTargets", numBuffers, sOTargets, offsets);
    }
    void STDMETHODCALLTYPE DrawAuto() override { forward<&ID3D11DeviceContext::DrawAuto>("DrawAuto"); }
    void STDMETHODCALLTYPE DrawIndexedInstancedIndirect(ID3D11Buffer* bufferForArgs,
                                                        UINT alignedByteOffsetForArgs) override {
        forward<&ID3D11DeviceContext::DrawIndexedInstancedIndirect>("DrawIndexedInstancedIndirect",
                                                                    bufferForArgs, alignedByteOffsetForArgs);
    }
    void STDMETHODCALLTYPE DrawInstancedIndirect(ID3D11Buffer* bufferForArgs,
                                                 UINT alignedByteOffsetForArgs) override {
        forward<&ID3D11DeviceContext::DrawInstancedIndirect>("DrawInstancedIndirect", bufferForArgs,
                                                             alignedByteOffsetForArgs);
    }
    void STDMETHODCALLTYPE Dispatch(UINT threadGroupCountX, UINT threadGroupCountY,
                                    UINT threadGroupCountZ) override {
        forward<&ID3D11DeviceContext::Dispatch>("Dispatch", threadGroupCountX, threadGroupCountY,
                                                threadGroupCountZ);
    }
    void STDMETHODCALLTYPE DispatchIndirect(ID3D11Buffer* bufferForArgs,
                                            UINT alignedByteOffsetForArgs) override {
        forward<&ID3D11DeviceContext::DispatchIndirect>("DispatchIndirect", bufferForArgs,
                                                        alignedByteOffsetForArgs);
    }
    void STDMETHODCALLTYPE RSSetState(ID3D11RasterizerState* rasterizerState) override {
        forward<&ID3D11DeviceContext::RSSetState>("RSSetState", rasterizerState);
    }
    void STDMETHODCALLTYPE RSSetViewports(UINT numViewports, const D3D11_VIEWPORT* viewports) override {
        forward<&ID3D11DeviceContext::RSSetViewports>("RSSetViewports", numViewports, viewports);
    }
    void STDMETHODCALLTYPE RSSetScissorRects(UINT numRects, const D3D11_RECT* rects) override {
        forward<&ID3D11DeviceContext::RSSetScissorRects>("RSSetScissorRects", numRects, rects);
    }
    void STDMETHODCALLTYPE CopySubresourceRegion(ID3D11Resource* dstResource, UINT dstSubresource, UINT dstX,
                                                 UINT dstY, UINT dstZ, ID3D11Resource* srcResource,
                                                 UINT srcSubresource, const D3D11_BOX* srcBox) override {
        forward<&ID3D11DeviceContext::CopySubresourceRegion>("CopySubresourceRegion", dstResource,
                                                             dstSubresource, dstX, dstY, dstZ, srcResource,
                                                             srcSubresource, srcBox);
    }
    void STDMETHODCALLTYPE CopyResource(ID3D11Resource* dstResource, ID3D11Resource* srcResource) override {
        forward<&ID3D11DeviceContext::CopyResource>("CopyResource", dstResource, srcResource);
    }
    void STDMETHODCALLTYPE UpdateSubresource(ID3D11Resource* dstResource, UINT dstSubresource,
                                             const D3D11_BOX* dstBox, const void* srcData, UINT srcRowPitch,
                                             UINT srcDepthPitch) override {
        forward<&ID3D11DeviceContext::UpdateSubresource>("UpdateSubresource", dstResource, dstSubresource,
                                                         dstBox, srcData, srcRowPitch, srcDepthPitch);
    }
    void STDMETHODCALLTYPE CopyStructureCount(ID3D11Buffer* dstBuffer, UINT dstAlignedByteOffset,
                                              ID3D11UnorderedAccessView* srcView) override {
        forward<&ID3D11DeviceContext::CopyStructureCount>("CopyStructureCount", dstBuffer,
                                                          dstAlignedByteOffset, srcView);
    }
    void STDMETHODCALLTYPE ClearRenderTargetView(ID3D11RenderTargetView* renderTargetView,
                                                 const FLOAT colorRGBA[4]) override {
        forward<&ID3D11DeviceContext::ClearRenderTargetView>("ClearRenderTargetView", renderTargetView,
                                                             colorRGBA);
    }
    void STDMETHODCALLTYPE ClearUnorderedAccessViewUint(ID3D11UnorderedAccessView* unorderedAccessView,
                                                        const UINT values[4]) override {
        forward<&ID3D11DeviceContext::ClearUnorderedAccessViewUint>("ClearUnorderedAccessViewUint",
                                                                    unorderedAccessView, values);
    }
    void STDMETHODCALLTYPE ClearUnorderedAccessViewFloat(ID3D11UnorderedAccessView* unorderedAccessView,
                                                         const FLOAT values[4]) override {
        forward<&ID3D11DeviceContext::ClearUnorderedAccessViewFloat>("ClearUnorderedAccessViewFloat",
                                                                     unorderedAccessView, values);
    }
    void STDMETHODCALLTYPE ClearDepthStencilView(ID3D11DepthStencilView* depthStencilView, UINT clearFlags,
                                                 FLOAT depth, UINT8 stencil) override {
        forward<&ID3D11DeviceContext::ClearDepthStencilView>("ClearDepthStencilView", depthStencilView,
                                                             clearFlags, depth, stencil);
    }
    void STDMETHODCALLTYPE GenerateMips(ID3D11ShaderResourceView* shaderResourceView) override {
        forward<&ID3D11DeviceContext::GenerateMips>("GenerateMips", shaderResourceView);
    }
    void STDMETHODCALLTYPE SetResourceMinLOD(ID3D11Resource* resource, FLOAT minLOD) override {
        forward<&ID3D11DeviceContext::SetResourceMinLOD>("SetResourceMinLOD", resource, minLOD);
    }
    FLOAT STDMETHODCALLTYPE GetResourceMinLOD(ID3D11Resource* resource) override {
        return forward<&ID3D11DeviceContext::GetResourceMinLOD>("GetResourceMinLOD", resource);
    }
    void STDMETHODCALLTYPE ResolveSubresource(ID3D11Resource* dstResource, UINT dstSubresource,
                                              ID3D11Resource* srcResource, UINT srcSubresource,
                                              DXGI_FORMAT format) override {
        forward<&ID3D11DeviceContext::ResolveSubresource>("ResolveSubresource", dstResource, dstSubresource,
                                                          srcResource, srcSubresource, format);
    }
    void STDMETHODCALLTYPE ExecuteCommandList(ID3D11CommandList* commandList,
                                              BOOL restoreContextState) override {
        forward<&ID3D11DeviceContext::ExecuteCommandList>("ExecuteCommandList", commandList,
                                                          restoreContextState);
    }
    void STDMETHODCALLTYPE HSSetShaderResources(
        UINT startSlot, UINT numViews, ID3D11ShaderResourceView* const* shaderResourceViews) override {
        forward<&ID3D11DeviceContext::HSSetShaderResources>("HSSetShaderResources", startSlot, numViews,
                                                            shaderResourceViews);
    }
    void STDMETHODCALLTYPE HSSetShader(ID3D11HullShader* hullShader,
                                       ID3D11ClassInstance* const* classInstances,
                                       UINT numClassInstances) override {
        forward<&ID3D11DeviceContext::HSSetShader>("HSSetShader", hullShader, classInstances,
                                                   numClassInstances);
    }
    void STDMETHODCALLTYPE HSSetSamplers(UINT startSlot, UINT numSamplers,
                                         ID3D11SamplerState* const* samplers) override {
        forward<&ID3D11DeviceContext::HSSetSamplers>("HSSetSamplers", startSlot, numSamplers, samplers);
    }
    void STDMETHODCALLTYPE HSSetConstantBuffers(UINT startSlot, UINT numBuffers,
                                                ID3D11Buffer* const* constantBuffers) override {
        forward<&ID3D11DeviceContext::HSSetConstantBuffers>("HSSetConstantBuffers", startSlot, numBuffers,
                                                            constantBuffers);
    }
    void STDMETHODCALLTYPE DSSetShaderResources(
        UINT startSlot, UINT numViews, ID3D11ShaderResourceView* const* shaderResourceViews) override {
        forward<&ID3D11DeviceContext::DSSetShaderResources>("DSSetShaderResources", startSlot, numViews,
                                                            shaderResourceViews);
    }
    void STDMETHODCALLTYPE DSSetShader(ID3D11DomainShader* domainShader,
                                       ID3D11ClassInstance* const* classInstances,
                                       UINT numClassInstances) override {
        forward<&ID3D11DeviceContext::DSSetShader>("DSSetShader", domainShader, classInstances,
                                                   numClassInstances);
    }
    void STDMETHODCALLTYPE DSSetSamplers(UINT startSlot, UINT numSamplers,
                                         ID3D11SamplerState* const* samplers) override {
        forward<&ID3D11DeviceContext::DSSetSamplers>("DSSetSamplers", startSlot, numSamplers, samplers);
    }
    void STDMETHODCALLTYPE DSSetConstantBuffers(UINT startSlot, UINT numBuffers,
                                                ID3D11Buffer* const* constantBuffers) override {
        forward<&ID3D11DeviceContext::DSSetConstantBuffers>("DSSetConstantBuffers", startSlot, numBuffers,
                                                            constantBuffers);
    }
    void STDMETHODCALLTYPE CSSetShaderResources(
        UINT startSlot, UINT numViews, ID3D11ShaderResourceView* const* shaderResourceViews) override {
        forward<&ID3D11DeviceContext::CSSetShaderResources>("CSSetShaderResources", startSlot, numViews,
                                                            shaderResourceViews);
    }
    void STDMETHODCALLTYPE CSSetUnorderedAccessViews(UINT startSlot, UINT numUAVs,
                                                     ID3D11UnorderedAccessView* const* unorderedAccessViews,
                                                     const UINT* uAVInitialCounts) override {
        forward<&ID3D11DeviceContext::CSSetUnorderedAccessViews>(
            "CSSetUnorderedAccessViews", startSlot, numUAVs, unorderedAccessViews, uAVInitialCounts);
    }
    void STDMETHODCALLTYPE CSSetShader(ID3D11ComputeShader* computeShader,
                                       ID3D11ClassInstance* const* classInstances,
                                       UINT numClassInstances) override {
        forward<&ID3D11DeviceContext::CSSetShader>("CSSetShader", computeShader, classInstances,
                                                   numClassInstances);
    }
    void STDMETHODCALLTYPE CSSetSamplers(UINT startSlot, UINT numSamplers,
                                         ID3D11SamplerState* const* samplers) override {
        forward<&ID3D11DeviceContext::CSSetSamplers>("CSSetSamplers", startSlot, numSamplers, samplers);
    }
    void STDMETHODCALLTYPE CSSetConstantBuffers(UINT startSlot, UINT numBuffers,
                                                ID3D11Buffer* const* constantBuffers) override {
        forward<&ID3D11DeviceContext::CSSetConstantBuffers>("CSSetConstantBuffers", startSlot, numBuffers,
                                                            constantBuffers);
    }
    void STDMETHODCALLTYPE ClearState() override { forward<&ID3D11DeviceContext::ClearState>("ClearState"); }
    void STDMETHODCALLTYPE Flush() override { forward<&ID3D11DeviceContext::Flush>("Flush"); }
    D3D11_DEVICE_CONTEXT_TYPE STDMETHODCALLTYPE GetType() override {
        return forward<&ID3D11DeviceContext::GetType>("GetType");
    }
    UINT STDMETHODCALLTYPE GetContextFlags() override {
        return forward<&ID3D11DeviceContext::GetContextFlags>("GetContextFlags");
    }
    HRESULT STDMETHODCALLTYPE FinishCommandList(BOOL restoreDeferredContextState,
                                                ID3D11CommandList** commandList) override {
        return forward<&ID3D11DeviceContext::FinishCommandList>("FinishCommandList",
                                                                restoreDeferredContextState, commandList);
    }

protected:
    ~DeviceContextProxy() = default;
};

} // namespace vexil::simulated
