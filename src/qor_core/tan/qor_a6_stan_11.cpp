#include <qorkes/qor.h>

void _qorsTan_11(int n, const float* a, float* y) { _qorsTan_21(n, a, y); }
