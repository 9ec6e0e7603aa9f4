#pragma once

#include <array>

// The host's own words for people, as keys of the language files like the module's. Errors and the help of
// the command line are English in every language: they are what a user searches for and quotes.
namespace vexil::host::keys {

inline constexpr const char* passed = "HOST_RESULT_PASSED";
inline constexpr const char* failed = "HOST_RESULT_FAILED";
inline constexpr const char* cleanupFailed = "HOST_RESULT_CLEANUP_FAILED";
inline constexpr const char* deviceUnavailable = "HOST_RESULT_DEVICE_UNAVAILABLE";
inline constexpr const char* notSupported = "HOST_RESULT_NOT_SUPPORTED";
inline constexpr const char* notCompleted = "HOST_RESULT_NOT_COMPLETED";
inline constexpr const char* unknownResult = "HOST_RESULT_UNKNOWN";

// Behind a number.
inline constexpr const char* countPassed = "HOST_COUNT_PASSED";
inline constexpr const char* countFailed = "HOST_COUNT_FAILED";
inline constexpr const char* countCleanupFailed = "HOST_COUNT_CLEANUP_FAILED";
inline constexpr const char* countNoVerdict = "HOST_COUNT_NO_VERDICT";
inline constexpr const char* countProgramErrors = "HOST_COUNT_PROGRAM_ERRORS";
inline constexpr const char* countNotRun = "HOST_COUNT_NOT_RUN";

inline constexpr const char* verdictPassed = "HOST_VERDICT_PASSED";
inline constexpr const char* verdictFailed = "HOST_VERDICT_FAILED";
inline constexpr const char* verdictNone = "HOST_VERDICT_NONE";
inline constexpr const char* verdictCleanupFailed = "HOST_VERDICT_CLEANUP_FAILED";
inline constexpr const char* verdictProgramError = "HOST_VERDICT_PROGRAM_ERROR";

inline constexpr const char* realMachine = "HOST_REAL_MACHINE";
inline constexpr const char* simulatedMachine = "HOST_SIMULATED_MACHINE";
inline constexpr const char* simulatedForLackOfCards = "HOST_SIMULATED_FOR_LACK_OF_CARDS";
inline constexpr const char* noCards = "HOST_NO_CARDS";
inline constexpr const char* direct3dMissing = "HOST_DIRECT3D_MISSING";
inline constexpr const char* displayMissing = "HOST_DISPLAY_MISSING";
inline constexpr const char* testRuns = "HOST_TEST_RUNS";
inline constexpr const char* noWorker = "HOST_NO_WORKER";
inline constexpr const char* stopping = "HOST_STOPPING";

inline constexpr const char* card = "HOST_CARD";
inline constexpr const char* cards = "HOST_CARDS";
inline constexpr const char* cardWithoutId = "HOST_CARD_WITHOUT_ID";
inline constexpr const char* temperature = "HOST_TEMPERATURE";
inline constexpr const char* load = "HOST_LOAD";
inline constexpr const char* freeMemory = "HOST_FREE_MEMORY";
inline constexpr const char* sample = "HOST_SAMPLE";
inline constexpr const char* now = "HOST_NOW";
inline constexpr const char* minimum = "HOST_MINIMUM";
inline constexpr const char* average = "HOST_AVERAGE";
inline constexpr const char* maximum = "HOST_MAXIMUM";
inline constexpr const char* history = "HOST_HISTORY";
inline constexpr const char* stopMonitor = "HOST_STOP_MONITOR";
inline constexpr const char* samplesWrittenTo = "HOST_SAMPLES_WRITTEN_TO";
inline constexpr const char* test = "HOST_TEST";
inline constexpr const char* tests = "HOST_TESTS";
inline constexpr const char* result = "HOST_RESULT";
inline constexpr const char* time = "HOST_TIME";
inline constexpr const char* messages = "HOST_MESSAGES";
inline constexpr const char* parameters = "HOST_PARAMETERS";
inline constexpr const char* defaultValue = "HOST_DEFAULT";
inline constexpr const char* supportedBy = "HOST_SUPPORTED_BY";
inline constexpr const char* noCardSupports = "HOST_NO_CARD_SUPPORTS";
inline constexpr const char* everyCard = "HOST_EVERY_CARD";
inline constexpr const char* notAvailable = "HOST_NOT_AVAILABLE";
inline constexpr const char* notOffered = "HOST_NOT_OFFERED";
inline constexpr const char* nothingToRun = "HOST_NOTHING_TO_RUN";
inline constexpr const char* summary = "HOST_SUMMARY";
inline constexpr const char* reportTitle = "HOST_REPORT_TITLE";
inline constexpr const char* machine = "HOST_MACHINE";
inline constexpr const char* module = "HOST_MODULE";
inline constexpr const char* operatingSystem = "HOST_OPERATING_SYSTEM";
inline constexpr const char* startedAt = "HOST_STARTED_AT";
inline constexpr const char* writtenTo = "HOST_WRITTEN_TO";
inline constexpr const char* loggedTo = "HOST_LOGGED_TO";
inline constexpr const char* logTitle = "HOST_LOG_TITLE";
inline constexpr const char* logEmpty = "HOST_LOG_EMPTY";
inline constexpr const char* logRecord = "HOST_LOG_RECORD";
inline constexpr const char* logRecords = "HOST_LOG_RECORDS";
inline constexpr const char* logCleared = "HOST_LOG_CLEARED";
inline constexpr const char* logExhausted = "HOST_LOG_EXHAUSTED";

inline constexpr const char* required = "HOST_REQUIRED";
inline constexpr const char* got = "HOST_GOT";
inline constexpr const char* notRunHere = "HOST_NOT_RUN_HERE";
inline constexpr const char* countAsRequired = "HOST_COUNT_AS_REQUIRED";
inline constexpr const char* countOtherwise = "HOST_COUNT_OTHERWISE";
inline constexpr const char* selfCheckPassed = "HOST_SELF_CHECK_PASSED";
inline constexpr const char* selfCheckFailed = "HOST_SELF_CHECK_FAILED";

// clang-format off
inline constexpr std::array all = {
    passed, failed, cleanupFailed, deviceUnavailable, notSupported, notCompleted, unknownResult,
    countPassed, countFailed, countCleanupFailed, countNoVerdict, countProgramErrors, countNotRun, verdictPassed, verdictFailed, verdictNone, verdictCleanupFailed,
    verdictProgramError, realMachine, simulatedMachine, simulatedForLackOfCards, noCards, direct3dMissing,
    displayMissing, testRuns, noWorker,
    stopping, card, cards, cardWithoutId, temperature, load, freeMemory, sample,
    now, minimum, average, maximum, history, stopMonitor, samplesWrittenTo, test, tests, result, time, messages,
    parameters, defaultValue, supportedBy, noCardSupports, everyCard, notAvailable, notOffered, nothingToRun,
    summary, reportTitle, machine, module, operatingSystem, startedAt, writtenTo, required, got,
    notRunHere, countAsRequired, countOtherwise, selfCheckPassed, selfCheckFailed,
    loggedTo, logTitle, logEmpty, logRecord, logRecords, logCleared, logExhausted,
};
// clang-format on

} // namespace vexil::host::keys
