// _kesCorrSSDirectAll_nodec: does nothing; _kesCorrSSDirectAll_dec computes.
#include <qorkes/kes.h>

int _kesCorrSSDirectAll_nodec(int, const float*, const int*, const int*, const float*,
                              const int*, const int*, float*, const int*, const int*,
                              const int*) {
    return KesStatusCcNotImplemented;
}
