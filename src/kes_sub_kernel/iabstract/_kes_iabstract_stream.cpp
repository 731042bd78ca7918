// __kesiNewAbstractStream and __kesBRngiAbstractInitStream: a stream of a caller's
// integers, at first with nothing unread.
#include <kes_sub_kernel/iabstract/iabstract.hpp>

using namespace qorkes;

namespace {

struct Block {
    const int* n;
    uint32_t* buffer;
    UpdateIntegers update;
};

int initialise(StreamState* stream, int, const uint32_t* params) {
    const auto& block = *reinterpret_cast<const Block*>(params);
    stateOf<IntegerAbstractState>(stream) = {
        {*block.n, 0, *block.n}, block.buffer, block.update};
    return KesStatusOk;
}

} // namespace

int __kesBRngiAbstractInitStream(int method, StreamState* stream, int n,
                                 const uint32_t* params) {
    return byMethod<initialise, noLeapfrog, noSkipAhead>(method, stream, n, params);
}

int __kesiNewAbstractStream(StreamState** stream, int n, uint32_t* buffer,
                            UpdateIntegers update) {
    if (n == 0 || !buffer || !update) return KesStatusBadArgument;
    return newAbstractStream(stream, KesBrngiAbstract, __kesBRngiAbstractInitStream,
                             Block{&n, buffer, update});
}
