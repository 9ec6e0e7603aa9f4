#include "module/video_card/direct3d/texture_pipeline/transposition.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

// One text of the loops, compiled once for each kind of processor; see the blocks of the random engine.
namespace vexil::module::video_card {

namespace {

constexpr std::size_t extent = patternExtent;
/// Words of a cache line: a block of that width uses all of each line that it fetches.
constexpr std::size_t blockWords = 16;
/// Rows of an image lie a page apart, so the lines of a column share one set of the first cache, which has
/// room for eight of them on most processors.
constexpr std::size_t setLines = 8;
/// Blocks of a tile lie in few enough pages that the processor keeps all their addresses.
constexpr std::size_t tileWords = 64;

template <int lanes>
struct VectorOf {
    typedef std::uint32_t Type __attribute__((vector_size(lanes * sizeof(std::uint32_t))));
};

template <int lanes>
using Vector = typename VectorOf<lanes>::Type;

// Vectors go by reference: as values they would be passed differently from one kind of processor to the next.
// Everything is unrolled by index sequences, which keeps a square in registers.

template <int lanes>
[[gnu::always_inline]] inline void load(Vector<lanes>& vector, const std::uint32_t* words) {
    std::memcpy(&vector, words, sizeof vector);
}

/// In two rows that are `half` apart, exchanges the squares of `half` lanes on either side of the diagonal.
template <int lanes, int half, std::size_t... lane>
[[gnu::always_inline]] inline void exchange(Vector<lanes>& upper, Vector<lanes>& lower,
                                            std::index_sequence<lane...>) {
    const Vector<lanes> first =
        __builtin_shufflevector(upper, lower, ((lane & half) == 0 ? int(lane) : int(lane) - half + lanes)...);
    const Vector<lanes> second =
        __builtin_shufflevector(upper, lower, ((lane & half) == 0 ? int(lane) + half : int(lane) + lanes)...);
    upper = first;
    lower = second;
}

template <int lanes, int half, int row>
[[gnu::always_inline]] inline void exchangeRow(Vector<lanes> (&rows)[lanes]) {
    if constexpr ((row & half) == 0) {
        exchange<lanes, half>(rows[row], rows[row + half], std::make_index_sequence<lanes>());
    }
}

/// Merges two rows quad by quad: of each four lanes the first two of both go to `low`, the others to `high`.
template <int lanes, std::size_t... lane>
[[gnu::always_inline]] inline void interleave(const Vector<lanes>& even, const Vector<lanes>& odd,
                                              Vector<lanes>& low, Vector<lanes>& high,
                                              std::index_sequence<lane...>) {
    low = __builtin_shufflevector(even, odd, (int(lane / 4 * 4 + lane % 4 / 2) + int(lane % 2) * lanes)...);
    high =
        __builtin_shufflevector(even, odd, (int(lane / 4 * 4 + lane % 4 / 2) + int(lane % 2) * lanes + 2)...);
}

template <int lanes, int row>
[[gnu::always_inline]] inline void interleaveRows(Vector<lanes> (&rows)[lanes]) {
    if constexpr (row % 4 == 0) {
        const Vector<lanes> first[] = {rows[row], rows[row + 1], rows[row + 2], rows[row + 3]};
        const auto all = std::make_index_sequence<lanes>();
        interleave<lanes>(first[0], first[2], rows[row], rows[row + 1], all);
        interleave<lanes>(first[1], first[3], rows[row + 2], rows[row + 3], all);
    }
}

/// Squares of four are left to two merges of their rows, for which any x86-64 processor has instructions.
template <int lanes, int half, std::size_t... row>
[[gnu::always_inline]] inline void transpose(Vector<lanes> (&rows)[lanes], std::index_sequence<row...> all) {
    if constexpr (half >= 4) {
        (exchangeRow<lanes, half, int(row)>(rows), ...);
        transpose<lanes, half / 2>(rows, all);
    } else {
        (interleaveRows<lanes, int(row)>(rows), ...);
        (interleaveRows<lanes, int(row)>(rows), ...);
    }
}

template <int lanes>
[[gnu::always_inline]] inline void addDifference(Vector<lanes>& difference, const Vector<lanes>& row,
                                                 const std::uint32_t* words) {
    Vector<lanes> other;
    load<lanes>(other, words);
    difference |= row ^ other;
}

/// Adds the bits in which a square of the picture differs from the transposed square of the pattern.
template <int lanes, std::size_t... row>
[[gnu::always_inline]] inline void compareSquare(Vector<lanes>& difference, const std::uint32_t* pattern,
                                                 const std::uint32_t* picture,
                                                 std::index_sequence<row...> all) {
    Vector<lanes> rows[lanes];
    (load<lanes>(rows[row], pattern + row * extent), ...);
    transpose<lanes, lanes / 2>(rows, all);
    (addDifference<lanes>(difference, rows[row], picture + row * extent), ...);
}

/// By quarters, there and back: each one has lines of one of the images in common with the one before.
template <int lanes>
[[gnu::always_inline]] inline void compareBlock(Vector<lanes>& difference, const std::uint32_t* pattern,
                                                const std::uint32_t* picture) {
    constexpr std::size_t quarter = std::max<std::size_t>(lanes, setLines);
    for (std::size_t top = 0; top < blockWords; top += quarter) {
        for (std::size_t step = 0; step < blockWords; step += quarter) {
            const std::size_t left = top == 0 ? step : blockWords - quarter - step;
            for (std::size_t y = top; y < top + quarter; y += lanes) {
                for (std::size_t x = left; x < left + quarter; x += lanes) {
                    compareSquare<lanes>(difference, pattern + y * extent + x, picture + x * extent + y,
                                         std::make_index_sequence<lanes>());
                }
            }
        }
    }
}

/// Along the diagonals: blocks side by side have their lines of one of the images in the same set.
template <int lanes>
[[gnu::always_inline]] inline void compareTile(Vector<lanes>& difference, const std::uint32_t* pattern,
                                               const std::uint32_t* picture) {
    for (std::size_t diagonal = 0; diagonal < tileWords; diagonal += blockWords) {
        for (std::size_t y = 0; y < tileWords; y += blockWords) {
            const std::size_t x = (y + diagonal) % tileWords;
            compareBlock<lanes>(difference, pattern + y * extent + x, picture + x * extent + y);
        }
    }
}

template <int lanes>
[[gnu::always_inline]] inline bool compare(const std::uint32_t* pattern, const std::uint32_t* picture) {
    Vector<lanes> difference{};
    for (std::size_t y = 0; y < extent; y += tileWords) {
        for (std::size_t x = 0; x < extent; x += tileWords) {
            compareTile<lanes>(difference, pattern + y * extent + x, picture + x * extent + y);
        }
    }
    const Vector<lanes> none{};
    return std::memcmp(&difference, &none, sizeof none) == 0;
}

[[gnu::target("avx512f,prefer-vector-width=512")]] bool compareAvx512(const std::uint32_t* pattern,
                                                                      const std::uint32_t* picture) {
    return compare<16>(pattern, picture);
}

[[gnu::target("avx2")]] bool compareAvx2(const std::uint32_t* pattern, const std::uint32_t* picture) {
    return compare<8>(pattern, picture);
}

bool compareBaseline(const std::uint32_t* pattern, const std::uint32_t* picture) {
    return compare<4>(pattern, picture);
}

constexpr std::array codes = {
    TranspositionCode{"avx512", [] { return __builtin_cpu_supports("avx512f") != 0; }, compareAvx512},
    TranspositionCode{"avx2", [] { return __builtin_cpu_supports("avx2") != 0; }, compareAvx2},
    TranspositionCode{"baseline", [] { return true; }, compareBaseline},
};

} // namespace

std::span<const TranspositionCode> transpositionCodes() { return codes; }

} // namespace vexil::module::video_card
