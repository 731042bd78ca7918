#include <qorkes/qor.h>

void _qorsErfc_21(int n, const float* a, float* y) { _qorsErfc_HA(n, a, y); }
