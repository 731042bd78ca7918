// Method 0 of Poisson, exact. Means below 27: search of the cumulative probabilities.
// Others: PTPE, acceptance of a candidate under a hat of a triangle, two parallelograms
// beside it and two exponential tails (Schmeiser and Kachitvichyanukul, "Poisson random
// variate generation", Research Memorandum 81-4, Purdue University, 1981).
//
// What depends on the mean alone is set up once and kept with the stream. An entry of
// the set-up is computed in extended precision from the entries it is made of, and
// rounded once.
#pragma once

#include <kes_kernel/discrete/constants.hpp>
#include <kes_kernel/discrete/search.hpp>
#include <kes_kernel/discrete/truncate.hpp>
#include <kes_kernel/kernels.hpp>

#include <limits>

namespace qorkes {
namespace ptpe {

constexpr int chunkId = 3;
constexpr int blockSize = 512;
constexpr int tableSize = 32;
constexpr int reach = 16;

constexpr double leastMean = 27; // of the rejection method
constexpr int squeezedMode = 100, squeezedValue = 50;

// Half the base of the triangle, the height of the parallelograms, the area of the left
// tail, and what the bounds of the logarithm are widened by.
constexpr double base[] = {2.195, 2.2};
constexpr double side[] = {0.133, 8.56, 6.83};
constexpr double tail[] = {0.109, 8.25, 10.86};
constexpr double margins[] = {0.00084, 0.004};
static_assert(hasPattern(base[0], 0x40018F5C28F5C28F));
static_assert(hasPattern(base[1], 0x400199999999999A));
static_assert(hasPattern(side[0], 0x3FC10624DD2F1AA0));
static_assert(hasPattern(side[1], 0x40211EB851EB851F));
static_assert(hasPattern(side[2], 0x401B51EB851EB852));
static_assert(hasPattern(tail[0], 0x3FBBE76C8B439581));
static_assert(hasPattern(tail[1], 0x4020800000000000));
static_assert(hasPattern(tail[2], 0x4025B851EB851EB8));
static_assert(hasPattern(margins[0], 0x3F4B866E43AA79BC));
static_assert(hasPattern(margins[1], 0x3F70624DD2F1A9FC));

/// The stream's chunk: two set-ups, each with the mean it is for.
struct Setup {
    double mean;
    double mode, inverseMode, inverseModeCubed, logOfModeByMean;
    double triangle;                          // area, and half the base
    double sides, leftTail, rightTail;        // areas up to and with these regions
    double height, inverseHeight;             // of the parallelograms
    double inverseTriangle;                   // 1 / triangle
    double centre, left, right;               // of the triangle's base
    double leftRate, rightRate;               // of the tails
    double inverseLeftRate, inverseRightRate; // 1 / leftRate and so on
    double down[reach], up[reach]; // probability k below or above the mode by its own
    double searchMean;
    double cumulative[tableSize];
};
static_assert(sizeof(Setup) == 672);

/// True for a mean of 0 too, the key of a set-up that was never computed.
inline Setup emptySetup() {
    Setup setup{};
    for (double& cumulative : setup.cumulative) cumulative = 1;
    return setup;
}

// ---- Search -------------------------------------------------------------------------

inline void setUpSearch(Setup& s, double mean) {
    double term[tableSize];
    term[0] = exponentialOf(-mean);
    for (int k = 1; k < tableSize; ++k)
        term[k] = round64(term[k - 1] * (ext{mean} / k));
    cumulate(term, s.cumulative);
    s.searchMean = mean;
}

inline int drawSearched(StreamState* stream, int n, int32_t* r, double mean, Setup& s) {
    if (mean != s.searchMean) setUpSearch(s, mean);
    const int32_t last = mean == 0 ? 0 : std::numeric_limits<int32_t>::max();
    const auto next = [mean](int32_t x, ext term) { return term * mean / x; };
    return searchInto<blockSize>(stream, n, r, {s.cumulative, tableSize}, last, next);
}

// ---- Rejection ----------------------------------------------------------------------

inline void setUpRejection(Setup& s, double mean) {
    const ext lambda = mean;
    s.mean = mean;
    s.mode = truncate(mean);
    const ext m = s.mode;
    s.inverseMode = round64(1 / m);
    s.inverseModeCubed = round64(1 / (m * m * m));
    s.logOfModeByMean = logarithmOf(round64(m / lambda));
    s.triangle = truncate(base[0] * ext{squareRootOf(s.mode)} - base[1]) + 0.5;
    s.height = round64(side[0] + side[1] / (side[2] + lambda));
    s.inverseHeight = round64(1 / ext{s.height});
    s.inverseTriangle = round64(1 / ext{s.triangle});
    s.centre = round64(m + 0.5);
    s.left = round64(ext{s.centre} - s.triangle);
    s.right = round64(ext{s.centre} + s.triangle);
    const ext al = (lambda - s.left) / lambda, ar = (s.right - lambda) / s.right;
    s.leftRate = round64(al * (0.5L * al + 1));
    s.rightRate = round64(ar * (0.5L * ar + 1));
    s.inverseLeftRate = round64(1 / ext{s.leftRate});
    s.inverseRightRate = round64(1 / ext{s.rightRate});
    s.sides = round64(s.triangle * (2 * ext{s.height} + 1));
    s.leftTail =
        round64(s.sides + (tail[0] + tail[1] / (tail[2] + lambda)) / s.leftRate);
    s.rightTail = round64(s.leftTail + ext{s.height} / s.rightRate);
    ext down = 1, up = 1;
    for (int k = 0; k < reach; ++k) {
        s.down[k] = round64(down *= (m - k) / lambda);
        s.up[k] = round64(up *= lambda / (m + (k + 1)));
    }
}

/// Whether v is at most the probability of y by that of the mode, by its recurrence.
inline bool acceptedByRatio(const Setup& s, int y, double v) {
    const int mode = static_cast<int>(s.mode);
    const ext lambda = s.mean;
    const int k = y > mode ? y - mode : mode - y;
    if (k == 0) return !(v > 1);
    const double* table = y > mode ? s.up : s.down;
    if (k <= reach) return !(v > table[k - 1]);
    ext f = table[reach - 1];
    if (v > f) return false;
    if (y > mode)
        for (int j = mode + reach; j < y;) f = f * lambda / ++j;
    else
        for (int j = mode - reach; j > y; --j) f = f * j / lambda;
    return !(v > f);
}

/// The same by logarithms: a quick test on either side, then Stirling's series.
inline bool acceptedBySqueeze(const Setup& s, int y, ext logV) {
    const ext lambda = s.mean, x = 1.0L / y, del = x * (lambda - y), hy = y + 0.5L;
    const ext above =
        (1 + del * (del * third - 0.5L)) * hy * del + (y + (margins[0] - lambda));
    if (logV > above) return false;
    ext gap = hy * (del * del) * (del * del) * 0.25L;
    if (del < 0) gap /= 1 + del;
    if (logV < above - margins[1] - gap) return true;
    const ext exact = hy * logarithmOf(round64(lambda * x)) + y +
                      (0.5L + s.mode) * s.logOfModeByMean - s.mode +
                      (s.inverseMode - x) * stirling::c0 +
                      (x * x * x - s.inverseModeCubed) * stirling::c1;
    return !(logV > exact);
}

constexpr int mostAttempts = 256;

/// Attempts that need a logarithm: it is taken of all of them at once.
struct Pending {
    int attempt[mostAttempts];
    double v[mostAttempts];
    int count = 0;

    QORKES_INLINE void add(int a, double value) {
        attempt[count] = a;
        v[count++] = value;
    }
};

/// The attempts of one block, in their order.
struct Attempts {
    float u[mostAttempts], v[mostAttempts];
    int32_t y[mostAttempts];
    bool accepted[mostAttempts];
    Pending tails, open; // candidates to be found; to be decided
};

/// Candidates of the triangle, all accepted; the others wait in `rest`.
QORKES_NOINLINE int proposeTriangle(const Setup& s, int n, const float* block,
                                    Attempts& attempts, int* rest) {
    const ext triangle = s.triangle, rightTail = s.rightTail, centre = s.centre;
    int others = 0;
    for (int a = 0; a < n; ++a) {
        const float u = attempts.u[a] = round32(block[2 * a] * rightTail);
        const ext v = attempts.v[a] = block[2 * a + 1];
        attempts.y[a] = truncate(u + centre - triangle * v);
        attempts.accepted[a] = u <= triangle;
        rest[others] = a;
        others += !attempts.accepted[a];
    }
    return others;
}

/// Candidates of the parallelograms; those of the tails wait for logarithms.
QORKES_NOINLINE void proposeParallelograms(const Setup& s, int n, const int* rest,
                                           Attempts& attempts) {
    for (int i = 0; i < n; ++i) {
        const int a = rest[i];
        const ext u = attempts.u[a], v = attempts.v[a];
        if (!(u <= s.sides)) {
            attempts.tails.add(a, attempts.v[a]);
            continue;
        }
        const ext x = (u - s.triangle) * s.inverseHeight + s.left,
                  offset = s.centre - x;
        const float height = round32(
            v * s.height + 1 - (offset < 0 ? -offset : offset) * s.inverseTriangle);
        attempts.y[a] = truncate(x);
        if (!(height > 1)) attempts.open.add(a, height);
    }
}

QORKES_NOINLINE void proposeTails(const Setup& s, Attempts& attempts) {
    Pending& tails = attempts.tails;
    logarithm(tails.count, tails.v, tails.v);
    for (int i = 0; i < tails.count; ++i) {
        const int a = tails.attempt[i];
        const ext u = attempts.u[a], v = attempts.v[a], logV = tails.v[i];
        const bool onRight = !(u <= s.leftTail);
        const ext w = onRight ? -logV * s.inverseRightRate + s.right
                              : logV * s.inverseLeftRate + s.left;
        const ext height = onRight ? (u - s.leftTail) * v * s.rightRate
                                   : (u - s.sides) * v * s.leftRate;
        attempts.y[a] = truncate(w);
        if (onRight || !(w < 0)) attempts.open.add(a, round32(height));
    }
}

QORKES_NOINLINE void decideByRatio(const Setup& s, Attempts& attempts) {
    const Pending& open = attempts.open;
    for (int i = 0; i < open.count; ++i) {
        const int a = open.attempt[i];
        attempts.accepted[a] = acceptedByRatio(s, attempts.y[a], open.v[i]);
    }
}

QORKES_NOINLINE void decideBySqueeze(const Setup& s, Attempts& attempts) {
    const Pending& open = attempts.open;
    double logs[mostAttempts];
    logarithm(open.count, open.v, logs);
    for (int i = 0; i < open.count; ++i) {
        const int a = open.attempt[i], y = attempts.y[a];
        attempts.accepted[a] = y > squeezedValue ? acceptedBySqueeze(s, y, logs[i])
                                                 : acceptedByRatio(s, y, open.v[i]);
    }
}

inline int drawRejected(StreamState* stream, int n, int32_t* r, double mean, Setup& s) {
    if (mean != s.mean) setUpRejection(s, mean);
    int status = KesStatusOk;
    for (int i = 0; i < n;) {
        float block[2 * mostAttempts];
        const int count = std::min(n - i, mostAttempts);
        status = uniforms(stream, 2 * count, block);
        if (failed(status)) return status;
        Attempts attempts;
        int rest[mostAttempts];
        const int others = proposeTriangle(s, count, block, attempts, rest);
        proposeParallelograms(s, others, rest, attempts);
        proposeTails(s, attempts);
        if (s.mode >= squeezedMode)
            decideBySqueeze(s, attempts);
        else
            decideByRatio(s, attempts);
        for (int a = 0; a < count; ++a) {
            r[i] = attempts.y[a];
            i += attempts.accepted[a];
        }
    }
    return status;
}

} // namespace ptpe

inline int _viRngPoissonPtpe(StreamState* stream, int n, int32_t* r, double mean) {
    ptpe::Setup* setup;
    if (const int status = chunkOf(stream, ptpe::chunkId, setup, ptpe::emptySetup());
        failed(status))
        return status;
    return mean < ptpe::leastMean ? ptpe::drawSearched(stream, n, r, mean, *setup)
                                  : ptpe::drawRejected(stream, n, r, mean, *setup);
}

} // namespace qorkes
