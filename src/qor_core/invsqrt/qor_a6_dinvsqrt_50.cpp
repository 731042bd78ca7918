#include <qorkes/qor.h>

void _qordInvSqrt_50(int n, const double* a, double* y) { _qordInvSqrt_HA(n, a, y); }
