// The device code of the arithmetic kernels: what each block does, on which operands.
#include "ptx_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace vexil::tests {

namespace {

using Rows = std::vector<std::string>;
using Instruction = std::vector<std::string>; ///< its words

struct ArithmeticKernel {
    const char* name;
    Rows operands; ///< as they are loaded
    Rows rows;     ///< the instruction of each block
};

const ArithmeticKernel arithmeticKernels[] = {
    {"cuda_kernel_standard_execute_integer",
     {"a[i]", "b[i]"},
     {"add.s32 out[i] a[i] b[i]", "sub.s32 out[i] a[i] b[i]", "mul.lo.s32 out[i] a[i] b[i]",
      "div.s32 out[i] a[i] b[i]"}},
    {"cuda_kernel_advanced_execute_integer",
     {"a[i]", "b[i]", "c[i]"},
     {"abs.s32 out[i] a[i]", "neg.s32 out[i] a[i]", "min.s32 out[i] a[i] b[i]", "max.s32 out[i] a[i] b[i]",
      "mad.lo.s32 out[i] a[i] b[i] c[i]", "add.cc.s32 out[i] a[i] b[i]", "sub.cc.s32 out[i] a[i] b[i]",
      "rem.s32 out[i] a[i] b[i]", "sad.s32 out[i] a[i] b[i] c[i]"}},
    {"cuda_kernel_standard_execute_float",
     {"a[i]", "b[i]"},
     {"add.rn.f32 out[i] a[i] b[i]", "sub.rn.f32 out[i] a[i] b[i]", "mul.rn.f32 out[i] a[i] b[i]",
      "div.rn.f32 out[i] a[i] b[i]"}},
    {"cuda_kernel_advanced_execute_float",
     {"a[i]", "b[i]", "c[i]"},
     {"abs.f32 out[i] a[i]", "neg.f32 out[i] a[i]", "min.f32 out[i] a[i] b[i]", "max.f32 out[i] a[i] b[i]",
      "fma.rn.f32 out[i] a[i] b[i] c[i]", "mad.rn.f32 out[i] a[i] b[i] c[i]", "ex2.approx.f32 out[i] a[i]",
      "rcp.rn.f32 out[i] a[i]", "sqrt.rn.f32 out[i] a[i]", "rsqrt.approx.f32 out[i] a[i]",
      "lg2.approx.f32 out[i] a[i]", "sin.approx.f32 out[i] a[i]", "cos.approx.f32 out[i] a[i]"}},
};

std::string textOf(const std::string& kernel) {
    constexpr std::size_t arithmeticBinary = 6;
    return kernelText(ptxOf(arithmeticBinary), kernel);
}

/// The instructions that stand in the code as inline PTX, without their operands.
std::multiset<std::string> inlineInstructions(const std::string& kernel) {
    std::multiset<std::string> found;
    std::istringstream lines(kernel);
    bool inside = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.find("// begin inline asm") != std::string::npos) {
            inside = true;
        } else if (line.find("// end inline asm") != std::string::npos) {
            inside = false;
        } else if (inside) {
            std::string instruction;
            std::istringstream(line) >> instruction;
            found.insert(instruction);
        }
    }
    return found;
}

/// A kernel as far as its registers can be read in the terms of its source. The compiler gives each register
/// one value, but for the result, which is what is stored at the end.
class ReadKernel {
public:
    explicit ReadKernel(const std::string& name) : name_(name) {
        std::istringstream lines(textOf(name));
        for (std::string line; std::getline(lines, line);) {
            line = line.substr(0, line.find("//"));
            std::ranges::replace_if(
                line, [](char c) { return std::string_view(",;[]").find(c) != std::string_view::npos; }, ' ');
            std::istringstream words(line);
            const Instruction instruction(std::istream_iterator<std::string>(words), {});
            if (!instruction.empty()) {
                instructions_.push_back(instruction);
                note(instruction);
            }
        }
    }

    /// The operands that are loaded, in that order; before the first comparison or at all.
    [[nodiscard]] Rows loads(bool beforeAnyComparison) const {
        Rows found;
        for (const Instruction& instruction : instructions_) {
            if (beforeAnyComparison && instruction[0].starts_with("setp.")) {
                break;
            }
            if (isLoad(instruction[0])) {
                found.push_back(meaning(instruction[1]));
            }
        }
        return found;
    }

    /// The first instruction of each block that has a branch of its own.
    [[nodiscard]] std::map<std::size_t, std::string> rows() const {
        std::map<std::size_t, std::string> found;
        for (std::size_t at = 0; at + 1 < instructions_.size(); ++at) {
            const Instruction& compare = instructions_[at];
            const Instruction& branch = instructions_[at + 1];
            if (compare[0] == "setp.eq.s32" && meaning(compare[2]) == "%ctaid.x" &&
                branch[0] == "@" + compare[1]) {
                found[std::stoul(compare[3])] = firstBehind(branch[2] + ":");
            }
        }
        return found;
    }

    /// What is put into the result before any block adds to it.
    [[nodiscard]] Rows initialResults() const {
        Rows found;
        for (const Instruction& instruction : instructions_) {
            if (instruction[0].starts_with("mov.") && meaning(instruction[1]) == "out[i]") {
                found.push_back(instruction[2]);
            }
        }
        return found;
    }

private:
    static bool isLoad(const std::string& word) {
        return word.starts_with("ld.") && word.find(".global.") != std::string::npos;
    }

    [[nodiscard]] std::string meaning(const std::string& word) const {
        const auto known = meanings_.find(word);
        return known == meanings_.end() ? word : known->second;
    }

    void note(const Instruction& words) {
        const std::string& name = words[0];
        const auto operand = [&](std::size_t place) { return meaning(words.at(place)); };
        if (name == "ld.param.u64") {
            const std::map<std::string, std::string> parameters = {{name_ + "_param_0", "a"},
                                                                   {name_ + "_param_1", "b"},
                                                                   {name_ + "_param_2", "c"},
                                                                   {name_ + "_param_3", "out"}};
            meanings_[words[1]] = parameters.at(words[2]);
        } else if (name.starts_with("mov.") || name.starts_with("cvt") || isLoad(name)) {
            meanings_[words[1]] = operand(2);
        } else if (name == "mad.lo.s32" && operand(2) == "%ctaid.x" && operand(3) == "%ntid.x" &&
                   operand(4) == "%tid.x") {
            meanings_[words[1]] = "i";
        } else if ((name == "mul.wide.u32" && operand(2) == "i" && words[3] == "4") ||
                   (name == "shl.b64" && operand(2) == "i" && words[3] == "2")) {
            meanings_[words[1]] = "bytes of i";
        } else if (name == "add.s64" && operand(3) == "bytes of i") {
            meanings_[words[1]] = operand(2) + "[i]";
        } else if (name.starts_with("st.global.")) {
            meanings_[words[2]] = operand(1);
        }
    }

    [[nodiscard]] std::string firstBehind(const std::string& label) const {
        const auto at = std::ranges::find(instructions_, Instruction{label});
        if (at == instructions_.end() || std::next(at) == instructions_.end()) {
            return "nothing";
        }
        std::string text;
        for (const std::string& word : *std::next(at)) {
            text += (text.empty() ? "" : " ") + meaning(word);
        }
        return text;
    }

    std::string name_;
    std::vector<Instruction> instructions_;
    std::map<std::string, std::string> meanings_;
};

} // namespace

TEST(CudaArithmeticCode, HoldsTheNamedInstructionsAndNoOthersOfItsOwn) {
    for (const auto& kernel : arithmeticKernels) {
        std::multiset<std::string> named;
        for (const auto& row : kernel.rows) {
            named.insert(row.substr(0, row.find(' ')));
        }
        EXPECT_EQ(inlineInstructions(textOf(kernel.name)), named) << kernel.name;
    }
}

TEST(CudaArithmeticCode, DoesNoFloatingPointBesideThoseInstructions) {
    for (const auto& kernel : arithmeticKernels) {
        std::istringstream lines(textOf(kernel.name));
        bool inside = false;
        for (std::string line; std::getline(lines, line);) {
            inside = line.find("// begin inline asm") != std::string::npos ||
                     (inside && line.find("// end inline asm") == std::string::npos);
            std::string word;
            std::istringstream(line) >> word;
            const bool moves = word.starts_with("mov.") || word.starts_with("ld.") ||
                               word.starts_with("st.") || word.starts_with(".");
            EXPECT_TRUE(inside || moves || word.find(".f32") == std::string::npos)
                << kernel.name << ": " << line;
        }
    }
}

TEST(CudaArithmeticCode, SelectsTheInstructionByTheNumberOfTheBlock) {
    for (const auto& kernel : arithmeticKernels) {
        std::map<std::size_t, std::string> expected;
        for (const auto& row : kernel.rows) {
            expected.emplace(expected.size(), row);
        }
        EXPECT_EQ(ReadKernel(kernel.name).rows(), expected) << kernel.name;
    }
}

TEST(CudaArithmeticCode, LoadsTheOperandsOnceBeforeItSelectsAndTheThirdInTheAdvancedKernelsOnly) {
    for (const auto& kernel : arithmeticKernels) {
        const ReadKernel read(kernel.name);
        EXPECT_EQ(read.loads(true), kernel.operands) << kernel.name;
        EXPECT_EQ(read.loads(false), kernel.operands) << kernel.name;
    }
}

TEST(CudaArithmeticCode, BeginsWithAResultOfZeroWhichABlockBehindTheTableStores) {
    for (const auto& kernel : arithmeticKernels) {
        const bool isFloat = std::string_view(kernel.name).ends_with("float");
        EXPECT_EQ(ReadKernel(kernel.name).initialResults(), Rows{isFloat ? "0f00000000" : "0"})
            << kernel.name;
    }
}

} // namespace vexil::tests
