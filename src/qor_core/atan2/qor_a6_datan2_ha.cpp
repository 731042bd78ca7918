// _qordAtan2_HA: y = the angle of the point (b, a) in double precision,
// largest error 0.56 ulp.
//
// As _qordAtan_HA with the ratio |a| / |b|, at 64 bits: bounds and bases are multiplied
// by |b|, and the four ratios t that are left share one division. For a negative b the
// angle is taken from pi; the sign of a comes last.
//
//   a or b below 2^-1021 or above 2^1020 in magnitude,
//   infinity, NaN                                      its group of four comes from the
//                                                      processor's arctangent
#include <qor_core/_heap/arctangent.hpp>
#include <qor_core/_heap/lanes.hpp>
#include <qor_core/_heap/reciprocals.hpp>

using namespace qorkes;

namespace {

constexpr double pi = 0x1.921fb54442d18p+1, piLow = 0x1.1a62633145c06p-53;
static_assert(hasPattern(pi, 0x400921FB54442D18));
static_assert(hasPattern(piLow, 0x3CA1A62633145C06));

/// The ratios after which the intervals begin.
constexpr float bounds[intervals - 1] = {0.4375f, 0.6875f, 1.1875f, 2.4375f};

/// t = N / D with N = p - c q and D = q + c p: p = |a| and q = |b|, but the other way
/// round in the last interval. There t has the wrong sign, and the constants have it
/// too. The angle is factor (high - (e - piLow)) + pi, with e = minusArctangent(t,
/// low).
struct alignas(64) Row {
    double c, low, piLow, high, factor, pi;
};

struct Rows {
    Row at[intervals][2]; // by interval and sign of b

    constexpr Rows() : at{} {
        constexpr double bases[intervals] = {0, 0.5, 1, 1.5, 0};
        for (int k = 0; k < intervals; ++k) {
            const double sign = k == intervals - 1 ? -1 : 1;
            const double low = sign * atanLo[k], high = sign * atanHi[k];
            at[k][0] = {bases[k], low, 0, high, sign, 0};
            at[k][1] = {bases[k], low, -sign * piLow, high, -sign, pi};
        }
    }
};
constexpr Rows rows;
constexpr uint32_t intervalStep = sizeof rows.at[0], leftStep = sizeof rows.at[0][0];

/// One point as the steps see it.
struct Point {
    const Row* row;
    const double* p;
    const double* q;
};

/// A ratio t in two doubles, which hold all of its 64 bits.
struct Ratio {
    double high, low;
};

/// The elements of a block between the passes.
struct Block {
    alignas(16) double ordinate[blockSize], abscissa[blockSize]; // magnitudes
    alignas(16) float shortOrdinate[blockSize], shortAbscissa[blockSize];
    alignas(16) int32_t row[blockSize];  // in bytes from the first one
    alignas(16) int32_t swap[blockSize]; // in bytes from |a| to p, from q to |b|
    Ratio ratios[blockSize];
    bool isDone[blockSize / 4];
};
constexpr uint32_t swapped = offsetof(Block, abscissa) - offsetof(Block, ordinate);

template <class T> QORKES_INLINE const T* moved(const T* from, int32_t bytes) {
    return reinterpret_cast<const T*>(reinterpret_cast<const char*>(from) + bytes);
}

QORKES_INLINE Point pointAt(const Block& block, int i) {
    const int32_t swap = block.swap[i];
    return {moved(&rows.at[0][0], block.row[i]), moved(&block.ordinate[i], swap),
            moved(&block.abscissa[i], -swap)};
}

// ---- Intervals ----------------------------------------------------------------------

constexpr uint32_t leastOrdinary = 0x00200000, largestOrdinary = 0x7FB00000;

QORKES_INLINE bool isOrdinary(const double& magnitude) {
    return highWord(magnitude) - leastOrdinary <= largestOrdinary - leastOrdinary;
}

/// By the high words of bounds, rounded to double, and of |a|.
QORKES_INLINE Point pointOf(const double& ordinate, const double& abscissa,
                            const double& b) {
    uint32_t interval = 0;
    for (const float& factor : bounds) {
        const double bound = round64(loaded(abscissa) * factor);
        interval += highWord(bound) < highWord(ordinate);
    }
    const Row& row = rows.at[interval][highWord(b) >> 31];
    if (interval == intervals - 1) return {&row, &abscissa, &ordinate};
    return {&row, &ordinate, &abscissa};
}

/// The intervals of four points in single precision; false, and nothing, if a ratio
/// lies too near to a bound or a magnitude too far out for that. The margin is four
/// steps of a high word and more than the rounding of both sides, in whatever
/// direction.
QORKES_INLINE bool findIntervals(Block& block, int i, const double* b) {
    const __m128 ordinate = _mm_load_ps(block.shortOrdinate + i);
    const __m128 abscissa = _mm_load_ps(block.shortAbscissa + i);
    const auto excess = [=](int k) {
        return _mm_sub_ps(ordinate, _mm_mul_ps(abscissa, _mm_set1_ps(bounds[k])));
    };
    const __m128 excess0 = excess(0), excess1 = excess(1), excess2 = excess(2),
                 excess3 = excess(3);
    const __m128 least =
        _mm_min_ps(_mm_min_ps(magnitudeOf(excess0), magnitudeOf(excess1)),
                   _mm_min_ps(magnitudeOf(excess2), magnitudeOf(excess3)));
    const __m128 isFar =
        _mm_cmpgt_ps(least, _mm_mul_ps(ordinate, _mm_set1_ps(0x1p-18f)));
    const __m128 isInRange = _mm_and_ps(
        _mm_cmpgt_ps(_mm_min_ps(ordinate, abscissa), _mm_set1_ps(0x1p-100f)),
        _mm_cmplt_ps(_mm_max_ps(ordinate, abscissa), _mm_set1_ps(0x1p+100f)));
    if (_mm_movemask_ps(_mm_and_ps(isFar, isInRange)) != 0xF) [[unlikely]]
        return false;

    const auto patternWhere = [](__m128 mask, uint32_t pattern) {
        return _mm_and_ps(mask, _mm_set1_ps(std::bit_cast<float>(pattern)));
    };
    const auto beyond = [=](__m128 above, uint32_t pattern) {
        return patternWhere(_mm_cmpgt_ps(above, _mm_setzero_ps()), pattern);
    };
    constexpr uint32_t step = intervalStep;
    const __m128 interval =
        _mm_xor_ps(_mm_xor_ps(beyond(excess0, step), beyond(excess1, step ^ 2 * step)),
                   _mm_xor_ps(beyond(excess2, 2 * step ^ 3 * step),
                              beyond(excess3, 3 * step ^ 4 * step)));
    const __m128 highWords =
        _mm_shuffle_ps(_mm_loadu_ps(reinterpret_cast<const float*>(b + i)),
                       _mm_loadu_ps(reinterpret_cast<const float*>(b + i + 2)),
                       _MM_SHUFFLE(3, 1, 3, 1));
    const __m128 signedOne = _mm_or_ps(signOf(highWords), _mm_set1_ps(1.0f));
    const __m128 left =
        patternWhere(_mm_cmplt_ps(signedOne, _mm_setzero_ps()), leftStep);
    _mm_store_ps(reinterpret_cast<float*>(block.row + i), _mm_or_ps(interval, left));
    _mm_store_ps(reinterpret_cast<float*>(block.swap + i), beyond(excess3, swapped));
    return true;
}

// ---- Ratios -------------------------------------------------------------------------

// Loads are cheaper than registers here: each product makes its own, and the sums take
// their other number from memory.
QORKES_INLINE ext numerator(const Point& point) {
    const ext product = loadedHere(*point.q) * loadedHere(point.row->c);
    return *point.p - product;
}
QORKES_INLINE ext denominator(const Point& point) {
    const ext product = loadedHere(*point.p) * loadedHere(point.row->c);
    return *point.q + product;
}

QORKES_INLINE void storeRatio(Ratio& ratio, ext t) {
    ratio.high = round64(t);
    ratio.low = round64(t - loaded(ratio.high));
}

QORKES_INLINE FourReciprocals reciprocalsOf(const Point& p0, const Point& p1,
                                            const Point& p2, const Point& p3) {
    const ext D0 = denominator(p0), D1 = denominator(p1);
    const ext D2 = denominator(p2), D3 = denominator(p3);
    const ext p01 = D0 * D1, p23 = D2 * D3;
    return qorkes::reciprocalsOf(D0, D1, D2, D3, p01, p23, p01 * p23);
}

QORKES_INLINE void storeFourRatios(Block& block, int i) {
    const Point p0 = pointAt(block, i), p1 = pointAt(block, i + 1);
    const Point p2 = pointAt(block, i + 2), p3 = pointAt(block, i + 3);
    const FourReciprocals r = reciprocalsOf(p0, p1, p2, p3);
    storeRatio(block.ratios[i], r.of0 * numerator(p0));
    storeRatio(block.ratios[i + 1], r.of1 * numerator(p1));
    storeRatio(block.ratios[i + 2], r.of2 * numerator(p2));
    storeRatio(block.ratios[i + 3], r.of3 * numerator(p3));
}

/// The steps of a group, with the point in the place of all four.
QORKES_INLINE ext ratioOfOne(const Point& point) {
    const ext D = denominator(point), square = D * D;
    const ext inverse = 1.0L / (square * square);
    return D * (square * inverse) * numerator(point);
}

// ---- Angles -------------------------------------------------------------------------

/// y may be a.
QORKES_INLINE void storeAngle(double& y, ext t, const Row& row, const double& a) {
    const uint32_t sign = highWord(a) & signBit;
    const ext e = minusArctangent(t, row.low);
    y = round64((row.high - (e - row.piLow)) * row.factor + row.pi);
    asm("" : "+m"(y));
    setHighWord(y, highWord(y) | sign);
}

QORKES_COLD void processorsAngles(int count, const double* a, const double* b,
                                  double* y) {
    for (int i = 0; i < count; ++i) y[i] = round64(angleOf(a[i], b[i]));
}

/// A group that findIntervals leaves: its ratios may be too small for two doubles.
QORKES_COLD void anglesOfFour(const double* ordinate, const double* abscissa,
                              const double* a, const double* b, double* y) {
    for (int k = 0; k < 4; ++k)
        if (!isOrdinary(ordinate[k]) || !isOrdinary(abscissa[k]))
            return processorsAngles(4, a, b, y);
    const Point p0 = pointOf(ordinate[0], abscissa[0], b[0]);
    const Point p1 = pointOf(ordinate[1], abscissa[1], b[1]);
    const Point p2 = pointOf(ordinate[2], abscissa[2], b[2]);
    const Point p3 = pointOf(ordinate[3], abscissa[3], b[3]);
    const FourReciprocals r = reciprocalsOf(p0, p1, p2, p3);
    storeAngle(y[0], r.of0 * numerator(p0), *p0.row, a[0]);
    storeAngle(y[1], r.of1 * numerator(p1), *p1.row, a[1]);
    storeAngle(y[2], r.of2 * numerator(p2), *p2.row, a[2]);
    storeAngle(y[3], r.of3 * numerator(p3), *p3.row, a[3]);
}

QORKES_INLINE void storeRatiosUnlessDone(Block& block, int i) {
    if (!block.isDone[i / 4]) [[likely]]
        storeFourRatios(block, i);
}

/// Whole groups in passes, which keep the chains of dependent operations short. The
/// ratios of a group are formed among the angles of the one before, whose chains leave
/// room for them.
QORKES_INLINE void anglesOfBlock(int count, const double* a, const double* b,
                                 double* y) {
    Block block;
    storeMagnitudes(block.ordinate, count, a);
    storeMagnitudes(block.abscissa, count, b);
    for (int i = 0; i < count; ++i) {
        block.shortOrdinate[i] = round32(loaded(block.ordinate[i]));
        block.shortAbscissa[i] = round32(loaded(block.abscissa[i]));
    }
    for (int i = 0; i < count; i += 4) {
        bool& isDone = block.isDone[i / 4];
        isDone = !findIntervals(block, i, b);
        if (isDone) [[unlikely]]
            anglesOfFour(block.ordinate + i, block.abscissa + i, a + i, b + i, y + i);
    }
    storeRatiosUnlessDone(block, 0);
    for (int i = 0; i < count; i += 4) {
        if (i + 4 < count) storeRatiosUnlessDone(block, i + 4);
        if (block.isDone[i / 4]) [[unlikely]]
            continue;
        for (int k = i; k < i + 4; ++k)
            storeAngle(y[k], loaded(block.ratios[k].high) + loaded(block.ratios[k].low),
                       *moved(&rows.at[0][0], block.row[k]), a[k]);
    }
}

QORKES_INLINE void angleOfOne(const double& a, const double& b, double& y) {
    double ordinate, abscissa;
    storeMagnitudes(&ordinate, 1, &a);
    storeMagnitudes(&abscissa, 1, &b);
    if (!isOrdinary(ordinate) || !isOrdinary(abscissa)) [[unlikely]]
        return processorsAngles(1, &a, &b, &y);
    const Point point = pointOf(ordinate, abscissa, b);
    storeAngle(y, ratioOfOne(point), *point.row, a);
}

QORKES_NOINLINE void angles(int n, const double* a, const double* b, double* y) {
    const int whole = n < 4 ? 0 : n & ~3;
    for (int i = 0; i < whole; i += blockSize)
        anglesOfBlock(whole - i < blockSize ? whole - i : blockSize, a + i, b + i,
                      y + i);
    for (int i = whole; i < n; ++i) angleOfOne(a[i], b[i], y[i]);
}

} // namespace

void _qordAtan2_HA(int n, const double* a, const double* b, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, angles>(n, a, b, y);
}
