#include <qorkes/qor.h>

void _qorsErf_11(int n, const float* a, float* y) { _qorsErf_HA(n, a, y); }
