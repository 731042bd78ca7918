// _kesCorrDDDirectAll_nodec: does nothing; _kesCorrDDDirectAll_dec computes.
#include <qorkes/kes.h>

int _kesCorrDDDirectAll_nodec(int, const double*, const int*, const int*, const double*,
                              const int*, const int*, double*, const int*, const int*,
                              const int*) {
    return KesStatusCcNotImplemented;
}
