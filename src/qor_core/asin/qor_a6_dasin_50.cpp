#include <qorkes/qor.h>

void _qordAsin_50(int n, const double* a, double* y) { _qordAsin_HA(n, a, y); }
