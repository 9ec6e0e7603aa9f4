#include "host/core/test_run.h"

#include "host/core/host_keys.h"

#include <array>

namespace vexil::host {

namespace {

struct ResultWords {
    const char* name;
    const char* key;
};

/// By result.
constexpr std::array words = {
    ResultWords{"DeviceUnavailable", keys::deviceUnavailable},
    ResultWords{"Passed", keys::passed},
    ResultWords{"CleanupFailed", keys::cleanupFailed},
    ResultWords{"Failed", keys::failed},
    ResultWords{"NotSupported", keys::notSupported},
    ResultWords{"NotCompleted", keys::notCompleted},
};
static_assert(words.size() == core::TestResult::NotCompleted + 1);

} // namespace

const char* resultName(std::uint8_t result) { return result < words.size() ? words[result].name : "Unknown"; }

const char* resultKey(std::uint8_t result) {
    return result < words.size() ? words[result].key : keys::unknownResult;
}

} // namespace vexil::host
