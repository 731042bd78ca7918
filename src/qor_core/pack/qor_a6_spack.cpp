// _qorsPackI, _qorsPackV, _qorsPackM: strided, indexed and masked elements of an
// array, side by side, in single precision.
#include <qor_core/_heap/moves.hpp>
#include <qorkes/qor.h>

void _qorsPackI(int n, const float* a, int incra, float* y) {
    qorkes::packStrided(n, a, incra, y);
}

void _qorsPackV(int n, const float* a, const int* ia, float* y) {
    qorkes::packIndexed(n, a, ia, y);
}

void _qorsPackM(int n, const float* a, const int* ma, float* y) {
    qorkes::packMasked(n, a, ma, y);
}
