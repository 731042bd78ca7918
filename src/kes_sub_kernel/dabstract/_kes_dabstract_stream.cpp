// __kesdNewAbstractStream and __kesBRngdAbstractInitStream: a stream of a caller's
// doubles, at first with nothing unread.
#include <kes_sub_kernel/abstract.hpp>

using namespace qorkes;

static_assert(sizeof(void*) != 4 ||
              sizeof(StreamState) + sizeof(RealAbstractState<double>) == 52);

int __kesBRngdAbstractInitStream(int method, StreamState* stream, int n,
                                 const uint32_t* params) {
    return byMethod<initialiseRealAbstract<double>, noLeapfrog, noSkipAhead>(
        method, stream, n, params);
}

int __kesdNewAbstractStream(StreamState** stream, int n, double* buffer, double a,
                            double b, UpdateDoubles update) {
    return newRealAbstractStream(stream, KesBrngdAbstract, __kesBRngdAbstractInitStream,
                                 n, buffer, a, b, update);
}
