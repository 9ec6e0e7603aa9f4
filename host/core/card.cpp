#include "host/core/card.h"

#include "core/module.h"
#include "host/core/exit_code.h"
#include "host/core/processor_name.h"

#include <exception>

namespace vexil::host {

namespace {

class RecordCollector final : public core::DeviceScanListener {
public:
    void deviceFound(const core::DeviceRecord& record) override { records.push_back(record); }
    void scanFinished() override {}
    void presenceChecked(bool found) override { present = found; }

    std::vector<core::DeviceRecord> records;
    bool present = false;
};

} // namespace

std::vector<Card> scanCards(core::Module& module) {
    const auto scanner = module.deviceScanner();
    const auto collector = std::make_shared<RecordCollector>();
    try {
        // Without a display controller there is nothing to list, and nothing to fail for: a scan looks at the
        // processor as well, and ends with an exception for one that it does not know.
        scanner->checkPresence(collector);
        if (!collector->present) {
            return {};
        }
        scanner->scan(collector);
    } catch (const std::exception& error) {
        // The module does not always say which processor it means.
        throw InternalError(std::string("no card could be listed, the scan ended with: ") + error.what() +
                            " (processor: " + processorName() + ')');
    }
    std::vector<Card> cards;
    const auto devices = scanner->devices();
    for (std::size_t i = 0; i < collector->records.size(); ++i) {
        const auto& record = collector->records[i];
        // Ids need not be unique, so the order tells which object belongs to which record.
        cards.push_back({record, i < devices.size() ? devices[i] : scanner->findDevice(record.id)});
    }
    return cards;
}

} // namespace vexil::host
