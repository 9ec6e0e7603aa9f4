#pragma once

#include <string>

// What the module says to a user is a key; the host holds the texts. The exact bytes of a key are the
// contract, the full stops inside one included. A "|" joins several lines that the host shows one after
// another. The names and tool tips of the tests stand in the catalogue.
namespace vexil::keys {

inline const std::string moduleName = "VIDEO_CARD";

// Results, sent through the reporter.
inline const std::string abortedBySystemEvent =
    "TEST_ABORTED_BECAUSE_A_SYSTEM_EVENT_THAT_COULD_COMPROMISE_THE_OUTCOME_HAS_HAPPENED";
inline const std::string notSupportedInThisDevice = "TEST_NOT_SUPPORTED_IN_THIS_DEVICE";
inline const std::string couldNotBeCompleted = "TEST_COULD_NOT_BE_COMPLETED";
inline const std::string noDriver = "NO_DRIVER";
inline const std::string couldNotAllocateMemory = "A_VIDEO_CARD_COULD_NOT_ALLOCATE_MEMORY";
inline const std::string couldNotExecuteOperation = "A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION";
inline const std::string internalError =
    "AN_INTERNAL_ERROR_OCCURRED._|THIS_DOES_NOT_INDICATE_A_FAILURE._|PLEASE_TRY_AGAIN.";
inline const std::string inconsistentImages = "INCONSISTENCY_FOUND_WHILE_COMPARING_IMAGES";
inline const std::string mathOperationFailed = "MATH_OP_TEST_FAIL_MESSAGE";
inline const std::string cudaPatternFailed = "CUDA_MEMORY_TEST_PATTERN_FAIL";
inline const std::string cudaCommunicationError = "CUDA_MEMORY_TEST_COMMUNICATION_ERROR";
inline const std::string failedToAllocateGpuMemory = "FAILED_TO_ALLOCATE_GPU_MEMORY";
inline const std::string failedToFreeGpuMemory = "FAILED_TO_FREE_GPU_MEMORY";
inline const std::string cudaDriverIncompatible = "CUDA_DRIVER_INCOMPATIBLE";
/// The one key that is sent with something behind it: ": " and two numbers.
inline const std::string totalSurfacesTested = "TOTAL_SURFACES_TESTED";

// Notices and rows of a device.
inline const std::string cudaDriverOutToDate = "CUDA_DRIVER_OUT_TO_DATE";
inline const std::string udi = "UDI";
inline const std::string vendorId = "VENDOR_ID";
inline const std::string deviceId = "DEVICE_ID";
inline const std::string location = "LOCATION";
inline const std::string driverVersion = "DRIVER_VERSION";
inline const std::string directxVendorId = "DIRECTX_VENDOR_ID";
inline const std::string directxDeviceId = "DIRECTX_DEVICE_ID";
inline const std::string directxVideoCardMemory = "DIRECTX_VIDEO_CARD_MEMORY";

// Names of a card that has none, or none that can be shown.
inline const std::string nvidiaGraphicsCard = "NVIDIA_GRAPHICS_CARD";
inline const std::string amdGraphicsCard = "AMD_GRAPHICS_CARD";
inline const std::string intelGraphicsProcessor = "INTEL_GRAPHICS_PROCESSOR";
inline const std::string graphicsCard = "GRAPHICS_CARD";

// Dialogs and overlay.
inline const std::string applicationName = "APPLICATION_NAME";
inline const std::string closePopUp = "CLOSE_POP_UP";
inline const std::string escInstruction = "ESC_INSTRUCTION";
inline const std::string ok = "OK";
inline const std::string cancel = "CANCEL";
inline const std::string yes = "YES";
inline const std::string no = "NO";
inline const std::string stressInfoFps = "GPU_STRESS_TEST_INFO_FPS";
inline const std::string stressInfoGpuUsage = "GPU_STRESS_TEST_INFO_GPU_USAGE";
inline const std::string stressInfoTemperature = "GPU_STRESS_TEST_INFO_TEMPERATURE";
inline const std::string minimum = "MINIMUM";
inline const std::string maximum = "MAXIMUM";
inline const std::string average = "AVERAGE";
inline const std::string qtServerAppTitle = "QT_SERVER_APP"; ///< the suite's server application
inline const std::string qtServerApp = "qt_server_app";

// Kept for the suite, which shares this header; nothing in the module reads them.
inline const std::string possibleDefectiveComponents = "POSSIBLE_DEFECTIVE_COMPONENTS";
inline const std::string systemBoard = "SYSTEM_BOARD";
inline const std::string status = "STATUS";
inline const std::string vendor = "VENDOR";
inline const std::string description = "DESCRIPTION";
inline const std::string useANumericalValue = "USE_A_NUMERICAL_VALUE_BETWEEN_1_AND_9999";
inline const std::string invalidDurationParameter = "INVALID_DURATION_PARAMETER";
inline const std::string pleaseTryToRerun = "PLEASE_TRY_TO_RERUN_THE_APPLICATION_OR_REBOOT_THE_COMPUTER";
inline const std::string deviceCouldNotBeIdentified =
    "THIS_TEST_CANNOT_BE_PERFORMED_BECAUSE_THE_DEVICE_COULD_NOT_BE_IDENTIFIED_OR_HAS_BEEN_DISCONNECTED";
inline const std::string allExecutionsFinished = "AllExecutionsFinished";
inline const std::string back = "BACK";
inline const std::string nvidia = "Nvidia";
inline const std::string amd = "AMD";
inline const std::string dllSuffix = ".dll";
inline const std::string gigahertz = "Ghz";
inline const std::string globalObject = "Global\\{2194ABA1-BFFA-4e6b-8C26-D191BB16F9E6}";

} // namespace vexil::keys
