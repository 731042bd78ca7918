// _kesConvDDDirectAll_nodec: does nothing; _kesConvDDDirectAll_dec computes.
#include <qorkes/kes.h>

int _kesConvDDDirectAll_nodec(int, const double*, const int*, const int*, const double*,
                              const int*, const int*, double*, const int*, const int*,
                              const int*) {
    return KesStatusCcNotImplemented;
}
