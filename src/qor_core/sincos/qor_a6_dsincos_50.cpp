#include <qorkes/qor.h>

void _qordSinCos_50(int n, const double* a, double* y, double* z) {
    _qordSinCos_HA(n, a, y, z);
}
