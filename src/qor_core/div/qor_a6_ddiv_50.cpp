#include <qorkes/qor.h>

void _qordDiv_50(int n, const double* a, const double* b, double* y) {
    _qordDiv_HA(n, a, b, y);
}
