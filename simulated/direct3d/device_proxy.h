#pragma once

#include "simulated/direct3d/com_proxy.h"

#include <d3d11.h>

namespace vexil::simulated {

/// Hands every call on to a real device.
class DeviceProxy : public ComProxy<ID3D11Device> {
public:
    using ComProxy::ComProxy;

    HRESULT STDMETHODCALLTYPE CreateBuffer(const D3D11_BUFFER_DESC* desc,
                                           const D3D11_SUBRESOURCE_DATA* initialData,
                                           ID3D11Buffer** buffer) override {
        return forward<&ID3D11Device::CreateBuffer>("CreateBuffer", desc, initialData, buffer);
    }
    HRESULT STDMETHODCALLTYPE CreateTexture1D(const D3D11_TEXTURE1D_DESC* desc,
                                              const D3D11_SUBRESOURCE_DATA* initialData,
                                              ID3D11Texture1D** texture1D) override {
        return forward<&ID3D11Device::CreateTexture1D>("CreateTexture1D", desc, initialData, texture1D);
    }
    HRESULT STDMETHODCALLTYPE CreateTexture2D(const D3D11_TEXTURE2D_DESC* desc,
                                              const D3D11_SUBRESOURCE_DATA* initialData,
                                              ID3D11Texture2D** texture2D) override {
        return forward<&ID3D11Device::CreateTexture2D>("CreateTexture2D", desc, initialData, texture2D);
    }
    HRESULT STDMETHODCALLTYPE CreateTexture3D(const D3D11_TEXTURE3D_DESC* desc,
                                              const D3D11_SUBRESOURCE_DATA* initialData,
                                              ID3D11Texture3D** texture3D) override {
        return forward<&ID3D11Device::CreateTexture3D>("CreateTexture3D", desc, initialData, texture3D);
    }
    HRESULT STDMETHODCALLTYPE CreateShaderResourceView(ID3D11Resource* resource,
                                                       const D3D11_SHADER_RESOURCE_VIEW_DESC* desc,
                                                       ID3D11ShaderResourceView** resourceView) override {
        return forward<&ID3D11Device::CreateShaderResourceView>("CreateShaderResourceView", resource, desc,
                                                                resourceView);
    }
    HRESULT STDMETHODCALLTYPE CreateUnorderedAccessView(ID3D11Resource* resource,
                                                        const D3D11_UNORDERED_ACCESS_VIEW_DESC* desc,
                                                        ID3D11UnorderedAccessView** accessView) override {
        return forward<&ID3D11Device::CreateUnorderedAccessView>("CreateUnorderedAccessView", resource, desc,
                                                                 accessView);
    }
    HRESULT STDMETHODCALLTYPE CreateRenderTargetView(ID3D11Resource* resource,
                                                     const D3D11_RENDER_TARGET_VIEW_DESC* desc,
                                                     ID3D11RenderTargetView** targetView) override {
        return forward<&ID3D11Device::CreateRenderTargetView>("CreateRenderTargetView", resource, desc,
                                                              targetView);
    }
    HRESULT STDMETHODCALLTYPE CreateDepthStencilView(ID3D11Resource* resource,
                                                     const D3D11_DEPTH_STENCIL_VIEW_DESC* desc,
                                                     ID3D11DepthStencilView** depthStencilView) override {
        return forward<&ID3D11Device::CreateDepthStencilView>("CreateDepthStencilView", resource, desc,
                                                              depthStencilView);
    }
    HRESULT STDMETHODCALLTYPE CreateInputLayout(const D3D11_INPUT_ELEMENT_DESC* inputElementDescs,
                                                UINT numElements,
                                                const void* shaderBytecodeWithInputSignature,
                                                SIZE_T bytecodeLength,
                                                ID3D11InputLayout** inputLayout) override {
        return forward<&ID3D11Device::CreateInputLayout>("CreateInputLayout", inputElementDescs, numElements,
                                                         shaderBytecodeWithInputSignature, bytecodeLength,
                                                         inputLayout);
    }
    HRESULT STDMETHODCALLTYPE CreateVertexShader(const void* shaderBytecode, SIZE_T bytecodeLength,
                                                 ID3D11ClassLinkage* classLinkage,
                                                 ID3D11VertexShader** vertexShader) override {
        return forward<&ID3D11Device::CreateVertexShader>("CreateVertexShader", shaderBytecode,
                                                          bytecodeLength, classLinkage, vertexShader);
    }
    HRESULT STDMETHODCALLTYPE CreateGeometryShader(const void* shaderBytecode, SIZE_T bytecodeLength,
                                                   ID3D11ClassLinkage* classLinkage,
                                                   ID3D11GeometryShader** geometryShader) override {
        return forward<&ID3D11Device::CreateGeometryShader>("CreateGeometryShader", shaderBytecode,
                                                            bytecodeLength, classLinkage, geometryShader);
    }
    HRESULT STDMETHODCALLTYPE CreateGeometryShaderWithStreamOutput(
        const void* shaderBytecode, SIZE_T bytecodeLength, const D3D11_SO_DECLARATION_ENTRY* declaration,
        UINT numEntries, const UINT* bufferStrides, UINT numStrides, UINT rasterizedStream,
        ID3D11ClassLinkage* classLinkage, ID3D11GeometryShader** geometryShader) override {
        return forward<&ID3D11Device::CreateGeometryShaderWithStreamOutput>(
            "CreateGeometryShaderWithStreamOutput", shaderBytecode, bytecodeLength, declaration, numEntries,
            bufferStrides, numStrides, rasterizedStream, classLinkage, geometryShader);
    }
    HRESULT STDMETHODCALLTYPE CreatePixelShader(const void* shaderBytecode, SIZE_T bytecodeLength,
                                                ID3D11ClassLinkage* classLinkage,
                                                ID3D11PixelShader** pixelShader) override {
        return forward<&ID3D11Device::CreatePixelShader>("CreatePixelShader", shaderBytecode, bytecodeLength,
                                                         classLinkage, pixelShader);
    }
    HRESULT STDMETHODCALLTYPE CreateHullShader(const void* shaderBytecode, SIZE_T bytecodeLength,
                                               ID3D11ClassLinkage* classLinkage,
                                               ID3D11HullShader** hullShader) override {
        return forward<&ID3D11Device::CreateHullShader>("CreateHullShader", shaderBytecode, bytecodeLength,
                                                        classLinkage, hullShader);
    }
    HRESULT STDMETHODCALLTYPE CreateDomainShader(const void* shaderBytecode, SIZE_T bytecodeLength,
                                                 ID3D11ClassLinkage* classLinkage,
                                                 ID3D11DomainShader** domainShader) override {
        return forward<&ID3D11Device::CreateDomainShader>("CreateDomainShader", shaderBytecode,
                                                          bytecodeLength, classLinkage, domainShader);
    }
    HRESULT STDMETHODCALLTYPE CreateComputeShader(const void* shaderBytecode, SIZE_T bytecodeLength,
                                                  ID3D11ClassLinkage* classLinkage,
                                                  ID3D11ComputeShader** computeShader) override {
        return forward<&ID3D11Device::CreateComputeShader>("CreateComputeShader", shaderBytecode,
                                                           bytecodeLength, classLinkage, computeShader);
    }
    HRESULT STDMETHODCALLTYPE CreateClassLinkage(ID3D11ClassLinkage** linkage) override {
        return forward<&ID3D11Device::CreateClassLinkage>("CreateClassLinkage", linkage);
    }
    HRESULT STDMETHODCALLTYPE CreateBlendState(const D3D11_BLEND_DESC* blendStateDesc,
                                               ID3D11BlendState** blendState) override {
        return forward<&ID3D11Device::CreateBlendState>("CreateBlendState", blendStateDesc, blendState);
    }
    HRESULT STDMETHODCALLTYPE CreateDepthStencilState(const D3D11_DEPTH_STENCIL_DESC* depthStencilDesc,
                                                      ID3D11DepthStencilState** depthStencilState) override {
        return forward<&ID3D11Device::CreateDepthStencilState>("CreateDepthStencilState", depthStencilDesc,
                                                               depthStencilState);
    }
    HRESULT STDMETHODCALLTYPE CreateRasterizerState(const D3D11_RASTERIZER_DESC* rasterizerDesc,
                                                    ID3D11RasterizerState** rasterizerState) override {
        return forward<&ID3D11Device::CreateRasterizerState>("CreateRasterizerState", rasterizerDesc,
                                                             rasterizerState);
    }
    HRESULT STDMETHODCALLTYPE CreateSamplerState(const D3D11_SAMPLER_DESC* samplerDesc,
                                                 ID3D11SamplerState** samplerState) override {
        return forward<&ID3D11Device::CreateSamplerState>("CreateSamplerState", samplerDesc, samplerState);
    }
    HRESULT STDMETHODCALLTYPE CreateQuery(const D3D11_QUERY_DESC* queryDesc, ID3D11Query** query) override {
        return forward<&ID3D11Device::CreateQuery>("CreateQuery", queryDesc, query);
    }
    HRESULT STDMETHODCALLTYPE CreatePredicate(const D3D11_QUERY_DESC* predicateDesc,
                                              ID3D11Predicate** predicate) override {
        return forward<&ID3D11Device::CreatePredicate>("CreatePredicate", predicateDesc, predicate);
    }
    HRESULT STDMETHODCALLTYPE CreateCounter(const D3D11_COUNTER_DESC* counterDesc,
                                            ID3D11Counter** counter) override {
        return forward<&ID3D11Device::CreateCounter>("CreateCounter", counterDesc, counter);
    }
    HRESULT STDMETHODCALLTYPE CreateDeferredContext(UINT contextFlags,
                                                    ID3D11DeviceContext** deferredContext) override {
        return forward<&ID3D11Device::CreateDeferredContext>("CreateDeferredContext", contextFlags,
                                                             deferredContext);
    }
    HRESULT STDMETHODCALLTYPE OpenSharedResource(HANDLE handle, REFIID returnedInterface,
                                                 void** resource) override {
        return forward<&ID3D11Device::OpenSharedResource>("OpenSharedResource", handle, returnedInterface,
                                                          resource);
    }
    HRESULT STDMETHODCALLTYPE CheckFormatSupport(DXGI_FORMAT format, UINT* formatSupport) override {
        return forward<&ID3D11Device::CheckFormatSupport>("CheckFormatSupport", format, formatSupport);
    }
    HRESULT STDMETHODCALLTYPE CheckMultisampleQualityLevels(DXGI_FORMAT format, UINT sampleCount,
                                                            UINT* numQualityLevels) override {
        return forward<&ID3D11Device::CheckMultisampleQualityLevels>("CheckMultisampleQualityLevels", format,
                                                                     sampleCount, numQualityLevels);
    }
    void STDMETHODCALLTYPE CheckCounterInfo(D3D11_COUNTER_INFO* counterInfo) override {
        forward<&ID3D11Device::CheckCounterInfo>("CheckCounterInfo", counterInfo);
    }
    HRESULT STDMETHODCALLTYPE CheckCounter(const D3D11_COUNTER_DESC* desc, D3D11_COUNTER_TYPE* type,
                                           UINT* activeCounters, LPSTR szName, UINT* nameLength,
                                           LPSTR szUnits, UINT* unitsLength, LPSTR szDescription,
                                           UINT* descriptionLength) override {
        return forward<&ID3D11Device::CheckCounter>("CheckCounter", desc, type, activeCounters, szName,
                                                    nameLength, szUnits, unitsLength, szDescription,
                                                    descriptionLength);
    }
    HRESULT STDMETHODCALLTYPE CheckFeatureSupport(D3D11_FEATURE feature, void* featureSupportData,
                                                  UINT featureSupportDataSize) override {
        return forward<&ID3D11Device::CheckFeatureSupport>("CheckFeatureSupport", feature, featureSupportData,
                                                           featureSupportDataSize);
    }
    HRESULT STDMETHODCALLTYPE GetPrivateData(REFGUID guid, UINT* dataSize, void* data) override {
        return forward<&ID3D11Device::GetPrivateData>("GetPrivateData", guid, dataSize, data);
    }
    HRESULT STDMETHODCALLTYPE SetPrivateData(REFGUID guid, UINT dataSize, const void* data) override {
        return forward<&ID3D11Device::SetPrivateData>("SetPrivateData", guid, dataSize, data);
    }
    HRESULT STDMETHODCALLTYPE SetPrivateDataInterface(REFGUID guid, const IUnknown* data) override {
        return forward<&ID3D11Device::SetPrivateDataInterface>("SetPrivateDataInterface", guid, data);
    }
    D3D_FEATURE_LEVEL STDMETHODCALLTYPE GetFeatureLevel() override {
        return forward<&ID3D11Device::GetFeatureLevel>("GetFeatureLevel");
    }
    UINT STDMETHODCALLTYPE GetCreationFlags() override {
        return forward<&ID3D11Device::GetCreationFlags>("GetCreationFlags");
    }
    HRESULT STDMETHODCALLTYPE GetDeviceRemovedReason() override {
        return forward<&ID3D11Device::GetDeviceRemovedReason>("GetDeviceRemovedReason");
    }
    void STDMETHODCALLTYPE GetImmediateContext(ID3D11DeviceContext** immediateContext) override {
        forward<&ID3D11Device::GetImmediateContext>("GetImmediateContext", immediateContext);
    }
    HRESULT STDMETHODCALLTYPE SetExceptionMode(UINT raiseFlags) override {
        return forward<&ID3D11Device::SetExceptionMode>("SetExceptionMode", raiseFlags);
    }
    UINT STDMETHODCALLTYPE GetExceptionMode() override {
        return forward<&ID3D11Device::GetExceptionMode>("GetExceptionMode");
    }

protected:
    ~DeviceProxy() = default;
};

} // namespace vexil::simulated
