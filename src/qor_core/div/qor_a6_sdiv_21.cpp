#include <qorkes/qor.h>

void _qorsDiv_21(int n, const float* a, const float* b, float* y) {
    _qorsDiv_HA(n, a, b, y);
}
