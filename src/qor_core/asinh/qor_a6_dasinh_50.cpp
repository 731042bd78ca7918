#include <qorkes/qor.h>

void _qordAsinh_50(int n, const double* a, double* y) { _qordAsinh_HA(n, a, y); }
