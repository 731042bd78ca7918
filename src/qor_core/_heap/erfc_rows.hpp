// What the kernels of erfc share: rows of shorter reach made from those of their
// tables, the reduction of exp(-v^2), and the arguments that need neither.
#pragma once

#include <qor_core/_heap/error_function.hpp>

namespace qorkes {

/// A row of the table serves v with (1 + v)^4 from 2^e to 2^(e+1), and is made into
/// eight for equal parts of that.
constexpr int erfcParts = 8;

/// The square root of a number from 1 on, for constants: from above by Newton's way. It
/// is not left to a builtin function, which not every compiler evaluates.
constexpr ext rootAtCompileTime(ext x) {
    ext root = x;
    for (ext next = (x + 1) / 2; next < root; next = (root + x / root) / 2) root = next;
    return root;
}

/// The middle of the part; 0 for the first one, to which v - 0 is exact.
constexpr double erfcCentre(int i) {
    const auto edge = [](int k) {
        const ext part = k % erfcParts;
        const ext power = (1 + part / erfcParts) * (1 << k / erfcParts);
        return rootAtCompileTime(rootAtCompileTime(power)) - 1;
    };
    return i == 0 ? 0 : static_cast<double>((edge(i) + edge(i + 1)) / 2);
}

/// The coefficients c of a row's polynomial of degree 15 about another centre.
constexpr void moveRow(const double (&row)[23], double centre, Wide (&c)[16]) {
    for (int k = 0; k <= 5; ++k) c[k] = Wide{row[1 + 2 * k]} + row[2 + 2 * k];
    for (int k = 6; k <= 15; ++k) c[k] = row[7 + k];
    const Wide shift = Wide{centre} + row[0];
    for (int lowest = 0; lowest < 15; ++lowest)
        for (int k = 14; k >= lowest; --k) c[k] += shift * c[k + 1];
}

QORKES_INLINE double fourthPower(ext x) {
    const ext square = x * x;
    return round64(square * square);
}

/// The place of v among these rows, by (1 + v)^4. Those before the first scaled one, up
/// to 1.8284, hold erfc(v), the others erfc(v) exp(v^2).
QORKES_INLINE uint32_t erfcRowOf(const double& fourth) {
    return (highWord(fourth) - 0x3FF00000) >> 17;
}
constexpr uint32_t firstScaledRow = 6 * erfcParts;

constexpr double erfcExpScale = 0x1.71547652b82fep+6; // 64/ln 2
constexpr double erfcExpShifter = 0x1.8p+52;
constexpr double erfcLn2Hi = 0x1.62e42fefap-7; // ln(2)/64 in 36 bits, and the rest
constexpr double erfcLn2Lo = 0x1.cf79abc9e3b3ap-46;
constexpr double erfcExpC2 = 0x1p-1;
constexpr double erfcExpC3 = 0x1.55555555548f8p-3;
constexpr double erfcExpC4 = 0x1.5555555558fccp-5;
constexpr double erfcExpC5 = 0x1.111123aaf20d3p-7;
constexpr double erfcExpC6 = 0x1.6c16a1c2a3ffdp-10;
constexpr double erfcTiny = 0x1.0000000000001p-1022;
static_assert(hasPattern(erfcExpScale, 0x40571547652B82FE));
static_assert(hasPattern(erfcExpShifter, 0x4338000000000000));
static_assert(hasPattern(erfcLn2Hi, 0x3F862E42FEFA0000));
static_assert(hasPattern(erfcLn2Lo, 0x3D1CF79ABC9E3B3A));
static_assert(hasPattern(erfcExpC2, 0x3FE0000000000000));
static_assert(hasPattern(erfcExpC3, 0x3FC55555555548F8));
static_assert(hasPattern(erfcExpC4, 0x3FA5555555558FCC));
static_assert(hasPattern(erfcExpC5, 0x3F8111123AAF20D3));
static_assert(hasPattern(erfcExpC6, 0x3F56C16A1C2A3FFD));
static_assert(hasPattern(erfcTiny, 0x0010000000000001));

constexpr uint32_t erfcRowsFrom = 0x3B900000; // 2^-70, high word of a double

/// What rows and exponential do not serve: NaNs, magnitudes below 2^-70, negative
/// numbers for which erfc is 2, positive ones for which it is 0.
template <class T, auto _ErrorGate>
QORKES_COLD void specialErfc(int i, const T* a, T* y) {
    if (isNaN(a[i])) return store(y[i], ext{a[i]} * a[i]);
    const double x = a[i];
    const uint32_t high = highWord(x) & magnitudeBits;
    const bool isNegative = highWord(x) & signBit;
    if (high < erfcRowsFrom) {
        store(y[i], 1.0L + x);
    } else if (high == doubleInfinityHigh) {
        y[i] = isNegative ? 2 : 0;
    } else if (isNegative) {
        store(y[i], 2.0L - inRegister(ext{erfcTiny}));
    } else {
        store(y[i], inRegister(ext{erfcTiny}) * erfcTiny);
        _ErrorGate(QOR_STATUS_UNDERFLOW, i, a, y);
    }
}

} // namespace qorkes
