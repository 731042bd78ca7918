// _kesiRngNegbinomial: failures before the a-th success, with probability p of success;
// a need not be whole.
//
// A mode below 100: inversion by search in a table of 128 cumulative probabilities.
// Else patchwork rejection: a rectangle about the mode, a triangle on either side, and
// two exponential tails, with the probabilities of the 64 values on either side of the
// mode kept, in units of the mode's. Stadlober and Zechner, "The patchwork rejection
// technique for sampling from unimodal distributions", ACM Transactions on Modeling and
// Computer Simulation 9, 1999.
#include <kes_kernel/discrete/constants.hpp>
#include <kes_kernel/discrete/rejection.hpp>
#include <kes_kernel/discrete/search.hpp>
#include <kes_kernel/discrete/truncate.hpp>
#include <kes_kernel/kernels.hpp>

#include <limits>

namespace qorkes {
namespace {

constexpr int chunkId = 4;
constexpr int blockSize = 256;
constexpr int tableSize = 128;
constexpr int reach = 64;

constexpr ext leastEnvelopeMode = 100;
constexpr int32_t leastUnwalked = 150;

using stirling::c0, stirling::c1, stirling::c2;

struct Law {
    double a;
    ext less; // a - 1
    ext p, q;
    ext peak; // the mode, before truncation
};

Law lawOf(double a, double p) {
    const ext less = a - ext{1}, q = 1 - ext{p};
    return {a, less, p, q, less * q / p};
}

struct Line {
    double slope, level;
};
QORKES_INLINE ext at(const Line& line, ext x) { return line.slope * x + line.level; }

struct Triangle {
    Line square; // of a side, by u
    double apex, width, height;
    Line bound; // below the probabilities
};

struct Tail {
    double inverseLogRatio, from, height;
};

enum Region { rectangle, rightTriangle, leftTriangle, rightTail, leftTail, regions };

struct Envelope {
    double mode;
    double area[regions];          // up to and with each region
    double down[reach], up[reach]; // f(mode -+ (i + 1)) / f(mode)
    double logAtMode;
    Line base;                  // of the rectangle, by u
    Line rightBound, leftBound; // below the probabilities
    Triangle right, left;
    Tail rightEnd, leftEnd;
};

/// The chunk.
struct Setup {
    double a, p; // what it was made for
    union {
        double cumulative[tableSize];
        Envelope envelope;
    };
};
static_assert(sizeof(Setup) == 1304);

constexpr Setup fresh = {};

void build(double* cumulative, const Law& law) {
    const double p = round64(law.p);
    double first;
    power(1, &p, law.a, &first);
    cumulateUpwards(tableSize, first, cumulative, [&](int32_t x, ext term) {
        return (law.a + ext(x)) * law.q * term / ext(x + 1);
    });
}

int search(const double* cumulative, const Law& law, StreamState* stream, int n,
           int32_t* r) {
    const auto next = [&](int32_t x, ext term) {
        return term * (law.a + ext(x - 1)) * law.q / x;
    };
    return searchInto<blockSize>(stream, n, r, {cumulative, tableSize},
                                 std::numeric_limits<int32_t>::max(), next);
}

/// Where the regions of the envelope meet: tails end and triangles begin at the tips,
/// triangles end and the rectangle begins at the feet.
struct Borders {
    int32_t mode;
    int32_t k2, k4; // the values outside the rectangle, next to it
    ext leftFoot, rightFoot;
    double leftTip, rightTip;
    int32_t k1, k5; // the tips, truncated
};

/// False below a mode of 100, and where the left tail would begin below 1 (small a with
/// a large mode): there is no envelope.
bool findBorders(Borders& b, const Law& law) {
    const auto [a, less, p, q, peak] = law;
    if (!(peak >= leastEnvelopeMode)) return false;
    b.mode = truncate(peak);
    const ext spread = squareRootOf(round64(q / p * peak + 0.25L));
    const ext top = peak + (spread - 0.5L);
    b.k2 = truncate(peak - (0.5L + spread));
    b.k4 = truncate(top);
    if (b.k4 < top) ++b.k4;
    const ext k2 = b.k2, k4 = b.k4;
    b.leftFoot = k2 + 1;
    b.rightFoot = k4;
    b.leftTip = round64(b.leftFoot + (less + k2) * q / (k2 - (less + k2) * q));
    b.rightTip = round64(b.rightFoot + (1 + k4) / ((1 + k4) - q * (a + k4)));
    b.k1 = truncate(b.leftTip);
    b.k5 = truncate(b.rightTip);
    return b.k2 >= 1 && b.leftTip >= 1 &&
           b.leftTip < std::numeric_limits<double>::infinity();
}

/// ln(f(x)) without what does not depend on x, by Stirling's formula. The signs of the
/// second series are not those of the first.
ext logProbability(const Law& law, int32_t value) {
    const ext x = value, successes = x + law.less;
    const ext w1 = 1 / x, w2 = 1 / successes, z1 = w1 * w1, z2 = w2 * w2;
    double logs[] = {round64(successes), round64(law.q + law.less * law.q * w1)};
    logarithm(2, logs, logs);
    return law.less * logs[0] + (0.5L + x) * logs[1] + (c0 - z1 * (c1 - z1 * c2)) * w1 -
           (c0 + z2 * (c1 + z2 * c2)) * w2;
}

/// The probability of x - 1 if that of x is f.
ext timesDown(const Law& law, ext f, int32_t x) {
    return f * x / ((x + law.less) * law.q);
}

void buildRatios(Envelope& e, const Law& law, int32_t mode) {
    ext up = 1, down = 1;
    for (int i = 0; i < reach; ++i) {
        const ext x = mode + (i + 1);
        up *= (law.less + x) * law.q / x;
        down *= timesDown(law, 1, mode - i);
        e.up[i] = round64(up);
        e.down[i] = round64(down);
    }
}

/// f(x) / f(mode)
double relativeTo(const Envelope& e, const Law& law, int32_t mode, int32_t x) {
    const int32_t distance = std::abs(x - mode);
    if (distance <= reach) return (x < mode ? e.down : e.up)[distance - 1];
    return exponentialOf(round64(logProbability(law, x) - e.logAtMode));
}

/// A line through the mode's probability, 1 at `from`, and that of `to`.
Line lineFrom(ext from, double probability, ext mode, int32_t to) {
    const double slope = round64((1 - ext{probability}) / (mode - to));
    return {slope, round64(1 - slope * from)};
}

/// Of the area from `begin` to `end`; height is the probability at the foot, rho that
/// at the tip in units of it.
Triangle triangleOf(double begin, double end, ext rho, double tip, ext foot,
                    double height) {
    Triangle t;
    t.square.slope = round64((1 + 2 * rho) / (ext{end} - begin));
    t.square.level = round64(rho * rho - ext{t.square.slope} * begin);
    t.width = round64(tip - foot);
    t.apex = round64(rho * t.width + tip);
    t.height = height;
    t.bound.slope = round64(height / (foot - tip));
    t.bound.level = round64(-ext{tip} * t.bound.slope);
    return t;
}

/// What a side of the envelope is made from.
struct Side {
    double foot; // probability there, in units of the mode's, as are these:
    ext tip;     // of the tip
    ext tail;    // of the tail where it begins
    double log;  // of the ratio by which it falls
};

void buildSides(Side& left, Side& right, const Envelope& e, const Law& law,
                const Borders& b) {
    const auto [a, less, p, q, peak] = law;
    const ext k1 = b.k1, k5 = b.k5;
    const ext f1 = relativeTo(e, law, b.mode, b.k1);
    const ext f5 = relativeTo(e, law, b.mode, b.k5);
    left.foot = relativeTo(e, law, b.mode, b.k2);
    right.foot = relativeTo(e, law, b.mode, b.k4);
    left.tip = (a + k1) * f1 * q / (1 + k1);
    right.tip = f5 * k5 / ((less + k5) * q);
    const double ratio[] = {round64(q * (less + k1) / k1),
                            round64((a + k5) * q / (1 + k5))};
    const double distance[] = {round64(b.leftTip - k1), round64(b.rightTip - 1 - k5)};
    double factor[2];
    power(2, ratio, distance, factor);
    left.tail = f1 * factor[0];
    right.tail = f5 * factor[1];
    left.log = logarithmOf(ratio[0]);
    right.log = logarithmOf(ratio[1]);
}

void buildAreas(double* area, const Borders& b, const Side& left, const Side& right) {
    const ext areas[] = {b.rightFoot - b.leftFoot,
                         (b.rightTip - b.rightFoot) * (0.5L * right.foot + right.tip),
                         (b.leftFoot - b.leftTip) * (0.5L * left.foot + left.tip),
                         -right.tail / right.log, left.tail / left.log};
    ext sum = 0;
    for (int i = 0; i < regions; ++i) sum = area[i] = round64(sum + areas[i]);
    for (int i = 0; i < regions; ++i) area[i] = round64(area[i] / sum);
}

void build(Envelope& e, const Law& law, const Borders& b) {
    e.mode = b.mode;
    buildRatios(e, law, b.mode);
    e.logAtMode = round64(logProbability(law, b.mode));
    Side left, right;
    buildSides(left, right, e, law, b);
    buildAreas(e.area, b, left, right);
    const double* area = e.area;
    e.base.slope = round64((b.rightFoot - b.leftFoot) / area[rectangle]);
    e.base.level = round64(b.leftFoot);
    e.rightBound = lineFrom(b.mode, right.foot, b.mode, b.k4);
    e.leftBound = lineFrom(ext(b.mode) + 1, left.foot, b.mode, b.k2);
    e.right = triangleOf(area[rectangle], area[rightTriangle], right.tip / right.foot,
                         b.rightTip, b.rightFoot, right.foot);
    e.left = triangleOf(area[rightTriangle], area[leftTriangle], left.tip / left.foot,
                        b.leftTip, b.leftFoot, left.foot);
    e.rightEnd = {round64(1 / ext{right.log}), b.rightTip,
                  round64(right.tail / (ext{area[rightTail]} - area[leftTriangle]))};
    e.leftEnd = {round64(1 / ext{left.log}), b.leftTip,
                 round64(left.tail / (ext{area[leftTail]} - area[rightTail]))};
}

bool underLogarithm(const Envelope& e, const Law& law, int32_t y, ext v) {
    const ext least = logProbability(law, y) - e.logAtMode;
    const double rounded = round64(v);
    const RoughLog rough = roughLog(rounded);
    if (rough.greatest < least) return true;
    if (rough.least > least) return false;
    return least >= logarithmOf(rounded);
}

/// v <= f(y) / f(mode) for y from the mode on; below it come only numbers too great for
/// an integer. At the mode it is the farthest ratio below that v is compared with.
bool isUnderRight(const Envelope& e, const Law& law, int32_t y, ext v) {
    const int32_t distance = y - static_cast<int32_t>(e.mode);
    if (distance < 0) return false;
    if (distance > reach) return underLogarithm(e, law, y, v);
    return v <= (distance == 0 ? e.down[reach - 1] : e.up[distance - 1]);
}

/// v <= f(y) / f(mode) for y up to the mode.
bool isUnderLeft(const Envelope& e, const Law& law, int32_t y, ext v) {
    const auto mode = static_cast<int32_t>(e.mode);
    const int32_t distance = mode - y;
    if (distance == 0) return v <= 1;
    if (distance <= reach) return v <= e.down[distance - 1];
    if (y >= leastUnwalked) return underLogarithm(e, law, y, v);
    ext ratio = e.down[reach - 1];
    for (int32_t x = mode - reach; x > y; --x) {
        ratio = timesDown(law, ratio, x);
        if (v > ratio) return false;
    }
    return true;
}

QORKES_INLINE bool isOfTriangle(const Envelope& e, double u) {
    return u > e.area[rectangle] && u <= e.area[leftTriangle];
}

QORKES_INLINE const Triangle& triangleAt(const Envelope& e, double u) {
    return u <= e.area[rightTriangle] ? e.right : e.left;
}

/// The square roots that the attempts of a block need, in their order.
struct Roots {
    double root[blockSize / 2];
    const double* next;
};

void takeRoots(const Envelope& e, const double* u, int count, Roots& roots) {
    int found = 0;
    for (int j = 0; j < count; j += 2)
        if (isOfTriangle(e, u[j]))
            roots.root[found++] = round64(at(triangleAt(e, u[j]).square, u[j]));
    squareRoot(found, roots.root, roots.root);
    roots.next = roots.root;
}

QORKES_INLINE bool attempt(const Envelope& e, const Law& law, Roots& roots, double u,
                           double v, int32_t& y) {
    if (u <= e.area[rectangle]) {
        const ext x = at(e.base, u);
        y = truncate(x);
        if (x <= e.mode + 0.5L)
            return at(e.leftBound, x) >= v || isUnderLeft(e, law, y, v);
        return at(e.rightBound, x) >= v || isUnderRight(e, law, y, v);
    }
    if (isOfTriangle(e, u)) {
        const Triangle& side = triangleAt(e, u);
        const ext t = *roots.next++;
        const ext height = t * v * side.height, x = side.apex - t * side.width;
        y = truncate(x);
        if (height <= at(side.bound, x)) return true;
        return &side == &e.right ? isUnderRight(e, law, y, height)
                                 : isUnderLeft(e, law, y, height);
    }
    const bool isRight = u <= e.area[rightTail];
    const Tail& end = isRight ? e.rightEnd : e.leftEnd;
    y = truncate(ext{end.inverseLogRatio} * logarithmOf(v) + end.from);
    const ext inside = ext{u} - e.area[isRight ? leftTriangle : rightTail];
    const ext height = inside * v * end.height;
    if (isRight) return isUnderRight(e, law, y, height);
    return y >= 0 && isUnderLeft(e, law, y, height);
}

int draw(Setup& setup, const Law& law, bool known, StreamState* stream, int n,
         int32_t* r) {
    Borders borders;
    if (!findBorders(borders, law)) {
        if (!known) build(setup.cumulative, law);
        return search(setup.cumulative, law, stream, n, r);
    }
    if (!known) build(setup.envelope, law, borders);
    const Envelope& e = setup.envelope;
    Roots roots;
    return acceptInto<blockSize>(
        stream, n, r,
        [&](const double* u, int count) { takeRoots(e, u, count, roots); },
        [&](double u, double v, int32_t& y) {
            return attempt(e, law, roots, u, v, y);
        });
}

} // namespace
} // namespace qorkes

int _kesiRngNegbinomial(int, StreamState* stream, int n, int32_t* r, double a,
                        double p) {
    using namespace qorkes;
    Setup* setup;
    const int status = chunkOf(stream, chunkId, setup, fresh);
    if (failed(status)) return status;
    const bool known = setup->a == a && setup->p == p;
    setup->a = a;
    setup->p = p;
    return draw(*setup, lawOf(a, p), known, stream, n, r);
}
