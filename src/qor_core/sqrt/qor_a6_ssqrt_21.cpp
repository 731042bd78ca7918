#include <qorkes/qor.h>

void _qorsSqrt_21(int n, const float* a, float* y) { _qorsSqrt_HA(n, a, y); }
