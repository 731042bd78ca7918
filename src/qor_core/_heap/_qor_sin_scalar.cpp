// _dSin and the scalar-code entries of Sin: one sine, of any argument.
//
// Table row and polynomials at 53 bits, largest error 0.53 ulp.
//
//   infinity          NaN, invalid; entries: the default NaN, status 1
//   NaN               a NaN; double entries: the default NaN, status 1 if the high
//                     word's fraction is all zero
//   |x| < 2^-252      x, inexact unless zero
//   |x| >= 2^17       reduced by multiples of pi/2 first
#include <qor_core/_heap/scalar_code.hpp>
#include <qor_core/_heap/sine_rows.hpp>

using namespace qorkes;

namespace {

#include "_qor_sin_scalar_tables.inc"

QORKES_NOINLINE void sine(double x, double* y) {
    const uint32_t exponent = exponentField(x);
    if (exponent == nonFiniteExponent) {
        *y = valueAtNonFinite(x);
    } else if (exponent < firstOrdinaryExponent) {
        *y = tinyArgument(x);
    } else {
        const RowArgument argument = rowArgument(x);
        *y = sineAtRow(_dSinTab, argument.row, argument);
    }
}

void _qordSin_SC(int i, const double* a, double* y, const char* name) {
    scalarCode<_dSin>(i, a, y, name);
}
void _qorsSin_SC(int i, const float* a, float* y, const char* name) {
    scalarCode<_dSin>(i, a, y, name);
}

} // namespace

double _dSin(double x) {
    double y;
    inFrame<Precision::bits53, Mxcsr::callers, sine>(x, &y);
    return y;
}

void _qordSin_SC_HA(int i, const double* a, double* y, int*) {
    _qordSin_SC(i, a, y, "dSin_HA");
}
void _qordSin_SC_LA(int i, const double* a, double* y, int*) {
    _qordSin_SC(i, a, y, "dSin_LA");
}
void _qordSin_SC_A11(int i, const double* a, double* y, int*) {
    _qordSin_SC(i, a, y, "dSin_A11");
}
void _qorsSin_SC_HA(int i, const float* a, float* y, int*) {
    _qorsSin_SC(i, a, y, "sSin_HA");
}
void _qorsSin_SC_LA(int i, const float* a, float* y, int*) {
    _qorsSin_SC(i, a, y, "sSin_LA");
}
void _qorsSin_SC_A11(int i, const float* a, float* y, int*) {
    _qorsSin_SC(i, a, y, "sSin_A11");
}
