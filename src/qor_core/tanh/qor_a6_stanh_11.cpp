#include <qorkes/qor.h>

void _qorsTanh_11(int n, const float* a, float* y) { _qorsTanh_HA(n, a, y); }
