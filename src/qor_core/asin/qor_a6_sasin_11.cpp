#include <qorkes/qor.h>

void _qorsAsin_11(int n, const float* a, float* y) { _qorsAsin_21(n, a, y); }
