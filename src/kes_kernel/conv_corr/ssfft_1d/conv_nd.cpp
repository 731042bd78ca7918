// _kesConvSSFft1D_nodec: does nothing; _kesConvSSFft1D_dec computes.
#include <qorkes/kes.h>

int _kesConvSSFft1D_nodec(const float*, int, const float*, int, float*, int, int, int,
                          int, int) {
    return KesStatusCcNotImplemented;
}
