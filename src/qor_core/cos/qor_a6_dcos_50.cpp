#include <qorkes/qor.h>

void _qordCos_50(int n, const double* a, double* y) { _qordCos_HA(n, a, y); }
