#include <qorkes/qor.h>

void _qorsInvCbrt_21(int n, const float* a, float* y) { _qorsInvCbrt_HA(n, a, y); }
