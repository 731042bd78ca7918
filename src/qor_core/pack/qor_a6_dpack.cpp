// _qordPackI, _qordPackV, _qordPackM: strided, indexed and masked elements of an
// array, side by side, in double precision.
#include <qor_core/_heap/moves.hpp>
#include <qorkes/qor.h>

void _qordPackI(int n, const double* a, int incra, double* y) {
    qorkes::packStrided(n, a, incra, y);
}

void _qordPackV(int n, const double* a, const int* ia, double* y) {
    qorkes::packIndexed(n, a, ia, y);
}

void _qordPackM(int n, const double* a, const int* ma, double* y) {
    qorkes::packMasked(n, a, ma, y);
}
