#include <qorkes/qor.h>

void _qorsAcos_11(int n, const float* a, float* y) { _qorsAcos_21(n, a, y); }
