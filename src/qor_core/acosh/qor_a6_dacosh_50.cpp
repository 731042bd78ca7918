#include <qorkes/qor.h>

void _qordAcosh_50(int n, const double* a, double* y) { _qordAcosh_HA(n, a, y); }
