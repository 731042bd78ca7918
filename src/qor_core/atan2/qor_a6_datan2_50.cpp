#include <qorkes/qor.h>

void _qordAtan2_50(int n, const double* a, const double* b, double* y) {
    _qordAtan2_HA(n, a, b, y);
}
