#include <qorkes/qor.h>

void _qorsInv_11(int n, const float* a, float* y) { _qorsInv_HA(n, a, y); }
