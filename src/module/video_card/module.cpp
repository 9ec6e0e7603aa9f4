#include "module/video_card/module.h"

#include "core/message_keys.h"
#include "module/video_card/catalogue.h"
#include "module/video_card/device_scanner.h"
#include "module/video_card/test_creation.h"
#include "module/video_card/video_card_dispatcher.h"
#include "platform/thread_affinity.h"

namespace vexil::module::video_card {

namespace {

const core::ModuleVersion version{5, 2, 0, ""};

} // namespace

Module::Module(Machine& machine, unsigned hardwareThreads)
    : scanner_(std::make_shared<DeviceScanner>(machine)),
      dispatcher_(std::make_shared<VideoCardDispatcher>(hardwareThreads, platform::setThreadAffinityMask)) {
    for (const auto& row : catalogue) {
        testIds_.push_back(row.id);
    }
}

std::unique_ptr<core::Test> Module::createTest(std::int32_t id) const { return makeTest(id); }

std::string Module::nameKey() const { return keys::moduleName; }

core::ModuleVersion Module::moduleVersion() const { return version; }

std::shared_ptr<core::DeviceScanner> Module::deviceScanner() const { return scanner_; }

std::shared_ptr<core::DiagnosticDispatcher> Module::dispatcher() const { return dispatcher_; }

} // namespace vexil::module::video_card
