#include "core/vxk_service.h"
#include "platform/shared_library.h"

#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

TEST(DriverServiceStandIn, IsNeverReadyWithoutADriver) {
    void* library = platform::openLibraryPath(VEXIL_DRIVER_SERVICE);
    ASSERT_NE(library, nullptr);
    const auto create =
        reinterpret_cast<CreateVXKServiceFunction>(platform::librarySymbol(library, "CreateVXKService"));
    const auto destroy =
        reinterpret_cast<DestroyVXKServiceFunction>(platform::librarySymbol(library, "DestroyVXKService"));
    ASSERT_TRUE(create != nullptr && destroy != nullptr);
    auto* service = create();
    ASSERT_NE(service, nullptr);
    EXPECT_EQ(service->isReady(), 0);
    std::uint64_t value = 0;
    EXPECT_NE(service->readMsr(0x19C, &value), 0);
    destroy(service);
    destroy(nullptr);
}

} // namespace
} // namespace vexil::tests
