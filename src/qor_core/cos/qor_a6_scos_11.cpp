#include <qorkes/qor.h>

void _qorsCos_11(int n, const float* a, float* y) { _qorsCos_21(n, a, y); }
