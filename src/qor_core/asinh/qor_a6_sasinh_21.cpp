#include <qorkes/qor.h>

void _qorsAsinh_21(int n, const float* a, float* y) { _qorsAsinh_HA(n, a, y); }
