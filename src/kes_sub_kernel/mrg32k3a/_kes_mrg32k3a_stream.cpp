// __kesBRngMRG32K3AInitStream: six seed words; skip-ahead by powers of the matrices
// that move three terms on by one. No leapfrog.
#include <kes_sub_kernel/mrg32k3a/mrg32k3a.hpp>

#include <algorithm>
#include <cstring>

using namespace qorkes;

namespace {

/// Terms below the modulus, and not all of them 0.
void repair(uint32_t (&terms)[3], uint32_t modulus) {
    for (uint32_t& term : terms)
        if (term >= modulus) term -= modulus;
    if ((terms[0] | terms[1] | terms[2]) == 0) terms[0] = 1;
}

int initialise(StreamState* stream, int n, const uint32_t* params) {
    auto& state = stateOf<Mrg32k3aState>(stream);
    uint32_t seed[6] = {1, 1, 1, 1, 1, 1};
    std::copy_n(params, std::clamp(n, 0, 6), seed);
    std::copy_n(seed, 3, state.X);
    std::copy_n(seed + 3, 3, state.Y);
    repair(state.X, modulus1);
    repair(state.Y, modulus2);
    return KesStatusOk;
}

// Coefficients of the newest, the middle and the oldest of three terms.
constexpr uint32_t coefficientsX[3] = {0, a12, modulus1 - a13};
constexpr uint32_t coefficientsY[3] = {a21, 0, modulus2 - a23};

int skipAhead(StreamState* stream, int32_t count) {
    auto& state = stateOf<Mrg32k3aState>(stream);
    __kesiVect3PowMod(state.X, coefficientsX, modulus1, count);
    __kesiVect3PowMod(state.Y, coefficientsY, modulus2, count);
    return KesStatusOk;
}

/// Row times column modulo m; neighbours in the column are `stride` apart.
uint32_t dotMod(const uint32_t* row, const uint32_t* column, int stride, uint32_t m) {
    uint64_t sum = 0;
    for (int i = 0; i < 3; ++i) {
        sum += uint64_t{row[i]} * column[i * stride] % m;
        if (sum >= m) sum -= m;
    }
    return static_cast<uint32_t>(sum);
}

} // namespace

void __kesiMatr3x3MulMod(const uint32_t* a, const uint32_t* b, uint32_t* c,
                         uint32_t m) {
    uint32_t product[9];
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) product[3 * i + j] = dotMod(a + 3 * i, b + j, 3, m);
    std::memcpy(c, product, sizeof product);
}

void __kesiMatr3x3VectMulMod(const uint32_t* a, const uint32_t* v, uint32_t* w,
                             uint32_t m) {
    uint32_t product[3];
    for (int i = 0; i < 3; ++i) product[i] = dotMod(a + 3 * i, v, 1, m);
    std::memcpy(w, product, sizeof product);
}

void __kesiMatr3x3PowMod(uint32_t* a, uint32_t* r, uint32_t m, int32_t e) {
    constexpr uint32_t identity[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    std::memcpy(r, identity, sizeof identity);
    for (; e != 0; e >>= 1) {
        if (e & 1) __kesiMatr3x3MulMod(a, r, r, m);
        __kesiMatr3x3MulMod(a, a, a, m);
    }
}

void __kesiVect3PowMod(uint32_t* v, const uint32_t* c, uint32_t m, int32_t e) {
    uint32_t step[9] = {0, 1, 0, 0, 0, 1, c[2], c[1], c[0]};
    uint32_t power[9];
    __kesiMatr3x3PowMod(step, power, m, e);
    __kesiMatr3x3VectMulMod(power, v, v, m);
}

int __kesBRngMRG32K3AInitStream(int method, StreamState* stream, int n,
                                const uint32_t* params) {
    return byMethod<initialise, noLeapfrog, skipAhead>(method, stream, n, params);
}
