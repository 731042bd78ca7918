#include <qor_core/_heap/sine_pieces.hpp>

using namespace qorkes;

void _qordSin_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::cleared, waves<Wave::sine, _qordSin_SC_HA>>(n, a,
                                                                                  y);
}
