// _qordTan_HA: y = tan(a) in double precision, largest error 0.97 ulp.
//
// Reduction, polynomials and division at 64-bit precision throughout.
//
//   |x| >= 128000, infinity, NaN   the group goes to _qordTan_SC_HA
#include <qor_core/_heap/double_tangents.hpp>

using namespace qorkes;

void _qordTan_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::cleared,
            tangents<DoubleTangent<WideSlot, _qordTan_SC_HA>>>(n, a, y);
}
