#include <qorkes/qor.h>

void _qordLog10_50(int n, const double* a, double* y) { _qordLog10_HA(n, a, y); }
