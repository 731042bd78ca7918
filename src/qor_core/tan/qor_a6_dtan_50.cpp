// _qordTan_50: y = tan(a) in double precision, largest error 2.2 ulp.
//
// As _qordTan_HA, with numerators and denominators rounded to double.
//
//   |x| >= 128000, infinity, NaN   the group goes to _qordTan_SC_LA
#include <qor_core/_heap/double_tangents.hpp>

using namespace qorkes;

void _qordTan_50(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::cleared,
            tangents<DoubleTangent<double, _qordTan_SC_LA>>>(n, a, y);
}
