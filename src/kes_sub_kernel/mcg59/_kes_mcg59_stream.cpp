// __kesBRngMCG59InitStream: one or two seed words; leapfrog and skip-ahead by powers of
// the multiplier.
#include <kes_sub_kernel/mcg59/mcg59.hpp>
#include <kes_sub_kernel/multiplicative.hpp>

using namespace qorkes;

namespace {

constexpr uint64_t multiplier = 302875106592253; // 13^13
static_assert(multiplier == (uint64_t{70518} << 32 | 0x9B23C5FD));

int initialise(StreamState* stream, int n, const uint32_t* params) {
    auto& state = stateOf<Mcg59State>(stream);
    const uint64_t low = n < 1 ? 1 : params[0];
    const uint64_t high = n > 1 ? params[1] & mask59High : 0;
    const uint64_t seed = high << 32 | low;
    state.Value = seed == 0 ? 1 : seed;
    state.Multiplier = multiplier;
    return KesStatusOk;
}

uint64_t powerOf(uint64_t base, int32_t exponent) {
    return __kesiPowMod2P59(static_cast<uint32_t>(base),
                            static_cast<uint32_t>(base >> 32), exponent);
}

using Jumps = JumpsByPowers<Mcg59State, powerOf, multiplyMod2P59>;

} // namespace

int __kesBRngMCG59InitStream(int method, StreamState* stream, int n,
                             const uint32_t* params) {
    return byMethod<initialise, Jumps::leapfrog, Jumps::skipAhead>(method, stream, n,
                                                                   params);
}
