#include <qorkes/qor.h>

void _qordErfc_50(int n, const double* a, double* y) { _qordErfc_HA(n, a, y); }
