// _kesiRngGeometric: failures before the first success, trunc(ln u / ln(1 - p)), with a
// float uniform and its float logarithm.
#include <kes_kernel/discrete/truncate.hpp>
#include <kes_kernel/frame.hpp>
#include <kes_kernel/kernels.hpp>

namespace qorkes {
namespace {

constexpr int blockSize = 256;

/// r[i] = truncate(x[i] * c), where x may be r.
QORKES_NOINLINE void truncateProducts(int n, const FloatInPlace* x, ext c, int32_t* r) {
    double product[blockSize];
    for (int i = 0; i < n; ++i) product[i] = round64(x[i] * c);
    truncateAll(n, product, r);
}

} // namespace
} // namespace qorkes

int _kesiRngGeometric(int, StreamState* stream, int n, int32_t* r, double p) {
    using namespace qorkes;
    const ext c = 1 / ext{logarithmOf(round64(1 - ext{p}))};
    auto* x = reinterpret_cast<FloatInPlace*>(r);
    const int status = uniforms(stream, n, x);
    if (failed(status)) return status;
    logarithm(n, x, x);
    for (int i = 0; i < n; i += blockSize)
        truncateProducts(std::min(n - i, blockSize), x + i, c, r + i);
    return status;
}
