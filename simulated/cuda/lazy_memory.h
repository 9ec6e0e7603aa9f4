#pragma once

#include <cstddef>
#include <cstdint>

namespace vexil::simulated::cuda {

/// Host memory that stands for a block on a card: zero at first, and real only where it has been touched. The
/// pages before and behind it cannot be accessed, so that a kernel that leaves its block ends there.
class LazyMemory {
public:
    LazyMemory() = default;
    /// Holds nothing afterwards if the host has no room for `bytes`.
    explicit LazyMemory(std::size_t bytes);
    LazyMemory(LazyMemory&& other) noexcept;
    LazyMemory& operator=(LazyMemory&& other) noexcept;
    ~LazyMemory();

    /// Null if nothing is held.
    [[nodiscard]] std::uint8_t* begin() const { return begin_; }
    [[nodiscard]] std::size_t size() const { return size_; }

private:
    void release() noexcept;

    std::uint8_t* begin_ = nullptr;
    std::size_t size_ = 0;
};

} // namespace vexil::simulated::cuda
