// __kesBRngMCG31M1InitStream: one seed word; leapfrog and skip-ahead by powers of the
// multiplier.
#include <kes_sub_kernel/mcg31m1/mcg31m1.hpp>

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

int skipAhead(StreamState* stream, int32_t count) {
    auto& state = stateOf<Mcg31m1State>(stream);
    const uint32_t factor = __kesiPowMod2P31M1(state.Multiplier, count);
    state.Value = multiplyMod2P31M1(factor, state.Value);
    return KesStatusOk;
}

int leapfrog(StreamState* stream, int32_t stride, int32_t k) {
    auto& state = stateOf<Mcg31m1State>(stream);
    skipAhead(stream, k);
    state.Multiplier = __kesiPowMod2P31M1(state.Multiplier, stride);
    return KesStatusOk;
}

} // namespace

int __kesBRngMCG31M1InitStream(int method, StreamState* stream, int n,
                               const uint32_t* params) {
    return byMethod<initialise, leapfrog, skipAhead>(method, stream, n, params);
}
