#include <qorkes/qor.h>

void _qorsInvSqrt_11(int n, const float* a, float* y) { _qorsInvSqrt_HA(n, a, y); }
