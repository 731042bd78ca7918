// What the two accuracies of double Tan share: all but the slot between polynomials and
// division, `ext` or double, and the scalar code.
#pragma once

#include <qor_core/_heap/tangents.hpp>

namespace qorkes {

constexpr TangentCoefficients<3, 4> tangentCoefficients = {
    {-0x1.06b97bf03648ap-3, 0x1.6fc6fe2982a7bp-9, -0x1.f637dea7c0b2cp-18},
    {1.0, -0x1.d8b2134d70767p-2, 0x1.7e7b68d9a55f3p-6, -0x1.b525b10d0a168p-13}};
static_assert(tangentCoefficients.A[0] == -0.12828347040957438 &&
              tangentCoefficients.A[1] == 0.002805918241169989 &&
              tangentCoefficients.A[2] == -7.483634966612065e-06);
static_assert(tangentCoefficients.B[1] == -0.46161680374290487 &&
              tangentCoefficients.B[2] == 0.02334485282206873 &&
              tangentCoefficients.B[3] == -0.00020844804422038708);

template <class SlotType, auto scalarEntry> struct DoubleTangent : DoubleLimit {
    using Element = double;
    using Slot = SlotType;
    static constexpr const auto& coefficients = tangentCoefficients;

    QORKES_INLINE static ext numerator(const double* A, ext r, ext r2) {
        return r * r2 * polynomial<3>(A, r2) + r;
    }
    QORKES_INLINE static uint32_t lostSign(const double& x) { return signOfZero(x); }
    static void scalarCode(int i, const double* a, double* y) {
        scalarEntry(i, a, y, nullptr);
    }
};

} // namespace qorkes
