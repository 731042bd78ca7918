// __kesiBRngMT2203: the words themselves.
#include <kes_sub_kernel/mt2203/mt2203.hpp>

using namespace qorkes;

int __kesiBRngMT2203(StreamState* stream, int n, uint32_t* r) {
    auto& state = stateOf<Mt2203State>(stream);
    deliver(state.twister, n, r, state.masks);
    return KesStatusOk;
}
