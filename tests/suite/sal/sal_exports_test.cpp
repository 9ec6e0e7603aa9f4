#include "core/sal.h"
#include "host/platform/process.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

TEST(Sal, HandsOutOneObjectOfEachKindForTheProcess) {
    EXPECT_EQ(get_module(), get_module());
    EXPECT_EQ(get_timer(), get_timer());
    EXPECT_EQ(get_string_handler(), get_string_handler());
    EXPECT_EQ(get_number_handler(), get_number_handler());
}

TEST(Sal, KeepsTheDeviceListUntilItsLastUserGivesItBack) {
    auto* first = get_device_scanner();
    EXPECT_EQ(get_device_scanner(), first);
    release_device_scanner();
    SystemDeviceList::InterfacePaths paths;
    EXPECT_EQ(first->scan(WinDeviceScanFilter(), paths), 0);
    release_device_scanner();
    release_device_scanner();
    EXPECT_NE(get_device_scanner(), nullptr) << "one release too many does no harm";
    release_device_scanner();
}

TEST(Sal, HasNoUserOfADeviceListThatCouldNotBeMade) {
    using vexil::host::platform::setEnvironmentVariable;
    setEnvironmentVariable("VEXIL_SCENARIO", "no such scenario");
    EXPECT_ANY_THROW(get_device_scanner());
    setEnvironmentVariable("VEXIL_SCENARIO", "");
    EXPECT_NE(get_device_scanner(), nullptr);
    release_device_scanner();
}

TEST(Sal, TellsAnExistingFolderForTemporaryFiles) {
    EXPECT_TRUE(std::filesystem::is_directory(get_temporary_path()));
}

TEST(Sal, MeasuresTimeAcrossTheWrapOfItsTick) {
    EXPECT_DOUBLE_EQ(get_timer()->secondsBetween(1000, 3500), 2.5);
    EXPECT_DOUBLE_EQ(get_timer()->secondsBetween(0xFFFFFF00U, 0x000000F4U), 0.5);
    const auto start = get_timer()->now();
    get_timer()->sleepMilliseconds(20);
    EXPECT_GE(get_timer()->secondsBetween(start, get_timer()->now()), 0.019);
}

TEST(Sal, CountsABegunTenthOfASecondAsAWholeOne) {
    auto& timer = *get_timer();
    EXPECT_EQ(timer.secondsBetween(7, 7), 0.0);
    EXPECT_EQ(timer.secondsBetween(7, 8), 0.1);
    EXPECT_EQ(timer.secondsBetween(0, 100), 0.1);
    EXPECT_EQ(timer.secondsBetween(0, 101), 0.2);
    EXPECT_EQ(timer.secondsBetween(0, 401), 50 / 100.0);
    EXPECT_EQ(timer.secondsBetween(0, 400), 40 / 100.0);
}

TEST(Sal, AnswersNullForALibraryOrASymbolThatIsNotThere) {
    EXPECT_EQ(get_module()->load("no_such_library_anywhere", 1), nullptr);
}

TEST(Sal, LoadsALibraryResolvesItsFunctionsAndGivesItBack) {
    Module& loader = *get_module();
    const auto path = vexil::host::platform::programFolder() / VEXIL_SAL_FILE;
    void* library = loader.load(path.string().c_str(), 1);
    ASSERT_NE(library, nullptr) << path;
    const auto getTimer = reinterpret_cast<SystemTimer* (*)()>(loader.resolve(library, "get_timer"));
    ASSERT_NE(getTimer, nullptr);
    EXPECT_EQ(getTimer(), get_timer()) << "it is the one of this process";
    EXPECT_EQ(loader.resolve(library, "no_such_function"), nullptr);
    loader.release(library);
    EXPECT_EQ(getTimer(), get_timer()) << "the program still uses it";
}

TEST(Sal, LoadsByItsBareNameWhatTheProcessHasAlreadyAndNothingElse) {
    Module& loader = *get_module();
    EXPECT_EQ(loader.load(VEXIL_PLANTED_NAME, 1), nullptr);
    void* planted = loader.load(VEXIL_PLANTED_LIBRARY, 1);
    ASSERT_NE(planted, nullptr);
    void* loaded = loader.load(VEXIL_PLANTED_NAME, 1);
    EXPECT_EQ(loaded, planted) << "so a stand-in comes into its place";
    loader.release(loaded);
    loader.release(planted);
}

} // namespace
