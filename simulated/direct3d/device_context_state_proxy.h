#pragma once

#include "simulated/direct3d/com_proxy.h"

#include <d3d11.h>

namespace vexil::simulated {

/// Hands on the questions what is bound to the stages of a real device context.
class DeviceContextStateProxy : public ComProxy<ID3D11DeviceContext> {
public:
    using ComProxy::ComProxy;

    void STDMETHODCALLTYPE VSGetConstantBuffers(UINT startSlot, UINT numBuffers,
                                                ID3D11Buffer** constantBuffers) override {
        forward<&ID3D11DeviceContext::VSGetConstantBuffers>("VSGetConstantBuffers", startSlot, numBuffers,
                                                            constantBuffers);
    }
    void STDMETHODCALLTYPE PSGetShaderResources(UINT startSlot, UINT numViews,
                                                ID3D11ShaderResourceView** shaderResourceViews) override {
        forward<&ID3D11DeviceContext::PSGetShaderResources>("PSGetShaderResources", startSlot, numViews,
                                                            shaderResourceViews);
    }
    void STDMETHODCALLTYPE PSGetShader(ID3D11PixelShader** pixelShader, ID3D11ClassInstance** classInstances,
                                       UINT* numClassInstances) override {
        forward<&ID3D11DeviceContext::PSGetShader>("PSGetShader", pixelShader, classInstances,
                                                   numClassInstances);
    }
    void STDMETHODCALLTYPE PSGetSamplers(UINT startSlot, UINT numSamplers,
                                         ID3D11SamplerState** samplers) override {
        forward<&ID3D11DeviceContext::PSGetSamplers>("PSGetSamplers", startSlot, numSamplers, samplers);
    }
    void STDMETHODCALLTYPE VSGetShader(ID3D11VertexShader** vertexShader,
                                       ID3D11ClassInstance** classInstances,
                                       UINT* numClassInstances) override {
        forward<&ID3D11DeviceContext::VSGetShader>("VSGetShader", vertexShader, classInstances,
                                                   numClassInstances);
    }
    void STDMETHODCALLTYPE PSGetConstantBuffers(UINT startSlot, UINT numBuffers,
                                                ID3D11Buffer** constantBuffers) override {
        forward<&ID3D11DeviceContext::PSGetConstantBuffers>("PSGetConstantBuffers", startSlot, numBuffers,
                                                            constantBuffers);
    }
    void STDMETHODCALLTYPE IAGetInputLayout(ID3D11InputLayout** inputLayout) override {
        forward<&ID3D11DeviceContext::IAGetInputLayout>("IAGetInputLayout", inputLayout);
    }
    void STDMETHODCALLTYPE IAGetVertexBuffers(UINT startSlot, UINT numBuffers, ID3D11Buffer** vertexBuffers,
                                              UINT* strides, UINT* offsets) override {
        forward<&ID3D11DeviceContext::IAGetVertexBuffers>("IAGetVertexBuffers", startSlot, numBuffers,
                                                          vertexBuffers, strides, offsets);
    }
    void STDMETHODCALLTYPE IAGetIndexBuffer(ID3D11Buffer** indexBuffer, DXGI_FORMAT* format,
                                            UINT* offset) override {
        forward<&ID3D11DeviceContext::IAGetIndexBuffer>("IAGetIndexBuffer", indexBuffer, format, offset);
    }
    void STDMETHODCALLTYPE GSGetConstantBuffers(UINT startSlot, UINT numBuffers,
                                                ID3D11Buffer** constantBuffers) override {
        forward<&ID3D11DeviceContext::GSGetConstantBuffers>("GSGetConstantBuffers", startSlot, numBuffers,
                                                            constantBuffers);
    }
    void STDMETHODCALLTYPE GSGetShader(ID3D11GeometryShader** geometryShader,
                                       ID3D11ClassInstance** classInstances,
                                       UINT* numClassInstances) override {
        forward<&ID3D11DeviceContext::GSGetShader>("GSGetShader", geometryShader, classInstances,
                                                   numClassInstances);
    }
    void STDMETHODCALLTYPE IAGetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY* topology) override {
        forward<&ID3D11DeviceContext::IAGetPrimitiveTopology>("IAGetPrimitiveTopology", topology);
    }
    void STDMETHODCALLTYPE VSGetShaderResources(UINT startSlot, UINT numViews,
                                                ID3D11ShaderResourceView** shaderResourceViews) override {
        forward<&ID3D11DeviceContext::VSGetShaderResources>("VSGetShaderResources", startSlot, numViews,
                                                            shaderResourceViews);
    }
    void STDMETHODCALLTYPE VSGetSamplers(UINT startSlot, UINT numSamplers,
                                         ID3D11SamplerState** samplers) override {
        forward<&ID3D11DeviceContext::VSGetSamplers>("VSGetSamplers", startSlot, numSamplers, samplers);
    }
    void STDMETHODCALLTYPE GetPredication(ID3D11Predicate** predicate, BOOL* predicateValue) override {
        forward<&ID3D11DeviceContext::GetPredication>("GetPredication", predicate, predicateValue);
    }
    void STDMETHODCALLTYPE GSGetShaderResources(UINT startSlot, UINT numViews,
                                                ID3D11ShaderResourceView** shaderResourceViews) override {
        forward<&ID3D11DeviceContext::GSGetShaderResources>("GSGetShaderResources", startSlot, numViews,
                                                            shaderResourceViews);
    }
    void STDMETHODCALLTYPE GSGetSamplers(UINT startSlot, UINT numSamplers,
                                         ID3D11SamplerState** samplers) override {
        forward<&ID3D11DeviceContext::GSGetSamplers>("GSGetSamplers", startSlot, numSamplers, samplers);
    }
    void STDMETHODCALLTYPE OMGetRenderTargets(UINT numViews, ID3D11RenderTargetView** renderTargetViews,
                                              ID3D11DepthStencilView** depthStencilView) override {
        forward<&ID3D11DeviceContext::OMGetRenderTargets>("OMGetRenderTargets", numViews, renderTargetViews,
                                                          depthStencilView);
    }
    void STDMETHODCALLTYPE OMGetRenderTargetsAndUnorderedAccessViews(
        UINT numRTVs, ID3D11RenderTargetView** renderTargetViews, ID3D11DepthStencilView** depthStencilView,
        UINT uAVStartSlot, UINT numUAVs, ID3D11UnorderedAccessView** unorderedAccessViews) override {
        forward<&ID3D11DeviceContext::OMGetRenderTargetsAndUnorderedAccessViews>(
            "OMGetRenderTargetsAndUnorderedAccessViews", numRTVs, renderTargetViews, depthStencilView,
            uAVStartSlot, numUAVs, unorderedAccessViews);
    }
    void STDMETHODCALLTYPE OMGetBlendState(ID3D11BlendState** blendState, FLOAT blendFactor[4],
                                           UINT* sampleMask) override {
        forward<&ID3D11DeviceContext::OMGetBlendState>("OMGetBlendState", blendState, blendFactor,
                                                       sampleMask);
    }
    void STDMETHODCALLTYPE OMGetDepthStencilState(ID3D11DepthStencilState** depthStencilState,
                                                  UINT* stencilRef) override {
        forward<&ID3D11DeviceContext::OMGetDepthStencilState>("OMGetDepthStencilState", depthStencilState,
                                                              stencilRef);
    }
    void STDMETHODCALLTYPE SOGetTargets(UINT numBuffers, ID3D11Buffer** sOTargets) override {
        forward<&ID3D11DeviceContext::SOGetTargets>("SOGetTargets", numBuffers, sOTargets);
    }
    void STDMETHODCALLTYPE RSGetState(ID3D11RasterizerState** rasterizerState) override {
        forward<&ID3D11DeviceContext::RSGetState>("RSGetState", rasterizerState);
    }
    void STDMETHODCALLTYPE RSGetViewports(UINT* numViewports, D3D11_VIEWPORT* viewports) override {
        forward<&ID3D11DeviceContext::RSGetViewports>("RSGetViewports", numViewports, viewports);
    }
    void STDMETHODCALLTYPE RSGetScissorRects(UINT* numRects, D3D11_RECT* rects) override {
        forward<&ID3D11DeviceContext::RSGetScissorRects>("RSGetScissorRects", numRects, rects);
    }
    void STDMETHODCALLTYPE HSGetShaderResources(UINT startSlot, UINT numViews,
                                                ID3D11ShaderResourceView** shaderResourceViews) override {
        forward<&ID3D11DeviceContext::HSGetShaderResources>("HSGetShaderResources", startSlot, numViews,
                                                            shaderResourceViews);
    }
    void STDMETHODCALLTYPE HSGetShader(ID3D11HullShader** hullShader, ID3D11ClassInstance** classInstances,
                                       UINT* numClassInstances) override {
        forward<&ID3D11DeviceContext::HSGetShader>("HSGetShader", hullShader, classInstances,
                                                   numClassInstances);
    }
    void STDMETHODCALLTYPE HSGetSamplers(UINT startSlot, UINT numSamplers,
                                         ID3D11SamplerState** samplers) override {
        forward<&ID3D11DeviceContext::HSGetSamplers>("HSGetSamplers", startSlot, numSamplers, samplers);
    }
    void STDMETHODCALLTYPE HSGetConstantBuffers(UINT startSlot, UINT numBuffers,
                                                ID3D11Buffer** constantBuffers) override {
        forward<&ID3D11DeviceContext::HSGetConstantBuffers>("HSGetConstantBuffers", startSlot, numBuffers,
                                                            constantBuffers);
    }
    void STDMETHODCALLTYPE DSGetShaderResources(UINT startSlot, UINT numViews,
                                                ID3D11ShaderResourceView** shaderResourceViews) override {
        forward<&ID3D11DeviceContext::DSGetShaderResources>("DSGetShaderResources", startSlot, numViews,
                                                            shaderResourceViews);
    }
    void STDMETHODCALLTYPE DSGetShader(ID3D11DomainShader** domainShader,
                                       ID3D11ClassInstance** classInstances,
                                       UINT* numClassInstances) override {
        forward<&ID3D11DeviceContext::DSGetShader>("DSGetShader", domainShader, classInstances,
                                                   numClassInstances);
    }
    void STDMETHODCALLTYPE DSGetSamplers(UINT startSlot, UINT numSamplers,
                                         ID3D11SamplerState** samplers) override {
        forward<&ID3D11DeviceContext::DSGetSamplers>("DSGetSamplers", startSlot, numSamplers, samplers);
    }
    void STDMETHODCALLTYPE DSGetConstantBuffers(UINT startSlot, UINT numBuffers,
                                                ID3D11Buffer** constantBuffers) override {
        forward<&ID3D11DeviceContext::DSGetConstantBuffers>("DSGetConstantBuffers", startSlot, numBuffers,
                                                            constantBuffers);
    }
    void STDMETHODCALLTYPE CSGetShaderResources(UINT startSlot, UINT numViews,
                                                ID3D11ShaderResourceView** shaderResourceViews) override {
        forward<&ID3D11DeviceContext::CSGetShaderResources>("CSGetShaderResources", startSlot, numViews,
                                                            shaderResourceViews);
    }
    void STDMETHODCALLTYPE CSGetUnorderedAccessViews(
        UINT startSlot, UINT numUAVs, ID3D11UnorderedAccessView** unorderedAccessViews) override {
        forward<&ID3D11DeviceContext::CSGetUnorderedAccessViews>("CSGetUnorderedAccessViews", startSlot,
                                                                 numUAVs, unorderedAccessViews);
    }
    void STDMETHODCALLTYPE CSGetShader(ID3D11ComputeShader** computeShader,
                                       ID3D11ClassInstance** classInstances,
                                       UINT* numClassInstances) override {
        forward<&ID3D11DeviceContext::CSGetShader>("CSGetShader", computeShader, classInstances,
                                                   numClassInstances);
    }
    void STDMETHODCALLTYPE CSGetSamplers(UINT startSlot, UINT numSamplers,
                                         ID3D11SamplerState** samplers) override {
        forward<&ID3D11DeviceContext::CSGetSamplers>("CSGetSamplers", startSlot, numSamplers, samplers);
    }
    void STDMETHODCALLTYPE CSGetConstantBuffers(UINT startSlot, UINT numBuffers,
                                                ID3D11Buffer** constantBuffers) override {
        forward<&ID3D11DeviceContext::CSGetConstantBuffers>("CSGetConstantBuffers", startSlot, numBuffers,
                                                            constantBuffers);
    }
};

} // namespace vexil::simulated
