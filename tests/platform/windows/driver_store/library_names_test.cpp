#include "platform/library_names.h"

#include <gtest/gtest.h>

#include <string>

namespace vexil::tests {
namespace {

TEST(LibraryNames, AreThoseOfTheVendors) {
    EXPECT_STREQ(platform::nvapiLibrary(), "nvapi64.dll");
    EXPECT_STREQ(platform::nvapiOlderLibrary(), "nvapi.dll");
    ASSERT_EQ(platform::adlLibraries().size(), 2U);
    EXPECT_STREQ(platform::adlLibraries()[0], "atiadlxx.dll");
    EXPECT_STREQ(platform::adlLibraries()[1], "atiadlxy.dll");
    EXPECT_STREQ(platform::cudaDriverLibrary(), "nvcuda.dll");
}

TEST(LibraryNames, AreThoseOfTheSystem) {
    EXPECT_STREQ(platform::direct3dLibrary(), "d3d11.dll");
    EXPECT_STREQ(platform::dxgiLibrary(), "dxgi.dll");
    EXPECT_STREQ(platform::kernelGraphicsLibrary(), "gdi32.dll") << "without a simulated machine";
}

} // namespace
} // namespace vexil::tests
