#include <qorkes/qor.h>

void _qorsSin_11(int n, const float* a, float* y) { _qorsSin_21(n, a, y); }
