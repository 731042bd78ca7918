// __kesBRngMCG31M1InitStream: one seed word; leapfrog and skip-ahead by powers of the
// multiplier.
#include <kes_sub_kernel/mcg31m1/mcg31m1.hpp>
#include <kes_sub_kernel/multiplicative.hpp>

using namespace qorkes;

namespace {

constexpr uint32_t multiplier = 1132489760;

int initialise(StreamState* stream, int n, const uint32_t* params) {
    auto& state = stateOf<Mcg31m1State>(stream);
    const uint32_t seed = n < 1 ? 1 : params[0] % mersenne31;
    state.Value = seed == 0 ? 1 : seed;
    state.Multiplier = multiplier;
    return KesStatusOk;
}

using Jumps = JumpsByPowers<Mcg31m1State, __kesiPowMod2P31M1, multiplyMod2P31M1>;

} // namespace

int __kesBRngMCG31M1InitStream(int method, StreamState* stream, int n,
                               const uint32_t* params) {
    return byMethod<initialise, Jumps::leapfrog, Jumps::skipAhead>(method, stream, n,
                                                                   params);
}
