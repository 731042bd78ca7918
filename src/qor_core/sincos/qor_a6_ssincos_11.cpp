#include <qorkes/qor.h>

void _qorsSinCos_11(int n, const float* a, float* y, float* z) {
    _qorsSinCos_21(n, a, y, z);
}
