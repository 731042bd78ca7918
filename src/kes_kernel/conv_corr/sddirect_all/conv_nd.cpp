// _kesConvSDDirectAll_nodec: does nothing; _kesConvSDDirectAll_dec computes.
#include <qorkes/kes.h>

int _kesConvSDDirectAll_nodec(int, const float*, const int*, const int*, const float*,
                              const int*, const int*, float*, const int*, const int*,
                              const int*) {
    return KesStatusCcNotImplemented;
}
