// _qordUnpackI, _qordUnpackV, _qordUnpackM: an array's elements to strided, indexed
// and masked places, in double precision.
#include <qor_core/_heap/moves.hpp>
#include <qorkes/qor.h>

void _qordUnpackI(int n, const double* a, double* y, int incry) {
    qorkes::unpackStrided(n, a, y, incry);
}

void _qordUnpackV(int n, const double* a, double* y, const int* iy) {
    qorkes::unpackIndexed(n, a, y, iy);
}

void _qordUnpackM(int n, const double* a, double* y, const int* my) {
    qorkes::unpackMasked(n, a, y, my);
}
