// _qordInv_HA: y = 1 / a in double precision, largest error 0.502 ulp.
//
// Groups of four arguments share one division at 64-bit precision; a group whose
// product leaves the range of floats, and the rest of the array, is inverted one by
// one.
//
//   a = +-0   the infinity of the same sign, status 2
#include <qor_core/_heap/reciprocals.hpp>
#include <qor_core/frame.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordInv_HA";
constexpr auto _ErrorGate = errorGate<double, _QOR_THISFUNC_NAME>;

QORKES_NOINLINE void invertOne(int i, const double* a, double* y) {
    const bool isSingular = isZero(a[i]);
    y[i] = round64(1.0L / a[i]);
    if (isSingular) _ErrorGate(QOR_STATUS_SING, i, a, y);
}

QORKES_INLINE void invertFour(int i, const double* a, double* y) {
    prefetchAhead(a + i, 128);
    FourReciprocals r;
    if (!reciprocalsOf(a + i, r)) [[unlikely]] {
        for (int k = 0; k < 4; ++k) invertOne(i + k, a, y);
        return;
    }
    y[i + 2] = round64(r.of2);
    y[i + 3] = round64(r.of3);
    y[i] = round64(r.of0);
    y[i + 1] = round64(r.of1);
}

QORKES_NOINLINE void invert(int n, const double* a, double* y) {
    inGroups<4>(
        n, [=](int i) { invertFour(i, a, y); }, [=](int i) { invertOne(i, a, y); });
}

} // namespace

void _qordInv_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, invert>(n, a, y);
}
