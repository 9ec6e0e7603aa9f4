#include "module/video_card/direct3d/math_operations/compute_run.h"

#include "core/test_result.h"
#include "module/video_card/direct3d/com_create.h"

#include <vector>

namespace vexil::module::video_card {

using core::TestResult;

namespace {

/// The resources of one run. They go with it, whatever became of it.
class Resources {
public:
    Resources(ID3D11Device& device, const ComputeRun& run) : device_(device), run_(run) {}

    HRESULT create() {
        inputs_.resize(run_.inputs.size());
        inputViews_.resize(run_.inputs.size());
        for (std::size_t i = 0; i < inputs_.size(); ++i) {
            if (const HRESULT result = createBuffer(run_.inputs[i], inputs_[i]); FAILED(result)) {
                return result;
            }
        }
        if (const HRESULT result = createBuffer(run_.output, output_); FAILED(result)) {
            return result;
        }
        for (std::size_t i = 0; i < inputs_.size(); ++i) {
            if (const HRESULT result = createInputView(i); FAILED(result)) {
                return result;
            }
        }
        return createOutputView();
    }

    void bind(ID3D11DeviceContext& context) const {
        for (UINT slot = 0; slot < inputViews_.size(); ++slot) {
            auto* const view = inputViews_[slot].get();
            context.CSSetShaderResources(slot, 1, &view);
        }
        auto* const view = outputView_.get();
        context.CSSetUnorderedAccessViews(0, 1, &view, nullptr);
    }

    HRESULT createStaging() {
        D3D11_BUFFER_DESC description{};
        output_->GetDesc(&description);
        description.Usage = D3D11_USAGE_STAGING;
        description.BindFlags = 0;
        description.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
        description.MiscFlags = 0;
        return createCom(staging_,
                         [&](auto out) { return device_.CreateBuffer(&description, nullptr, out); });
    }

    ID3D11Buffer* output() const { return output_.get(); }
    ID3D11Buffer* staging() const { return staging_.get(); }

private:
    static UINT elements(const StructuredContent& content) {
        return static_cast<UINT>(content.bytes.size()) / content.stride;
    }

    HRESULT createBuffer(const StructuredContent& content, ComShared<ID3D11Buffer>& buffer) {
        D3D11_BUFFER_DESC description{};
        description.ByteWidth = static_cast<UINT>(content.bytes.size());
        description.Usage = D3D11_USAGE_DEFAULT;
        description.BindFlags = D3D11_BIND_SHADER_RESOURCE | D3D11_BIND_UNORDERED_ACCESS;
        description.MiscFlags = D3D11_RESOURCE_MISC_BUFFER_STRUCTURED;
        description.StructureByteStride = content.stride;
        const D3D11_SUBRESOURCE_DATA data{content.bytes.data(), 0, 0};
        return createCom(buffer, [&](auto out) { return device_.CreateBuffer(&description, &data, out); });
    }

    HRESULT createInputView(std::size_t input) {
        D3D11_SHADER_RESOURCE_VIEW_DESC description{};
        description.Format = DXGI_FORMAT_UNKNOWN;
        description.ViewDimension = D3D11_SRV_DIMENSION_BUFFEREX;
        description.BufferEx.NumElements = elements(run_.inputs[input]);
        return createCom(inputViews_[input], [&](auto out) {
            return device_.CreateShaderResourceView(inputs_[input].get(), &description, out);
        });
    }

    HRESULT createOutputView() {
        D3D11_UNORDERED_ACCESS_VIEW_DESC description{};
        description.Format = DXGI_FORMAT_UNKNOWN;
        description.ViewDimension = D3D11_UAV_DIMENSION_BUFFER;
        description.Buffer.NumElements = elements(run_.output);
        return createCom(outputView_, [&](auto out) {
            return device_.CreateUnorderedAccessView(output_.get(), &description, out);
        });
    }

    ID3D11Device& device_;
    const ComputeRun& run_;
    std::vector<ComShared<ID3D11Buffer>> inputs_;
    ComShared<ID3D11Buffer> output_;
    std::vector<ComShared<ID3D11ShaderResourceView>> inputViews_;
    ComShared<ID3D11UnorderedAccessView> outputView_;
    ComShared<ID3D11Buffer> staging_;
};

} // namespace

std::uint8_t runCompute(ID3D11Device& device, ID3D11DeviceContext& context, ID3D11ComputeShader* shader,
                        const ComputeRun& run, const OutputCheck& isRight) {
    Resources resources(device, run);
    if (FAILED(resources.create())) {
        return TestResult::NotCompleted;
    }
    context.CSSetShader(shader, nullptr, 0);
    resources.bind(context);
    context.Dispatch(run.groups, 1, 1);
    if (FAILED(resources.createStaging())) {
        return TestResult::NotCompleted;
    }
    context.CopyResource(resources.staging(), resources.output());
    D3D11_MAPPED_SUBRESOURCE mapped{};
    // The data count and not the result code. Without data there is nothing to judge the card by.
    static_cast<void>(context.Map(resources.staging(), 0, D3D11_MAP_READ, 0, &mapped));
    if (mapped.pData == nullptr) {
        return TestResult::NotCompleted;
    }
    if (!isRight({static_cast<const std::byte*>(mapped.pData), run.output.bytes.size()})) {
        // The staging buffer goes away mapped; its last reference ends that too.
        return TestResult::Failed;
    }
    context.Unmap(resources.staging(), 0);
    return TestResult::Passed;
}

} // namespace vexil::module::video_card
