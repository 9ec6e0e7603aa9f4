#include "platform/driver_service_library.h"

#include "platform/shared_library.h"
#include "support/test_folder.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>

namespace vexil::tests {
namespace {

namespace fs = std::filesystem;

TEST(DriverServiceLibrary, IsTheOneInTheWorkingDirectory) {
    const auto before = fs::current_path();
    const auto folder = testFolder();
    fs::create_directory(folder / "empty");
    fs::current_path(folder / "empty");
    EXPECT_EQ(platform::openDriverServiceLibrary(), nullptr) << "wherever else there may be one";

    fs::copy_file(VEXIL_DRIVER_SERVICE, folder / "NorvaneDiagnosticsDriverService.dll");
    fs::current_path(folder);
    void* library = platform::openDriverServiceLibrary();
    fs::current_path(before);
    ASSERT_NE(library, nullptr);
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(static_cast<HMODULE>(library), path, MAX_PATH);
    EXPECT_TRUE(fs::equivalent(path, folder / "NorvaneDiagnosticsDriverService.dll"));
    EXPECT_NE(platform::librarySymbol(library, "CreateVXKService"), nullptr);
    EXPECT_NE(platform::librarySymbol(library, "DestroyVXKService"), nullptr);
    platform::closeLibrary(library);
}

TEST(DriverServiceLibrary, ThatIsLoadedFromElsewhereIsASimulatedMachinesOnly) {
    const auto before = fs::current_path();
    const auto folder = testFolder();
    fs::create_directory(folder / "elsewhere");
    const auto file = folder / "elsewhere" / "NorvaneDiagnosticsDriverService.dll";
    fs::copy_file(VEXIL_DRIVER_SERVICE, file);
    void* loaded = platform::openLibraryPath(file.string());
    ASSERT_NE(loaded, nullptr);
    fs::current_path(folder);
    EXPECT_EQ(platform::openDriverServiceLibrary(), nullptr) << "on a real machine";
    void* processor = platform::openLibraryPath(VEXIL_SIMULATED_PROCESSOR);
    ASSERT_NE(processor, nullptr);
    void* service = platform::openDriverServiceLibrary();
    fs::current_path(before);
    EXPECT_EQ(service, loaded);
    for (void* library : {service, processor, loaded}) {
        platform::closeLibrary(library);
    }
}

} // namespace
} // namespace vexil::tests
