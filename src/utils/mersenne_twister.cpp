#include "utils/mersenne_twister.h"

#include <algorithm>

namespace vexil::utils {

void MersenneTwister::seed(result_type value) {
    state_[0] = value;
    for (std::uint32_t i = 1; i < mersenneTwisterWords; ++i) {
        state_[i] = 1812433253U * (state_[i - 1] ^ (state_[i - 1] >> 30)) + i;
    }
    drawn_ = mersenneTwisterWords;
}

std::span<const std::uint32_t> MersenneTwister::rest() {
    if (drawn_ == mersenneTwisterWords) {
        code_->twist(state_);
        drawn_ = 0;
    }
    return std::span(state_).subspan(drawn_);
}

MersenneTwister::result_type MersenneTwister::operator()() {
    const auto word = rest().front();
    ++drawn_;
    return temperMersenneTwisterWord(word);
}

void MersenneTwister::discard(unsigned long long draws) {
    while (draws > 0) {
        const auto step = std::min<unsigned long long>(draws, rest().size());
        drawn_ += static_cast<std::size_t>(step);
        draws -= step;
    }
}

void MersenneTwister::fill(std::span<std::uint32_t> words) {
    while (!words.empty()) {
        const auto source = rest();
        const auto count = std::min(source.size(), words.size());
        code_->temper(source.data(), count, words.data());
        drawn_ += count;
        words = words.subspan(count);
    }
}

void MersenneTwister::fillLowBytes(std::span<std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const auto source = rest();
        const auto count = std::min(source.size(), bytes.size());
        code_->temperLowBytes(source.data(), count, bytes.data());
        drawn_ += count;
        bytes = bytes.subspan(count);
    }
}

} // namespace vexil::utils
