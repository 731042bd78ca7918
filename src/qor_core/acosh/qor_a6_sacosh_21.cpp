#include <qorkes/qor.h>

void _qorsAcosh_21(int n, const float* a, float* y) { _qorsAcosh_HA(n, a, y); }
