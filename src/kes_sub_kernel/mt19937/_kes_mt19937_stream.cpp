// __kesBRngMT19937InitStream: an array of seed words of any length; no jumps.
#include <kes_sub_kernel/mt19937/mt19937.hpp>

using namespace qorkes;

namespace {

int initialise(StreamState* stream, int n, const uint32_t* params) {
    seed(stateOf<Mt19937State>(stream), n, params);
    return KesStatusOk;
}

} // namespace

int __kesBRngMT19937InitStream(int method, StreamState* stream, int n,
                               const uint32_t* params) {
    return byMethod<initialise, noLeapfrog, noSkipAhead>(method, stream, n, params);
}
