#include <qorkes/qor.h>

void _qorsPowx_11(int n, const float* a, float b, float* y) {
    _qorsPowx_HA(n, a, b, y);
}
