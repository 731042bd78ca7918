// _qordPow_HA: y = a^b in double precision, largest error 0.52 ulp.
#include <qor_core/_heap/accurate_powers.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordPow_HA";

#include "qor_a6_dpow_ha_tables.inc"
constexpr PowTables tables(powRecip, powLog, powExp2);

} // namespace

void _qordPow_HA(int n, const double* a, const double* b, double* y) {
    inFrame<Precision::bits53, Mxcsr::callers,
            accuratePowers<tables, _QOR_THISFUNC_NAME, oneEach>>(n, a, b, y);
}
