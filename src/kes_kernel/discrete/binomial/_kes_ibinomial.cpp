// _kesiRngBinomial: successes among `trials` trials of probability p.
//
// The rarer outcome is counted. Its mean below 30: inversion by search in a table of 64
// cumulative probabilities. Else BTPE, rejection from a triangle, two parallelograms
// and two exponential tails: Kachitvichyanukul and Schmeiser, "Binomial random variate
// generation", Communications of the ACM 31, 1988; with the probabilities of the 32
// values on either side of the mode kept, in units of the mode's.
#include <kes_kernel/discrete/constants.hpp>
#include <kes_kernel/discrete/fold.hpp>
#include <kes_kernel/discrete/rejection.hpp>
#include <kes_kernel/discrete/search.hpp>
#include <kes_kernel/discrete/truncate.hpp>
#include <kes_kernel/kernels.hpp>

#include <cmath>

namespace qorkes {
namespace {

constexpr int chunkId = 5;
constexpr int blockSize = 512;
constexpr int tableSize = 64;
constexpr int reach = 32;

constexpr ext greatestTableMean = 30;
constexpr ext leastSqueezedDistance = 20;
constexpr double sixth = 0x1.5555555555555p-3;
static_assert(hasPattern(sixth, 0x3FC5555555555555));

// Half the base of the triangle, and the height of the parallelograms.
constexpr double base[] = {2.195, 4.6};
constexpr double side[] = {0.134, 20.5, 15.3};
static_assert(hasPattern(base[0], 0x40018F5C28F5C28F));
static_assert(hasPattern(base[1], 0x4012666666666666));
static_assert(hasPattern(side[0], 0x3FC126E978D4FDF4));
static_assert(hasPattern(side[1], 0x4034800000000000));
static_assert(hasPattern(side[2], 0x402E99999999999A));

struct Table {
    double step; // odds * (trials + 1)
    double odds; // of the rarer outcome
    double cumulative[tableSize];
};

struct Envelope {
    double variance;
    double peak; // mean + p
    double mode;
    double triangle;                          // area, and half the base
    double sides, leftTail, rightTail;        // areas up to and with these regions
    double centre, left, right;               // of the triangle's base
    double leftRate, rightRate;               // of the tails
    double inverseLeftRate, inverseRightRate; // 1 / leftRate and so on
    double height, inverseHeight;             // of the parallelograms
    double inverseTriangle;
    double inverseVariance;
    double odds;
    double down[reach], up[reach]; // f(mode -+ (i + 1)) / f(mode)
};

/// The chunk. A new one holds the table of no trials: every result is 0.
struct Setup {
    double trials, p; // what it was made for
    union {
        Table table;
        Envelope envelope;
    };
};
static_assert(sizeof(Setup) == 680);

constexpr Setup fresh = [] {
    Setup setup{0, 0, {.table = {}}};
    for (double& entry : setup.table.cumulative) entry = 1;
    return setup;
}();

/// The outcome that is counted, and how often.
struct Trials {
    int32_t count;
    bool flipped;
    ext p, q; // p <= 1/2
};

Trials trialsOf(int32_t count, double p) {
    if (p < 0.5) return {count, false, p, 1 - ext{p}};
    return {count, true, 1 - ext{p}, p};
}

void build(Table& table, const Trials& trials) {
    table.odds = round64(trials.p / trials.q);
    table.step = round64(ext{table.odds} * (ext(trials.count) + 1));
    double term[tableSize] = {};
    const double q = round64(trials.q);
    power(1, &q, static_cast<double>(trials.count), term);
    for (int k = 1; k < tableSize && k <= trials.count; ++k)
        term[k] = round64(term[k - 1] * (ext{table.step} / k - table.odds));
    cumulate(term, table.cumulative);
}

int search(const Table& table, const Trials& trials, StreamState* stream, int n,
           int32_t* r) {
    const Cumulative cumulative = {table.cumulative,
                                   std::min(trials.count, tableSize - 1) + 1};
    const auto next = [&](int32_t x, ext term) {
        return term * (ext{table.step} / x - table.odds);
    };
    return searchInto<blockSize>(stream, n, r, cumulative, trials.count, next);
}

void buildRatios(Envelope& e, const Trials& trials) {
    const ext step = e.odds * (ext(trials.count) + 1);
    ext ratio = 1;
    for (int i = 0; i < reach; ++i) {
        ratio *= step / (e.mode + ext(i + 1)) - e.odds;
        e.up[i] = round64(ratio);
    }
    ratio = 1;
    for (int i = 0; i < reach; ++i) {
        ratio *= (e.mode - ext(i)) / (step - e.odds * (e.mode - ext(i)));
        e.down[i] = round64(ratio);
    }
}

double tailRate(ext a) { return round64(a * (1 + 0.5L * a)); }

void build(Envelope& e, const Trials& trials) {
    const auto [count, flipped, p, q] = trials;
    e.variance = round64(count * p * q);
    e.peak = round64(count * p + p);
    e.mode = truncate(e.peak);
    const double half = round64(base[0] * ext{squareRootOf(e.variance)} - base[1] * q);
    e.triangle = truncate(half) + 0.5;
    e.height = round64(side[0] + side[1] / (side[2] + ext{e.mode}));
    e.centre = round64(e.mode + 0.5L);
    e.left = round64(ext{e.centre} - e.triangle);
    e.right = round64(ext{e.centre} + e.triangle);
    e.leftRate = tailRate((ext{e.peak} - e.left) / (e.peak - e.left * p));
    e.rightRate = tailRate((ext{e.right} - e.peak) / (e.right * q));
    e.sides = round64(e.triangle * (1 + 2 * ext{e.height}));
    e.leftTail = round64(e.sides + ext{e.height} / e.leftRate);
    e.rightTail = round64(e.leftTail + ext{e.height} / e.rightRate);
    e.inverseLeftRate = round64(1 / ext{e.leftRate});
    e.inverseRightRate = round64(1 / ext{e.rightRate});
    e.inverseHeight = round64(1 / ext{e.height});
    e.inverseTriangle = round64(1 / ext{e.triangle});
    e.inverseVariance = round64(1 / ext{e.variance});
    e.odds = round64(p / q);
    buildRatios(e, trials);
}

/// v <= f(y) / f(mode), by kept ratios, and by factors from the last of them on. The
/// walk down takes the factors one value too low.
bool underRatio(const Envelope& e, const Trials& trials, int32_t y, ext v) {
    const auto mode = static_cast<int32_t>(e.mode);
    const int32_t k = std::abs(y - mode);
    const double* ratios = y < mode ? e.down : e.up;
    if (k <= reach) return v <= ratios[k - 1];
    ext ratio = ratios[reach - 1];
    if (v > ratio) return false;
    const ext step = e.odds * (ext(trials.count) + 1);
    for (int32_t j = mode - reach - 1; j >= y; --j)
        ratio *= j / (step - ext{e.odds} * j);
    for (int32_t j = mode + reach + 1; j <= y; ++j) ratio *= step / j - e.odds;
    return v <= ratio;
}

/// Stirling's, of z = 1 / x.
ext series(ext z) {
    using namespace stirling;
    const ext z2 = z * z;
    return z * (c0 - z2 * (c1 - z2 * (c2 - z2 * (c3 - z2 * c4))));
}

/// logV <= ln(f(y) / f(mode)), by Stirling's formula, in which the series of y have the
/// sign that those of the mode have.
QORKES_COLD bool underLogarithm(const Envelope& e, const Trials& trials, int32_t y,
                                ext logV) {
    const ext above = 1 + ext(trials.count);
    const ext f1 = 1 + ext{e.mode}, f2 = above - e.mode;
    const ext w1 = 1 / (ext(y) + 1), w2 = 1 / (above - y);
    ext sum = series(1 / f1) + series(1 / f2);
    sum += (trials.count + 0.5L - e.mode) * logarithmOf(round64(f2 * w2));
    sum = sum + series(w1) + series(w2);
    sum += e.centre * ext{logarithmOf(round64(f1 * w1))};
    sum += (y - ext{e.mode}) * logarithmOf(round64((above - y) * w1 * e.odds));
    return logV <= sum;
}

bool isAccepted(const Envelope& e, const Trials& trials, int32_t y, ext v) {
    if (y == e.mode) return true;
    const ext k = std::fabs(y - ext{e.mode});
    if (k <= leastSqueezedDistance || k >= 0.5L * e.variance - 1)
        return underRatio(e, trials, y, v);
    const ext square = k * (k * third + 0.625L) + sixth;
    const ext margin = k * e.inverseVariance * (square * e.inverseVariance + 0.5L);
    const ext normal = -k * k * 0.5L * e.inverseVariance;
    const double rounded = round64(v);
    const RoughLog rough = roughLog(rounded);
    if (rough.greatest < normal - margin) return true;
    if (rough.least > normal + margin) return false;
    const ext logV = logarithmOf(rounded);
    if (logV < normal - margin) return true;
    if (logV > normal + margin) return false;
    return underLogarithm(e, trials, y, logV);
}

QORKES_INLINE bool attempt(const Envelope& e, const Trials& trials, double first,
                           double second, int32_t& y) {
    const ext u = ext{first} * e.rightTail;
    ext v = second;
    if (u <= e.triangle) {
        y = truncate(u + e.centre - e.triangle * v);
        return true;
    }
    if (u <= e.sides) {
        const ext x = (u - e.triangle) * e.inverseHeight + e.left;
        v = v * e.height + 1 - std::fabs(e.centre - x) * e.inverseTriangle;
        if (v > 1) return false;
        y = truncate(x);
    } else if (u <= e.leftTail) {
        y = truncate(ext{logarithmOf(second)} * e.inverseLeftRate + e.left);
        if (y < 0) return false;
        v = (u - e.sides) * e.leftRate * v;
    } else {
        y = truncate(-ext{logarithmOf(second)} * e.inverseRightRate + e.right);
        if (y > trials.count) return false;
        v = (u - e.leftTail) * e.rightRate * v;
    }
    return isAccepted(e, trials, y, v);
}

int draw(Setup& setup, const Trials& trials, bool known, StreamState* stream, int n,
         int32_t* r) {
    if (trials.count * trials.p < greatestTableMean) {
        if (!known) build(setup.table, trials);
        return search(setup.table, trials, stream, n, r);
    }
    if (!known) build(setup.envelope, trials);
    return acceptInto<blockSize>(stream, n, r, [&](double u, double v, int32_t& y) {
        return attempt(setup.envelope, trials, u, v, y);
    });
}

} // namespace
} // namespace qorkes

int _kesiRngBinomial(int, StreamState* stream, int n, int32_t* r, int32_t ntrial,
                     double p) {
    using namespace qorkes;
    Setup* setup;
    int status = chunkOf(stream, chunkId, setup, fresh);
    if (failed(status)) return status;
    const bool known = setup->trials == ntrial && setup->p == p;
    setup->trials = ntrial;
    setup->p = p;
    const Trials trials = trialsOf(ntrial, p);
    status = draw(*setup, trials, known, stream, n, r);
    if (!failed(status) && trials.flipped) unfold<-1>(n, r, ntrial);
    return status;
}
