#include <qorkes/qor.h>

void _qordCosh_50(int n, const double* a, double* y) { _qordCosh_HA(n, a, y); }
