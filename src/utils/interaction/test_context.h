#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// How code that shows widgets learns of the test behind them. The suite's dialogs call the operations by
/// their slots, so the order is fixed; those that no dialog of this module asks have no other name than their
/// slot's.
class TestContext {
public:
    virtual ~TestContext() = default;
    [[nodiscard]] virtual std::uint32_t unused1() const = 0;
    [[nodiscard]] virtual std::uint32_t unused2() const = 0;
    [[nodiscard]] virtual std::uint32_t unused3() const = 0;
    [[nodiscard]] virtual std::uint32_t unused4() const = 0;
    /// Whether the user has stopped the test.
    [[nodiscard]] virtual bool isCancelled() const = 0;
    [[nodiscard]] virtual std::uint32_t unused6() const = 0;
    [[nodiscard]] virtual std::map<std::string, std::string> values() const = 0;
    [[nodiscard]] virtual std::vector<std::string> entries() const = 0;
};
