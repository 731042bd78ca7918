#include <qorkes/qor.h>

void _qorsLog10_21(int n, const float* a, float* y) { _qorsLog10_HA(n, a, y); }
