#include <qorkes/qor.h>

void _qordSinh_50(int n, const double* a, double* y) { _qordSinh_HA(n, a, y); }
