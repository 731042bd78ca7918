// Method 0 of Poisson, exact. Means below 27: search of the cumulative probabilities.
// Others: PTPE, acceptance of a candidate under a hat of a triangle, two parallelograms
// beside it and two exponential tails (Schmeiser and Kachitvichyanukul, "Poisson random
// variate generation", Research Memorandum 81-4, Purdue University, 1981).
//
// What depends on the mean alone is set up once and kept with the stream. An entry of
// the set-up is computed in extended precision from the entries it is made of, and
// rounded once.
#pragma once

#include <kes_kernel/discrete/truncate.hpp>
#include <kes_kernel/frame.hpp>
#include <kes_kernel/kernels.hpp>

namespace qorkes {
namespace ptpe {

constexpr double leastMean = 27; // of the rejection method
constexpr int squeezedMode = 100, squeezedValue = 50;
constexpr double third = 0x1.5555555555555p-2, twelfth = 0x1.5555555555555p-4,
                 of360th = 0x1.6c16c16c16c17p-9;
constexpr double triangle[] = {0x1.18f5c28f5c28fp+1, 0x1.199999999999ap+1};
constexpr double shoulder[] = {0x1.10624dd2f1aap-3, 0x1.11eb851eb851fp+3,
                               0x1.b51eb851eb852p+2};
constexpr double leftTail[] = {0x1.be76c8b439581p-4, 0x1.08p+3, 0x1.5b851eb851eb8p+3};
constexpr double margins[] = {0x1.b866e43aa79bcp-11, 0x1.0624dd2f1a9fcp-8};
static_assert(hasPattern(triangle[0], 0x40018F5C28F5C28F)); // 2.195
static_assert(hasPattern(triangle[1], 0x400199999999999A)); // 2.2
static_assert(hasPattern(shoulder[0], 0x3FC10624DD2F1AA0)); // 0.133
static_assert(hasPattern(shoulder[1], 0x40211EB851EB851F)); // 8.56
static_assert(hasPattern(shoulder[2], 0x401B51EB851EB852)); // 6.83
static_assert(hasPattern(leftTail[0], 0x3FBBE76C8B439581)); // 0.109
static_assert(hasPattern(leftTail[1], 0x4020800000000000)); // 8.25
static_assert(hasPattern(leftTail[2], 0x4025B851EB851EB8)); // 10.86
static_assert(hasPattern(margins[0], 0x3F4B866E43AA79BC));  // 0.00084
static_assert(hasPattern(margins[1], 0x3F70624DD2F1A9FC));  // 0.004

constexpr int ratios = 16, searched = 32;

/// The stream's chunk: two set-ups, each with the mean it is for.
struct Setup {
    double mean;
    double mode, inverseMode, inverseModeCubed, logOfModeByMean;
    double p1, p2, p3, p4; // areas up to the triangle's end, the parallelograms', ...
    double height, inverseHeight, inverseP1;
    double middle, left, right;
    double lambdaL, lambdaR, inverseLambdaL, inverseLambdaR;
    double down[ratios], up[ratios]; // probability k below or above the mode by its own
    double searchMean;
    double cumulative[searched];
};
static_assert(sizeof(Setup) == 672);

/// True for a mean of 0 too, the key of a set-up that was never computed.
inline Setup emptySetup() {
    Setup setup{};
    for (double& cumulative : setup.cumulative) cumulative = 1;
    return setup;
}

// ---- Search ----

/// Terms are added from the smallest on.
inline void setUpSearch(Setup& s, double mean) {
    double term[searched], suffix[searched + 1];
    term[0] = exponentialOf(-mean);
    for (int k = 1; k < searched; ++k) term[k] = round64(term[k - 1] * (ext{mean} / k));
    suffix[searched] = 0;
    for (int k = searched - 1; k >= 0; --k)
        suffix[k] = round64(ext{suffix[k + 1]} + term[k]);
    for (int k = 0; k < searched; ++k)
        s.cumulative[k] = round64(ext{suffix[0]} - suffix[k + 1]);
    s.searchMean = mean;
}

/// Beyond the table. The sum may stay below u for ever: where a term adds nothing to
/// it, the search is over.
QORKES_COLD int searchOn(const Setup& s, double mean, double u) {
    if (mean == 0) return 0;
    ext sum = s.cumulative[searched - 1];
    ext term = sum - s.cumulative[searched - 2];
    for (int j = searched;; ++j) {
        term = term * mean / j;
        const ext next = sum + term;
        if (u < next || next == sum) return j;
        sum = next;
    }
}

QORKES_INLINE int search(const Setup& s, double mean, double u) {
    for (int k = 0; k < searched; ++k)
        if (u < s.cumulative[k]) return k;
    return searchOn(s, mean, u);
}

inline int drawSearched(StreamState* stream, int n, int32_t* r, double mean, Setup& s) {
    if (mean != s.searchMean) setUpSearch(s, mean);
    constexpr int blockLength = 512;
    int status = KesStatusOk;
    for (int i = 0; i < n; i += blockLength) {
        double u[blockLength];
        const int count = n - i < blockLength ? n - i : blockLength;
        status = uniforms(stream, count, u);
        if (failed(status)) return status;
        for (int k = 0; k < count; ++k) r[i + k] = search(s, mean, u[k]);
    }
    return status;
}

// ---- Rejection ----

inline void setUpRejection(Setup& s, double mean) {
    const ext lambda = mean;
    s.mean = mean;
    s.mode = truncate(mean);
    const ext m = s.mode;
    s.inverseMode = round64(1 / m);
    s.inverseModeCubed = round64(1 / (m * m * m));
    s.logOfModeByMean = logarithmOf(round64(m / lambda));
    s.p1 = truncate(triangle[0] * ext{squareRootOf(s.mode)} - triangle[1]) + 0.5;
    s.height = round64(shoulder[0] + shoulder[1] / (shoulder[2] + lambda));
    s.inverseHeight = round64(1 / ext{s.height});
    s.inverseP1 = round64(1 / ext{s.p1});
    s.middle = round64(m + 0.5);
    s.left = round64(ext{s.middle} - s.p1);
    s.right = round64(ext{s.middle} + s.p1);
    const ext al = (lambda - s.left) / lambda, ar = (s.right - lambda) / s.right;
    s.lambdaL = round64(al * (0.5L * al + 1));
    s.lambdaR = round64(ar * (0.5L * ar + 1));
    s.inverseLambdaL = round64(1 / ext{s.lambdaL});
    s.inverseLambdaR = round64(1 / ext{s.lambdaR});
    s.p2 = round64(s.p1 * (2 * ext{s.height} + 1));
    s.p3 = round64(s.p2 +
                   (leftTail[0] + leftTail[1] / (leftTail[2] + lambda)) / s.lambdaL);
    s.p4 = round64(s.p3 + ext{s.height} / s.lambdaR);
    ext down = 1, up = 1;
    for (int k = 0; k < ratios; ++k) {
        s.down[k] = round64(down *= (m - k) / lambda);
        s.up[k] = round64(up *= lambda / (m + (k + 1)));
    }
}

/// Whether v is at most the probability of y by that of the mode, by its recurrence.
inline bool acceptedByRatio(const Setup& s, int y, float v) {
    const int mode = static_cast<int>(s.mode);
    const ext lambda = s.mean;
    const int k = y > mode ? y - mode : mode - y;
    if (k == 0) return !(v > 1);
    const double* table = y > mode ? s.up : s.down;
    if (k <= ratios) return !(v > table[k - 1]);
    ext f = table[ratios - 1];
    if (v > f) return false;
    if (y > mode)
        for (int j = mode + ratios; j < y;) f = f * lambda / ++j;
    else
        for (int j = mode - ratios; j > y; --j) f = f * j / lambda;
    return !(v > f);
}

/// The same by logarithms: a quick test on either side, then Stirling's series.
inline bool acceptedBySqueeze(const Setup& s, int y, ext logV) {
    const ext lambda = s.mean, x = 1 / ext{y}, del = x * (lambda - y), hy = y + 0.5L;
    const ext above =
        (1 + del * (del * third - 0.5L)) * hy * del + (y + (margins[0] - lambda));
    if (logV > above) return false;
    ext gap = hy * (del * del) * (del * del) * 0.25L;
    if (del < 0) gap /= 1 + del;
    if (logV < above - margins[1] - gap) return true;
    const ext exact = hy * logarithmOf(round64(lambda * x)) + y +
                      (0.5L + s.mode) * s.logOfModeByMean - s.mode +
                      (s.inverseMode - x) * twelfth +
                      (x * x * x - s.inverseModeCubed) * of360th;
    return !(logV > exact);
}

constexpr int mostAttempts = 256;

/// Attempts of one block, in their order, and those still to be decided: logarithms
/// are taken of all of these at once.
struct Attempts {
    int32_t y[mostAttempts];
    bool accepted[mostAttempts];
    int open[mostAttempts];
    float v[mostAttempts]; // of the open ones
    int opened = 0;

    QORKES_INLINE void leaveOpen(int attempt, int32_t value, float scaledV) {
        y[attempt] = value;
        open[opened] = attempt;
        v[opened++] = scaledV;
    }
};

/// Candidates in the tails; u of each and its V are in the block.
inline void proposeTails(const Setup& s, int n, const int* tails, const float* block,
                         Attempts& attempts) {
    double logs[mostAttempts];
    for (int i = 0; i < n; ++i) logs[i] = block[2 * tails[i] + 1];
    logarithm(n, logs, logs);
    for (int i = 0; i < n; ++i) {
        const int a = tails[i];
        const ext u = block[2 * a], v = block[2 * a + 1], logV = logs[i];
        if (u > s.p3) {
            const ext w = -logV * s.inverseLambdaR + s.right;
            attempts.leaveOpen(a, truncate(w), round32((u - s.p3) * v * s.lambdaR));
        } else if (const ext w = logV * s.inverseLambdaL + s.left; !(w < 0))
            attempts.leaveOpen(a, truncate(w), round32((u - s.p2) * v * s.lambdaL));
    }
}

/// Accepts the triangle's candidates and leaves open those of the other regions.
inline void propose(const Setup& s, int n, float* block, Attempts& attempts) {
    int tails[mostAttempts], inTails = 0;
    for (int a = 0; a < n; ++a) {
        const ext v = block[2 * a + 1];
        const float u = block[2 * a] = round32(block[2 * a] * ext{s.p4});
        attempts.accepted[a] = u <= s.p1;
        if (u <= s.p1) {
            attempts.y[a] = truncate(u + ext{s.middle} - s.p1 * v);
        } else if (u <= s.p2) {
            const ext x = (u - ext{s.p1}) * s.inverseHeight + s.left;
            const ext offset = s.middle - x;
            const float scaled = round32(v * s.height + 1 -
                                         (offset < 0 ? -offset : offset) * s.inverseP1);
            if (!(scaled > 1)) attempts.leaveOpen(a, truncate(x), scaled);
        } else
            tails[inTails++] = a;
    }
    proposeTails(s, inTails, tails, block, attempts);
}

inline void decide(const Setup& s, Attempts& attempts) {
    const bool squeezed = s.mode >= squeezedMode;
    double logs[mostAttempts];
    for (int i = 0; i < attempts.opened; ++i) logs[i] = attempts.v[i];
    if (squeezed) logarithm(attempts.opened, logs, logs);
    for (int i = 0; i < attempts.opened; ++i) {
        const int a = attempts.open[i], y = attempts.y[a];
        attempts.accepted[a] = squeezed && y > squeezedValue
                                   ? acceptedBySqueeze(s, y, logs[i])
                                   : acceptedByRatio(s, y, attempts.v[i]);
    }
}

inline int drawRejected(StreamState* stream, int n, int32_t* r, double mean, Setup& s) {
    if (mean != s.mean) setUpRejection(s, mean);
    int status = KesStatusOk;
    for (int i = 0; i < n;) {
        float block[2 * mostAttempts];
        const int count = n - i < mostAttempts ? n - i : mostAttempts;
        status = uniforms(stream, 2 * count, block);
        if (failed(status)) return status;
        Attempts attempts;
        propose(s, count, block, attempts);
        decide(s, attempts);
        for (int a = 0; a < count; ++a) {
            r[i] = attempts.y[a];
            i += attempts.accepted[a];
        }
    }
    return status;
}

} // namespace ptpe

inline int drawPtpe(StreamState* stream, int n, int32_t* r, double mean) {
    ptpe::Setup* setup;
    if (const int status = chunkOf(stream, 3, setup, ptpe::emptySetup());
        failed(status))
        return status;
    return mean < ptpe::leastMean ? ptpe::drawSearched(stream, n, r, mean, *setup)
                                  : ptpe::drawRejected(stream, n, r, mean, *setup);
}

} // namespace qorkes
