#include <qorkes/qor.h>

void _qordTanh_50(int n, const double* a, double* y) { _qordTanh_HA(n, a, y); }
