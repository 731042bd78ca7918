// _dSinCos and the scalar-code entries of SinCos: sine and cosine of one argument.
//
// The bits of _dSin and _dCos, with one reduction for both.
//
//   infinity          NaN, invalid; entries: the default NaN, status 1
//   NaN               a NaN; double entries: the default NaN, status 1 if the high
//                     word's fraction is all zero
//   |x| < 2^-252      x and 1, inexact unless x is zero
//   |x| >= 2^17       reduced by multiples of pi/2 first
#include <qor_core/_heap/scalar_code.hpp>
#include <qor_core/_heap/sine_rows.hpp>

using namespace qorkes;

namespace {

#include "_qor_sincos_scalar_tables.inc"

QORKES_NOINLINE void sineAndCosine(double x, double* s, double* c) {
    const uint32_t exponent = exponentField(x);
    if (exponent == nonFiniteExponent) {
        *s = *c = valueAtNonFinite(x);
    } else if (exponent < firstOrdinaryExponent) {
        *s = tinyArgument(x);
        *c = cosineOfTiny(x);
    } else {
        const RowArgument argument = rowArgument(x);
        *s = sineAtRow(_dSinCosTab, argument.row, argument);
        *c = sineAtRow(_dSinCosTab, argument.row + rowsOfQuarterTurn, argument);
    }
}

void _qordSinCos_SC(int i, const double* a, double* y, double* z, const char* name) {
    scalarCode<_dSinCos>(i, a, y, z, name);
}
void _qorsSinCos_SC(int i, const float* a, float* y, float* z, const char* name) {
    scalarCode<_dSinCos>(i, a, y, z, name);
}

} // namespace

void _dSinCos(double x, double* s, double* c) {
    inFrame<Precision::bits53, Mxcsr::callers, sineAndCosine>(x, s, c);
}

void _qordSinCos_SC_HA(int i, const double* a, double* y, double* z, int*) {
    _qordSinCos_SC(i, a, y, z, "dSinCos_HA");
}
void _qordSinCos_SC_LA(int i, const double* a, double* y, double* z, int*) {
    _qordSinCos_SC(i, a, y, z, "dSinCos_LA");
}
void _qordSinCos_SC_A11(int i, const double* a, double* y, double* z, int*) {
    _qordSinCos_SC(i, a, y, z, "dSinCos_A11");
}
void _qorsSinCos_SC_HA(int i, const float* a, float* y, float* z, int*) {
    _qorsSinCos_SC(i, a, y, z, "sSinCos_HA");
}
void _qorsSinCos_SC_LA(int i, const float* a, float* y, float* z, int*) {
    _qorsSinCos_SC(i, a, y, z, "sSinCos_LA");
}
void _qorsSinCos_SC_A11(int i, const float* a, float* y, float* z, int*) {
    _qorsSinCos_SC(i, a, y, z, "sSinCos_A11");
}
