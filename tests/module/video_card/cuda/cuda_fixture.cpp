#include "cuda_fixture.h"

#include "module/video_card/cuda/cuda_abstract_math_op_test.h"
#include "module/video_card/cuda/cuda_address_test.h"
#include "module/video_card/cuda/cuda_block_move_test.h"
#include "module/video_card/cuda/cuda_driver_api.h"
#include "module/video_card/cuda/cuda_memory_fault_test.h"
#include "module/video_card/cuda/cuda_modulo_x_test.h"
#include "module/video_card/cuda/cuda_moving_inversion_test.h"
#include "module/video_card/cuda/cuda_random_number_sequence_test.h"
#include "module/video_card/cuda/cuda_runtime.h"
#include "platform/shared_library.h"
#include "text_handlers.h"

#include <stdexcept>

namespace vexil::tests {

using module::video_card::CudaRuntime;

namespace {

constexpr int mostCards = 4;

void* loadSimulatedDriver() {
    // Loaded first, it is what the driver's name means from here on.
    void* const library = platform::openLibraryPath(VEXIL_SIMULATED_CUDA);
    if (library == nullptr) {
        throw std::runtime_error("the simulated driver cannot be loaded from " VEXIL_SIMULATED_CUDA);
    }
    return library;
}

template <typename Function>
Function simulatedSymbol(const char* name) {
    static void* const library = loadSimulatedDriver();
    return reinterpret_cast<Function>(platform::librarySymbol(library, name));
}

std::shared_ptr<module::video_card::Device> makeUnlistedDevice() {
    sal::TextHandler strings;
    sal::NumberText numbers;
    module::video_card::AdapterRecord adapter;
    adapter.name = "Simulated card";
    adapter.vendorId = "10DE";
    adapter.location = "01:00.0";
    return std::make_shared<module::video_card::Device>(
        adapter, module::video_card::DeviceServices{strings, numbers, 12040});
}

/// The runtime holds on to the contexts of the cards that are about to go.
void forgetCards() {
    CudaRuntime& cuda = CudaRuntime::instance();
    for (int card = mostCards - 1; card >= 0; --card) {
        if (cuda.cudaSetDevice(card) == module::video_card::cudaSuccess) {
            cuda.cudaDeviceReset();
        }
    }
    cuda.cudaGetLastError();
}

} // namespace

simulated::cuda::Control& CudaTest::driver() {
    static auto* const control =
        simulatedSymbol<simulated::cuda::ControlFunction>(simulated::cuda::controlSymbol)();
    return *control;
}

void CudaTest::loseContext() {
    static const auto setCurrent =
        simulatedSymbol<decltype(cuda::CudaDriverCalls::cuCtxSetCurrent)>("cuCtxSetCurrent");
    EXPECT_EQ(setCurrent(nullptr), cuda::CUDA_SUCCESS);
}

CudaTest::CudaTest() : device(makeDevice()) { configure(cardWith(20)); }

CudaTest::~CudaTest() {
    driver().observe({});
    driver().observeLaunches({});
    forgetCards();
}

simulated::CudaCardSection CudaTest::cardWith(std::uint32_t testedMiB) {
    simulated::CudaCardSection card;
    card.pciBusId = "0000:01:00.0";
    card.memoryBytes = std::uint64_t{testedMiB + untestedMiB} << 20;
    return card;
}

void CudaTest::configure(const simulated::CudaCardSection& card, std::int32_t driverVersion) {
    driver().observe({});
    forgetCards();
    driver().configure({driverVersion, {card}});
    forgetCards();
}

void CudaTest::configureWithoutLaunches(std::uint32_t testedMiB) {
    auto card = cardWith(testedMiB);
    card.failingLaunches.first = 1;
    configure(card);
}

unsigned CudaTest::launchesOf(CudaTestId id) {
    cancel = 0;
    events->flags = 0;
    configureWithoutLaunches(17);
    EXPECT_EQ(run(id), core::TestResult::Passed);
    const auto launches = static_cast<unsigned>(driver().state(0).launches);
    EXPECT_GE(launches, 3U);
    return launches;
}

void CudaTest::expectReleased() {
    EXPECT_EQ(driver().state(0).allocations, std::vector<std::uint64_t>{}) << "the card holds nothing";
}

std::shared_ptr<module::video_card::Device> CudaTest::makeDevice() {
    auto device = makeUnlistedDevice();
    device->setCuda({"01:00.0", 0});
    return device;
}

std::shared_ptr<module::video_card::Device> CudaTest::deviceWithoutCuda() { return makeUnlistedDevice(); }

std::unique_ptr<core::Test> CudaTest::makeCudaTest(CudaTestId id) {
    using namespace module::video_card;
    switch (id) {
    case memoryFault:
        return std::make_unique<CUDAMemoryFaultTest>();
    case address:
        return std::make_unique<CUDAAddressTest>();
    case movingInversion:
        return std::make_unique<CUDAMovingInversionTest>();
    case blockMove:
        return std::make_unique<CUDABlockMoveTest>();
    case randomSequence:
        return std::make_unique<CudaRandomNumberSequenceTest>();
    case moduloX:
        return std::make_unique<CudaModuloXTest>();
    case standardMath:
        return std::make_unique<CudaStandardMathOperation>();
    case advancedMath:
        return std::make_unique<CudaAdvancedMathOperation>();
    }
    throw std::invalid_argument("no such test");
}

core::TestRunArguments CudaTest::arguments() { return {device, &cancel, &reporter, events}; }

std::uint8_t CudaTest::run(CudaTestId id) { return makeCudaTest(id)->execute(arguments()); }

void CudaTest::at(std::string_view call, unsigned nth, std::function<void()> action) {
    driver().observe([call, nth, seen = 0U, action = std::move(action)](const char* name) mutable {
        if (name == call && ++seen == nth) {
            action();
        }
    });
}

} // namespace vexil::tests
