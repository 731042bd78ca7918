#include <qorkes/qor.h>

void _qorsExp_11(int n, const float* a, float* y) { _qorsExp_HA(n, a, y); }
