#include "timed_direct3d.h"

#include "simulated/direct3d/device_context_proxy.h"
#include "simulated/direct3d/device_proxy.h"

#include <utility>

namespace vexil::benchmarks {

namespace {

SurfaceTimes* timesInUse = nullptr;
module::video_card::Direct3DApi realApi;

/// Looks at the clock at the calls between which the steps of a surface lie.
class TimedContext final : public simulated::DeviceContextProxy {
public:
    using DeviceContextProxy::DeviceContextProxy;
    virtual ~TimedContext() { real()->Release(); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        return real()->QueryInterface(id, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return references_.add(); }
    ULONG STDMETHODCALLTYPE Release() override { return references_.release(this); }
    void STDMETHODCALLTYPE UpdateSubresource(ID3D11Resource* target, UINT index, const D3D11_BOX* box,
                                             const void* rows, UINT rowPitch, UINT depthPitch) override {
        timesInUse->end(SurfaceStep::image);
        real()->UpdateSubresource(target, index, box, rows, rowPitch, depthPitch);
        timesInUse->end(SurfaceStep::upload);
    }
    void STDMETHODCALLTYPE Flush() override {
        real()->Flush();
        timesInUse->end(SurfaceStep::draw);
    }
    void STDMETHODCALLTYPE Unmap(ID3D11Resource* resource, UINT index) override {
        real()->Unmap(resource, index);
        timesInUse->end(SurfaceStep::readBack);
    }

private:
    simulated::ReferenceCount references_;
};

class TimedDevice final : public simulated::DeviceProxy {
public:
    using DeviceProxy::DeviceProxy;
    virtual ~TimedDevice() { real()->Release(); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        return real()->QueryInterface(id, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return references_.add(); }
    ULONG STDMETHODCALLTYPE Release() override { return references_.release(this); }
    HRESULT STDMETHODCALLTYPE GetDeviceRemovedReason() override {
        const HRESULT reason = real()->GetDeviceRemovedReason();
        timesInUse->begin();
        return reason;
    }

private:
    simulated::ReferenceCount references_;
};

HRESULT WINAPI createTimedDevice(IDXGIAdapter* adapter, D3D_DRIVER_TYPE driverType, HMODULE software,
                                 UINT flags, const D3D_FEATURE_LEVEL* levels, UINT levelCount, UINT version,
                                 ID3D11Device** device, D3D_FEATURE_LEVEL* level,
                                 ID3D11DeviceContext** context) {
    const HRESULT result = realApi.createDevice(adapter, driverType, software, flags, levels, levelCount,
                                                version, device, level, context);
    if (SUCCEEDED(result)) {
        *device = new TimedDevice(*device);
        *context = new TimedContext(*context);
    }
    return result;
}

} // namespace

void SurfaceTimes::end(SurfaceStep step) {
    const auto now = Clock::now();
    current_[static_cast<std::size_t>(step)] = milliseconds(now - last_);
    last_ = now;
    if (step == SurfaceStep::comparison) {
        surfaces_.push_back(current_);
    }
}

SurfaceTimes::Steps SurfaceTimes::quantiles(double part) const {
    Steps result{};
    for (std::size_t step = 0; step < result.size(); ++step) {
        std::vector<double> values;
        for (const auto& surface : surfaces_) {
            values.push_back(surface[step]);
        }
        result[step] = quantile(values, part);
    }
    return result;
}

std::vector<double> SurfaceTimes::totals() const {
    std::vector<double> result;
    for (const auto& surface : surfaces_) {
        double total = 0;
        for (const double step : surface) {
            total += step;
        }
        result.push_back(total);
    }
    return result;
}

void timeDirect3D(SurfaceTimes* times) {
    if (times != nullptr && timesInUse == nullptr) {
        realApi = module::video_card::direct3dApi();
        module::video_card::exchangeDirect3DApi({realApi.createFactory, createTimedDevice});
    } else if (times == nullptr && timesInUse != nullptr) {
        module::video_card::exchangeDirect3DApi(realApi);
    }
    timesInUse = times;
}

} // namespace vexil::benchmarks
