// _kesiRngPoissonV: Poisson variates, each of its own mean, from normal ones.
#include "vector_mapping.hpp"

#include <kes_kernel/discrete/in_place.hpp>
#include <kes_kernel/frame.hpp>
#include <kes_kernel/kernels.hpp>

namespace qorkes {
namespace {

constexpr int blockSize = 256;

/// Variates of n normals, in their place.
QORKES_NOINLINE void mapBlock(int n, int32_t* r, const double* mean) {
    using namespace vector_mapping;
    double roots[blockSize];
    squareRoot(n, mean, roots);
    for (int i = 0; i < n; ++i) {
        const float z = reinterpret_cast<const FloatInPlace*>(r)[i];
        r[i] = mean[i] < leastMapped ? countedSums(z, mean[i])
                                     : mapped(z, mean[i], roots[i]);
    }
}

} // namespace
} // namespace qorkes

int _kesiRngPoissonV(int, StreamState* stream, int n, int32_t* r,
                     const double* lambda) {
    using namespace qorkes;
    const int status =
        _kessRngGaussian(1, stream, n, reinterpret_cast<FloatInPlace*>(r), 0, 1);
    if (failed(status)) return status;
    for (int i = 0; i < n; i += blockSize)
        mapBlock(std::min(n - i, blockSize), r + i, lambda + i);
    return status;
}
