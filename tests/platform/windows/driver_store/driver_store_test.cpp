#include "platform/windows/driver_store.h"

#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

using platform::driverStoreFolder;

std::optional<std::wstring> folderOf(const wchar_t* image) {
    return driverStoreFolder(image, L"C:\\Windows");
}

constexpr const wchar_t* stored =
    L"C:\\Windows\\System32\\DriverStore\\FileRepository\\nv_dispi.inf_amd64_1a2b\\";

TEST(DriverStore, HoldsTheFolderOfADriverHoweverItsRecordNamesIt) {
    EXPECT_EQ(
        folderOf(L"\\SystemRoot\\System32\\DriverStore\\FileRepository\\nv_dispi.inf_amd64_1a2b\\nv.sys"),
        stored);
    EXPECT_EQ(folderOf(L"System32\\DriverStore\\FileRepository\\nv_dispi.inf_amd64_1a2b\\nv.sys"), stored);
    EXPECT_EQ(
        folderOf(L"C:\\Windows\\System32\\DriverStore\\FileRepository\\nv_dispi.inf_amd64_1a2b\\nv.sys"),
        stored);
    EXPECT_EQ(
        folderOf(
            L"\\??\\C:\\Windows\\System32\\DriverStore\\FileRepository\\nv_dispi.inf_amd64_1a2b\\nv.sys"),
        stored);
}

TEST(DriverStore, IsNamedInAnyCase) {
    const auto folder = folderOf(L"\\systemroot\\system32\\driverstore\\filerepository\\a\\nv.sys");
    EXPECT_EQ(folder, L"C:\\Windows\\system32\\driverstore\\filerepository\\a\\");
}

TEST(DriverStore, HoldsNoDriverThatStandsElsewhere) {
    for (const wchar_t* image :
         {L"\\??\\C:\\games\\driver.sys", L"C:\\games\\driver.sys", L"system32\\drivers\\vga.sys",
          L"\\SystemRoot\\System32\\drivers\\vga.sys", L"", L"nv.sys", L"\\SystemRoot\\",
          L"D:\\System32\\DriverStore\\FileRepository\\a\\nv.sys",
          L"System32\\DriverStore\\FileRepository\\..\\..\\..\\games\\nv.sys"}) {
        EXPECT_EQ(folderOf(image), std::nullopt);
    }
}

} // namespace
} // namespace vexil::tests
