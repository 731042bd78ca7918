// __kesiBRngMT19937: the words themselves.
#include <kes_sub_kernel/mt19937/mt19937.hpp>

using namespace qorkes;

namespace {

constexpr TwisterMasks masks = {0x9908B0DF, 0x9D2C5680, 0xEFC60000};

} // namespace

int __kesiBRngMT19937(StreamState* stream, int n, uint32_t* r) {
    deliver(stateOf<Mt19937State>(stream), n, r, masks);
    return KesStatusOk;
}
