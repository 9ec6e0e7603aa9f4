#include "module/video_card/cuda/cuda_support.h"

#include "module/video_card/device.h"

namespace vexil::module::video_card {

bool hasCompromisingEvent(const core::TestRunArguments& arguments) {
    return arguments.systemEvents != nullptr &&
           (arguments.systemEvents->read() & core::compromisingSystemEvents) != 0;
}

bool hasCudaRecord(const core::Device* device) {
    const auto* const card = dynamic_cast<const Device*>(device);
    return card != nullptr && card->cudaRecord() != nullptr;
}

void reportAndFinish(core::TestReporter& reporter, const std::string& key) {
    reporter.setProgress(100);
    reporter.report({0, key});
}

} // namespace vexil::module::video_card
