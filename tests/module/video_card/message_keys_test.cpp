#include "core/message_keys.h"
#include "module/video_card/vocabulary.h"
#include "system/folders.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace vexil::module::video_card {
namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

TEST(MessageKeys, HaveTheBytesThatHostsKnow) {
    const Pairs expected = {
        {keys::moduleName, "VIDEO_CARD"},
        {keys::abortedBySystemEvent,
         "TEST_ABORTED_BECAUSE_A_SYSTEM_EVENT_THAT_COULD_COMPROMISE_THE_OUTCOME_HAS_HAPPENED"},
        {keys::notSupportedInThisDevice, "TEST_NOT_SUPPORTED_IN_THIS_DEVICE"},
        {keys::couldNotBeCompleted, "TEST_COULD_NOT_BE_COMPLETED"},
        {keys::noDriver, "NO_DRIVER"},
        {keys::couldNotAllocateMemory, "A_VIDEO_CARD_COULD_NOT_ALLOCATE_MEMORY"},
        {keys::couldNotExecuteOperation, "A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION"},
        {keys::internalError,
         "AN_INTERNAL_ERROR_OCCURRED._|THIS_DOES_NOT_INDICATE_A_FAILURE._|PLEASE_TRY_AGAIN."},
        {keys::inconsistentImages, "INCONSISTENCY_FOUND_WHILE_COMPARING_IMAGES"},
        {keys::mathOperationFailed, "MATH_OP_TEST_FAIL_MESSAGE"},
        {keys::cudaPatternFailed, "CUDA_MEMORY_TEST_PATTERN_FAIL"},
        {keys::cudaCommunicationError, "CUDA_MEMORY_TEST_COMMUNICATION_ERROR"},
        {keys::failedToAllocateGpuMemory, "FAILED_TO_ALLOCATE_GPU_MEMORY"},
        {keys::failedToFreeGpuMemory, "FAILED_TO_FREE_GPU_MEMORY"},
        {keys::cudaDriverIncompatible, "CUDA_DRIVER_INCOMPATIBLE"},
        {keys::totalSurfacesTested, "TOTAL_SURFACES_TESTED"},
        {keys::cudaDriverOutToDate, "CUDA_DRIVER_OUT_TO_DATE"},
        {keys::udi, "UDI"},
        {keys::vendorId, "VENDOR_ID"},
        {keys::deviceId, "DEVICE_ID"},
        {keys::location, "LOCATION"},
        {keys::driverVersion, "DRIVER_VERSION"},
        {keys::directxVendorId, "DIRECTX_VENDOR_ID"},
        {keys::directxDeviceId, "DIRECTX_DEVICE_ID"},
        {keys::directxVideoCardMemory, "DIRECTX_VIDEO_CARD_MEMORY"},
        {keys::nvidiaGraphicsCard, "NVIDIA_GRAPHICS_CARD"},
        {keys::amdGraphicsCard, "AMD_GRAPHICS_CARD"},
        {keys::intelGraphicsProcessor, "INTEL_GRAPHICS_PROCESSOR"},
        {keys::graphicsCard, "GRAPHICS_CARD"},
        {keys::applicationName, "APPLICATION_NAME"},
        {keys::closePopUp, "CLOSE_POP_UP"},
        {keys::escInstruction, "ESC_INSTRUCTION"},
        {keys::ok, "OK"},
        {keys::cancel, "CANCEL"},
        {keys::yes, "YES"},
        {keys::no, "NO"},
        {keys::stressInfoFps, "GPU_STRESS_TEST_INFO_FPS"},
        {keys::stressInfoGpuUsage, "GPU_STRESS_TEST_INFO_GPU_USAGE"},
        {keys::stressInfoTemperature, "GPU_STRESS_TEST_INFO_TEMPERATURE"},
        {keys::minimum, "MINIMUM"},
        {keys::maximum, "MAXIMUM"},
        {keys::average, "AVERAGE"},
        {keys::qtServerAppTitle, "QT_SERVER_APP"},
        {keys::qtServerApp, "qt_server_app"},
    };
    for (const auto& [key, text] : expected) {
        EXPECT_EQ(key, text);
    }
}

TEST(MessageKeys, KeepWhatTheSuiteReadsFromTheSharedHeader) {
    const Pairs expected = {
        {keys::possibleDefectiveComponents, "POSSIBLE_DEFECTIVE_COMPONENTS"},
        {keys::systemBoard, "SYSTEM_BOARD"},
        {keys::status, "STATUS"},
        {keys::vendor, "VENDOR"},
        {keys::description, "DESCRIPTION"},
        {keys::useANumericalValue, "USE_A_NUMERICAL_VALUE_BETWEEN_1_AND_9999"},
        {keys::invalidDurationParameter, "INVALID_DURATION_PARAMETER"},
        {keys::pleaseTryToRerun, "PLEASE_TRY_TO_RERUN_THE_APPLICATION_OR_REBOOT_THE_COMPUTER"},
        {keys::deviceCouldNotBeIdentified,
         "THIS_TEST_CANNOT_BE_PERFORMED_BECAUSE_THE_DEVICE_COULD_NOT_BE_IDENTIFIED_"
         "OR_HAS_BEEN_DISCONNECTED"},
        {keys::allExecutionsFinished, "AllExecutionsFinished"},
        {keys::back, "BACK"},
        {keys::nvidia, "Nvidia"},
        {keys::amd, "AMD"},
        {vocabulary::intel, "Intel"},
        {keys::dllSuffix, ".dll"},
        {vocabulary::arc, "Arc"},
        {keys::gigahertz, "Ghz"},
        {keys::globalObject, R"(Global\{2194ABA1-BFFA-4e6b-8C26-D191BB16F9E6})"},
        {vocabulary::folderSecurity, "D:(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200a9;;;BU)"},
        {vocabulary::nvidiaVendorId, "10DE"},
        {vocabulary::amdVendorId, "1002"},
        {vocabulary::intelVendorId, "8086"},
        {vocabulary::celsius, "\xC2\xB0"
                              "C"},
        {vocabulary::pci, "PCI"},
        {vocabulary::bus, "bus"},
        {vocabulary::device, "device"},
        {vocabulary::function, "function"},
        {vocabulary::basicDisplayAdapter, "Microsoft Basic Display Adapter"},
    };
    for (const auto& [key, text] : expected) {
        EXPECT_EQ(key, text);
    }
}

TEST(Vocabulary, SecuresFoldersAsTheMapOfThemDoes) {
    const auto& narrow = vocabulary::folderSecurity;
    EXPECT_EQ(std::wstring(narrow.begin(), narrow.end()), system::folderSecurity);
}

} // namespace
} // namespace vexil::module::video_card
