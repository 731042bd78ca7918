// MCG59: x becomes a x mod 2^59, delivered before the step. The state, and the loop of
// both real slots.
#pragma once

#include <kes_sub_kernel/_math/modular.hpp>
#include <kes_sub_kernel/reals.hpp>
#include <kes_sub_kernel/stream_record.hpp>

namespace qorkes {

struct Mcg59State {
    uint64_t Value; // the next number to be delivered, below 2^59
    uint64_t Multiplier;
};
static_assert(sizeof(StreamState) + sizeof(Mcg59State) == 32);

constexpr double stepOfMcg59 = 0x1p-59;
static_assert(hasPattern(stepOfMcg59, 0x3C40000000000000));

/// `deliver(i, x)` for elements 0 to n - 1.
template <class Deliver>
QORKES_INLINE void run(Mcg59State& state, int n, Deliver&& deliver) {
    const uint64_t a = state.Multiplier;
    uint64_t x = state.Value;
    for (int i = 0; i < n; ++i) {
        deliver(i, x);
        x = multiplyMod2P59(a, x);
    }
    state.Value = x;
}

/// x * S + a, all of it in extended precision, the scale S = (b - a) / 2^59 included.
template <class Real>
QORKES_INLINE int drawReals(StreamState* stream, int n, Real* r, Real a, Real b) {
    const ext scale = rangeScale(a, b, stepOfMcg59);
    const ext shift = a;
    run(stateOf<Mcg59State>(stream), n, [=](int i, uint64_t x) {
        const auto low = static_cast<uint32_t>(x);
        const auto high = static_cast<uint32_t>(x >> 32);
        store(r[i], wordsAsNumber(low, high) * scale + shift);
    });
    return KesStatusOk;
}

} // namespace qorkes
