// _qorsPowx_HA: y = a^b with one b, as the float _qorsPow_HA.
#include <qor_core/_heap/float_powers.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsPowx_HA";

#include "qor_a6_spowx_ha_tables.inc"
constexpr FloatPowTables tables(_qordPowHATab);

} // namespace

void _qorsPowx_HA(int n, const float* a, float b, float* y) {
    inFrame<Precision::bits53, Mxcsr::callers,
            floatPowers<tables, _QOR_THISFUNC_NAME, oneForAll>>(n, a, &b, y);
}
