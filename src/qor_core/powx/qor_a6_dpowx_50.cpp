#include <common/ext.hpp>
#include <qorkes/qor.h>

using namespace qorkes;

// On its way through the unit a signaling NaN in b becomes quiet.
void _qordPowx_50(int n, const double* a, double b, double* y) {
    _qordPowx_HA(n, a, round64(loaded(b)), y);
}
