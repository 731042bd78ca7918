#include <qorkes/qor.h>

void _qordSin_50(int n, const double* a, double* y) { _qordSin_HA(n, a, y); }
