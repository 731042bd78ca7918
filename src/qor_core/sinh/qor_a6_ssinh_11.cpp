#include <qorkes/qor.h>

void _qorsSinh_11(int n, const float* a, float* y) { _qorsSinh_HA(n, a, y); }
