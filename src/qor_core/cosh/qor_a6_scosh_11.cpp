#include <qorkes/qor.h>

void _qorsCosh_11(int n, const float* a, float* y) { _qorsCosh_HA(n, a, y); }
