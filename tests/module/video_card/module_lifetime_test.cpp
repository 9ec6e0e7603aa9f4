#include "support/loaded_module.h"
#include "support/process_memory.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace vexil::tests {
namespace {

class Listener final : public core::DeviceScanListener {
public:
    int devices = 0;
    bool finished = false;

    void deviceFound(const core::DeviceRecord&) override { ++devices; }
    void scanFinished() override { finished = true; }
    void presenceChecked(bool) override {}
};

int loadScanAndUnload() {
    const LoadedModule library(VEXIL_MODULE_FILE);
    auto* module = library.create();
    const auto listener = std::make_shared<Listener>();
    module->deviceScanner()->scan(listener);
    EXPECT_TRUE(listener->finished);
    library.destroy(module);
    return listener->devices;
}

TEST(ModuleLifetime, LoadsScansAndUnloadsAThousandTimesWithoutGrowth) {
    // The processor of the build machine may be one that ends every scan.
    ASSERT_NE(platform::openLibraryPath(VEXIL_SIMULATED_PROCESSOR), nullptr);
    const int devices = loadScanAndUnload();
    for (int i = 0; i < 100; ++i) {
        loadScanAndUnload(); // What the drivers below keep for the process is there after these.
    }
    const auto before = residentKibibytes();
    for (int i = 0; i < 900; ++i) {
        ASSERT_EQ(loadScanAndUnload(), devices);
    }
    const auto after = residentKibibytes();
    std::printf("resident memory: %ld KiB after 100 rounds, %ld KiB after 1000\n", before, after);
// The address sanitizer keeps a shadow of every place where a library once was, and looks for leaks itself.
#ifndef __SANITIZE_ADDRESS__
    EXPECT_LT(after - before, 4096) << "beyond the noise of the allocator";
#endif
}

} // namespace
} // namespace vexil::tests
