#include "module/video_card/cuda/cuda_runtime.h"

#include "cuda_fixture.h"
#include "module/video_card/cuda/device_code.h"

#include <algorithm>
#include <cstring>
#include <set>
#include <thread>

namespace vexil::tests {

using namespace module::video_card;

namespace {

/// A loader whose one library lacks what the test says.
class FakeLoader final : public ::Module {
public:
    bool hasLibrary = true;
    std::set<std::string> missing;
    unsigned loads = 0;

    void* load(const char* name, std::uint32_t flags) override {
        EXPECT_STREQ(name, "the driver");
        EXPECT_EQ(flags, 1U);
        ++loads;
        return hasLibrary ? this : nullptr;
    }
    void* resolve(void*, const char* symbol) override;
    void release(void*) override { ADD_FAILURE() << "drivers stay loaded"; }
};

/// A driver that can do nothing and says so with success, for all entry points of one shape.
template <typename... Parameters>
cuda::CUresult succeed(Parameters...) {
    return cuda::CUDA_SUCCESS;
}

template <typename... Parameters>
void* successFor(cuda::CUresult (*)(Parameters...)) {
    return reinterpret_cast<void*>(&succeed<Parameters...>);
}

void* FakeLoader::resolve(void*, const char* symbol) {
    void* found = nullptr;
    cuda::CudaDriverCalls calls;
    cuda::forEachDriverCall(calls, [&](auto& entry, const char* name) {
        if (std::string(name) == symbol && !missing.contains(symbol)) {
            found = successFor(entry);
        }
    });
    return found;
}

FakeLoader* currentLoader = nullptr;
::Module* theLoader() { return currentLoader; }

class FakeDriver : public testing::Test {
protected:
    FakeDriver() { currentLoader = &loader; }
    ~FakeDriver() override { currentLoader = nullptr; }

    FakeLoader loader;
    CudaRuntime runtime{&theLoader, "the driver"};
};

class CudaRuntimeOnACard : public CudaTest {
protected:
    CudaRuntime& cuda = CudaRuntime::instance();
};

} // namespace

TEST_F(FakeDriver, IsNoDriverAtAllAndThatIsANormalAnswer) {
    loader.hasLibrary = false;
    int version = 7, count = 7;
    EXPECT_EQ(runtime.cudaDriverGetVersion(&version), cudaSuccess);
    EXPECT_EQ(version, 0);
    EXPECT_EQ(runtime.cudaGetDeviceCount(&count), cudaErrorInsufficientDriver);
    EXPECT_EQ(count, 0);
    void* memory = nullptr;
    EXPECT_EQ(runtime.cudaMalloc(&memory, 1), cudaErrorInsufficientDriver);
    EXPECT_EQ(runtime.cudaDeviceReset(), cudaErrorInsufficientDriver);
    EXPECT_EQ(loader.loads, 1U) << "it is looked for once";
}

TEST_F(FakeDriver, MayLackAnyEntryPoint) {
    cuda::CudaDriverCalls calls;
    std::vector<std::string> symbols;
    cuda::forEachDriverCall(calls, [&](auto&, const char* symbol) { symbols.emplace_back(symbol); });
    for (const auto& symbol : symbols) {
        SCOPED_TRACE(symbol);
        FakeLoader lacking;
        lacking.missing = {symbol};
        currentLoader = &lacking;
        CudaRuntime poor(&theLoader, "the driver");
        const char key = 0;
        auto* const binary = poor.cudaRegisterFatBinary(".version 7.3");
        poor.cudaRegisterFunction(binary, &key, "kernel", -1);

        int number = 0;
        char text[13];
        cudaDeviceProp properties;
        std::size_t free = 0, total = 0;
        void* memory = &number;
        void* something = &number;
        std::vector<cudaError_t> errors = {
            poor.cudaDriverGetVersion(&number),
            poor.cudaGetDeviceCount(&number),
            poor.cudaDeviceGetPCIBusId(text, 13, 0),
            poor.cudaGetDeviceProperties(&properties, 0),
            poor.cudaSetDevice(0),
            poor.cudaMemGetInfo(&free, &total),
            poor.cudaMalloc(&memory, 1),
            poor.cudaFree(something),
            poor.cudaMemcpy(something, something, 1, cudaMemcpyHostToDevice),
            poor.cudaMemcpy(something, something, 1, cudaMemcpyDeviceToHost),
            poor.cudaMemcpy(something, something, 1, cudaMemcpyDeviceToDevice),
            poor.cudaLaunchKernel(&key, {}, {}, nullptr, 0, nullptr),
            poor.cudaDeviceSynchronize(),
            poor.cudaDeviceReset(),
        };
        const std::set<std::string> unused = {"cuMemsetD32_v2", "cuModuleUnload",
                                              "cuDevicePrimaryCtxRelease_v2"};
        EXPECT_EQ(std::ranges::count(errors, cudaErrorInsufficientDriver) > 0, !unused.contains(symbol));
        EXPECT_TRUE(std::ranges::all_of(errors, [](cudaError_t error) {
            return error == cudaSuccess || error == cudaErrorInsufficientDriver;
        }));
    }
}

TEST_F(FakeDriver, AnswersAMemcpyOfAnUnknownKindItself) {
    int number = 0;
    EXPECT_EQ(runtime.cudaMemcpy(&number, &number, 4, static_cast<cudaMemcpyKind>(9)), cudaErrorInvalidValue);
}

TEST_F(FakeDriver, KeepsTheLastErrorUntilItIsAskedFor) {
    loader.missing = {"cuMemAlloc_v2"};
    void* memory = nullptr;
    EXPECT_EQ(runtime.cudaMalloc(&memory, 1), cudaErrorInsufficientDriver);
    EXPECT_EQ(runtime.cudaDeviceSynchronize(), cudaSuccess);
    EXPECT_EQ(runtime.cudaMalloc(&memory, 0), cudaSuccess);
    EXPECT_EQ(runtime.cudaGetLastError(), cudaErrorInsufficientDriver) << "success does not clear it";
    EXPECT_EQ(runtime.cudaGetLastError(), cudaSuccess) << "asking does";
}

TEST_F(FakeDriver, TakesConfigurationsBackInTheOrderOfAStack) {
    runtime.cudaPushCallConfiguration({1}, {2}, 3, nullptr);
    runtime.cudaPushCallConfiguration({4}, {5}, 6, nullptr);
    dim3 grid, block;
    std::size_t shared = 0;
    cudaStream_t stream = nullptr;
    EXPECT_EQ(runtime.cudaPopCallConfiguration(&grid, &block, &shared, &stream), cudaSuccess);
    EXPECT_EQ(grid.x, 4U);
    EXPECT_EQ(runtime.cudaPopCallConfiguration(&grid, &block, &shared, &stream), cudaSuccess);
    EXPECT_EQ(block.x, 2U);
    EXPECT_EQ(shared, 3U);
    EXPECT_EQ(runtime.cudaPopCallConfiguration(&grid, &block, &shared, &stream),
              cudaErrorMissingConfiguration);
}

TEST_F(FakeDriver, LaunchesNothingThatIsNotRegistered) {
    const char key = 0;
    EXPECT_EQ(runtime.cudaLaunchKernel(&key, {}, {}, nullptr, 0, nullptr), cudaErrorInvalidDeviceFunction);
    auto* const binary = runtime.cudaRegisterFatBinary(".version 7.3");
    runtime.cudaRegisterFunction(binary, &key, "kernel", -1);
    runtime.cudaRegisterFatBinaryEnd(binary);
    EXPECT_EQ(runtime.cudaLaunchKernel(&key, {}, {}, nullptr, 0, nullptr), cudaSuccess);
    runtime.cudaUnregisterFatBinary(binary);
    EXPECT_EQ(runtime.cudaLaunchKernel(&key, {}, {}, nullptr, 0, nullptr), cudaErrorInvalidDeviceFunction);
}

TEST_F(CudaRuntimeOnACard, KnowsDeviceCodeForAsLongAsItsObjectLives) {
    const auto before = cuda.fatBinaries().size();
    {
        constexpr const char* ptx = ".version 7.3";
        const Kernel<void(int)> first("first"), second("second");
        const DeviceCode code(ptx, {&first, &second});
        ASSERT_EQ(cuda.fatBinaries().size(), before + 1);
        const auto& registered = *cuda.fatBinaries().back();
        EXPECT_EQ(registered.image, ptx);
        ASSERT_EQ(registered.functions.size(), 2U);
        EXPECT_EQ(registered.functions[1].key, &second);
        EXPECT_TRUE(registered.complete);
    }
    EXPECT_EQ(cuda.fatBinaries().size(), before) << "the handler at exit is its destructor";
}

TEST_F(CudaRuntimeOnACard, BindsADeviceToTheThreadThatSetsIt) {
    auto second = cardWith(64);
    second.pciBusId = "0000:0A:00.0";
    driver().configure({12040, {cardWith(16), second}});
    ASSERT_EQ(cuda.cudaSetDevice(1), cudaSuccess);
    const auto totalOf = [&] {
        std::size_t free = 0, total = 0;
        EXPECT_EQ(cuda.cudaMemGetInfo(&free, &total), cudaSuccess);
        return total >> 20;
    };
    EXPECT_EQ(totalOf(), 64 + untestedMiB);
    std::thread([&] {
        EXPECT_EQ(totalOf(), 16 + untestedMiB) << "a new thread begins with device 0";
    }).join();
    EXPECT_EQ(cuda.cudaSetDevice(2), cudaErrorInvalidDevice);
    EXPECT_EQ(totalOf(), 64 + untestedMiB) << "a number that no card has changes nothing";
    EXPECT_EQ(cuda.cudaGetLastError(), cudaErrorInvalidDevice);
    std::thread([&] {
        EXPECT_EQ(cuda.cudaGetLastError(), cudaSuccess) << "errors belong to threads as well";
    }).join();
}

TEST_F(CudaRuntimeOnACard, EndsAllMemoryOfADeviceByItsReset) {
    void* memory = nullptr;
    ASSERT_EQ(cuda.cudaMalloc(&memory, 1 << 20), cudaSuccess);
    EXPECT_EQ(driver().state(0).allocations.size(), 1U);
    EXPECT_EQ(driver().state(0).retained, 1);
    EXPECT_EQ(cuda.cudaDeviceReset(), cudaSuccess);
    EXPECT_EQ(driver().state(0).allocations.size(), 0U);
    EXPECT_EQ(driver().state(0).retained, 0);
    EXPECT_NE(cuda.cudaFree(memory), cudaSuccess);
    EXPECT_EQ(cuda.cudaMalloc(&memory, 1 << 20), cudaSuccess) << "the next call makes a new context";
}

TEST_F(CudaRuntimeOnACard, FreesANullPointerAndNoForeignOne) {
    int here = 0;
    EXPECT_EQ(cuda.cudaFree(nullptr), cudaSuccess);
    EXPECT_EQ(cuda.cudaFree(&here), cudaErrorInvalidValue);
}

TEST_F(CudaRuntimeOnACard, RecordsAFailedLaunchAndGoesOn) {
    auto card = cardWith(16);
    card.failingLaunches = {1, 1};
    configure(card);
    const void* const key = cuda.fatBinaries().front()->functions.front().key;
    std::uint32_t chunk = 0x1000;
    void* block = nullptr;
    ASSERT_EQ(cuda.cudaMalloc(&block, 0x1000), cudaSuccess);
    auto* base = static_cast<std::uint8_t*>(block);
    std::uint8_t *end = base + 0x1000, *flag = base;
    void* arguments[] = {&chunk, &base, &end, &flag};
    EXPECT_NE(cuda.cudaLaunchKernel(key, {1}, {1}, arguments, 0, nullptr), cudaSuccess);
    EXPECT_EQ(cuda.cudaDeviceSynchronize(), cudaSuccess);
    EXPECT_EQ(cuda.cudaLaunchKernel(key, {1}, {1}, arguments, 0, nullptr), cudaSuccess);
    EXPECT_EQ(cuda.cudaGetLastError(), static_cast<cudaError_t>(cuda::CUDA_ERROR_LAUNCH_OUT_OF_RESOURCES));
}

TEST_F(CudaRuntimeOnACard, TellsWhereCardsAre) {
    char text[13] = {};
    EXPECT_EQ(cuda.cudaDeviceGetPCIBusId(text, 13, 0), cudaSuccess);
    EXPECT_STREQ(text, "0000:01:00.0");
    EXPECT_EQ(cuda.cudaDeviceGetPCIBusId(text, 12, 0), cudaErrorInvalidValue);
    EXPECT_EQ(cuda.cudaDeviceGetPCIBusId(text, 13, 1), cudaErrorInvalidDevice);
}

TEST_F(CudaRuntimeOnACard, ServesSeveralCardsAtATime) {
    std::vector<simulated::CudaCardSection> cards(3, cardWith(33));
    driver().configure({12040, cards});
    std::vector<std::thread> threads;
    std::vector<std::uint8_t> results(cards.size(), 0);
    for (std::size_t i = 0; i < cards.size(); ++i) {
        threads.emplace_back([&, i] {
            RecordingReporter own;
            const auto card = deviceWithoutCuda();
            card->setCuda({"01:00.0", static_cast<std::int32_t>(i)});
            core::TestRunArguments run{card, &cancel, &own, events};
            results[i] = core::TestResult::Passed;
            for (const CudaTestId id : {memoryFault, advancedMath, randomSequence}) {
                results[i] = std::max(results[i], makeCudaTest(id)->execute(run));
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(results, std::vector<std::uint8_t>(3, core::TestResult::Passed));
    for (int i = 0; i < 3; ++i) {
        EXPECT_GT(driver().state(i).launches, 0U) << i;
    }
}

} // namespace vexil::tests
