// __kessBRngsAbstract: (v - Low) * S + a for the caller's floats v from [Low, High),
// with S = (b - a) / (High - Low), each operation rounded to float.
#include <kes_sub_kernel/abstract.hpp>

#include <xmmintrin.h>

using namespace qorkes;

int __kessBRngsAbstract(StreamState* stream, int n, float* r, float a, float b) {
    const auto& state = stateOf<RealAbstractState<float>>(stream);
    const __m128 low = _mm_set_ss(state.Low), shift = _mm_set_ss(a);
    const __m128 width = _mm_sub_ss(_mm_set_ss(state.High), low);
    const __m128 scale = _mm_div_ss(_mm_sub_ss(_mm_set_ss(b), shift), width);
    return drawAbstract<RealAbstractState<float>>(
        stream, n, r, [=](float* to, const float* from, int count) {
            for (int i = 0; i < count; ++i) {
                const __m128 distance = _mm_sub_ss(_mm_load_ss(from + i), low);
                _mm_store_ss(to + i, _mm_add_ss(_mm_mul_ss(distance, scale), shift));
            }
        });
}
