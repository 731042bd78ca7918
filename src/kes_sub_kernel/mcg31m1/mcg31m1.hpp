// MCG31M1: x becomes a x mod 2^31 - 1, delivered before the step. The state, and two
// chains of steps that run side by side: from element to element but one with a^2, so
// that two multiplications are in flight.
#pragma once

#include <kes_sub_kernel/_math/modular.hpp>
#include <kes_sub_kernel/stream_record.hpp>

namespace qorkes {

struct Mcg31m1State {
    uint32_t Value; // the next number to be delivered, in 1 .. 2^31 - 2
    uint32_t Multiplier;
};
static_assert(sizeof(StreamState) + sizeof(Mcg31m1State) == 24);

/// The width of one step of the words: the double next to 1 / (2^31 - 1).
constexpr double stepOfMcg31m1 = 0x1.00000002p-31;

/// `deliver(i, x)` for elements 0 to n - 1 in pairs; returns the number that follows
/// them. Nothing is delivered for n of 0 and below.
template <class Deliver>
QORKES_INLINE uint32_t runTwoChains(const Mcg31m1State& state, int n,
                                    Deliver&& deliver) {
    const uint32_t a = state.Multiplier;
    const uint32_t square = multiplyMod2P31M1(a, a);
    uint32_t even = state.Value;
    uint32_t odd = multiplyMod2P31M1(even, a);
    int i = 0;
    for (; i < n - 1; i += 2) {
        deliver(i, even);
        deliver(i + 1, odd);
        even = multiplyMod2P31M1(even, square);
        odd = multiplyMod2P31M1(odd, square);
    }
    if (i >= n) return even;
    deliver(i, even);
    return odd;
}

} // namespace qorkes
