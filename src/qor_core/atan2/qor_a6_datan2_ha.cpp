// _qordAtan2_HA: y = the angle of the point (b, a) in double precision.
//
// As _qordAtan_HA with the ratio |a| / |b|, at 64 bits: bounds and bases are multiplied
// by |b|, and the four ratios t that are left share one division. For a negative b the
// angle is taken from pi; the sign of a comes last.
//
//   a or b below 2^-1021 or above 2^1020 in magnitude,
//   infinity, NaN                                      its group of four comes from the
//                                                      processor's arctangent
#include <qor_core/_heap/arctangent.hpp>
#include <qor_core/_heap/reciprocals.hpp>

using namespace qorkes;

namespace {

constexpr double pi = 0x1.921fb54442d18p+1, piLow = 0x1.1a62633145c06p-53;
static_assert(hasPattern(pi, 0x400921FB54442D18));
static_assert(hasPattern(piLow, 0x3CA1A62633145C06));

/// t = N / D with N = p - c q and D = q + c p: p = |a| and q = |b|, but the other way
/// round in the last interval. There t has the wrong sign, and the constants have it
/// too. The angle is factor (high - (e - piLow)) + pi, with e = minusArctangent(t,
/// low).
struct Row {
    double c, low, piLow, high, factor, pi;
};

struct Rows {
    Row at[intervals][2]; // by interval and sign of b

    constexpr Rows() : at{} {
        constexpr double bases[intervals] = {0, 0.5, 1, 1.5, 0};
        for (int k = 0; k < intervals; ++k) {
            const double sign = k == intervals - 1 ? -1 : 1;
            at[k][0] = {bases[k], sign * atanLo[k], 0, sign * atanHi[k], sign, 0};
            at[k][1] = {
                bases[k], sign * atanLo[k], -sign * piLow, sign * atanHi[k], -sign, pi};
        }
    }
};
constexpr Rows rows;

constexpr uint32_t leastOrdinary = 0x00200000, largestOrdinary = 0x7FB00000;

QORKES_INLINE bool isOrdinary(const double& x) {
    return (highWord(x) & magnitudeBits) - leastOrdinary <=
           largestOrdinary - leastOrdinary;
}
QORKES_INLINE bool areOrdinary(const double* x) {
    return isOrdinary(x[0]) && isOrdinary(x[1]) && isOrdinary(x[2]) && isOrdinary(x[3]);
}

/// One point as the steps see it.
struct Point {
    const Row* row;
    const double* p;
    const double* q;
};

QORKES_INLINE Point pointOf(const double& a, const double& b) {
    const ext abscissa = __builtin_fabsl(loaded(b));
    const double bound0 = round64(abscissa * 0.4375L);
    const double bound1 = round64(abscissa * 0.6875L);
    const double bound2 = round64(abscissa * 1.1875L);
    const double bound3 = round64(abscissa * 2.4375L);
    const uint32_t magnitude = highWord(a) & magnitudeBits;
    const uint32_t isLast = isBelow(highWord(bound3), magnitude);
    const uint32_t k = isBelow(highWord(bound0), magnitude) +
                       isBelow(highWord(bound1), magnitude) +
                       isBelow(highWord(bound2), magnitude) + isLast;
    return {&rows.at[k][highWord(b) >> 31], chosen(isLast, &b, &a),
            chosen(isLast, &a, &b)};
}

QORKES_INLINE ext numerator(const Point& point) {
    return __builtin_fabsl(loaded(*point.p)) -
           point.row->c * __builtin_fabsl(loaded(*point.q));
}
QORKES_INLINE ext denominator(const Point& point) {
    return __builtin_fabsl(loaded(*point.q)) +
           point.row->c * __builtin_fabsl(loaded(*point.p));
}

/// A ratio t in two doubles, which hold all of its 64 bits, its constants, the sign of
/// the ordinate and where the angle goes.
struct Ratio {
    double high, low;
    const Row* row;
    uint32_t sign;
    int index;
};

QORKES_INLINE Ratio* appended(Ratio* end, ext t, const Row* row, int i,
                              const double* a) {
    end->high = round64(t);
    end->low = round64(t - loaded(end->high));
    end->row = row;
    end->sign = highWord(a[i]) & signBit;
    end->index = i;
    return end + 1;
}

QORKES_INLINE Ratio* ratiosOfFour(Ratio* end, int i, const double* a, const double* b) {
    const Point p0 = pointOf(a[i], b[i]), p1 = pointOf(a[i + 1], b[i + 1]),
                p2 = pointOf(a[i + 2], b[i + 2]), p3 = pointOf(a[i + 3], b[i + 3]);
    const ext D0 = denominator(p0), D1 = denominator(p1);
    const ext D2 = denominator(p2), D3 = denominator(p3);
    const ext p01 = D0 * D1, p23 = D2 * D3;
    const FourReciprocals r = reciprocalsOf(D0, D1, D2, D3, p01, p23, p01 * p23);
    end = appended(end, numerator(p0) * r.of0, p0.row, i, a);
    end = appended(end, numerator(p1) * r.of1, p1.row, i + 1, a);
    end = appended(end, numerator(p2) * r.of2, p2.row, i + 2, a);
    return appended(end, numerator(p3) * r.of3, p3.row, i + 3, a);
}

/// The steps of a group, with the element in the place of all four.
QORKES_INLINE Ratio* ratioOfOne(Ratio* end, int i, const double* a, const double* b) {
    const Point point = pointOf(a[i], b[i]);
    const ext D = denominator(point), square = D * D;
    const ext inverse = 1.0L / (square * square);
    return appended(end, numerator(point) * (D * (square * inverse)), point.row, i, a);
}

QORKES_INLINE void storeAngle(const Ratio& ratio, double* y) {
    const Row& row = *ratio.row;
    const ext t = loaded(ratio.high) + loaded(ratio.low);
    const ext e = minusArctangent(t, row.low);
    double& angle = y[ratio.index];
    angle = round64((row.high - (e - row.piLow)) * row.factor + row.pi);
    asm("" : "+m"(angle));
    setHighWord(angle, highWord(angle) | ratio.sign);
}

QORKES_COLD void processorsAngles(int i, int count, const double* a, const double* b,
                                  double* y) {
    for (int k = i; k < i + count; ++k) y[k] = round64(angleOf(a[k], b[k]));
}

/// The ratios of a block first, then their angles, which keeps the chains of dependent
/// operations short.
QORKES_NOINLINE void angles(int n, const double* a, const double* b, double* y) {
    Ratio ratios[blockSize];
    for (int begin = 0; begin < n; begin += blockSize) {
        const int end = n - begin < blockSize ? n : begin + blockSize;
        Ratio* last = ratios;
        int i = begin;
        for (; end - i >= 4; i += 4) {
            if (areOrdinary(a + i) && areOrdinary(b + i)) [[likely]]
                last = ratiosOfFour(last, i, a, b);
            else
                processorsAngles(i, 4, a, b, y);
        }
        for (; i < end; ++i) {
            if (isOrdinary(a[i]) && isOrdinary(b[i])) [[likely]]
                last = ratioOfOne(last, i, a, b);
            else
                processorsAngles(i, 1, a, b, y);
        }
        for (const Ratio* ratio = ratios; ratio != last; ++ratio) storeAngle(*ratio, y);
    }
}

} // namespace

void _qordAtan2_HA(int n, const double* a, const double* b, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, angles>(n, a, b, y);
}
