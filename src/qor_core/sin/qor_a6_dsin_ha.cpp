// _qordSin_HA: y = sin(a) in double precision, largest error 0.60 ulp.
//
// x less a multiple of pi, in four parts at 64-bit precision; then, for r in
// [-pi/2, pi/2], the odd polynomial of the piece that |r| lies in, of 65.
//
//   |x| >= 128000, infinity, NaN   the group goes to _qordSin_SC_HA
#include <qor_core/_heap/sine_pieces.hpp>

using namespace qorkes;

void _qordSin_HA(int n, const double* a, double* y) {
    wavesInFrame<Wave::sine, _qordSin_SC_HA>(n, a, y);
}
