// __kesBRngMT2203InitStream: an array of seed words of any length, and the parameters
// of the member that the identifier names; no jumps.
#include <kes_sub_kernel/mt2203/mt2203.hpp>

using namespace qorkes;

namespace {

int initialise(StreamState* stream, int n, const uint32_t* params) {
    auto& state = stateOf<Mt2203State>(stream);
    int row, member;
    __kesGetBrngBaseOffset(stream->BrngId, &row, &member);
    const KesMt2203Row& parameters = _kes_mt2203_table[member];
    seed(state.twister, n, params);
    state.masks = {parameters.MatrixA, parameters.MaskB, parameters.MaskC};
    return KesStatusOk;
}

} // namespace

int __kesBRngMT2203InitStream(int method, StreamState* stream, int n,
                              const uint32_t* params) {
    return byMethod<initialise, noLeapfrog, noSkipAhead>(method, stream, n, params);
}
