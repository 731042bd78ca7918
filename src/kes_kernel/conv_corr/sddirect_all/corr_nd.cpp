// _kesCorrSDDirectAll_nodec: does nothing; _kesCorrSDDirectAll_dec computes.
#include <qorkes/kes.h>

int _kesCorrSDDirectAll_nodec(int, const float*, const int*, const int*, const float*,
                              const int*, const int*, float*, const int*, const int*,
                              const int*) {
    return KesStatusCcNotImplemented;
}
