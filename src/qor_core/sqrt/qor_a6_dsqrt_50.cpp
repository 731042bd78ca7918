#include <qorkes/qor.h>

void _qordSqrt_50(int n, const double* a, double* y) { _qordSqrt_HA(n, a, y); }
