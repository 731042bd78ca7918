// __kesBRngWHInitStream: up to four seed words, and the multipliers of the member that
// the identifier names; leapfrog and skip-ahead by their powers.
#include <kes_sub_kernel/_math/modular.hpp>
#include <kes_sub_kernel/wh/wh.hpp>

using namespace qorkes;

namespace {

int initialise(StreamState* stream, int n, const uint32_t* params) {
    auto& state = stateOf<WhState>(stream);
    const int place = tablePlaceOf(stream);
    // A count below 0 is a large one.
    const auto seeds = static_cast<uint32_t>(n);
    for (uint32_t j = 0; j < componentsOfWh; ++j) {
        const uint32_t value = j < seeds ? params[j] % _kes_WH_M[place + j] : 1;
        state.Value[j] = value == 0 ? 1 : value;
        state.Multiplier[j] = _kes_WH_A[place + j];
    }
    return KesStatusOk;
}

int skipAhead(StreamState* stream, int32_t count) {
    auto& state = stateOf<WhState>(stream);
    const uint32_t* modulus = _kes_WH_M + tablePlaceOf(stream);
    for (int j = 0; j < componentsOfWh; ++j) {
        const uint32_t factor = __kesiPowMod(state.Multiplier[j], count, modulus[j]);
        state.Value[j] = multiplyMod(factor, state.Value[j], modulus[j]);
    }
    return KesStatusOk;
}

int leapfrog(StreamState* stream, int32_t stride, int32_t k) {
    auto& state = stateOf<WhState>(stream);
    const uint32_t* modulus = _kes_WH_M + tablePlaceOf(stream);
    skipAhead(stream, k);
    for (int j = 0; j < componentsOfWh; ++j)
        state.Multiplier[j] = __kesiPowMod(state.Multiplier[j], stride, modulus[j]);
    return KesStatusOk;
}

} // namespace

int __kesBRngWHInitStream(int method, StreamState* stream, int n,
                          const uint32_t* params) {
    return byMethod<initialise, leapfrog, skipAhead>(method, stream, n, params);
}
