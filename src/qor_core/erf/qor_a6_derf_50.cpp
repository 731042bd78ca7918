#include <qorkes/qor.h>

void _qordErf_50(int n, const double* a, double* y) { _qordErf_HA(n, a, y); }
