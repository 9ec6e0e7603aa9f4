#include "module/video_card/direct3d/texture_pipeline/transposition.h"

#include <array>
#include <cstring>
#include <utility>

// One text of the loops, compiled once for each kind of processor; see the blocks of the random engine.
namespace vexil::module::video_card {

namespace {

constexpr std::size_t extent = patternExtent;
/// Words of a cache line: a block of that width uses all of each line that it fetches.
constexpr std::size_t blockWords = 16;
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

template <int lanes, int half, std::size_t... row>
[[gnu::always_inline]] inline void transpose(Vector<lanes> (&rows)[lanes], std::index_sequence<row...> all) {
    (exchangeRow<lanes, half, int(row)>(rows), ...);
    if constexpr (half > 1) {
        transpose<lanes, half / 2>(rows, all);
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

template <int lanes>
[[gnu::always_inline]] inline void compareBlock(Vector<lanes>& difference, const std::uint32_t* pattern,
                                                const std::uint32_t* picture) {
    for (std::size_t y = 0; y < blockWords; y += lanes) {
        for (std::size_t x = 0; x < blockWords; x += lanes) {
            compareSquare<lanes>(difference, pattern + y * extent + x, picture + x * extent + y,
                                 std::make_index_sequence<lanes>());
        }
    }
}

template <int lanes>
[[gnu::always_inline]] inline void compareTile(Vector<lanes>& difference, const std::uint32_t* pattern,
                                               const std::uint32_t* picture) {
    for (std::size_t y = 0; y < tileWords; y += blockWords) {
        for (std::size_t x = 0; x < tileWords; x += blockWords) {
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
