// _qorsSin_HA: y = sin(a) in single precision, largest error 0.81 ulp.
//
// x less a multiple of pi in two parts, then one odd polynomial for r in [-pi/2, pi/2],
// all at 53 bits and rounded to float once.
//
//   |x| > 500000, infinity, NaN   the group goes to _qorsSin_SC_HA
#include <qor_core/_heap/float_waves.hpp>

using namespace qorkes;

void _qorsSin_HA(int n, const float* a, float* y) {
    floatWavesInFrame<Wave::sine, _qorsSin_SC_HA>(n, a, y);
}
