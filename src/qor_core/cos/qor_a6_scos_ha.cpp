// _qorsCos_HA: y = cos(a) in single precision, largest error 0.81 ulp.
//
// The sine of x + pi/2: as _qorsSin_HA, with x less an odd multiple of pi/2.
//
//   |x| > 500000, infinity, NaN   the group goes to _qorsCos_SC_HA
#include <qor_core/_heap/float_waves.hpp>

using namespace qorkes;

void _qorsCos_HA(int n, const float* a, float* y) {
    floatWavesInFrame<Wave::cosine, _qorsCos_SC_HA>(n, a, y);
}
