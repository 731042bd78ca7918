#include <qorkes/qor.h>

void _qordCbrt_50(int n, const double* a, double* y) { _qordCbrt_HA(n, a, y); }
