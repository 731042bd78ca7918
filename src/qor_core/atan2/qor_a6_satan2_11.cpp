#include <qorkes/qor.h>

void _qorsAtan2_11(int n, const float* a, const float* b, float* y) {
    _qorsAtan2_21(n, a, b, y);
}
