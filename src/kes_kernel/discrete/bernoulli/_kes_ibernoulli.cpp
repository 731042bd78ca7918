// _kesiRngBernoulli: 1 with probability p, else 0; a float uniform against p, in place.
#include <common/bits.hpp>
#include <kes_kernel/discrete/in_place.hpp>
#include <kes_kernel/frame.hpp>

namespace qorkes {
namespace {

/// The smallest float that is not below p: a float is below p if it is below that.
float floatNotBelow(double p) {
    float above = round32(p);
    if (above < p) setBits(above, above < 0 ? bitsOf(above) - 1 : bitsOf(above) + 1);
    return above;
}

} // namespace
} // namespace qorkes

int _kesiRngBernoulli(int, StreamState* stream, int n, int32_t* r, double p) {
    using namespace qorkes;
    auto* u = reinterpret_cast<FloatInPlace*>(r);
    const int status = uniforms(stream, n, u);
    if (failed(status)) return status;
    const __m128 bound = _mm_set1_ps(floatNotBelow(p));
    const __m128 one = _mm_set1_ps(copyBits<float>(int32_t{1}));
    inFours(n, u, [=](__m128 x) { return _mm_and_ps(_mm_cmpnge_ps(x, bound), one); });
    return status;
}
