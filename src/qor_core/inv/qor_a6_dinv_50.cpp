#include <qorkes/qor.h>

void _qordInv_50(int n, const double* a, double* y) { _qordInv_HA(n, a, y); }
