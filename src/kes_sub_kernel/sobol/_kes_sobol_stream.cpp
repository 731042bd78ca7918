// __kesBRngSobolInitStream: the number of dimensions in place of a seed; the choice of
// one dimension, and a skip.
#include <kes_sub_kernel/sobol/sobol.hpp>

using namespace qorkes;

namespace {

/// The direction numbers of dimension d: the start numbers, continued by the recurrence
/// of the polynomial. Number j is a fraction of j + 1 bits.
void makeDirections(uint32_t* direction, int d) {
    const int degree = iSobolIrredPolyDeg[d - 1];
    const uint32_t polynomial = sobolPolynomial(d);
    std::copy_n(sobolStarts(d), degree, direction);
    for (int j = degree; j < bitsOfComponent; ++j) {
        direction[j] = direction[j - degree];
        for (int k = 1; k <= degree; ++k)
            if (polynomial >> (degree - k) & 1) direction[j] ^= direction[j - k] << k;
    }
}

void __kesSobolInit(SobolState& state, int32_t dim) {
    state.Dimension = dim;
    std::fill_n(state.Direction[0], bitsOfComponent, 1);
    for (int d = 1; d < dim; ++d) makeDirections(state.Direction[d], d);
    for (int d = 0; d < dim; ++d)
        for (int j = 0; j < bitsOfComponent; ++j)
            state.Direction[d][j] <<= bitsOfComponent - 1 - j;
    start(state);
}

int initialise(StreamState* stream, int n, const uint32_t* params) {
    __kesSobolInit(stateOf<SobolState>(stream), dimensionOf<SobolState>(n, params));
    return KesStatusOk;
}

/// With the begun point a skip passes over the whole of it.
constexpr int32_t pointsMore = 1;

} // namespace

int __kesBRngSobolInitStream(int method, StreamState* stream, int n,
                             const uint32_t* params) {
    return byMethod<initialise, leapfrogQuasi<SobolState>,
                    skipAheadQuasi<SobolState, pointsMore>>(method, stream, n, params);
}
