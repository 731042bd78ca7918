// __kessNewAbstractStream and __kesBRngsAbstractInitStream: a stream of a caller's
// floats, at first with nothing unread.
#include <kes_sub_kernel/abstract.hpp>

using namespace qorkes;

static_assert(sizeof(void*) != 4 ||
              sizeof(StreamState) + sizeof(RealAbstractState<float>) == 44);

int __kesBRngsAbstractInitStream(int method, StreamState* stream, int n,
                                 const uint32_t* params) {
    return byMethod<initialiseRealAbstract<float>, noLeapfrog, noSkipAhead>(
        method, stream, n, params);
}

int __kessNewAbstractStream(StreamState** stream, int n, float* buffer, float a,
                            float b, UpdateSingles update) {
    return newRealAbstractStream(stream, KesBrngsAbstract, __kesBRngsAbstractInitStream,
                                 n, buffer, a, b, update);
}
