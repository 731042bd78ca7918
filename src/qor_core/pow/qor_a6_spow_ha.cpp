// _qorsPow_HA: y = a^b in single precision, largest error 0.501 ulp.
#include <qor_core/_heap/float_powers.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsPow_HA";

#include "qor_a6_spow_ha_tables.inc"
constexpr FloatPowTables tables(_qordPowHATab);

} // namespace

void _qorsPow_HA(int n, const float* a, const float* b, float* y) {
    inFrame<Precision::bits53, Mxcsr::callers,
            floatPowers<tables, _QOR_THISFUNC_NAME, oneEach>>(n, a, b, y);
}
