#include <qorkes/qor.h>

void _qorsLn_11(int n, const float* a, float* y) { _qorsLn_HA(n, a, y); }
