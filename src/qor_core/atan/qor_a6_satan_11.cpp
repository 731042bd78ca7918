#include <qorkes/qor.h>

void _qorsAtan_11(int n, const float* a, float* y) { _qorsAtan_21(n, a, y); }
