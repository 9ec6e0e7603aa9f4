#include "platform/processor.h"

#include <gtest/gtest.h>

#include <cctype>

namespace vexil::tests {
namespace {

using namespace platform;

TEST(ProcessorVendor, JoinsTheRegistersInTheOrderEbxEdxEcx) {
    EXPECT_EQ(processorVendor({0, 0x756E6547, 0x6C65746E, 0x49656E69}), "GenuineIntel");
}

TEST(ProcessorSignature, AddsTheExtendedFieldsIn) {
    const auto zen3 = processorSignature(0x00A20F10);
    EXPECT_EQ(zen3.family, 25U);
    EXPECT_EQ(zen3.model, 33U);
    EXPECT_EQ(zen3.stepping, 0U);
    const auto cometLake = processorSignature(0x000A0655);
    EXPECT_EQ(cometLake.family, 6U);
    EXPECT_EQ(cometLake.model, 165U);
    EXPECT_EQ(cometLake.stepping, 5U);
}

TEST(ProcessorSignature, LeavesTheExtendedFieldsOfOtherFamiliesAlone) {
    EXPECT_EQ(processorSignature(0x00A205F0).family, 5U);
    EXPECT_EQ(processorSignature(0x00A205F0).model, 15U);
}

TEST(Cpuid, AsksThisProcessorWhereThereIsNoOther) {
    ASSERT_FALSE(hasProcessorLibrary());
    const auto vendor = processorVendor(cpuid(0));
    ASSERT_EQ(vendor.size(), 12U);
    for (const char letter : vendor) {
        EXPECT_TRUE(std::isprint(static_cast<unsigned char>(letter)) != 0) << vendor;
    }
    EXPECT_GE(cpuid(0).eax, 1U);
    EXPECT_NE(cpuid(1).eax, 0U);
}

} // namespace
} // namespace vexil::tests
