#include <qorkes/qor.h>

void _qordInvCbrt_50(int n, const double* a, double* y) { _qordInvCbrt_HA(n, a, y); }
