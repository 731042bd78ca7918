#include <qorkes/qor.h>

void _qordAtan_50(int n, const double* a, double* y) { _qordAtan_HA(n, a, y); }
