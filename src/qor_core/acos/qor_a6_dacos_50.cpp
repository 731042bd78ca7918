#include <qorkes/qor.h>

void _qordAcos_50(int n, const double* a, double* y) { _qordAcos_HA(n, a, y); }
