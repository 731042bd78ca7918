// Integer Uniform, Bernoulli and Geometric: what they make of which uniform, what
// failing draws leave, and their laws.
#include "goodness.hpp"
#include "scripted.hpp"

#include <kes_kernel/discrete/truncate.hpp>
#include <qorkes/qor.h>
#include <support/fpu.hpp>

using namespace qorkes::test;

namespace {

using Ints = std::vector<int32_t>;

Stream twister() { return newStream(KesBrngMT19937, {4711}); }

template <class... Parameters>
Ints drawn(int (*draw)(int, StreamState*, int, int32_t*, Parameters...),
           const Stream& stream, int n,
           std::type_identity_t<Parameters>... parameters) {
    Ints r(static_cast<std::size_t>(n));
    EXPECT_EQ(draw(0, stream.get(), n, r.data(), parameters...), KesStatusOk);
    return r;
}
Ints uniformInts(const Stream& stream, int n, int32_t a, int32_t b) {
    return drawn(_kesiRngUniform, stream, n, a, b);
}
Ints bernoulli(const Stream& stream, int n, double p) {
    return drawn(_kesiRngBernoulli, stream, n, p);
}
Ints geometric(const Stream& stream, int n, double p) {
    return drawn(_kesiRngGeometric, stream, n, p);
}

TEST(Truncation, TakesTheTopBitsOfTheSignificand) {
    const std::vector<double> x = {0x1.fffffffffffffp-1,
                                   -0.0,
                                   -0x1.fffffffffffffp-1,
                                   1,
                                   -1.75,
                                   0x1.fffffffffffffp+20,
                                   0x1.fffffffffffffp+30,
                                   -0x1p+31,
                                   0x1.8p+31, // from here on by the rule alone
                                   0x1.8p+32,
                                   0x1.8p+34,
                                   -INFINITY};
    const Ints integers = {
        0, 0, 0, 1, -1, 0x1FFFFF, INT32_MAX, INT32_MIN, INT32_MIN + 0x40000000,
        1, 6, -1};
    Ints r(x.size());
    qorkes::truncateAll(static_cast<int>(x.size()), x.data(), r.data());
    EXPECT_EQ(r, integers);
    std::ranges::transform(x, r.begin(), [](double v) { return qorkes::truncate(v); });
    EXPECT_EQ(r, integers);
    EXPECT_EQ(qorkes::truncate(2.99999999999999999L), 3);
}

TEST(IntegerUniform, DrawsHalfAtOnceFromTwiceTheBlockOn) {
    const struct {
        int n;
        std::vector<int> counts;
    } cases[] = {{0, {}},
                 {1, {1}},
                 {1025, {1024, 1}},
                 {2049, {1024, 1024, 1}},
                 {2050, {1025, 1024, 1}},
                 {2051, {1025, 1024, 2}}};
    for (const auto& [n, counts] : cases) {
        const Stream stream = scriptedStream({0.5});
        uniformInts(stream, n, 0, 10);
        EXPECT_EQ(script.counts, counts) << n;
    }
}

TEST(IntegerUniform, GivesFloorsOfOneSequence) {
    const struct {
        int32_t a, b;
    } ranges[] = {{0, 6}, {-3, 3}, {-100000, -99990}, {INT32_MIN, INT32_MAX}};
    for (const auto [a, b] : ranges)
        for (const int n : {7, 2049, 2050, 5000}) {
            const auto x = take<double>(twister(), n, {double(a), double(b)});
            Ints floors;
            for (const double v : x) floors.push_back(static_cast<int>(std::floor(v)));
            EXPECT_EQ(uniformInts(twister(), n, a, b), floors) << a << ", " << n;
        }
    const Stream stream = scriptedStream({0.0, 0.25, 0.5, 0.75, 1.0, 0x1.fp-1});
    EXPECT_EQ(uniformInts(stream, 6, -1, 1), (Ints{-1, -1, 0, 0, 1, 0}));
    EXPECT_EQ(uniformInts(stream, 6, -2, -1), (Ints{-2, -2, -2, -2, -1, -2}));
}

TEST(Bernoulli, ComparesFloatsWithTheDouble) {
    const double tie = 0.3f, above = std::nextafter(tie, 1.0),
                 below = std::nextafter(tie, 0.0);
    const struct {
        double p;
        Ints r;
    } rows[] = {{tie, {1, 0, 0, 0, 0}},    {above, {1, 1, 0, 0, 1}},
                {below, {1, 0, 0, 0, 0}},  {0, {0, 0, 0, 0, 0}},
                {1e-300, {1, 0, 0, 0, 0}}, {1, {1, 1, 1, 0, 1}},
                {2, {1, 1, 1, 1, 1}}};
    for (const auto& [p, r] : rows)
        EXPECT_EQ(bernoulli(scriptedStream({0, tie, 0.75, 1, tie}), 5, p), r) << p;
}

TEST(Geometric, TruncatesQuotientsOfLogarithms) {
    for (const double p : {1e-8, 0.001, 0.3, 0.999, 1.0}) {
        constexpr int n = 1000;
        auto x = take<float>(twister(), n);
        _qorsLn_HA(n, x.data(), x.data());
        double logarithm = 1 - p;
        _qordLn_HA(1, &logarithm, &logarithm);
        Ints expected;
        for (const float v : x)
            expected.push_back(int(qorkes::round64(v * (1 / qorkes::ext{logarithm}))));
        EXPECT_EQ(geometric(twister(), n, p), expected) << p;
    }
    const Ints ones = geometric(scriptedStream({0x1p-24, 0.5, 0.999}), 3, 1);
    EXPECT_EQ(ones, (Ints{0, 0, 0}));
}

TEST(DiscreteTransforms, EndAtAFailingDraw) {
    Ints r(3000, -5);
    Stream stream = scriptedStream({0.5});
    script.failAt = 1;
    EXPECT_EQ(_kesiRngUniform(0, stream.get(), 3000, r.data(), 0, 8), script.status);
    EXPECT_EQ(r[1499], 4);
    EXPECT_EQ(script.counts.size(), 2u);
    for (const auto entry : {_kesiRngBernoulli, _kesiRngGeometric}) {
        stream = scriptedStream({0.5});
        script.failAt = 0;
        r.assign(4, -5);
        EXPECT_EQ(entry(0, stream.get(), 4, r.data(), 0.5), script.status);
        EXPECT_EQ(r, Ints(4, -5));
        EXPECT_EQ(entry(0, stream.get(), 0, r.data(), 0.5), KesStatusOk);
        EXPECT_EQ(script.counts, (std::vector<int>{4, 0}));
    }
}

TEST(DiscreteTransforms, LeaveTheFpuAsItWas) {
    const Stream stream = twister();
    Ints r(3000);
    for (const Fpu& setting : fpuSettings()) {
        EXPECT_TRUE(leavesFpuAlone(
            setting, [&] { _kesiRngUniform(0, stream.get(), 3000, r.data(), -9, 9); }));
        EXPECT_TRUE(leavesFpuAlone(
            setting, [&] { _kesiRngGeometric(0, stream.get(), 300, r.data(), 0.1); }));
    }
}

TEST(DiscreteTransforms, FollowTheirLaws) {
    constexpr int n = 1000000;
    expectFit(chiSquare(uniformInts(twister(), n, -40, 60), -40, 59,
                        [](int) { return 0.01; }),
              "uniform");
    for (const double p : {0.0625, 0.7})
        expectFit(chiSquare(bernoulli(twister(), n, p), 0, 1,
                            [=](int k) { return k ? p : 1 - p; }),
                  "Bernoulli");
    for (const double p : {0.01, 0.3, 0.9})
        expectFit(chiSquare(geometric(twister(), n, p), 0, 3000,
                            [=](int k) { return p * std::pow(1 - p, k); }),
                  "geometric");
}

} // namespace
