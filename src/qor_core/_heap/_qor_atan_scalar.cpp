// _qorsatan_scalar: one arctangent for the float kernels, without a frame: it computes
// at the precision and rounding in force. 8e-9 off in relative terms.
//
// The angle of a base near |x| and an odd series in t = (|x| - base) / (1 + base |x|);
// beyond 2.6875 in -1 / |x|. An infinity comes out as pi/2, and a NaN passes through.
#include <common/bits.hpp>
#include <common/ext.hpp>
#include <qorkes/qor.h>

using namespace qorkes;

namespace {

constexpr double atanc[4] = {0, 0x1.0657e94db30d0p-1, 0x1.04e67277a01d7p+0,
                             0x1.921fb54442d18p+0};
static_assert(atanc[1] == 0.5123894603107377 && atanc[2] == 1.0191413442663497 &&
              atanc[3] == 1.5707963267948966);

/// Bit patterns of 0.375, 1 and 2.6875.
constexpr uint32_t bounds[3] = {0x3EC00000, 0x3F800000, 0x402C0000};
constexpr float bases[3] = {0, 0.5625f, 1.625f};

/// arctan(t) = t + t^3 (c[0] + c[1] t^2 + ...)
constexpr double series[4] = {-0x1.5554d99939da6p-2, 0x1.995576336ffc8p-3,
                              -0x1.1eaae8e4cef8fp-3, 0x1.5c9f1c79aa128p-4};
static_assert(series[0] == -0.33333148954121794 && series[1] == 0.19987003654932622 &&
              series[2] == -0.13997442196148 && series[3] == 0.08511267779488618);

} // namespace

long double _qorsatan_scalar(float x) {
    const uint32_t bits = bitsOf(x), magnitude = bits & magnitudeBits;
    const int k =
        (magnitude > bounds[0]) + (magnitude > bounds[1]) + (magnitude > bounds[2]);
    const ext ax = __builtin_fabsl(x);
    const ext N = k == 3 ? -1.0L : ax - bases[k];
    const ext D = k == 3 ? ax : ax * bases[k] + 1.0L;
    const ext t = 1.0L / D * N, u = t * t, w = t * u;
    const ext p = u * ((series[3] * u + series[2]) * u + series[1]) + series[0];
    const ext y = t + w * p + atanc[k];
    return bits & signBit ? -y : y;
}
