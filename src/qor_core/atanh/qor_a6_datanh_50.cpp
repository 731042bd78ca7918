#include <qorkes/qor.h>

void _qordAtanh_50(int n, const double* a, double* y) { _qordAtanh_HA(n, a, y); }
