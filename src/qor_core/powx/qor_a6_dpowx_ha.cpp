// _qordPowx_HA: y = a^b with one b, as _qordPow_HA.
#include <qor_core/_heap/accurate_powers.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordPowx_HA";

#include "qor_a6_dpowx_ha_tables.inc"
constexpr PowTables tables(powRecip, powLog, powExp2);

} // namespace

void _qordPowx_HA(int n, const double* a, double b, double* y) {
    inFrame<Precision::bits53, Mxcsr::callers,
            accuratePowers<tables, _QOR_THISFUNC_NAME, oneForAll>>(n, a, &b, y);
}
