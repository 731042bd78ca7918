// _qorsUnpackI, _qorsUnpackV, _qorsUnpackM: an array's elements to strided, indexed
// and masked places, in single precision.
#include <qor_core/_heap/moves.hpp>
#include <qorkes/qor.h>

void _qorsUnpackI(int n, const float* a, float* y, int incry) {
    qorkes::unpackStrided(n, a, y, incry);
}

void _qorsUnpackV(int n, const float* a, float* y, const int* iy) {
    qorkes::unpackIndexed(n, a, y, iy);
}

void _qorsUnpackM(int n, const float* a, float* y, const int* my) {
    qorkes::unpackMasked(n, a, y, my);
}
