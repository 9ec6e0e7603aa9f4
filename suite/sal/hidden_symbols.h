#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace vexil::sal {

/// The functions that the libraries of a simulated machine are to lack. A library cannot drop its own
/// exports, so the loader does not find them. To be asked from any thread.
class HiddenSymbols {
public:
    /// Whether the scenario of the process hides that symbol.
    [[nodiscard]] bool hides(std::string_view symbol);

private:
    std::mutex mutex_;
    std::string scenario_; ///< the file that the names are from
    std::vector<std::string> names_;
};

} // namespace vexil::sal
