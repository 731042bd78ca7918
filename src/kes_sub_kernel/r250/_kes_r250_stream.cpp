// __kesBRngR250InitStream: one seed word for a multiplicative generator that fills the
// register, or the register itself; no jumps.
#include <kes_sub_kernel/r250/r250.hpp>

#include <algorithm>

using namespace qorkes;

namespace {

constexpr uint32_t multiplier = 69069;

/// 32 of the words become a triangle of bits, so that the words are linearly
/// independent over GF(2).
void makeIndependent(uint32_t* table) {
    for (int bit = 31; bit >= 0; --bit) {
        uint32_t& word = table[3 + 7 * (31 - bit)];
        const uint32_t highest = uint32_t{1} << bit;
        word = (word & (highest - 1)) | highest;
    }
}

void InitSeedTable(R250State& state, uint32_t seed) {
    uint32_t word = seed == 0 ? 1 : seed;
    for (uint32_t& entry : state.Table) entry = word *= multiplier;
    makeIndependent(state.Table);
}

int initialise(StreamState* stream, int n, const uint32_t* params) {
    auto& state = stateOf<R250State>(stream);
    if (n >= sizeOfR250)
        std::copy_n(params, sizeOfR250, state.Table);
    else
        InitSeedTable(state, n < 1 ? 1 : params[0]);
    state.Index1 = 0;
    state.Index2 = lagOfR250;
    return KesStatusOk;
}

} // namespace

int __kesBRngR250InitStream(int method, StreamState* stream, int n,
                            const uint32_t* params) {
    return byMethod<initialise, noLeapfrog, noSkipAhead>(method, stream, n, params);
}
