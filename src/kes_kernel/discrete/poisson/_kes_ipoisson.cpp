// _kesiRngPoisson: Poisson variates of one mean, by two methods.
#include "normal_mapping.hpp"
#include "ptpe.hpp"

namespace qorkes {
namespace {

using Method = int (*)(StreamState* stream, int n, int32_t* r, double lambda);
constexpr Method methods[] = {_viRngPoissonPtpe, _viRngPoissonPoisNorm};

} // namespace
} // namespace qorkes

int _kesiRngPoisson(int method, StreamState* stream, int n, int32_t* r, double lambda) {
    return qorkes::methods[method](stream, n, r, lambda);
}
