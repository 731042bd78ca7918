// Sqrt and InvSqrt: exact roots, groups and their rests, float groups that leave the
// fast path, and the scalar roots.
#include <qorkes/qor.h>
#include <support/compare.hpp>
#include <support/fpu.hpp>
#include <support/oracle.hpp>
#include <support/platform.hpp>
#include <support/reports.hpp>
#include <support/samples.hpp>

#include <numeric>
#include <random>

using namespace qorkes;
using namespace qorkes::test;

namespace {

/// Positive numbers of all binades, normal and denormal ones.
template <class T> std::vector<T> arguments() {
    using Limits = std::numeric_limits<T>;
    std::vector<T> all =
        draw<T>({Limits::min(), Limits::max(), Sign::positive}, 10000, 5);
    for (const T x :
         draw<T>({Limits::denorm_min(), Limits::min(), Sign::positive}, 1000, 6))
        all.push_back(x);
    return all;
}

/// The error is far below what would lose an exact root.
TEST(Sqrt, RootsOfSquaresAreExact) {
    std::vector<double> roots(3000), squares(roots.size()), y(roots.size());
    std::iota(roots.begin(), roots.begin() + 1000, 1.0);
    Random random(6);
    for (std::size_t i = 1000; i < roots.size(); ++i) roots[i] = random() >> 6;
    for (std::size_t i = 0; i < roots.size(); ++i) squares[i] = roots[i] * roots[i];
    const int n = static_cast<int>(roots.size());
    _qordSqrt_HA(n, squares.data(), y.data());
    EXPECT_TRUE(sameBits(roots.data(), y.data(), n));
}

/// Whole group or rest, flagged or not, the same steps are taken.
template <class T> void expectSameAlone(void (*kernel)(int n, const T* a, T* y)) {
    const std::vector<T> a = arguments<T>();
    const int n = static_cast<int>(a.size());
    std::vector<T> together = a, alone = a;
    kernel(n, a.data(), together.data());
    for (std::size_t i = 0; i < a.size(); ++i) kernel(1, &a[i], &alone[i]);
    EXPECT_TRUE(sameBits(alone.data(), together.data(), n));
}

TEST(Sqrt, ElementAloneGivesTheBitsItGivesInAGroup) {
    expectSameAlone(_qordSqrt_HA);
    expectSameAlone(_qordInvSqrt_HA);
    expectSameAlone(_qorsSqrt_HA);
}

/// 1/sqrt(x) by root and division, at the settings in force.
void divideByRoot(const float* x, float* y) {
    asm("fld1\n\tflds %1\n\tfsqrt\n\tfdivrp %%st, %%st(1)\n\tfstps %0"
        : "=m"(*y)
        : "m"(*x)
        : "st");
}

/// One special element, and all eight come from root and division at the caller's
/// settings; the group before it and the rest do not.
TEST(InvSqrt, FlaggedFloatGroupIsDividedAtTheCallersSettings) {
    for (const uint32_t special :
         {0x00000001u, 0x007FFFFFu, 0x7F800000u, 0x7FC00000u}) {
        std::vector<float> a(19), plain(a.size()), expected(a.size()), y(a.size());
        for (std::size_t i = 0; i < a.size(); ++i)
            a[i] = 1.37f + 0.171f * static_cast<float>(i * i);
        _qorsInvSqrt_HA(19, a.data(), plain.data());
        setBits(a[12], special);
        for (const Fpu& setting : fpuSettings()) {
            expected = plain;
            runUnder(setting, [&] {
                for (std::size_t i = 8; i < 16; ++i) divideByRoot(&a[i], &expected[i]);
            });
            Reports reports;
            runUnder(setting, [&] { _qorsInvSqrt_HA(19, a.data(), y.data()); });
            ASSERT_TRUE(sameBits(expected.data(), y.data(), 19))
                << std::hex << special << ' ' << setting.controlWord;
            EXPECT_TRUE(reports.seen.empty());
        }
        EXPECT_FALSE(sameBits(plain.data() + 8, expected.data() + 8, 4));
    }
}

/// By Sqrt in the order of the array; by InvSqrt zeros first, then negative numbers.
TEST(Sqrt, FlaggedFloatGroupReportsInOrder) {
    const float a[] = {-1, 0, 4, NAN, -0.0f, -INFINITY, 1e-40f, 0, -9};
    const auto reported = [&](auto kernel) {
        float y[9];
        const Reports reports;
        kernel(9, a, y);
        std::vector<std::pair<int, int>> statusAndIndex;
        for (const QorErrorRecord& report : reports.seen)
            statusAndIndex.emplace_back(report.status, report.index);
        return statusAndIndex;
    };
    using Order = std::vector<std::pair<int, int>>;
    EXPECT_EQ(reported(_qorsSqrt_HA), (Order{{1, 0}, {1, 5}, {1, 8}}));
    EXPECT_EQ(reported(_qorsInvSqrt_HA),
              (Order{{2, 1}, {2, 4}, {2, 7}, {1, 0}, {1, 5}, {1, 8}}));
}

/// The scalar roots give the kernels' special results, and report nothing. The
/// quadratic of the float one alone is good to 1e-8, a sixth of an ulp.
template <class T>
void expectScalarRoot(T (*root)(T), void (*kernel)(int n, const T* a, T* y),
                      double limit) {
    using Limits = std::numeric_limits<T>;
    Oracle oracle("Sqrt");
    for (const T x : {T{0}, -T{0}, Limits::infinity(), -Limits::infinity(), T{-1},
                      -Limits::denorm_min(), -Limits::max(), Limits::quiet_NaN()}) {
        T y;
        kernel(1, &x, &y);
        const Reports reports;
        const T result = root(x);
        EXPECT_EQ(bitsOf(result), bitsOf(y)) << x;
        EXPECT_TRUE(reports.seen.empty());
    }
    for (const T x : arguments<T>()) ASSERT_LE(oracle.ulps(root(x), x), limit) << x;
}

TEST(Sqrt, ScalarRoots) {
    expectScalarRoot(_qordsqrt_scalar, _qordSqrt_HA, 0.80);
    expectScalarRoot(_qorssqrt_scalar, _qorsSqrt_HA, 0.67);
}

} // namespace
