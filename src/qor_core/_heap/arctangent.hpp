// What Atan and Atan2 in double precision share: the five intervals of a ratio, the
// angle of each interval's base in two parts, and the series around it.
#pragma once

#include <qor_core/_heap/horner.hpp>
#include <qor_core/frame.hpp>

#include <common/pattern.hpp>

namespace qorkes {

/// arctan(t) = t - t (a1 t^2 + ... + a11 t^22), for |t| up to 7/16.
constexpr struct {
    double odd[6], even[5]; // a1, a3, ... a11; a2, a4, ... a10
} atanPoly = {{0x1.5555555555509p-2, 0x1.2492491fdfc9cp-3, 0x1.745cdae905490p-4,
               0x1.10d58403897a0p-4, 0x1.9785816ac714dp-5, 0x1.0a0140b247b6ep-6},
              {-0x1.999999998e492p-3, -0x1.c71c6fd40e520p-4, -0x1.3b0f1459b9fd4p-4,
               -0x1.ddd7216b6a1b8p-5, -0x1.2ad8f0c29b3cbp-5}};
static_assert(hasPattern(atanPoly.odd[0], 0x3FD5555555555509) &&
              hasPattern(atanPoly.even[0], 0xBFC999999998E492) &&
              hasPattern(atanPoly.odd[1], 0x3FC2492491FDFC9C) &&
              hasPattern(atanPoly.even[1], 0xBFBC71C6FD40E520) &&
              hasPattern(atanPoly.odd[2], 0x3FB745CDAE905490) &&
              hasPattern(atanPoly.even[2], 0xBFB3B0F1459B9FD4) &&
              hasPattern(atanPoly.odd[3], 0x3FB10D58403897A0) &&
              hasPattern(atanPoly.even[3], 0xBFADDD7216B6A1B8) &&
              hasPattern(atanPoly.odd[4], 0x3FA9785816AC714D) &&
              hasPattern(atanPoly.even[4], 0xBFA2AD8F0C29B3CB) &&
              hasPattern(atanPoly.odd[5], 0x3F90A0140B247B6E));

/// The angle of an interval's base c, and what its double lacks. The bases are 0, 1/2,
/// 1, 3/2 and infinity.
constexpr int intervals = 5;
constexpr double atanHi[intervals] = {0, 0x1.dac670561bb4fp-2, 0x1.921fb54442d18p-1,
                                      0x1.f730bd281f69bp-1, 0x1.921fb54442d18p+0};
constexpr double atanLo[intervals] = {0, 0x1.a2b7f222f65e2p-56, 0x1.1a62633145c07p-55,
                                      0x1.007887af0cbbdp-56, 0x1.1a62633145c07p-54};
static_assert(hasPattern(atanHi[1], 0x3FDDAC670561BB4F) &&
              hasPattern(atanHi[2], 0x3FE921FB54442D18) &&
              hasPattern(atanHi[3], 0x3FEF730BD281F69B) &&
              hasPattern(atanHi[4], 0x3FF921FB54442D18));
static_assert(hasPattern(atanLo[1], 0x3C7A2B7F222F65E2) &&
              hasPattern(atanLo[2], 0x3C81A62633145C07) &&
              hasPattern(atanLo[3], 0x3C7007887AF0CBBD) &&
              hasPattern(atanLo[4], 0x3C91A62633145C07));

/// The absolute values of `count` numbers, taken in the SSE registers: on the x87 unit
/// each would cost as much as a product.
QORKES_INLINE void storeMagnitudes(double* magnitudes, int count, const double* x) {
    static constexpr DoublePattern mask{magnitudeBits, 0xFFFFFFFF};
    int i = 0;
    for (; count - i >= 2; i += 2) {
        const __m128 pair = _mm_loadu_ps(reinterpret_cast<const float*>(x + i));
        _mm_store_ps(reinterpret_cast<float*>(magnitudes + i),
                     _mm_and_ps(pair, mask.load()));
    }
    if (i < count) setBits(magnitudes[i], bitsOf(x[i]) & ~(uint64_t{signBit} << 32));
}

/// (t - arctan(t)) - low - t: what the angle of a base takes on for its ratio t, with
/// the sign changed, and its low part in it.
QORKES_INLINE ext minusArctangent(ext t, const double& low) {
    const auto& k = *inRegister(&atanPoly);
    const ext u = t * t, v = u * u;
    const ext S = polynomial<6>(k.odd, v) * u + polynomial<5>(k.even, v) * v;
    return (S * t - low) - t;
}

} // namespace qorkes
