// Every launch of the tests as it reaches the driver: kernel, geometry, arguments, and what is asked between
// launches.
#include "cuda_fixture.h"

#include "module/video_card/cuda/math_tables.h"

#include <algorithm>
#include <bit>
#include <random>

namespace vexil::tests {

using simulated::cuda::CardLaunch;

namespace {

constexpr std::size_t mebibyte = 1U << 20;
constexpr std::uint32_t zeros = 0, ones = 0xFFFFFFFF;
constexpr std::uint32_t moduloValue = 0x33B37096, moduloOther = 0xCC4C8F69;

using Events = std::vector<std::string>;

template <typename T>
T argumentOf(const CardLaunch& launch, int place) {
    return *static_cast<T*>(launch.arguments[place]);
}

/// An argument behind the first three.
struct Argument {
    enum class Kind { word, truth, flag, reference } kind;
    std::uint32_t value = 0;
};

constexpr Argument word(std::uint32_t value) { return {Argument::Kind::word, value}; }
constexpr Argument truth(bool value) { return {Argument::Kind::truth, value ? 1U : 0U}; }
constexpr Argument flag{Argument::Kind::flag};
constexpr Argument reference{Argument::Kind::reference};

struct Pass {
    const char* kernel;
    std::vector<Argument> rest;
    bool checks; ///< the flag is read back
    std::uint32_t firstMiB = 0;
};

std::vector<Pass> passesOf(CudaTestId id) {
    switch (id) {
    case memoryFault:
        return {{"memory_fault_kernel_write", {truth(true), word(zeros)}, false},
                {"memory_fault_kernel_check_write", {truth(true), word(zeros), word(ones), flag}, true},
                {"memory_fault_kernel_check_write", {truth(true), word(ones), word(zeros), flag}, true},
                {"memory_fault_kernel_check_write", {truth(false), word(zeros), word(ones), flag}, true},
                {"memory_fault_kernel_check_write", {truth(false), word(ones), word(zeros), flag}, true},
                {"memory_fault_kernel_check", {truth(false), word(zeros), flag}, true}};
    case address:
        return {{"address_kernel_write", {}, false}, {"address_kernel_check", {flag}, true}};
    case movingInversion:
        return {{"moving_inversion_kernel_write", {word(0x80808080)}, false},
                {"moving_inversion_kernel_check_write", {word(0x80808080), word(0x7F7F7F7F), flag}, true},
                {"moving_inversion_kernel_check", {word(0x7F7F7F7F), flag}, true}};
    case blockMove:
        return {{"block_move_kernel_init", {}, false},
                {"block_move_kernel_move", {}, false},
                {"block_move_kernel_check", {flag}, true}};
    case randomSequence:
        return {{"RandomNumberSequenceKernelWrite", {reference}, false, 1},
                {"RandomNumberSequenceKernelCheckWrite", {reference, flag}, true, 1},
                {"RandomNumberSequenceKernelCheck", {reference, flag}, true, 1}};
    default:
        break;
    }
    std::vector<Pass> passes;
    for (std::uint32_t offset = 0; offset < 20; ++offset) {
        passes.push_back(
            {"modulo_x_kernel_write", {word(offset), word(moduloValue), word(moduloOther)}, false});
        passes.push_back({"modulo_x_kernel_check", {word(offset), word(moduloValue), flag}, true});
    }
    return passes;
}

void expectArguments(const CardLaunch& launch, const std::vector<Argument>& rest, const std::uint8_t* begin) {
    for (std::size_t i = 0; i < rest.size(); ++i) {
        const int place = static_cast<int>(i) + 3;
        switch (rest[i].kind) {
        case Argument::Kind::word:
            EXPECT_EQ(argumentOf<std::uint32_t>(launch, place), rest[i].value) << place;
            break;
        case Argument::Kind::truth:
            EXPECT_EQ(argumentOf<bool>(launch, place), rest[i].value != 0) << place;
            break;
        case Argument::Kind::flag:
            // Addresses of the simulated card are addresses of this process.
            EXPECT_EQ(*argumentOf<const std::uint8_t*>(launch, place), 1) << "set, until a kernel clears it";
            break;
        case Argument::Kind::reference:
            EXPECT_EQ(argumentOf<const std::uint8_t*>(launch, place), begin) << "the first MiB of the block";
            break;
        }
    }
}

} // namespace

class CudaLaunches : public CudaTest, public testing::WithParamInterface<CudaTestId> {};

TEST_P(CudaLaunches, GoOverTheBlockPassByPassAndAreWaitedFor) {
    constexpr std::uint32_t testedMiB = 40;
    auto card = cardWith(testedMiB);
    card.failingLaunches.first = 1; // counted, not done
    configure(card);

    Events expected;
    std::vector<std::pair<Pass, std::uint32_t>> launches; // with the MiB where each begins
    for (const Pass& pass : passesOf(GetParam())) {
        for (std::uint32_t at = pass.firstMiB; at < testedMiB; at += 16) {
            launches.emplace_back(pass, at);
            expected.insert(expected.end(), {pass.kernel, "cuCtxSynchronize"});
            if (pass.checks) {
                expected.emplace_back("cuMemcpyDtoH_v2");
            }
        }
    }

    Events calls;
    driver().observe([&](const char* call) {
        for (const char* counted : {"cuCtxSynchronize", "cuMemcpyDtoH_v2"}) {
            if (std::string_view(call) == counted) {
                calls.emplace_back(call);
            }
        }
    });
    const std::uint8_t* begin = nullptr;
    std::size_t number = 0;
    driver().observeLaunches([&](const CardLaunch& launch) {
        ASSERT_LT(number, launches.size());
        SCOPED_TRACE(testing::Message() << launch.kernel << ", launch " << number);
        calls.emplace_back(launch.kernel);
        const auto& [pass, at] = launches[number++];
        EXPECT_EQ(std::vector(launch.grid, launch.grid + 3), (std::vector<unsigned>{16, 1, 1}));
        EXPECT_EQ(std::vector(launch.block, launch.block + 3), (std::vector<unsigned>{1, 1, 1}));
        EXPECT_EQ(launch.sharedBytes, 0U);
        EXPECT_TRUE(launch.onDefaultStream);
        if (begin == nullptr) {
            begin = argumentOf<std::uint8_t*>(launch, 1) - pass.firstMiB * mebibyte;
        }
        EXPECT_EQ(argumentOf<std::uint32_t>(launch, 0), 0x100000U);
        EXPECT_EQ(argumentOf<std::uint8_t*>(launch, 1) - begin, static_cast<std::ptrdiff_t>(at * mebibyte));
        EXPECT_EQ(argumentOf<std::uint8_t*>(launch, 2) - begin,
                  static_cast<std::ptrdiff_t>(testedMiB * mebibyte));
        expectArguments(launch, pass.rest, begin);
    });
    EXPECT_EQ(run(GetParam()), core::TestResult::Passed);
    EXPECT_EQ(calls, expected);
}

INSTANTIATE_TEST_SUITE_P(OfEachMemoryTest, CudaLaunches, testing::ValuesIn(memoryTests),
                         [](const auto& id) { return "Test" + std::to_string(id.param); });

class CudaLaunchContent : public CudaTest {};

TEST_F(CudaLaunchContent, OfTheRandomSequenceIsTheLowHalvesOfTheTwisterSeededWith43) {
    configure(cardWith(17));
    unsigned compared = 0;
    driver().observeLaunches([&](const CardLaunch& launch) {
        const auto* const words = argumentOf<const std::uint32_t*>(launch, 3);
        std::mt19937_64 source(43);
        ASSERT_TRUE(std::all_of(words, words + 0x40000, [&](std::uint32_t word) {
            return word == static_cast<std::uint32_t>(source());
        }));
        ++compared;
    });
    EXPECT_EQ(run(randomSequence), core::TestResult::Passed);
    EXPECT_EQ(compared, 3U) << "no kernel writes to it";
}

namespace {

struct MathLaunch {
    std::string kernel;
    unsigned blocks, threads;
    std::vector<std::uint32_t> operands[3];
};

template <typename Rows>
MathLaunch launchOf(const char* kernel, const Rows& rows) {
    MathLaunch launch{kernel, static_cast<unsigned>(rows.size()), 5, {}};
    for (const auto& row : rows) {
        const auto add = [](std::vector<std::uint32_t>& bits, const auto& values) {
            std::ranges::transform(values, std::back_inserter(bits),
                                   [](auto value) { return std::bit_cast<std::uint32_t>(value); });
        };
        add(launch.operands[0], row.a);
        add(launch.operands[1], row.b);
        add(launch.operands[2], row.c);
    }
    return launch;
}

} // namespace

TEST_F(CudaLaunchContent, OfTheArithmeticIsOneBlockARowAndOneThreadAValue) {
    using namespace module::video_card;
    const std::pair<CudaTestId, std::vector<MathLaunch>> expected[] = {
        {standardMath,
         {launchOf("cuda_kernel_standard_execute_integer", integerStandard),
          launchOf("cuda_kernel_standard_execute_float", floatStandard)}},
        {advancedMath,
         {launchOf("cuda_kernel_advanced_execute_integer", integerAdvanced),
          launchOf("cuda_kernel_advanced_execute_float", floatAdvanced)}},
    };
    for (const auto& [id, stages] : expected) {
        configure(cardWith(16));
        std::size_t number = 0;
        driver().observeLaunches([&, &stages = stages](const CardLaunch& launch) {
            ASSERT_LT(number, stages.size());
            const MathLaunch& stage = stages[number++];
            EXPECT_EQ(launch.kernel, stage.kernel);
            EXPECT_EQ(std::vector(launch.grid, launch.grid + 3), (std::vector<unsigned>{stage.blocks, 1, 1}));
            EXPECT_EQ(std::vector(launch.block, launch.block + 3),
                      (std::vector<unsigned>{stage.threads, 1, 1}));
            for (int operand = 0; operand < 3; ++operand) {
                const auto* const bits = argumentOf<const std::uint32_t*>(launch, operand);
                EXPECT_EQ(std::vector(bits, bits + std::size_t{stage.blocks} * stage.threads),
                          stage.operands[operand])
                    << launch.kernel << ", operand " << operand;
            }
        });
        EXPECT_EQ(run(id), core::TestResult::Passed);
        EXPECT_EQ(number, 2U);
    }
}

} // namespace vexil::tests
