#include "utils/parameters/number_text.h"

#include <cerrno>
#include <cstdlib>
#include <limits>
#include <stdexcept>

namespace vexil::utils {

namespace {

/// The conversions tell of a range error through `errno` only, which is the caller's otherwise.
class CleanErrno {
public:
    CleanErrno() : saved_(errno) { errno = 0; }
    CleanErrno(const CleanErrno&) = delete;
    CleanErrno& operator=(const CleanErrno&) = delete;
    ~CleanErrno() { errno = saved_; }

private:
    int saved_;
};

} // namespace

float floatOf(const std::string& text) {
    const CleanErrno scope;
    char* end = nullptr;
    const float number = std::strtof(text.c_str(), &end);
    if (end == text.c_str()) {
        throw std::invalid_argument("invalid stof argument");
    }
    if (errno == ERANGE) {
        throw std::out_of_range("stof argument out of range");
    }
    return number;
}

std::int32_t integerOf(const std::string& text) {
    using Limits = std::numeric_limits<std::int32_t>;
    const CleanErrno scope;
    char* end = nullptr;
    const long number = std::strtol(text.c_str(), &end, 10);
    if (end == text.c_str()) {
        throw std::invalid_argument("invalid stoi argument");
    }
    // A long has 32 bits on Windows and 64 on Linux; the range is the narrower one's on both.
    if (errno == ERANGE || number < Limits::min() || number > Limits::max()) {
        throw std::out_of_range("stoi argument out of range");
    }
    return static_cast<std::int32_t>(number);
}

} // namespace vexil::utils
