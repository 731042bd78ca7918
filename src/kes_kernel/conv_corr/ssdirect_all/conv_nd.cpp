// _kesConvSSDirectAll_nodec: does nothing; _kesConvSSDirectAll_dec computes.
#include <qorkes/kes.h>

int _kesConvSSDirectAll_nodec(int, const float*, const int*, const int*, const float*,
                              const int*, const int*, float*, const int*, const int*,
                              const int*) {
    return KesStatusCcNotImplemented;
}
