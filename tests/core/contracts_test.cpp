#include "core/device.h"
#include "core/device_scanner.h"
#include "core/diagnostic_dispatcher.h"
#include "core/input_interaction.h"
#include "core/library_loader.h"
#include "core/module.h"
#include "core/sal.h"
#include "core/test.h"
#include "support/slot_of.h"
#include "system/cim/cim.h"
#include "system/cim/wmi_query.h"
#include "system/win_module.h"

#include <gtest/gtest.h>

#include <type_traits>

// Host and module call each other through tables that each compiled for itself: the order of the operations
// is part of the contract.
namespace vexil::core {
namespace {

using tests::slotOf;

/// Where the operations begin behind a virtual destructor.
constexpr std::size_t first = 2;

TEST(Contracts, KeepTheOrderOfAModulesOperations) {
    EXPECT_EQ(slotOf(&TestFactory::createTest), first);
    EXPECT_EQ(slotOf(&Module::createTest), first);
    EXPECT_EQ(slotOf(&Module::moduleId), first + 1);
    EXPECT_EQ(slotOf(&Module::shortName), first + 2);
    EXPECT_EQ(slotOf(&Module::nameKey), first + 3);
    EXPECT_EQ(slotOf(&Module::moduleVersion), first + 4);
    EXPECT_EQ(slotOf(&Module::deviceScanner), first + 5);
    EXPECT_EQ(slotOf(&Module::dispatcher), first + 6);
    EXPECT_EQ(slotOf(&Module::shutdown), first + 7);
    EXPECT_EQ(slotOf(&Module::testIds), first + 8);
    EXPECT_EQ(slotOf(&Module::toolIds), first + 9);
    EXPECT_EQ(slotOf(&Module::description), first + 10);
}

TEST(Contracts, KeepTheOrderOfADevicesOperations) {
    EXPECT_EQ(slotOf(&Device::id), first);
    EXPECT_EQ(slotOf(&Device::displayName), first + 1);
    EXPECT_EQ(slotOf(&Device::hasUdi), first + 2);
    EXPECT_EQ(slotOf(&Device::udi), first + 3);
    EXPECT_EQ(slotOf(&Device::properties), first + 4);
    EXPECT_EQ(slotOf(&Device::notices), first + 5);
    EXPECT_EQ(slotOf(&Device::isPresent), first + 6);
    EXPECT_EQ(slotOf(&Device::refresh), first + 7);
}

TEST(Contracts, KeepTheOrderOfAScannersOperations) {
    EXPECT_EQ(slotOf(&DeviceScanner::scan), first);
    EXPECT_EQ(slotOf(&DeviceScanner::checkPresence), first + 1);
    EXPECT_EQ(slotOf(&DeviceScanner::findDevice), first + 2);
    EXPECT_EQ(slotOf(&DeviceScanner::devices), first + 3);
}

TEST(Contracts, KeepTheOrderOfAListenersOperations) {
    EXPECT_EQ(slotOf(&DeviceScanListener::scanFinished), slotOf(&DeviceScanListener::deviceFound) + 1);
    EXPECT_EQ(slotOf(&DeviceScanListener::presenceChecked), slotOf(&DeviceScanListener::deviceFound) + 2);
}

TEST(Contracts, KeepTheOrderOfATestsOperations) {
    EXPECT_EQ(slotOf(&core::Test::execute), first);
    EXPECT_EQ(slotOf(&core::Test::requiresExclusiveRun), first + 1);
    EXPECT_EQ(slotOf(&core::Test::expectedDurationMinutes), first + 2);
    EXPECT_EQ(slotOf(&core::Test::isSupported), first + 3);
}

TEST(Contracts, KeepTheOrderOfAParametersOperations) {
    EXPECT_EQ(slotOf(&TestParameter::description), first);
    EXPECT_EQ(slotOf(&TestParameter::isValid), first + 1);
    EXPECT_EQ(slotOf(&TestParameter::setValue), first + 2);
}

TEST(Contracts, KeepTheOrderOfADispatchersOperations) {
    EXPECT_EQ(slotOf(&TaskInterface::run), first);
    EXPECT_EQ(slotOf(&DiagnosticDispatcher::canStart), first);
    EXPECT_EQ(slotOf(&DiagnosticDispatcher::execute), first + 1);
    EXPECT_EQ(slotOf(&DiagnosticDispatcher::finished), first + 2) << "in front of started";
    EXPECT_EQ(slotOf(&DiagnosticDispatcher::started), first + 3);
}

TEST(Contracts, KeepTheDestructorOfAnInteractionBetweenItsOperations) {
    EXPECT_EQ(slotOf(&InputInteraction::ask), 0U);
    EXPECT_EQ(slotOf(&InputInteraction::present), 3U);
}

TEST(Contracts, KeepTheOrderOfAReportersOperationsBehindASlotThatTheModuleDoesNotCall) {
    EXPECT_GT(slotOf(&TestReporter::setProgress), 0U);
    EXPECT_EQ(slotOf(&TestReporter::report), slotOf(&TestReporter::setProgress) + 1);
    EXPECT_EQ(slotOf(&TestReporter::interact), slotOf(&TestReporter::setProgress) + 2);
}

TEST(Contracts, KeepTheOrderOfTheSuitesObjects) {
    EXPECT_EQ(slotOf(&::Module::load), first);
    EXPECT_EQ(slotOf(&::Module::resolve), first + 1);
    EXPECT_EQ(slotOf(&::Module::release), first + 2);
    EXPECT_EQ(slotOf(&SystemTimer::secondsBetween), slotOf(&SystemTimer::sleepMilliseconds) + 1);
    EXPECT_EQ(slotOf(&SystemTimer::now), slotOf(&SystemTimer::sleepMilliseconds) + 2);
    EXPECT_EQ(slotOf(&NumberHandler::toText), slotOf(&NumberHandler::parse) + 1);
    EXPECT_EQ(slotOf(&StringHandler::normalize), slotOf(&StringHandler::makeIdentifier) + 1);
    EXPECT_EQ(slotOf(&StringHandler::toLower), slotOf(&StringHandler::makeIdentifier) + 2);
    EXPECT_EQ(slotOf(&SystemDeviceList::property), slotOf(&SystemDeviceList::scan) + 1);
    EXPECT_EQ(slotOf(&SystemDeviceList::count), slotOf(&SystemDeviceList::scan) + 2);
}

TEST(Contracts, KeepTheOrderOfTheRepositorysOperations) {
    using system::Cim;
    EXPECT_EQ(slotOf(&Cim::queryWhere), first);
    EXPECT_EQ(slotOf(&Cim::query), first + 1);
    EXPECT_EQ(slotOf(&Cim::writeRecord), first + 2);
    EXPECT_EQ(slotOf(&Cim::removeNamespace), first + 3);
    EXPECT_EQ(slotOf(&Cim::freeRows), first + 4);
}

TEST(Contracts, KeepTheFieldsOfTheSystemsServices) {
    EXPECT_EQ(sizeof(::Module), sizeof(void*)) << "the table of operations alone";
    EXPECT_EQ(sizeof(WinModule), sizeof(::Module));
    EXPECT_EQ(sizeof(system::Cim), sizeof(void*));
    EXPECT_EQ(sizeof(system::WmiQuery), sizeof(bool));
}

TEST(Contracts, AreDestroyedThroughTheirInterfaces) {
    EXPECT_TRUE(std::has_virtual_destructor_v<TestFactory>);
    EXPECT_TRUE((std::is_base_of_v<TestFactory, Module>));
    EXPECT_TRUE(std::has_virtual_destructor_v<Device>);
    EXPECT_TRUE(std::has_virtual_destructor_v<DeviceScanner>);
    EXPECT_TRUE(std::has_virtual_destructor_v<core::Test>);
    EXPECT_TRUE(std::has_virtual_destructor_v<TestParameter>);
    EXPECT_TRUE(std::has_virtual_destructor_v<TaskInterface>);
    EXPECT_TRUE(std::has_virtual_destructor_v<DiagnosticDispatcher>);
    EXPECT_TRUE(std::has_virtual_destructor_v<InputInteraction>);
    EXPECT_TRUE(std::has_virtual_destructor_v<DeviceScanFilter>);
    EXPECT_TRUE(std::has_virtual_destructor_v<::Module>);
    EXPECT_TRUE(std::has_virtual_destructor_v<system::Cim>);
}

} // namespace
} // namespace vexil::core
