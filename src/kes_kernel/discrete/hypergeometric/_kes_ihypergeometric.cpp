// _kesiRngHypergeometric: marked items in a sample of s from a lot of l with m marked.
//
// Folded to the smaller of marked and unmarked and of sample and rest, so that values
// begin at 0. A mode below 40: inversion by search in a table of up to 64 cumulative
// probabilities. Else H2PE, rejection from a rectangle and two exponential tails:
// Kachitvichyanukul and Schmeiser, "Computer generation of hypergeometric random
// variates", Journal of Statistical Computation and Simulation 22, 1985; with the
// probabilities of the 32 values on either side of the mode kept, in units of the
// mode's.
#include <kes_kernel/discrete/constants.hpp>
#include <kes_kernel/discrete/fold.hpp>
#include <kes_kernel/discrete/rejection.hpp>
#include <kes_kernel/discrete/search.hpp>
#include <kes_kernel/discrete/truncate.hpp>
#include <kes_kernel/kernels.hpp>

#include <cmath>

namespace qorkes {
namespace {

constexpr int chunkId = 6;
constexpr int blockSize = 512;
constexpr int tableSize = 64;
constexpr int reach = 32;

constexpr int32_t leastEnvelopeMode = 40;
constexpr int32_t leastSqueezedMode = 100;
constexpr int32_t greatestWalked = 200;
constexpr double upperMargin = 0.0034;
constexpr double lowerMargin = 0.0078;
static_assert(hasPattern(upperMargin, 0x3F6BDA5119CE075F));
static_assert(hasPattern(lowerMargin, 0x3F7FF2E48E8A71DE));

// Stirling's formula: ln(sqrt(2 pi)), and four times that.
constexpr double logRootTwoPi = 0x1.d67f1c864beb5p-1;
constexpr double fourLogRootsTwoPi = 0x1.d67f1c864beb5p1;
using stirling::c0, stirling::c1;
static_assert(hasPattern(logRootTwoPi, 0x3FED67F1C864BEB5));
static_assert(hasPattern(fourLogRootsTwoPi, 0x400D67F1C864BEB5));

constexpr int32_t leastStirling = 16;

// clang-format off
/// ln(i!)
constexpr double logFactorials[leastStirling] = {
    0.0, 0.0, 0x1.62e42fefa39efp-1, 0x1.cab0bfa2a2002p+0,
    0x1.96ca77c922cf9p+1, 0x1.326643c4479c9p+2, 0x1.a51273acf01cap+2, 0x1.10ce1f32dcc30p+3,
    0x1.5358e82fcb70dp+3, 0x1.99a8921a7f7cfp+3, 0x1.e357590954d15p+3, 0x1.180973f3a8d74p+4,
    0x1.3fcba16d50143p+4, 0x1.68d5a9c3b32cep+4, 0x1.930f3df162a42p+4, 0x1.be636a63fd346p+4};
// clang-format on

struct Envelope {
    double rectangle, leftTail, rightTail; // areas up to and with these regions
    double from, to;                       // the rectangle's base
    // One half more than the numbers whose factorials divide the mode's probability.
    double values, restOfFew, restOfSample, restOfMany;
    double leftRate, rightRate;               // of the tails
    double inverseLeftRate, inverseRightRate; // 1 / leftRate and so on
    double logFactorials;                     // the sum of these factorials' logarithms
    double down[reach], up[reach];            // f(mode -+ (i + 1)) / f(mode)
};

/// The chunk. A lot of nothing, which a new one is for, has one result and no table.
struct Setup {
    double lot, marked, sample; // what it was made for
    union {
        double cumulative[tableSize];
        Envelope envelope;
    };
};
static_assert(sizeof(Setup) == 648);

constexpr Setup fresh = {};

/// A sample of `sample` from a lot of `lot` with `few` of one kind and `many` of the
/// other: how many of the few kind.
struct Folded {
    int32_t lot, few, many, sample;
    int32_t mode, greatest;
};

Folded foldedFrom(int32_t l, int32_t s, int32_t m) {
    const int32_t few = std::min(l - m, m), many = std::max(l - m, m);
    const int32_t sample = s < l - s ? s : l - s;
    const ext mode = (ext(sample) + 1) * (ext(few) + 1) / (ext(l) + 2);
    return {l, few, many, sample, truncate(mode), std::min(few, sample)};
}

/// From the folded problem's results to those of the one that was asked for.
void unfoldInto(int n, int32_t* r, int32_t l, int32_t s, int32_t m) {
    const int32_t unmarked = l - m;
    const bool swapped = m > unmarked;
    if (s < l - s && swapped) unfold<-1>(n, r, s);
    if (s >= l - s && !swapped) unfold<-1>(n, r, m);
    if (s >= l - s && swapped) unfold<1>(n, r, s - unmarked);
}

/// The probability of x + 1, and that of x - 1, if that of x is f.
ext timesUp(const Folded& lot, ext f, int32_t at) {
    const ext x = at, apart = lot.many - lot.sample;
    return f * (lot.few - x) * (lot.sample - x) / ((1 + x) * (1 + apart + x));
}
ext timesDown(const Folded& lot, ext f, int32_t at) {
    const ext x = at, apart = lot.many - lot.sample;
    return f * (apart + x) * x / ((1 + lot.few - x) * (1 + lot.sample - x));
}

/// ln(i!)
ext logFactorial(int32_t i) {
    if (i < leastStirling) return logFactorials[i];
    const double x = i;
    const ext w = 1 / ext{x};
    return (0.5L + x) * logarithmOf(x) + logRootTwoPi - x + w * (c0 - c1 * w * w);
}

/// The sum of the logarithms of the factorials that the probability of x is divided by.
/// Their arguments add up to the lot.
ext logFactorialsAt(const Folded& lot, int32_t x) {
    const int32_t v[] = {x, lot.few - x, lot.sample - x, x + (lot.many - lot.sample)};
    if (*std::min_element(v, v + 4) < leastStirling)
        return logFactorial(v[0]) + logFactorial(v[1]) + logFactorial(v[2]) +
               logFactorial(v[3]);
    double logs[4], powers[8]; // first and third powers, then their reciprocals
    for (int i = 0; i < 4; ++i) {
        logs[i] = powers[i] = v[i];
        powers[4 + i] = round64(ext(v[i]) * v[i] * v[i]);
    }
    logarithm(4, logs, logs);
    _qordInv_HA(8, powers, powers);
    ext sum = 0, inverses = 0, cubes = 0;
    for (int i = 0; i < 4; ++i) {
        sum += (0.5L + v[i]) * logs[i];
        inverses += powers[i];
        cubes += powers[4 + i];
    }
    return sum + fourLogRootsTwoPi + c0 * inverses - lot.lot - c1 * cubes;
}

/// Entries of the table that are in use.
int32_t entriesOf(const Folded& lot) { return std::min(lot.greatest + 1, tableSize); }

void build(double* cumulative, const Folded& lot) {
    const ext none = logFactorial(lot.many) + logFactorial(lot.lot - lot.sample) -
                     logFactorial(lot.many - lot.sample) - logFactorial(lot.lot);
    cumulateUpwards(entriesOf(lot), exponentialOf(round64(none)), cumulative,
                    [&](int32_t x, ext term) { return timesUp(lot, term, x); });
}

int search(const double* cumulative, const Folded& lot, StreamState* stream, int n,
           int32_t* r) {
    const ext apart = lot.many - lot.sample;
    const auto next = [&](int32_t x, ext term) {
        return (lot.few - ext(x - 1)) * (lot.sample - ext(x - 1)) * term /
               ((x + apart) * x);
    };
    return searchInto<blockSize>(stream, n, r, {cumulative, entriesOf(lot)},
                                 lot.greatest, next);
}

void build(Envelope& e, const Folded& lot) {
    const auto [size, few, many, sample, mode, greatest] = lot;
    const ext apart = many - sample;
    const ext variance =
        ext(size - sample) * sample * few * many / (ext(size) - 1); // times size^2
    const ext root = squareRootOf(round64(variance));
    const ext half = truncate(1.5L * root / size) + 0.5L;
    e.from = round64(mode + 0.5L - half);
    e.to = round64(half + (mode + 0.5L));
    e.values = round64(0.5L + mode);
    e.restOfFew = round64((0.5L - mode) + few);
    e.restOfSample = round64((0.5L - mode) + sample);
    e.restOfMany = round64(0.5L + mode + apart);
    e.logFactorials = round64(logFactorialsAt(lot, mode));
    const auto relative = [&](int32_t x) -> ext {
        return exponentialOf(round64(e.logFactorials - logFactorialsAt(lot, x)));
    };
    const auto rate = [](ext ratio) { return -logarithmOf(round64(ratio)); };
    const ext l = e.from, r = e.to;
    e.leftRate = rate((apart + l) * l / (1 + few - l) * (1 / (1 + sample - l)));
    e.rightRate = rate((1 + few - r) * (1 + sample - r) / r * (1 / (r + apart)));
    e.rectangle = round64(2 * half);
    e.leftTail = round64(e.rectangle + relative(truncate(e.from)) / e.leftRate);
    e.rightTail = round64(e.leftTail + relative(truncate(e.to) - 1) / e.rightRate);
    e.inverseLeftRate = round64(1 / ext{e.leftRate});
    e.inverseRightRate = round64(1 / ext{e.rightRate});
    ext up = 1, down = 1;
    for (int i = 0; i < reach; ++i) {
        e.up[i] = round64(up *= timesUp(lot, 1, mode + i));
        e.down[i] = round64(down *= timesDown(lot, 1, mode - i));
    }
}

/// v <= f(y) / f(mode), by kept ratios, and by factors from the last of them on. The
/// walk down takes a single step, however far y is.
bool underRatio(const Envelope& e, const Folded& lot, int32_t y, ext v) {
    const int32_t distance = y - lot.mode;
    if (distance == 0) return true;
    if (distance > 0) {
        if (distance <= reach) return v <= e.up[distance - 1];
        ext ratio = e.up[reach - 1];
        for (int32_t x = lot.mode + reach; x < y; ++x) {
            ratio = timesUp(lot, ratio, x);
            if (v > ratio) return false;
        }
        return true;
    }
    if (distance >= -reach) return v <= e.down[-distance - 1];
    return v <= timesDown(lot, e.down[reach - 1], lot.mode - reach);
}

/// ln(1 + a) to the third power of a, and what the fourth one adds to it at most.
ext series(ext a) { return a * (a * (a * third - 0.5L) + 1); }
ext remainder(double weight, ext a) {
    const ext square = a * a, d = weight * (square * square);
    return d < 0 ? d / (1 + d) : d;
}

/// ln(v) <= ln(f(y) / f(mode)), by bounds from below and above, and between them by
/// Stirling's formula.
bool underLogarithm(const Envelope& e, const Folded& lot, int32_t at, ext v) {
    const ext y = at, mode = lot.mode, distance = y - mode;
    const ext x = y + 1, z = (1 - y) + lot.few, w = (1 - y) + lot.sample;
    const ext h = ext(lot.many - lot.sample) + x;
    const ext a1 = -distance / x, a2 = distance / z, a3 = distance / w,
              a4 = -distance / h;
    const ext t = z * w / (x * h) - 1;
    const ext g = t * (1 - 0.5L * t + t * t * third);
    const ext q = t < 0 ? 1 + t : ext{1};
    const ext gl = g - 0.25L * (t * t * (t * t)) / q;
    const ext upper = g * y + upperMargin - gl * mode + e.values * series(a1) +
                      e.restOfFew * series(a2) + e.restOfSample * series(a3) +
                      e.restOfMany * series(a4);
    const ext logV = logarithmOf(round64(v));
    if (logV > upper) return false;
    const ext rest = remainder(e.values, a1) + remainder(e.restOfFew, a2) +
                     remainder(e.restOfSample, a3) + remainder(e.restOfMany, a4);
    if (logV < (y + mode) * (gl - g) - lowerMargin + upper - 0.25L * rest) return true;
    return logV <= e.logFactorials - logFactorialsAt(lot, at);
}

QORKES_INLINE bool attempt(const Envelope& e, const Folded& lot, double first,
                           double second, int32_t& y) {
    const ext u = ext{first} * e.rightTail;
    ext v = second;
    if (u <= e.rectangle) {
        y = truncate(u + e.from);
    } else if (u <= e.leftTail) {
        y = truncate(ext{logarithmOf(second)} * e.inverseLeftRate + e.from);
        if (y < 0) return false;
        v = (u - e.rectangle) * e.leftRate * v;
    } else {
        y = truncate(-ext{logarithmOf(second)} * e.inverseRightRate + e.to);
        if (y > lot.greatest) return false;
        v = (u - e.leftTail) * e.rightRate * v;
    }
    return lot.mode >= leastSqueezedMode && y > greatestWalked
               ? underLogarithm(e, lot, y, v)
               : underRatio(e, lot, y, v);
}

int draw(Setup& setup, const Folded& lot, bool known, StreamState* stream, int n,
         int32_t* r) {
    if (lot.mode < leastEnvelopeMode) {
        if (!known) build(setup.cumulative, lot);
        return search(setup.cumulative, lot, stream, n, r);
    }
    if (!known) build(setup.envelope, lot);
    return acceptInto<blockSize>(stream, n, r, [&](double u, double v, int32_t& y) {
        return attempt(setup.envelope, lot, u, v, y);
    });
}

} // namespace
} // namespace qorkes

int _kesiRngHypergeometric(int, StreamState* stream, int n, int32_t* r, int32_t l,
                           int32_t s, int32_t m) {
    using namespace qorkes;
    Setup* setup;
    int status = chunkOf(stream, chunkId, setup, fresh);
    if (failed(status)) return status;
    const Folded lot = foldedFrom(l, s, m);
    if (lot.greatest == 0) {
        std::fill_n(r, n, 0);
    } else {
        const bool known = setup->lot == l && setup->marked == m && setup->sample == s;
        setup->lot = l;
        setup->marked = m;
        setup->sample = s;
        status = draw(*setup, lot, known, stream, n, r);
    }
    if (!failed(status)) unfoldInto(n, r, l, s, m);
    return status;
}
