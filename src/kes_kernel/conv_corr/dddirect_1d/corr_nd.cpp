// _kesCorrDDDirect1D_nodec: does nothing; _kesCorrDDDirect1D_dec computes.
#include <qorkes/kes.h>

int _kesCorrDDDirect1D_nodec(const double*, int, const double*, int, double*, int, int,
                             int, int, int) {
    return KesStatusCcNotImplemented;
}
