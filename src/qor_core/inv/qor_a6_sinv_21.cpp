#include <qorkes/qor.h>

void _qorsInv_21(int n, const float* a, float* y) { _qorsInv_HA(n, a, y); }
