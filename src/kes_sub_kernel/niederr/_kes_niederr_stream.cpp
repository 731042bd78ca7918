// __kesBRngNiederrInitStream: the number of dimensions in place of a seed; the choice
// of one dimension, and a skip.
//
// The generator matrices come from irreducible polynomials, by the construction of
// Bratley, Fox and Niederreiter, "Implementation and tests of low-discrepancy
// sequences", ACM Transactions on Modeling and Computer Simulation 2, 1992. Polynomials
// and sequences of bits are words here, term t in bit t: none has more than 43.
#include <kes_sub_kernel/niederr/niederr.hpp>

using namespace qorkes;

namespace {

uint64_t carrylessProduct(uint64_t a, uint32_t b) {
    uint64_t product = 0;
    for (; b != 0; b >>= 1, a <<= 1)
        if (b & 1) product ^= a;
    return product;
}

uint64_t parity(uint64_t bits) {
    return static_cast<uint64_t>(__builtin_parityll(bits));
}

/// The bits from `low` to `high` - 1.
uint64_t bitsFrom(int low, int high) {
    return (uint64_t{1} << high) - (uint64_t{1} << low);
}

/// The auxiliary sequence for a power of the polynomial, of degree m, whose preceding
/// power has degree `old`: m terms to start with, then the power's recurrence.
uint64_t auxiliarySequence(uint64_t power, int old, int m, int limit) {
    const uint64_t recurrence = power & bitsFrom(0, m);
    uint64_t v = bitsFrom(old, m);
    for (int t = m; t < limit; ++t) v |= parity(v >> (t - m) & recurrence) << t;
    return v;
}

/// A matrix in columns, of which bit 31 - i is the element of row i; the rows of each
/// power of the polynomial are its auxiliary sequence from successive terms on.
void makeDirections(uint32_t* direction, uint32_t polynomial, int degree) {
    std::fill_n(direction, bitsOfComponent, 0);
    uint64_t power = 1;
    for (int row = 0; row < bitsOfComponent;) {
        power = carrylessProduct(power, polynomial);
        const int old = row; // the degree of the preceding power
        uint64_t v =
            auxiliarySequence(power, old, old + degree, degree + bitsOfComponent - 1);
        for (int u = 0; u < degree && row < bitsOfComponent; ++u, ++row, v >>= 1) {
            const auto elements = static_cast<uint32_t>(v);
            for (int j = 0; j < bitsOfComponent; ++j)
                direction[j] |= (elements >> j & 1) << (bitsOfComponent - 1 - row);
        }
    }
}

void __kesNiederrInit(NiederrState& state, int32_t dim) {
    state.Dimension = dim;
    for (int d = 0; d < dim; ++d)
        makeDirections(state.Direction[d], uNiederrIrredPoly[d],
                       iNiederrIrredPolyDeg[d]);
    start(state);
}

int initialise(StreamState* stream, int n, const uint32_t* params) {
    __kesNiederrInit(stateOf<NiederrState>(stream),
                     dimensionOf<NiederrState>(n, params));
    return KesStatusOk;
}

/// A skip from inside a point ends two points before that of Sobol.
constexpr int32_t pointsMore = -1;

} // namespace

int __kesBRngNiederrInitStream(int method, StreamState* stream, int n,
                               const uint32_t* params) {
    return byMethod<initialise, leapfrogQuasi<NiederrState>,
                    skipAheadQuasi<NiederrState, pointsMore>>(method, stream, n,
                                                              params);
}
