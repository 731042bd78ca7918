// __kesiBRngMCG59: the numbers themselves, two words each, low word first.
#include <kes_sub_kernel/mcg59/mcg59.hpp>

using namespace qorkes;

int __kesiBRngMCG59(StreamState* stream, int n, uint32_t* r) {
    run(stateOf<Mcg59State>(stream), n, [=](int i, uint64_t x) {
        r[2 * i] = static_cast<uint32_t>(x);
        r[2 * i + 1] = static_cast<uint32_t>(x >> 32);
    });
    return KesStatusOk;
}
