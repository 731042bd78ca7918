// _qorsSinCos_HA: y = sin(a), z = cos(a) in single precision, largest error 0.65 ulp
// (above 4e5 of the largest results).
//
// x less a multiple of pi/2 in two parts, then an odd and an even polynomial for r in
// [-pi/4, pi/4], all at 53 bits and rounded to float once. An odd multiple swaps the
// two.
//
//   |x| > 1000000, infinity, NaN   the group goes to _qorsSinCos_SC_HA
#include <qor_core/_heap/trig_groups.hpp>
#include <qor_core/frame.hpp>

using namespace qorkes;

namespace {

constexpr float limit = 1000000.0f;

/// sin(r) / r in powers of r^2, and cos(r) from the term in r^4 on.
constexpr struct {
    double S0, S1, S2, S3;
    double half, one;
    double C0, C1, C2;
} coefficients = {
    1.0, -0x1.55554527af340p-3, 0x1.11073afce563fp-7,   -0x1.9943e0fbea90ap-13, 0.5,
    1.0, 0x1.55554a115b568p-5,  -0x1.6c0c33a81bd97p-10, 0x1.99eb9c49f772ep-16};

/// The last step of the sine is a product, which keeps the sign of a zero, where a sum
/// would lose it.
QORKES_INLINE void storeBoth(float* y, float* z, ext r, int32_t signedCount) {
    const auto count = static_cast<uint32_t>(signedCount);
    const uint32_t odd = count & 1;
    const ext r2 = r * r;
    const auto& k = *inRegister(&coefficients);
    ext s = loadedHere(k.S3);
    s = s * r2 + k.S2;
    s = s * r2 + k.S1;
    s = s * r2 + k.S0;
    storeFlipped(odd ? *z : *y, s * r, (count + odd) << 30);
    ext c = loadedHere(k.C2);
    c = c * r2 + k.C1;
    c = c * r2 + k.C0;
    storeFlipped(odd ? *y : *z, k.one - (r2 * k.half - r2 * r2 * c),
                 (count - odd) << 30);
}

QORKES_INLINE void sinCosOfFour(int i, const float* a, float* y, float* z) {
    const float* x = a + i;
    if (!areWithin(_mm_loadu_ps(x), limit)) [[unlikely]] {
        for (int k = 0; k < 4; ++k) _qorsSinCos_SC_HA(i + k, a, y, z, nullptr);
        return;
    }
    int32_t count[4];
    storeNearest(count[0], loadedHere(quarterTurn.inverse) * x[0]);
    storeNearest(count[1], loadedHere(quarterTurn.inverse) * x[1]);
    storeNearest(count[2], loadedHere(quarterTurn.inverse) * x[2]);
    storeNearest(count[3], loadedHere(quarterTurn.inverse) * x[3]);
    const ext r0 = reduced(x[0], loadInteger(count[0]), shortQuarterTurn);
    const ext r1 = reduced(x[1], loadInteger(count[1]), shortQuarterTurn);
    const ext r2 = reduced(x[2], loadInteger(count[2]), shortQuarterTurn);
    const ext r3 = reduced(x[3], loadInteger(count[3]), shortQuarterTurn);
    storeBoth(y + i + 3, z + i + 3, r3, count[3]);
    storeBoth(y + i + 2, z + i + 2, r2, count[2]);
    storeBoth(y + i + 1, z + i + 1, r1, count[1]);
    storeBoth(y + i, z + i, r0, count[0]);
}

QORKES_INLINE void sinCosOfOne(int i, const float* a, float* y, float* z) {
    if (!areWithin(_mm_load_ss(a + i), limit)) [[unlikely]]
        return _qorsSinCos_SC_HA(i, a, y, z, nullptr);
    int32_t count;
    storeNearest(count, loadedHere(quarterTurn.inverse) * a[i]);
    const ext r = reduced(a[i], loadInteger(count), shortQuarterTurn);
    storeBoth(y + i, z + i, r, count);
}

QORKES_NOINLINE [[gnu::flatten]] void sinesAndCosines(int n, const float* a, float* y,
                                                      float* z) {
    inGroups<4>(
        n, [=](int i) { sinCosOfFour(i, a, y, z); },
        [=](int i) { sinCosOfOne(i, a, y, z); });
}

} // namespace

void _qorsSinCos_HA(int n, const float* a, float* y, float* z) {
    inFrame<Precision::bits53, Mxcsr::cleared, sinesAndCosines>(n, a, y, z);
}
