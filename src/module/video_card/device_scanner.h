#pragma once

#include "core/device_scanner.h"
#include "module/video_card/adapter_list.h"

#include <memory>
#include <string>
#include <vector>

namespace vexil::module::video_card {

class Device;
class Machine;

/// Joins what each interface of the machine knows of a card into one `Device`. The system device list gives
/// the cards; all the others only add to a card that it found.
class DeviceScanner final : public core::DeviceScanner {
public:
    explicit DeviceScanner(Machine& machine);
    DeviceScanner(const DeviceScanner&) = delete;
    DeviceScanner& operator=(const DeviceScanner&) = delete;
    ~DeviceScanner() override;

    /// An exception of a statistics scan leaves this function: the processor is unknown, and no card is
    /// listed.
    void scan(std::shared_ptr<core::DeviceScanListener> listener) override;
    void checkPresence(std::shared_ptr<core::DeviceScanListener> listener) override;
    [[nodiscard]] std::weak_ptr<core::Device> findDevice(std::string id) const override;
    [[nodiscard]] std::vector<std::weak_ptr<core::Device>> devices() const override;

private:
    std::vector<std::shared_ptr<Device>> devices_;
    SystemList systemList_;
    Machine& machine_;
};

} // namespace vexil::module::video_card
