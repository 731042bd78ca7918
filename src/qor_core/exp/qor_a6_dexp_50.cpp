#include <qorkes/qor.h>

void _qordExp_50(int n, const double* a, double* y) { _qordExp_HA(n, a, y); }
