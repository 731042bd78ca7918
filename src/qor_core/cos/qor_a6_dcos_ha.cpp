// _qordCos_HA: y = cos(a) in double precision, largest error 0.60 ulp.
//
// The sine of x + pi/2: as _qordSin_HA, with x less an odd multiple of pi/2.
//
//   |x| >= 128000, infinity, NaN   the group goes to _qordCos_SC_HA
#include <qor_core/_heap/sine_pieces.hpp>

using namespace qorkes;

void _qordCos_HA(int n, const double* a, double* y) {
    wavesInFrame<Wave::cosine, _qordCos_SC_HA>(n, a, y);
}
