#include <qorkes/qor.h>

void _qorsExp_21(int n, const float* a, float* y) { _qorsExp_HA(n, a, y); }
