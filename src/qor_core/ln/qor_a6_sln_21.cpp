#include <qorkes/qor.h>

void _qorsLn_21(int n, const float* a, float* y) { _qorsLn_HA(n, a, y); }
