#include <qor_core/_heap/float_waves.hpp>

using namespace qorkes;

void _qorsCos_HA(int n, const float* a, float* y) {
    inFrame<Precision::bits53, Mxcsr::cleared, waves<Wave::cosine, _qorsCos_SC_HA>>(
        n, a, y);
}
