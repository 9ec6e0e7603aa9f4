#include "core/device_record.h"
#include "core/diagnostic_dispatcher.h"
#include "core/module.h"
#include "core/sal.h"
#include "core/test_descriptor.h"
#include "core/test_message.h"
#include "core/test_result.h"
#include "core/test_run_arguments.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <future>
#include <type_traits>

// The records that cross between host and module: their fields in their order, and the numbers in them.
namespace vexil::core {
namespace {

TEST(TestResult, HasTheNumbersThatHostsKnow) {
    EXPECT_EQ(TestResult::DeviceUnavailable, 0);
    EXPECT_EQ(TestResult::Passed, 1);
    EXPECT_EQ(TestResult::CleanupFailed, 2);
    EXPECT_EQ(TestResult::Failed, 3);
    EXPECT_EQ(TestResult::NotSupported, 4);
    EXPECT_EQ(TestResult::NotCompleted, 5);
    EXPECT_TRUE((std::is_same_v<decltype(TestResult::Passed), const std::uint8_t>));
}

TEST(TestMessage, IsAKindOfZeroAndAKey) {
    const TestMessage message;
    EXPECT_EQ(message.kind, 0);
    const auto& [kind, key] = TestMessage{1, "KEY"};
    EXPECT_TRUE((std::is_same_v<decltype(kind), const std::uint8_t>));
    EXPECT_EQ(kind, 1);
    EXPECT_EQ(key, "KEY");
}

TEST(TestDescriptor, KeepsTheOrderOfItsFields) {
    const TestDescriptor descriptor{-1, "name", "tooltip", {}, "group", 2, "a", "b", 3};
    EXPECT_EQ(descriptor.id, -1);
    EXPECT_EQ(descriptor.name, "name");
    EXPECT_EQ(descriptor.tooltip, "tooltip");
    EXPECT_TRUE(descriptor.parameters.empty());
    EXPECT_EQ(descriptor.group, "group");
    EXPECT_EQ(descriptor.groupRank, 2);
    EXPECT_EQ(descriptor.reservedText1, "a");
    EXPECT_EQ(descriptor.reservedText2, "b");
    EXPECT_EQ(descriptor.reservedNumber, 3);
}

TEST(DeviceRecord, KeepsTheOrderOfItsFields) {
    const DeviceRecord record{"id", "udi", "name", {{"p", "1"}}, {{"r", "2"}}, {{}, {}}, {"n"}, true};
    EXPECT_EQ(record.id, "id");
    EXPECT_EQ(record.udi, "udi");
    EXPECT_EQ(record.name, "name");
    EXPECT_EQ(record.properties[0].first, "p");
    EXPECT_EQ(record.rows[0].second, "2");
    EXPECT_EQ(record.children.size(), 2U);
    EXPECT_EQ(record.notices[0], "n");
    EXPECT_TRUE(record.present);
}

TEST(ModuleVersion, KeepsTheOrderAndTheWidthOfItsNumbers) {
    const ModuleVersion version{255, 65535, 65534, "label"};
    EXPECT_EQ(version.major, 255);
    EXPECT_EQ(version.minor, 65535);
    EXPECT_EQ(version.patch, 65534);
    EXPECT_EQ(version.label, "label");
    EXPECT_EQ(sizeof(version.major), 1U);
    EXPECT_EQ(sizeof(version.minor), 2U);
    EXPECT_EQ(sizeof(version.patch), 2U);
}

TEST(TestRunArguments, KeepTheOrderOfTheirFields) {
    const std::uint8_t cancel = 0;
    const auto events = std::make_shared<SystemEventState>();
    const TestRunArguments arguments{{}, &cancel, nullptr, events};
    EXPECT_TRUE(arguments.device.expired());
    EXPECT_EQ(arguments.cancelRequested, &cancel);
    EXPECT_EQ(arguments.reporter, nullptr);
    EXPECT_EQ(arguments.systemEvents, events);
}

TEST(TestExecution, OccupiesOneDeviceWithTheScopeOneOnly) {
    EXPECT_EQ(TestExecution::ownDevice, 1);
    EXPECT_EQ(TestExecution::wholeModule, 0);
}

TEST(WinDeviceScanFilter, HoldsTheInterfaceInFrontOfTheClassAndRestrictsNothingByItself) {
    const WinDeviceScanFilter filter({1, 2, 3, {4}}, {5, 6, 7, {8}});
    EXPECT_EQ(filter.interfaceGuid.data1, 1U);
    EXPECT_EQ(filter.classGuid.data1, 5U);
    EXPECT_LT(static_cast<const void*>(&filter.interfaceGuid), static_cast<const void*>(&filter.classGuid));
    EXPECT_EQ(WinDeviceScanFilter().interfaceGuid, DeviceGuid());
    EXPECT_EQ(WinDeviceScanFilter().classGuid, DeviceGuid());
    EXPECT_EQ(sizeof(DeviceGuid), 16U);
}

TEST(SystemEventState, IsAWordOf32BitsWithTheMutexBehindIt) {
    const SystemEventState state;
    EXPECT_EQ(static_cast<const void*>(&state.flags), static_cast<const void*>(&state));
    EXPECT_EQ(sizeof(state.flags), 4U);
    EXPECT_GT(static_cast<const void*>(&state.mutex), static_cast<const void*>(&state.flags));
}

TEST(SystemEventState, IsReadUnderItsMutex) {
    SystemEventState state;
    state.mutex.lock();
    auto reading = std::async(std::launch::async, [&] { return state.read(); });
    EXPECT_EQ(reading.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    state.flags = 0x80000001;
    state.mutex.unlock();
    ASSERT_EQ(reading.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    EXPECT_EQ(reading.get(), 0x80000001U);
    EXPECT_TRUE(state.mutex.try_lock()) << "the reader keeps nothing locked";
    state.mutex.unlock();
}

TEST(SystemEventState, StopsTestsForSixOfTheEightLowBits) { EXPECT_EQ(compromisingSystemEvents, 235U); }

} // namespace
} // namespace vexil::core
