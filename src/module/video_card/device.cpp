#include "module/video_card/device.h"

#include "core/message_keys.h"
#include "module/video_card/cuda/driver_gate.h"
#include "module/video_card/device_identity.h"
#include "module/video_card/vocabulary.h"

#include <algorithm>
#include <iomanip>
#include <locale>
#include <sstream>

namespace vexil::module::video_card {

namespace {

std::string upperHexadecimal(unsigned number) {
    std::ostringstream text;
    text.imbue(std::locale::classic()); // The host's language would put points into the number.
    text << std::hex << std::uppercase << number;
    return text.str();
}

} // namespace

Device::Device(const AdapterRecord& adapter, const DeviceServices& services) : adapter_(adapter) {
    // A poor location leaves the device without identity, and it is listed all the same.
    auto identity = identify(adapter_, services.strings, services.numbers);
    id_ = std::move(identity.id);
    displayName_ = std::move(identity.displayName);
    rows_ = std::move(identity.rows);

    if (adapter_.vendorId == vocabulary::nvidiaVendorId &&
        isCudaDriverOutOfDate(services.cudaDriverVersion)) {
        notices_.push_back(keys::cudaDriverOutToDate);
    }
    const auto row = std::ranges::find(rows_, keys::udi, &core::KeyValue::first);
    if (row != rows_.end()) {
        udi_ = std::make_unique<std::string>(row->second);
    }
}

void Device::setDirect3D(const Dx11Context& context) {
    const std::lock_guard guard(direct3dMutex_);
    direct3d_ = std::make_unique<Dx11Context>(context);
}

void Device::addDirect3DRows() {
    const std::lock_guard guard(direct3dMutex_);
    if (!direct3d_) {
        return;
    }
    const auto& desc = direct3d_->adapterInfo.desc;
    const auto mebibytes = static_cast<std::uint64_t>(desc.DedicatedVideoMemory) >> 20;
    rows_.emplace_back(keys::directxVendorId, upperHexadecimal(desc.VendorId));
    rows_.emplace_back(keys::directxDeviceId, upperHexadecimal(desc.DeviceId));
    rows_.emplace_back(keys::directxVideoCardMemory, std::to_string(mebibytes) + " MB");
}

bool Device::getFreeMemory(std::uint64_t& bytes) const {
    return statistics_ && statistics_->getFreeMemory(bytes) == VideoCardStatisticsStatus::Ok;
}

bool Device::getTemperature(std::int64_t& celsius) const {
    return statistics_ && statistics_->getTemperature(celsius) == VideoCardStatisticsStatus::Ok;
}

bool Device::getUsage(std::uint64_t& percent) const {
    return statistics_ && statistics_->getUsage(percent) == VideoCardStatisticsStatus::Ok;
}

} // namespace vexil::module::video_card
