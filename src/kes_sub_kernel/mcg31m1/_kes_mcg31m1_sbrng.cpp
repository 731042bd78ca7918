// __kessBRngMCG31M1: x * S + a in single precision, each operation rounded, x itself
// too. Of the scale S, b - a is a float, its product with the double step is formed in
// extended precision, and that is rounded to float.
#include <kes_sub_kernel/mcg31m1/mcg31m1.hpp>
#include <kes_sub_kernel/reals.hpp>

using namespace qorkes;

int __kessBRngMCG31M1(StreamState* stream, int n, float* r, float a, float b) {
    auto& state = stateOf<Mcg31m1State>(stream);
    const __m128 shift = _mm_set_ss(a);
    const float width = _mm_cvtss_f32(_mm_sub_ss(_mm_set_ss(b), shift));
    const __m128 scale = _mm_set_ss(round32(ext{width} * stepOfMcg31m1));
    const auto deliver = [=](float& y, __m128 number) {
        _mm_store_ss(&y, _mm_add_ss(_mm_mul_ss(number, scale), shift));
    };
    const uint32_t first = state.Value;
    state.Value = runTwoChains(state, n, [=](int i, uint32_t x) {
        deliver(r[i], _mm_cvt_si2ss(_mm_setzero_ps(), static_cast<int32_t>(x)));
    });
    // A word that a copy or a file brought in may be any.
    if (n > 0) deliver(r[0], _mm_set_ss(round32(wordAsNumber(first))));
    return KesStatusOk;
}
