// __kesdBRngMCG31M1: x * S + a in extended precision with one rounding, where the scale
// S = (b - a) / (2^31 - 1) is rounded to double once a call.
#include <kes_sub_kernel/mcg31m1/mcg31m1.hpp>
#include <kes_sub_kernel/reals.hpp>

using namespace qorkes;

static_assert(hasPattern(stepOfMcg31m1, 0x3E00000000200000));

int __kesdBRngMCG31M1(StreamState* stream, int n, double* r, double a, double b) {
    auto& state = stateOf<Mcg31m1State>(stream);
    const ext scale = round64(rangeScale(a, b, stepOfMcg31m1));
    const ext shift = a;
    const uint32_t first = state.Value;
    state.Value = runTwoChains(state, n, [=](int i, uint32_t x) {
        r[i] = round64(static_cast<int32_t>(x) * scale + shift);
    });
    // A word that a copy or a file brought in may be any.
    if (n > 0) r[0] = round64(wordAsNumber(first) * scale + shift);
    return KesStatusOk;
}
