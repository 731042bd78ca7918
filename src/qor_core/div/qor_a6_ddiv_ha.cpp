// _qordDiv_HA: y = a / b in double precision, largest error 0.502 ulp.
//
// Groups of four divisors share one division at 64-bit precision; a group whose product
// leaves the range of floats, and the rest of the array, is divided one by one.
//
//   b = +-0   a / b as the processor gives it, status 2 for every a
#include <qor_core/_heap/reciprocals.hpp>
#include <qor_core/frame.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordDiv_HA";
constexpr auto _ErrorCall = errorCall<double, _QOR_THISFUNC_NAME>;

QORKES_NOINLINE void divideOne(int i, const double* a, const double* b, double* y) {
    const bool isSingular = isZero(b[i]);
    y[i] = round64(ext{a[i]} / b[i]);
    if (isSingular) _ErrorCall(QOR_STATUS_SING, i, a, b, y, y);
}

QORKES_INLINE void divideFour(int i, const double* a, const double* b, double* y) {
    prefetchAhead(b + i, 128);
    FourReciprocals r;
    if (!reciprocalsOf(b + i, r)) [[unlikely]] {
        for (int k = 0; k < 4; ++k) divideOne(i + k, a, b, y);
        return;
    }
    const ext y2 = r.of2 * a[i + 2];
    const ext y3 = r.of3 * a[i + 3];
    const ext y0 = r.of0 * a[i];
    const ext y1 = r.of1 * a[i + 1];
    y[i + 2] = round64(y2);
    y[i + 3] = round64(y3);
    y[i] = round64(y0);
    y[i + 1] = round64(y1);
}

QORKES_NOINLINE void divide(int n, const double* a, const double* b, double* y) {
    inGroups<4>(
        n, [=](int i) { divideFour(i, a, b, y); },
        [=](int i) { divideOne(i, a, b, y); });
}

} // namespace

void _qordDiv_HA(int n, const double* a, const double* b, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, divide>(n, a, b, y);
}
