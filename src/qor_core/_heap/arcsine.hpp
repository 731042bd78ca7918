// Asin and Acos in double precision, on the x87 unit at 64 bits.
//
// Below 1/2 the odd series in x. From there to 1 a root of the distance w to 1 and a
// series in it: with R = sqrt(w) (sqrt(2) + w c1 + ...), asin |x| = pi/2 - R. Both
// series run as two chains, of every second coefficient.
//
// A block of the array is sorted first: the two series each get their elements by a
// list, since a branch on random arguments would be foreseen half the time only.
#pragma once

#include <qor_core/_heap/horner.hpp>
#include <qor_core/frame.hpp>

namespace qorkes {

/// asin(x) = x + x (c1 y + c2 y^2 + ... + c13 y^13) with y = x^2, for |x| < 1/2.
constexpr struct {
    double odd[7], even[6]; // c1, c3, ... c13; c2, c4, ... c12
} asinPoly = {{0x1.5555555555579p-3, 0x1.6db6db724fe19p-5, 0x1.6e8be19f6199dp-6,
               0x1.ca247eb6664e5p-7, 0x1.622cb270118b0p-7, 0x1.6825c16316f03p-6,
               0x1.0d60d1986aec6p-5},
              {0x1.333333332dc42p-4, 0x1.f1c71a7cedd43p-6, 0x1.1c49bd43e63f7p-6,
               0x1.755bdefc292c9p-7, 0x1.d768b20a865acp-9, -0x1.5e9019191be85p-6}};
static_assert(asinPoly.odd[0] == 0.16666666666666766 &&
              asinPoly.even[0] == 0.074999999999691119 &&
              asinPoly.odd[1] == 0.044642857176310176 &&
              asinPoly.even[1] == 0.030381942622367274 &&
              asinPoly.odd[2] == 0.022372217497400027 &&
              asinPoly.even[2] == 0.017351565198257615 &&
              asinPoly.odd[3] == 0.013981401320779028 &&
              asinPoly.even[3] == 0.011394008521457792 &&
              asinPoly.odd[4] == 0.010808550956550839 &&
              asinPoly.even[4] == 0.0035965649924604905 &&
              asinPoly.odd[5] == 0.021981657843169532 &&
              asinPoly.even[5] == -0.02139666033730105 &&
              asinPoly.odd[6] == 0.032883080831508191);

/// acos(1 - w) = sqrt(w) (c0 + c1 w + ... + c12 w^12), for w <= 1/2. The constant term
/// is a fit, 1.7e-17 off the root of 2.
constexpr struct {
    ext constant;           // c0
    double linear;          // c1
    double even[6], odd[5]; // c2, c4, ... c12; c3, c5, ... c11
} edgePoly = {0xb.504f333f9de6544p-3L,
              0x1.e2b7dddfef685p-4,
              {0x1.b27247b05bfc1p-6, 0x1.5ffb73b0e316fp-9, 0x1.923ea17042897p-12,
               0x1.1aa10c6c1972dp-14, 0x1.cb7b004104341p-16, 0x1.752d6d7b6a76ap-17},
              {0x1.02995b4ada56ep-7, 0x1.032e82c4c12c0p-10, 0x1.419e6b35c530ep-13,
               0x1.291f6e4e3284ap-16, -0x1.826ebf7639956p-17}};
static_assert(edgePoly.linear == 0.11785113019774414 &&
              edgePoly.even[0] == 0.026516504296011826 &&
              edgePoly.odd[0] == 0.0078918166888850248 &&
              edgePoly.even[1] == 0.0026854113315889975 &&
              edgePoly.odd[1] == 0.00098869965694452222 &&
              edgePoly.even[2] == 0.00038361039243340597 &&
              edgePoly.odd[2] == 0.00015335980577248952 &&
              edgePoly.even[3] == 6.7384027433084386e-05 &&
              edgePoly.odd[3] == 1.7709897570474227e-05 &&
              edgePoly.even[4] == 2.7387170352058445e-05 &&
              edgePoly.odd[4] == -1.1516589193805046e-05 &&
              edgePoly.even[5] == 1.112155472678444e-05);
static_assert(hasPattern(edgePoly.constant, 0x3FFF, 0xB504F333F9DE6544));

constexpr ext wideHalfPi = 0xc.90fdaa22168c235p-3L;
static_assert(hasPattern(wideHalfPi, 0x3FFF, 0xC90FDAA22168C235));

constexpr uint32_t firstForEdge = 0x3FE00000; // 1/2
constexpr uint32_t oneHigh = 0x3FF00000;
constexpr uint64_t oneBits = uint64_t{oneHigh} << 32;
constexpr uint64_t infinityBits = uint64_t{doubleInfinityHigh} << 32;

QORKES_INLINE ext centralArcsine(ext x) {
    const auto& k = *inRegister(&asinPoly);
    const ext y = x * x, z = y * y;
    return x + x * (y * polynomial<7>(k.odd, z) + z * polynomial<6>(k.even, z));
}

/// acos |x|
QORKES_INLINE ext edgeArccosine(ext x) {
    const auto& k = *inRegister(&edgePoly);
    const ext w = 1.0L - __builtin_fabsl(x), q = w * w;
    const ext S = (loadedHere(k.constant) + q * polynomial<6>(k.even, q)) +
                  w * (k.linear + q * polynomial<5>(k.odd, q));
    return squareRoot(w) * S;
}

/// The elements of a block below 1/2 in magnitude, and the others.
struct ArcsineBlock {
    int32_t central[blockSize], edge[blockSize];
    int centralCount = 0, edgeCount = 0;
};

QORKES_INLINE void sortBlock(ArcsineBlock& block, int begin, int end, const double* a) {
    int central = 0;
    for (int i = begin; i < end; ++i) {
        const int edge = i - begin - central;
        block.central[central] = block.edge[edge] = i;
        central += (highWord(a[i]) & magnitudeBits) < firstForEdge;
    }
    block.centralCount = central;
    block.edgeCount = end - begin - central;
}

/// An element from 1 up in magnitude, stored already; only 1 itself and NaNs are right.
template <class Function>
QORKES_COLD void reportBeyondOne(uint32_t magnitude, uint32_t low, int i,
                                 const double* a, double* y) {
    const uint64_t bits = uint64_t{magnitude} << 32 | low;
    if (bits > oneBits && bits <= infinityBits)
        Function::errorGate(QOR_STATUS_ERRDOM, i, a, y);
}

/// A function is a structure of
///     central(x)          its value below 1/2 in magnitude
///     edge(R, isNegative) the others', by R = acos |x| and the sign of x
///     errorGate
template <class Function>
QORKES_NOINLINE void arcsines(int n, const double* a, double* y) {
    ArcsineBlock block;
    for (int begin = 0; begin < n; begin += blockSize) {
        const int end = n - begin < blockSize ? n : begin + blockSize;
        sortBlock(block, begin, end, a);
        for (int k = 0; k < block.centralCount; ++k) {
            const int i = block.central[k];
            y[i] = round64(Function::central(loaded(a[i])));
        }
        for (int k = 0; k < block.edgeCount; ++k) {
            const int i = block.edge[k];
            const uint32_t high = highWord(a[i]), low = lowWord(a[i]);
            y[i] = round64(Function::edge(edgeArccosine(loaded(a[i])), high >> 31));
            if ((high & magnitudeBits) >= oneHigh) [[unlikely]]
                reportBeyondOne<Function>(high & magnitudeBits, low, i, a, y);
        }
    }
}

} // namespace qorkes
