// What the two accuracies of double Tan share: all but the slot between polynomials and
// division, `ext` or double, and the scalar code.
#pragma once

#include <qor_core/_heap/tangents.hpp>

namespace qorkes {

/// tan(r) = r (A0 + A1 r^2 + A2 r^4 + A3 r^6) / (B0 + B1 r^2 + B2 r^4 + B3 r^6)
constexpr struct {
    double A0, A1, A2, A3;
    double B0, B1, B2, B3;
} tangentCoefficients = {
    1.0, -0x1.06b97bf03648ap-3, 0x1.6fc6fe2982a7bp-9, -0x1.f637dea7c0b2cp-18,
    1.0, -0x1.d8b2134d70767p-2, 0x1.7e7b68d9a55f3p-6, -0x1.b525b10d0a168p-13};
static_assert(tangentCoefficients.A1 == -0.12828347040957438 &&
              tangentCoefficients.A2 == 0.002805918241169989 &&
              tangentCoefficients.A3 == -7.483634966612065e-06);
static_assert(tangentCoefficients.B1 == -0.46161680374290487 &&
              tangentCoefficients.B2 == 0.02334485282206873 &&
              tangentCoefficients.B3 == -0.00020844804422038708);

template <class SlotType, auto scalarEntry> struct DoubleTangent {
    using Element = double;
    using Slot = SlotType;
    static constexpr const Step& step = quarterTurn;

    QORKES_INLINE static bool isOrdinary(const double* x) { return isBelowLimit(*x); }
    QORKES_INLINE static bool areFourOrdinary(const double* x) {
        return areFourBelowLimit(x);
    }

    /// The product with r comes last, which keeps the sign of a zero, where a sum would
    /// lose it.
    QORKES_INLINE static void polynomials(ext r, ext& u, ext& v) {
        const auto& k = *inRegister(&tangentCoefficients);
        const ext r2 = r * r;
        u = loadedHere(k.A3);
        u = u * r2 + k.A2;
        u = u * r2 + k.A1;
        u = u * r2 + k.A0;
        u = u * r;
        v = loadedHere(k.B3);
        v = v * r2 + k.B2;
        v = v * r2 + k.B1;
        v = v * r2 + k.B0;
    }
    static void scalarCode(int i, const double* a, double* y) {
        scalarEntry(i, a, y, nullptr);
    }
};

} // namespace qorkes
