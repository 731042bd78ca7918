// __kesiBRngWH: the four numbers of each element as they are, a word each.
#include <kes_sub_kernel/wh/wh.hpp>

using namespace qorkes;

namespace {

/// Multiplication by a fixed number modulo m, without a division: the quotient comes
/// from floor(a 2^32 / m) and is right or one too small (Shoup, "A Computational
/// Introduction to Number Theory and Algebra", 2008).
struct Factor {
    uint32_t a, scaled, m;

    Factor(uint32_t multiplier, uint32_t modulus)
        : a(multiplier % modulus),
          scaled(static_cast<uint32_t>((uint64_t{a} << 32) / modulus)), m(modulus) {}

    QORKES_INLINE uint32_t operator()(uint32_t x) const {
        const auto quotient = static_cast<uint32_t>(uint64_t{scaled} * x >> 32);
        const uint32_t rest = a * x - quotient * m;
        return rest >= m ? rest - m : rest;
    }
};

} // namespace

int __kesiBRngWH(StreamState* stream, int n, uint32_t* r) {
    if (n < 1) return KesStatusOk;
    auto& state = stateOf<WhState>(stream);
    const uint32_t* modulus = _kes_WH_M + tablePlaceOf(stream);
    const uint32_t* multiplier = state.Multiplier;
    const Factor factors[componentsOfWh] = {{multiplier[0], modulus[0]},
                                            {multiplier[1], modulus[1]},
                                            {multiplier[2], modulus[2]},
                                            {multiplier[3], modulus[3]}};
    const auto step = [&](const uint32_t* from, uint32_t* to) {
        for (int j = 0; j < componentsOfWh; ++j) to[j] = factors[j](from[j]);
    };
    std::copy_n(state.Value, componentsOfWh, r);
    for (; n > 1; --n, r += componentsOfWh) step(r, r + componentsOfWh);
    step(r, state.Value);
    return KesStatusOk;
}
