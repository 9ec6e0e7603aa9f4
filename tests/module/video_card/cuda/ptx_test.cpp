// The device code that goes to the card, as text.
#include "module/video_card/cuda/cuda_abstract_math_op_test.h"
#include "module/video_card/cuda/cuda_address_test.h"
#include "module/video_card/cuda/cuda_block_move_test.h"
#include "module/video_card/cuda/cuda_memory_fault_test.h"
#include "module/video_card/cuda/cuda_modulo_x_test.h"
#include "module/video_card/cuda/cuda_moving_inversion_test.h"
#include "module/video_card/cuda/cuda_random_number_sequence_test.h"
#include "ptx_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace vexil::tests {

using module::video_card::CudaRuntime;

namespace {

using Names = std::vector<std::string>;

/// The order of registration, of the fat binaries and of the kernels in each.
const std::vector<Names> registered = {
    {"address_kernel_check", "address_kernel_write"},
    {"block_move_kernel_check", "block_move_kernel_move", "block_move_kernel_init"},
    {"memory_fault_kernel_check", "memory_fault_kernel_check_write", "memory_fault_kernel_write"},
    {"modulo_x_kernel_check", "modulo_x_kernel_write"},
    {"moving_inversion_kernel_check", "moving_inversion_kernel_check_write", "moving_inversion_kernel_write"},
    {"RandomNumberSequenceKernelCheck", "RandomNumberSequenceKernelCheckWrite",
     "RandomNumberSequenceKernelWrite"},
    {"cuda_kernel_advanced_execute_integer", "cuda_kernel_standard_execute_integer",
     "cuda_kernel_advanced_execute_float", "cuda_kernel_standard_execute_float"},
};

std::vector<std::string> parameterTypes(const std::string& kernel) {
    std::vector<std::string> types;
    const std::string head = kernel.substr(0, kernel.find(')'));
    const std::regex parameter(R"(\.param (\.\w+))");
    for (auto match = std::sregex_iterator(head.begin(), head.end(), parameter);
         match != std::sregex_iterator(); ++match) {
        types.push_back((*match)[1]);
    }
    return types;
}

} // namespace

TEST(CudaDeviceCode, IsRegisteredAtLoadInItsFixedOrderWithoutAThreadLimit) {
    const auto& binaries = CudaRuntime::instance().fatBinaries();
    ASSERT_EQ(binaries.size(), registered.size());
    std::set<const void*> keys;
    for (std::size_t binary = 0; binary < registered.size(); ++binary) {
        Names names;
        for (const auto& function : binaries[binary]->functions) {
            names.emplace_back(function.name);
            EXPECT_EQ(function.threadLimit, -1);
            EXPECT_TRUE(keys.insert(function.key).second);
        }
        EXPECT_EQ(names, registered[binary]);
        EXPECT_TRUE(binaries[binary]->complete);
    }
}

TEST(CudaDeviceCode, IsPtxOfIsa73ForArchitecture50With64BitAddresses) {
    for (std::size_t binary = 0; binary < registered.size(); ++binary) {
        const std::string ptx = ptxOf(binary);
        EXPECT_NE(ptx.find(".version 7.3\n"), std::string::npos) << binary;
        EXPECT_NE(ptx.find(".target sm_50\n"), std::string::npos) << binary;
        EXPECT_NE(ptx.find(".address_size 64\n"), std::string::npos) << binary;
    }
}

TEST(CudaDeviceCode, HoldsTheRegisteredKernelsAndNoOther) {
    for (std::size_t binary = 0; binary < registered.size(); ++binary) {
        const std::string ptx = ptxOf(binary);
        for (const auto& name : registered[binary]) {
            EXPECT_NE(kernelText(ptx, name), "") << name;
        }
        const std::regex entry(R"(\.entry )");
        EXPECT_EQ(
            static_cast<std::size_t>(std::distance(std::sregex_iterator(ptx.begin(), ptx.end(), entry), {})),
            registered[binary].size());
        EXPECT_EQ(ptx.find(".extern"), std::string::npos) << "nothing is left to a library";
    }
}

TEST(CudaDeviceCode, TakesTheArgumentsInTheirOrder) {
    const Names address = {".u32", ".u64", ".u64", ".u64"};
    const Names plain = {".u32", ".u64", ".u64"};
    const std::vector<std::pair<std::string, Names>> expected = {
        {"address_kernel_check", address},
        {"address_kernel_write", plain},
        {"block_move_kernel_check", address},
        {"block_move_kernel_move", plain},
        {"block_move_kernel_init", plain},
        {"memory_fault_kernel_check", {".u32", ".u64", ".u64", ".u8", ".u32", ".u64"}},
        {"memory_fault_kernel_check_write", {".u32", ".u64", ".u64", ".u8", ".u32", ".u32", ".u64"}},
        {"memory_fault_kernel_write", {".u32", ".u64", ".u64", ".u8", ".u32"}},
        {"modulo_x_kernel_check", {".u32", ".u64", ".u64", ".u32", ".u32", ".u64"}},
        {"modulo_x_kernel_write", {".u32", ".u64", ".u64", ".u32", ".u32", ".u32"}},
        {"moving_inversion_kernel_check", {".u32", ".u64", ".u64", ".u32", ".u64"}},
        {"moving_inversion_kernel_check_write", {".u32", ".u64", ".u64", ".u32", ".u32", ".u64"}},
        {"moving_inversion_kernel_write", {".u32", ".u64", ".u64", ".u32"}},
        {"RandomNumberSequenceKernelCheck", {".u32", ".u64", ".u64", ".u64", ".u64"}},
        {"RandomNumberSequenceKernelCheckWrite", {".u32", ".u64", ".u64", ".u64", ".u64"}},
        {"RandomNumberSequenceKernelWrite", {".u32", ".u64", ".u64", ".u64"}},
        {"cuda_kernel_advanced_execute_integer", {".u64", ".u64", ".u64", ".u64"}},
        {"cuda_kernel_standard_execute_integer", {".u64", ".u64", ".u64", ".u64"}},
        {"cuda_kernel_advanced_execute_float", {".u64", ".u64", ".u64", ".u64"}},
        {"cuda_kernel_standard_execute_float", {".u64", ".u64", ".u64", ".u64"}},
    };
    std::string all;
    for (std::size_t binary = 0; binary < registered.size(); ++binary) {
        all += ptxOf(binary);
    }
    for (const auto& [name, types] : expected) {
        EXPECT_EQ(parameterTypes(kernelText(all, name)), types) << name;
    }
}

TEST(CudaDeviceCode, ReachesMemoryBy32Or64Bits) {
    const std::string flag = "u8"; // cleared, never read
    const std::set<std::string> widths = {flag, "u32", "s32", "f32", "b32", "u64", "b64", "v2.u32", "v2.b32"};
    for (std::size_t file = 0; file < registered.size(); ++file) {
        std::istringstream words(ptxOf(file));
        int accesses = 0;
        for (std::string word; words >> word;) {
            for (const std::string access :
                 {"ld.global.", "st.global.", "ld.volatile.global.", "st.volatile.global."}) {
                if (word.starts_with(access)) {
                    ++accesses;
                    EXPECT_TRUE(widths.contains(word.substr(access.size()))) << word << " in file " << file;
                }
            }
        }
        EXPECT_GT(accesses, 0) << file;
    }
}

TEST(CudaDeviceCode, UsesNoSharedMemory) {
    for (std::size_t file = 0; file < registered.size(); ++file) {
        EXPECT_EQ(ptxOf(file).find(".shared"), std::string::npos) << file;
    }
}

// What the speed on a card hangs on: wide accesses, many of them before the first result is used.
TEST(CudaDeviceCode, KeepsWholeBatchesOfVectorsInFlight) {
    const auto longestRun = [](const std::string& kernel, const std::string& instruction) {
        std::istringstream lines(kernel);
        int run = 0, longest = 0;
        for (std::string line, word; std::getline(lines, line);) {
            word.clear();
            std::istringstream(line) >> word;
            run = word == instruction ? run + 1 : 0;
            longest = std::max(longest, run);
        }
        return longest;
    };
    EXPECT_GE(longestRun(kernelText(ptxOf(0), "address_kernel_check"), "ld.global.v2.u32"), 60);
    EXPECT_GE(longestRun(kernelText(ptxOf(1), "block_move_kernel_move"), "ld.global.v2.u32"), 60);
    EXPECT_GE(longestRun(kernelText(ptxOf(1), "block_move_kernel_check"), "ld.global.v2.u32"), 60);
    EXPECT_GE(longestRun(kernelText(ptxOf(2), "memory_fault_kernel_check"), "ld.global.v2.u32"), 60);
    EXPECT_GE(longestRun(kernelText(ptxOf(4), "moving_inversion_kernel_check"), "ld.global.v2.u32"), 60);
    EXPECT_GE(longestRun(kernelText(ptxOf(5), "RandomNumberSequenceKernelCheck"), "ld.global.v2.u32"), 60);
    EXPECT_GE(longestRun(kernelText(ptxOf(5), "RandomNumberSequenceKernelWrite"), "ld.global.v2.u32"), 60);
    EXPECT_GE(longestRun(kernelText(ptxOf(0), "address_kernel_write"), "st.global.v2.u32"), 2);
}

// The walks that check and rewrite: each load follows the store to the word before it, so that a store which
// disturbs its neighbour is seen.
TEST(CudaDeviceCode, AlternatesLoadsAndStoresInTheWalksThatCheckAndRewrite) {
    struct Walk {
        std::size_t binary;
        const char* kernel;
        int words; ///< in flight, in each direction
    };
    const Walk walks[] = {{2, "memory_fault_kernel_check_write", 2 * 64},
                          {4, "moving_inversion_kernel_check_write", 64},
                          {5, "RandomNumberSequenceKernelCheckWrite", 64}};
    for (const Walk& walk : walks) {
        SCOPED_TRACE(walk.kernel);
        std::istringstream lines(kernelText(ptxOf(walk.binary), walk.kernel));
        std::string last;
        int run = 0, longest = 0;
        for (std::string line, word; std::getline(lines, line);) {
            word.clear();
            std::istringstream(line) >> word;
            if (word == "ld.volatile.global.u32" || word == "st.volatile.global.u32") {
                run = word == last ? 1 : run + 1;
                longest = std::max(longest, run);
                last = word;
            }
            EXPECT_FALSE(word.starts_with("st.global.v") || word.starts_with("st.global.u32")) << line;
        }
        EXPECT_GE(longest, 2 * walk.words);
    }
}

} // namespace vexil::tests
