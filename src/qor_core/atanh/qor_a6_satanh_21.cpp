#include <qorkes/qor.h>

void _qorsAtanh_21(int n, const float* a, float* y) { _qorsAtanh_HA(n, a, y); }
