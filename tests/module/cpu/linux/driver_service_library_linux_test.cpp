#include "platform/driver_service_library.h"

#include "platform/shared_library.h"
#include "support/test_folder.h"

#include <dlfcn.h>

#include <gtest/gtest.h>

#include <filesystem>

namespace vexil::tests {
namespace {

namespace fs = std::filesystem;

constexpr const char* fileName = "libNorvaneDiagnosticsDriverService.so";

fs::path fileOf(void* library) {
    Dl_info info{};
    return dladdr(platform::librarySymbol(library, "CreateVXKService"), &info) == 0 ? fs::path()
                                                                                    : info.dli_fname;
}

TEST(DriverServiceLibrary, IsTheOneBesideTheProgramAndNotTheOneInTheWorkingDirectory) {
    const auto program = fs::read_symlink("/proc/self/exe").parent_path();
    const auto before = fs::current_path();
    const auto folder = testFolder();
    fs::copy_file(VEXIL_DRIVER_SERVICE, folder / fileName);
    fs::current_path(folder);
    void* library = platform::openDriverServiceLibrary();
    fs::current_path(before);
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(fileOf(library).parent_path(), program);
    platform::closeLibrary(library);
}

} // namespace
} // namespace vexil::tests
