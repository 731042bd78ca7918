// _kesiRngGeometric: failures before the first success, trunc(ln u / ln(1 - p)), with a
// float uniform and its float logarithm.
#include <kes_kernel/discrete/in_place.hpp>
#include <kes_kernel/discrete/truncate.hpp>
#include <kes_kernel/frame.hpp>
#include <kes_kernel/kernels.hpp>

int _kesiRngGeometric(int, StreamState* stream, int n, int32_t* r, double p) {
    using namespace qorkes;
    const ext c = 1 / ext{logarithmOf(round64(1 - ext{p}))};
    auto* x = reinterpret_cast<FloatInPlace*>(r);
    const int status = uniforms(stream, n, x);
    if (failed(status)) return status;
    logarithm(n, x, x);
    for (int i = 0; i < n; ++i) r[i] = truncate(ext{x[i]} * c);
    return status;
}
