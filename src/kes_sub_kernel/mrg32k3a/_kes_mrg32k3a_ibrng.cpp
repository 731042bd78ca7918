// __kesiBRngMRG32K3A: the difference of the two recurrences modulo m1, each step before
// its number, in 1 .. m1: a difference of 0 is delivered as m1. Two steps go side by
// side, since a term of the second recurrence would wait for the one just before it.
// Sums are below 2^54; a remainder takes multiplications by the modulus' distance from
// 2^32.
#include <kes_sub_kernel/mrg32k3a/mrg32k3a.hpp>

using namespace qorkes;

namespace {

/// A number that is the same modulo 2^32 - gap, and smaller: 2^32 itself is `gap`.
template <uint32_t gap> QORKES_INLINE uint64_t fold(uint64_t x) {
    return static_cast<uint32_t>(x) + uint64_t{static_cast<uint32_t>(x >> 32)} * gap;
}

/// fold(x) + fold(y) by one multiplication, for upper words whose sum is one too.
template <uint32_t gap> QORKES_INLINE uint64_t foldSum(uint64_t x, uint64_t y) {
    const auto upper = static_cast<uint32_t>(x >> 32) + static_cast<uint32_t>(y >> 32);
    return uint64_t{static_cast<uint32_t>(x)} + static_cast<uint32_t>(y) +
           uint64_t{upper} * gap;
}

/// x mod 2^32 - gap if fold(x) is below twice that. The last subtraction is tried
/// within the fold: only if it carries was there something to subtract.
template <uint32_t gap> QORKES_INLINE uint32_t reduce(uint64_t x) {
    const uint32_t addend = (static_cast<uint32_t>(x >> 32) + 1) * gap;
    const uint32_t sum = static_cast<uint32_t>(x) + addend;
    return sum < addend ? sum : sum - gap;
}

QORKES_INLINE uint64_t times(uint32_t factor, uint32_t x) {
    return uint64_t{factor} * x;
}

/// What -factor * x is modulo 2^32 - gap, but not negative.
template <uint32_t gap> QORKES_INLINE uint64_t minusTimes(uint32_t factor, uint32_t x) {
    return uint64_t{factor} * (0 - gap - x);
}

QORKES_INLINE uint32_t nextX(uint32_t x0, uint32_t x1) {
    return reduce<gap1>(times(a12, x1) + minusTimes<gap1>(a13, x0));
}
QORKES_INLINE uint32_t reduceY(uint64_t sum) { return reduce<gap2>(fold<gap2>(sum)); }
QORKES_INLINE uint32_t nextY(uint32_t y0, uint32_t y2) {
    return reduceY(times(a21, y2) + minusTimes<gap2>(a23, y0));
}

/// The term after that, without waiting for it: a21 nextY(y0, y2) - a23 y1. The factor
/// of y2 is taken with its sign changed, and with it y2: that keeps upper words small.
QORKES_INLINE uint32_t nextYButOne(uint32_t y0, uint32_t y1, uint32_t y2) {
    constexpr auto a21a21 = static_cast<uint32_t>(uint64_t{a21} * a21 % modulus2);
    constexpr auto a21a23 = static_cast<uint32_t>(uint64_t{a21} * a23 % modulus2);
    constexpr uint32_t minusA21a21 = modulus2 - a21a21;
    static_assert(minusA21a21 < modulus2 - a21a23, "upper words have a sum below 2^32");
    return reduceY(
        foldSum<gap2>(minusTimes<gap2>(minusA21a21, y2), minusTimes<gap2>(a21a23, y0)) +
        minusTimes<gap2>(a23, y1));
}

QORKES_INLINE uint32_t difference(uint32_t x, uint32_t y) {
    return x > y ? x - y : x - y + modulus1;
}

} // namespace

int __kesiBRngMRG32K3A(StreamState* stream, int n, uint32_t* r) {
    auto& state = stateOf<Mrg32k3aState>(stream);
    auto [x0, x1, x2] = state.X;
    auto [y0, y1, y2] = state.Y;
    int i = 0;
    for (; i < n - 1; i += 2) {
        const uint32_t x3 = nextX(x0, x1), x4 = nextX(x1, x2);
        const uint32_t y3 = nextY(y0, y2), y4 = nextYButOne(y0, y1, y2);
        r[i] = difference(x3, y3);
        r[i + 1] = difference(x4, y4);
        x0 = x2, x1 = x3, x2 = x4;
        y0 = y2, y1 = y3, y2 = y4;
    }
    if (i < n) {
        const uint32_t x3 = nextX(x0, x1), y3 = nextY(y0, y2);
        r[i] = difference(x3, y3);
        x0 = x1, x1 = x2, x2 = x3;
        y0 = y1, y1 = y2, y2 = y3;
    }
    state = {{x0, x1, x2}, {y0, y1, y2}};
    return KesStatusOk;
}
