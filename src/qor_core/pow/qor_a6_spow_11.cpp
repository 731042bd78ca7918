#include <qorkes/qor.h>

void _qorsPow_11(int n, const float* a, const float* b, float* y) {
    _qorsPow_21(n, a, b, y);
}
