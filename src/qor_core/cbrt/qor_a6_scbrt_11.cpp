#include <qorkes/qor.h>

void _qorsCbrt_11(int n, const float* a, float* y) { _qorsCbrt_HA(n, a, y); }
