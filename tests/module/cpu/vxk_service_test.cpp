#include "core/vxk_service.h"

#include "suite/driver_service/driver_service_base.h"

#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

namespace vexil::tests {
namespace {

/// Where a virtual operation stands in the table: this compiler's pointer to it holds that place.
template <typename Operation>
std::ptrdiff_t slot(Operation operation) {
    std::ptrdiff_t words[2] = {};
    static_assert(sizeof(operation) == sizeof(words));
    std::memcpy(words, &operation, sizeof(words));
    return (words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

TEST(VxkService, KeepsTheFourUsedOperationsAtTheirPlaces) {
    const auto ready = slot(&VXKService::isReady);
    EXPECT_EQ(slot(&VXKService::readPciConfig), ready + 1);
    EXPECT_EQ(slot(&VXKService::writePciConfig), ready + 2);
    EXPECT_EQ(slot(&VXKService::readMsr), slot(&VXKService::writePciConfig) + 3);
}

TEST(VxkService, HasThirtyVirtualOperationsWithTheDestructorFirst) {
    // This compiler gives the destructor two entries.
    EXPECT_EQ(slot(&VXKService::isReady), 2);
    EXPECT_EQ(slot(&VXKService::reserved29), 30);
}

TEST(VxkService, IsAnAbstractClassThatCanBeCopiedByThoseWhoImplementIt) {
    EXPECT_TRUE(std::is_abstract_v<VXKService>);
    EXPECT_TRUE(std::is_copy_assignable_v<VXKService>);
    EXPECT_TRUE(std::has_virtual_destructor_v<VXKService>);
    EXPECT_EQ(sizeof(VXKService), sizeof(void*)) << "there are no fields";
}

TEST(VxkService, LaysOutTheRequestOfThePciOperationsAsTheServiceExpectsIt) {
    EXPECT_EQ(offsetof(PciConfigRequest, bus), 0U);
    EXPECT_EQ(offsetof(PciConfigRequest, device), 8U);
    EXPECT_EQ(offsetof(PciConfigRequest, function), 12U);
    EXPECT_EQ(offsetof(PciConfigRequest, offset), 16U);
    EXPECT_EQ(offsetof(PciConfigRequest, width), 20U);
    EXPECT_EQ(offsetof(PciConfigRequest, value), 24U);
    EXPECT_EQ(sizeof(PciConfigRequest), 32U);
}

} // namespace
} // namespace vexil::tests
