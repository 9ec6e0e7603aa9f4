#include "module/video_card/device_identity.h"

#include "core/message_keys.h"
#include "core/sal.h"
#include "module/video_card/adapter_record.h"
#include "module/video_card/vocabulary.h"

#include <optional>

namespace vexil::module::video_card {

namespace {

struct PciAddress {
    std::uint32_t bus = 0;
    std::uint32_t device = 0;
    std::uint32_t function = 0;
};

/// The numbers of a location text "bb:dd.f".
std::optional<PciAddress> parseLocation(const std::string& location, NumberHandler& numbers) {
    PciAddress address;
    const bool parsed = location.size() == 7 && numbers.parse(address.bus, location.substr(0, 2), std::hex) &&
                        numbers.parse(address.device, location.substr(3, 2), std::hex) &&
                        numbers.parse(address.function, location.substr(6), std::hex);
    return parsed ? std::optional(address) : std::nullopt;
}

std::string describe(const PciAddress& address, NumberHandler& numbers) {
    using namespace vocabulary;
    std::string busText;
    std::string deviceText;
    std::string functionText;
    numbers.toText(busText, address.bus);
    numbers.toText(deviceText, address.device);
    numbers.toText(functionText, address.function);
    return pci + " " + bus + " " + busText + ", " + device + " " + deviceText + ", " + function + " " +
           functionText;
}

/// A name with a "?" holds a character that could not be converted, and is never shown.
bool isNameKnown(const std::string& name) { return !name.empty() && name.find('?') == std::string::npos; }

const std::string& nameOfVendor(const std::string& vendorId) {
    if (vendorId == vocabulary::nvidiaVendorId) {
        return keys::nvidiaGraphicsCard;
    }
    if (vendorId == vocabulary::amdVendorId) {
        return keys::amdGraphicsCard;
    }
    return vendorId == vocabulary::intelVendorId ? keys::intelGraphicsProcessor : keys::graphicsCard;
}

} // namespace

DeviceIdentity identify(const AdapterRecord& adapter, StringHandler& strings, NumberHandler& numbers) {
    DeviceIdentity identity;
    const auto& location = adapter.location;
    if (location.size() < 5) {
        identity.status = DeviceIdentity::badLocation;
        return identity;
    }
    identity.id = location.substr(0, 2) + location.substr(3, 2);

    const bool nameKnown = isNameKnown(adapter.name);
    identity.displayName = nameKnown ? adapter.name : nameOfVendor(adapter.vendorId);
    if (nameKnown) {
        strings.normalize(identity.displayName);
    }

    std::string udi;
    strings.makeIdentifier(identity.displayName + location, udi);
    identity.rows.emplace_back(keys::udi, udi);
    if (!nameKnown) {
        identity.rows.emplace_back(keys::vendorId, adapter.vendorId);
        identity.rows.emplace_back(keys::deviceId, adapter.deviceId);
    }

    const auto address = parseLocation(location, numbers);
    if (!address) {
        identity.status = DeviceIdentity::badLocation;
        return identity;
    }
    identity.rows.emplace_back(keys::location, describe(*address, numbers));
    if (!adapter.driverVersion.empty()) {
        identity.rows.emplace_back(keys::driverVersion, adapter.driverVersion);
    }
    return identity;
}

} // namespace vexil::module::video_card
