#include <qorkes/qor.h>

void _qordLn_50(int n, const double* a, double* y) { _qordLn_HA(n, a, y); }
