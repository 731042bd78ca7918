// Sqrt and InvSqrt: special values, accuracy at every boundary of their methods, the
// float groups that leave the fast path, and the scalar roots.
#include <qorkes/qor.h>
#include <support/compare.hpp>
#include <support/fpu.hpp>
#include <support/oracle.hpp>
#include <support/platform.hpp>
#include <support/special_values.hpp>

#include <numeric>
#include <random>

using namespace qorkes;
using namespace qorkes::test;

namespace {

const std::vector<SpecialValue<double>> doubleRoots = {
    {0x0000000000000000, 0x0000000000000000, 0},
    {0x8000000000000000, 0x8000000000000000, 0},
    {0x7FF0000000000000, 0x7FF0000000000000, 0},
    {0x7FF8000000000001, 0x7FF8000000000001, 0},
    {0xFFF8000000000001, 0xFFF8000000000001, 0},
    {0xFFF0000000000000, 0x7FF8A5A55A5A5A5A, 1},
    {0xBFF0000000000000, 0x7FF8A5A55A5A5A5A, 1}, // -1
    {0x8000000000000001, 0x7FF8A5A55A5A5A5A, 1}, // negative denormals
    {0x800FFFFFFFFFFFFF, 0x7FF8A5A55A5A5A5A, 1},
    {0xFFEFFFFFFFFFFFFF, 0x7FF8A5A55A5A5A5A, 1},
    {0x0000000000000001, 0x1E60000000000000, 0}, // 2^-1074, exact
    {0x0000000000000004, 0x1E70000000000000, 0},
    {0x0010000000000000, 0x2000000000000000, 0}, // 2^-1022
    {0x7FD0000000000000, 0x5FE0000000000000, 0}, // 2^1022
    {0x7FEFFFFFFFFFFFFF, 0x5FEFFFFFFFFFFFFF, 0}, // the largest number
};
const std::vector<SpecialValue<float>> floatRoots = {
    {0x00000000, 0x00000000, 0}, {0x80000000, 0x80000000, 0},
    {0x7F800000, 0x7F800000, 0}, {0x7FC00001, 0x7FC00001, 0},
    {0xFFC00001, 0xFFC00001, 0}, {0xFF800000, 0xFFC00000, 1},
    {0xBF800000, 0xFFC00000, 1}, // -1
    {0x80000001, 0xFFC00000, 1}, // negative denormals
    {0x807FFFFF, 0xFFC00000, 1}, {0xFF7FFFFF, 0xFFC00000, 1},
    {0x00000002, 0x1A800000, 0}, // 2^-148, exact
    {0x00800000, 0x20000000, 0}, // 2^-126
    {0x7E800000, 0x5F000000, 0}, // 2^126
};

TEST(Sqrt, SpecialValues) {
    expectSpecialValues(_qordSqrt_HA, "_qordSqrt_HA", doubleRoots);
    expectSpecialValues(_qorsSqrt_HA, "_qorsSqrt_HA", floatRoots);
    // Signaling NaNs keep sign and payload.
    expectSpecialValues<double>(_qordSqrt_HA, "_qordSqrt_HA",
                                {{0x7FF0000000000001, 0x7FF8000000000001, 0},
                                 {0xFFF4000000000000, 0xFFFC000000000000, 0}});
    expectSpecialValues<float>(
        _qorsSqrt_HA, "_qorsSqrt_HA",
        {{0x7F800001, 0x7FC00001, 0}, {0xFFA00000, 0xFFE00000, 0}});
}

TEST(InvSqrt, SpecialValues) {
    expectSpecialValues<double>(_qordInvSqrt_HA, "_qordInvSqrt_HA",
                                {
                                    {0x0000000000000000, 0x7FF0000000000000, 2},
                                    {0x8000000000000000, 0xFFF0000000000000, 2},
                                    {0x7FF0000000000000, 0x0000000000000000, 0},
                                    {0x7FF8000000000001, 0x7FF8000000000001, 0},
                                    {0x7FF0000000000001, 0x7FF8000000000001, 0},
                                    {0xFFF0000000000001, 0xFFF8000000000001, 0},
                                    {0xFFF0000000000000, 0x7FF8A5A55A5A5A5A, 1},
                                    {0xC010000000000000, 0x7FF8A5A55A5A5A5A, 1},
                                    {0x8000000000000001, 0x7FF8A5A55A5A5A5A, 1},
                                    {0x0000000000000001, 0x6180000000000000, 0},
                                    {0x0000000000000004, 0x6170000000000000, 0},
                                    {0x0010000000000000, 0x5FE0000000000000, 0},
                                    {0x7FD0000000000000, 0x2000000000000000, 0},
                                });
    expectSpecialValues<float>(_qorsInvSqrt_HA, "_qorsInvSqrt_HA",
                               {
                                   {0x00000000, 0x7F800000, 2},
                                   {0x80000000, 0xFF800000, 2},
                                   {0x7F800000, 0x00000000, 0},
                                   {0x7FC00001, 0x7FC00001, 0},
                                   {0x7F800001, 0x7FC00001, 0},
                                   {0xFF800001, 0xFFC00001, 0},
                                   {0xFF800000, 0xFFC00000, 1},
                                   {0xC0800000, 0xFFC00000, 1},
                                   {0x80000001, 0xFFC00000, 1},
                                   {0x00000002, 0x64800000, 0},
                                   {0x00800000, 0x5F000000, 0},
                                   {0x7E800000, 0x20000000, 0},
                               });
}

/// A quiet NaN passes, a signaling one and a negative number do not.
TEST(Sqrt, SignalingNaNRaisesInvalid) {
    double quiet, signaling, y;
    setBits(quiet, 0x7FF8000000000000);
    setBits(signaling, 0x7FF0000000000001);
    for (auto kernel : {_qordSqrt_HA, _qordInvSqrt_HA}) {
        EXPECT_FALSE(flagsRaised([&] { kernel(1, &quiet, &y); }) & invalidFlag);
        EXPECT_TRUE(flagsRaised([&] { kernel(1, &signaling, &y); }) & invalidFlag);
    }
}

/// A caller may have unmasked what ordinary arguments do not raise.
TEST(InvSqrt, OrdinaryElementsRaiseInexactAlone) {
    std::vector<double> a(19, 3), y(19);
    std::vector<float> s(19, 3), t(19);
    for (int n = 0; n <= 19; ++n) {
        EXPECT_EQ(flagsRaised([&] {
                      _qordSqrt_HA(n, a.data(), y.data());
                      _qordInvSqrt_HA(n, a.data(), y.data());
                      _qorsSqrt_HA(n, s.data(), t.data());
                      _qorsInvSqrt_HA(n, s.data(), t.data());
                  }) & ~inexactFlag,
                  0u)
            << n;
    }
}

/// Positive doubles: each exponent with the ends of table rows and some between; all
/// binades of denormals.
std::vector<double> doubleArguments() {
    std::vector<double> arguments;
    const auto add = [&](uint64_t bits) {
        arguments.push_back(0);
        setBits(arguments.back(), bits);
    };
    std::mt19937_64 random(5);
    for (uint64_t exponent = 1; exponent < 0x7FF; ++exponent) {
        const uint64_t row = random() & 127;
        for (const uint64_t fraction : {uint64_t{0}, (uint64_t{1} << 52) - 1, row << 45,
                                        (row << 45) - 1 + (!row), random() >> 12})
            add(exponent << 52 | fraction);
    }
    for (const uint64_t exponent : {0x3FF, 0x400}) // all rows, both parities
        for (uint64_t row = 0; row < 128; ++row)
            for (const uint64_t low : {uint64_t{0}, random() >> 19, ~uint64_t{0} >> 19})
                add(exponent << 52 | row << 45 | low);
    for (int bit = 0; bit < 52; ++bit)
        for (const uint64_t rest : {uint64_t{0}, random(), ~uint64_t{0}})
            add(uint64_t{1} << bit | (rest & ((uint64_t{1} << bit) - 1)));
    return arguments;
}

/// Positive floats in steps through all exponents, denormals included.
std::vector<float> floatArguments() {
    std::vector<float> arguments;
    for (uint32_t bits = 1; bits < 0x7F800000; bits += 0x1FFF7) {
        arguments.push_back(0);
        setBits(arguments.back(), bits);
    }
    for (const uint32_t bits : {1u, 3u, 0x7FFFu, 0x8000u, 0x7FFFFFu, 0x800000u,
                                0x807FFFu, 0x7F7FFFFFu, 0x3F7FFFFFu, 0x3F800001u}) {
        arguments.push_back(0);
        setBits(arguments.back(), bits);
    }
    return arguments;
}

/// In an array and one by one.
template <class T>
void expectAccurate(void (*kernel)(int, const T*, T*), const char* function,
                    const std::vector<T>& arguments, double limit) {
    SCOPED_TRACE(function);
    Oracle oracle(function);
    std::vector<T> results(arguments.size());
    Reports reports;
    kernel(static_cast<int>(arguments.size()), arguments.data(), results.data());
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        T alone;
        kernel(1, &arguments[i], &alone);
        ASSERT_LE(oracle.ulps(results[i], arguments[i]), limit) << arguments[i];
        ASSERT_LE(oracle.ulps(alone, arguments[i]), limit) << arguments[i];
    }
    EXPECT_TRUE(reports.seen.empty());
}

TEST(Sqrt, IsAccurateOverTheWholeRange) {
    expectAccurate(_qordSqrt_HA, "Sqrt", doubleArguments(), 0.80);
    expectAccurate(_qorsSqrt_HA, "Sqrt", floatArguments(), 0.90);
}

TEST(InvSqrt, IsAccurateOverTheWholeRange) {
    expectAccurate(_qordInvSqrt_HA, "InvSqrt", doubleArguments(), 0.85);
    expectAccurate(_qorsInvSqrt_HA, "InvSqrt", floatArguments(), 1.6);
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
TEST(Sqrt, ElementAloneGivesTheBitsItGivesInAGroup) {
    const auto compare = [](auto kernel, auto arguments) {
        const int n = static_cast<int>(arguments.size());
        auto together = arguments, alone = arguments;
        kernel(n, arguments.data(), together.data());
        for (std::size_t i = 0; i < arguments.size(); ++i)
            kernel(1, &arguments[i], &alone[i]);
        EXPECT_TRUE(sameBits(alone.data(), together.data(), n));
    };
    compare(_qordSqrt_HA, doubleArguments());
    compare(_qordInvSqrt_HA, doubleArguments());
    compare(_qorsSqrt_HA, floatArguments());
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

TEST(InvSqrt, FlaggedFloatGroupReportsZerosThenNegatives) {
    const float a[] = {-1, 0, 4, NAN, -0.0f, -INFINITY, 1e-40f, 0, -9};
    float y[9];
    Reports reports;
    _qorsInvSqrt_HA(9, a, y);
    constexpr struct {
        int status, index;
    } expected[] = {{2, 1}, {2, 4}, {2, 7}, {1, 0}, {1, 5}, {1, 8}};
    ASSERT_EQ(reports.seen.size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(reports.seen[i].status, expected[i].status);
        EXPECT_EQ(reports.seen[i].index, expected[i].index);
    }
    EXPECT_EQ(y[2], 0.5f);
}

/// The special elements of a group of eight keep the order of the array.
TEST(Sqrt, FlaggedGroupReportsInOrder) {
    const float a[] = {-1, 0, 4, NAN, -0.0f, -INFINITY, 1e-40f, 0, -9};
    float y[9];
    Reports reports;
    _qorsSqrt_HA(9, a, y);
    ASSERT_EQ(reports.seen.size(), 3u);
    EXPECT_EQ(reports.seen[0].index, 0);
    EXPECT_EQ(reports.seen[1].index, 5);
    EXPECT_EQ(reports.seen[2].index, 8);
}

void scalarRoots(int n, const double* a, double* y) {
    for (int i = 0; i < n; ++i) y[i] = _qordsqrt_scalar(a[i]);
}
void scalarRoots(int n, const float* a, float* y) {
    for (int i = 0; i < n; ++i) y[i] = _qorssqrt_scalar(a[i]);
}

/// The scalar roots give the kernels' special results, and report nothing.
TEST(ScalarRoots, SpecialValues) {
    auto doubles = doubleRoots;
    for (auto& row : doubles) row.status = 0;
    expectSpecialValues<double>(scalarRoots, "", doubles);
    auto floats = floatRoots;
    for (auto& row : floats) row.status = 0;
    expectSpecialValues<float>(scalarRoots, "", floats);
}

TEST(ScalarRoots, AreAccurateOverTheWholeRange) {
    expectAccurate<double>(scalarRoots, "Sqrt", doubleArguments(), 0.80);
    // The quadratic alone is good to 1e-8, a sixth of an ulp.
    expectAccurate<float>(scalarRoots, "Sqrt", floatArguments(), 0.67);
}

} // namespace
