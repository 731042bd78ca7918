#include <qorkes/qor.h>

void _qorsCbrt_21(int n, const float* a, float* y) { _qorsCbrt_HA(n, a, y); }
