// _dCos and the scalar-code entries of Cos: one cosine, of any argument.
//
// The sine a quarter turn on. Table row and polynomials at 53 bits, largest error
// 0.53 ulp.
//
//   infinity          NaN, invalid; entries: the default NaN, status 1
//   NaN               a NaN; double entries: the default NaN, status 1 if the high
//                     word's fraction is all zero
//   |x| < 2^-252      1, inexact unless x is zero
//   |x| >= 2^17       reduced by multiples of pi/2 first
#include <qor_core/_heap/scalar_code.hpp>
#include <qor_core/_heap/sine_rows.hpp>

using namespace qorkes;

namespace {

#include "_qor_cos_scalar_tables.inc"

QORKES_NOINLINE void cosine(double x, double* y) {
    const uint32_t exponent = exponentField(x);
    if (exponent == nonFiniteExponent) {
        *y = valueAtNonFinite(x);
    } else if (exponent < firstOrdinaryExponent) {
        *y = cosineOfTiny(x);
    } else {
        const RowArgument argument = rowArgument(x);
        *y = sineAtRow(_dCosTab, argument.row + rowsOfQuarterTurn, argument);
    }
}

void _qordCos_SC(int i, const double* a, double* y, const char* name) {
    scalarCode<_dCos>(i, a, y, name);
}
void _qorsCos_SC(int i, const float* a, float* y, const char* name) {
    scalarCode<_dCos>(i, a, y, name);
}

} // namespace

double _dCos(double x) {
    double y;
    inFrame<Precision::bits53, Mxcsr::callers, cosine>(x, &y);
    return y;
}

void _qordCos_SC_HA(int i, const double* a, double* y, int*) {
    _qordCos_SC(i, a, y, "dCos_HA");
}
void _qordCos_SC_LA(int i, const double* a, double* y, int*) {
    _qordCos_SC(i, a, y, "dCos_LA");
}
void _qordCos_SC_A11(int i, const double* a, double* y, int*) {
    _qordCos_SC(i, a, y, "dCos_A11");
}
void _qorsCos_SC_HA(int i, const float* a, float* y, int*) {
    _qorsCos_SC(i, a, y, "sCos_HA");
}
void _qorsCos_SC_LA(int i, const float* a, float* y, int*) {
    _qorsCos_SC(i, a, y, "sCos_LA");
}
void _qorsCos_SC_A11(int i, const float* a, float* y, int*) {
    _qorsCos_SC(i, a, y, "sCos_A11");
}
