// _qorsTan_HA: y = tan(a) in single precision, largest error 0.94 ulp.
//
// x less a multiple of pi/2 in two parts, then the tangent of r in [-pi/4, pi/4] as a
// quotient u / v of an odd and an even polynomial, all at 53 bits and rounded to float
// once. An odd multiple makes it -v / u. Four quotients share one division.
//
//   |x| > 128000, infinity, NaN   the group goes to _qorsTan_SC_HA
#include <qor_core/_heap/tangents.hpp>

using namespace qorkes;

namespace {

constexpr TangentCoefficients<2, 3> tangentCoefficients = {
    {1.0, -0x1.8867706ed6612p-4}, {1.0, -0x1.b76f5e7f08c11p-2, 0x1.3e66ea6aa37f2p-7}};
static_assert(tangentCoefficients.A[1] == -0.0958017723 &&
              tangentCoefficients.B[1] == -0.429135777 &&
              tangentCoefficients.B[2] == 0.00971685835);

struct Tangent : FloatLimit<128000> {
    using Element = float;
    using Slot = double; // which holds all of 53 bits
    static constexpr const auto& coefficients = tangentCoefficients;

    QORKES_INLINE static ext numerator(const double* A, ext r, ext r2) {
        return polynomial<2>(A, r2) * r;
    }
    QORKES_INLINE static uint32_t lostSign(const float&) { return 0; }
    static void scalarCode(int i, const float* a, float* y) {
        _qorsTan_SC_HA(i, a, y, nullptr);
    }
};

} // namespace

void _qorsTan_HA(int n, const float* a, float* y) {
    inFrame<Precision::bits53, Mxcsr::cleared, tangents<Tangent>>(n, a, y);
}
