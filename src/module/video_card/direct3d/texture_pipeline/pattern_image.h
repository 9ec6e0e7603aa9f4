#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

namespace vexil::module::video_card {

/// Pixels of a pattern, both ways.
inline constexpr std::uint32_t patternExtent = 1024;
inline constexpr std::size_t patternPixels = std::size_t{patternExtent} * patternExtent;
static_assert(patternPixels == 0x100000);

/// Begins memory at the start of a cache line. A block of an image that straddles lines fetches twice as many
/// of them, which is the whole cost of comparing images.
template <typename T>
struct CacheLineAllocator {
    using value_type = T;
    static constexpr std::align_val_t line{64};

    CacheLineAllocator() = default;
    template <typename Other>
    explicit CacheLineAllocator(const CacheLineAllocator<Other>&) {}

    [[nodiscard]] T* allocate(std::size_t count) {
        return static_cast<T*>(::operator new(count * sizeof(T), line));
    }
    void deallocate(T* memory, std::size_t) { ::operator delete(memory, line); }
    [[nodiscard]] bool operator==(const CacheLineAllocator&) const = default;
};

/// Pixels row by row, four bytes each.
using PatternImage = std::vector<std::uint32_t, CacheLineAllocator<std::uint32_t>>;

/// Fills an image of the extent of a pattern with the draws of the standard engine that `seed` seeds, one for
/// each pixel. It has to be random: a picture of equal rows would hide a swap.
void fillPattern(std::uint32_t seed, PatternImage& image);

} // namespace vexil::module::video_card
