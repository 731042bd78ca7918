#include <common/ext.hpp>
#include <support/element.hpp>
#include <support/fpu.hpp>

using namespace qorkes;
using namespace qorkes::test;

namespace {

#include <qor_core/ln/qor_a6_dln_tables.inc>
#include <qor_core/ln/qor_a6_sln_tables.inc>
#include <qor_core/log10/qor_a6_dlog10_tables.inc>

static_assert(hasPattern(lnTabD[1][0], 0x3F6FF00AA2B10BC0));
static_assert(hasPattern(lnTabD[1][1], 0x3C02821AD5A6D350));
static_assert(hasPattern(lnTabD[255][0], 0x3FE61E3EFDA46466));
static_assert(hasPattern(lnTabD10[1][0], 0x3F5BBD9E9482AF08));
static_assert(hasPattern(lnTabS[128][2], 0xBFE54726CCE4EAAB));
static_assert(hasPattern(lnTabS[255][0], 0xBFF23E33D5D8385E));

template <class T> struct Kernel {
    const char* function;
    const char* name;
    void (*entry)(int n, const T* a, T* y);
};
constexpr Kernel<double> doubles[] = {{"Ln", "_qordLn_HA", _qordLn_HA},
                                      {"Log10", "_qordLog10_HA", _qordLog10_HA}};
constexpr Kernel<float> singles[] = {{"Ln", "_qorsLn_HA", _qorsLn_HA},
                                     {"Log10", "_qorsLog10_HA", _qorsLog10_HA}};

TEST(DoubleLogarithms, LimitsAndSpecialValues) {
    constexpr uint64_t minusInfinity = 0xFFF0000000000000;
    constexpr uint64_t defaultNaN = 0xFFF8000000000000;
    constexpr Expected<double> cases[] = {
        {0x0000000000000000, minusInfinity, QOR_STATUS_SING},
        {0x8000000000000000, minusInfinity, QOR_STATUS_SING},
        {0x8000000000000001, defaultNaN, QOR_STATUS_ERRDOM},
        {0xC010000000000000, defaultNaN, QOR_STATUS_ERRDOM},
        {0xFFEFFFFFFFFFFFFF, defaultNaN, QOR_STATUS_ERRDOM},
        {0xFFF0000000000000, defaultNaN, QOR_STATUS_ERRDOM},
        {0xFFF0000000000001, 0xFFF8000000000001, QOR_STATUS_ERRDOM},
        {0xFFF00000FFFFFFFF, 0xFFF80000FFFFFFFF, QOR_STATUS_ERRDOM},
        {0xFFF0000100000000, 0xFFF8000100000000, {}},
        {0x7FF0000000000001, 0x7FF8000000000001, {}},
        {0x7FF0000000000000, 0x7FF0000000000000, {}},
        {0x3FF0000000000000, 0x0000000000000000, {}},
    };
    for (const Kernel<double>& kernel : doubles) {
        for (const auto& expected : cases)
            expectElement(kernel.entry, kernel.name, 3.0, expected);
        Oracle oracle(kernel.function);
        // Denormals and both ends of the normal numbers.
        for (const double x :
             {0x1p-1074, 0x1.fffffffffffffp-1023, 0x1p-1022, 0x1.fffffffffffffp+1023})
            expectElement(kernel.entry, "", 3.0,
                          {bitsOf(x), bitsOf(oracle.rounded(x)), {}});
    }
}

TEST(FloatLogarithms, LimitsAndSpecialValues) {
    constexpr uint32_t minusInfinity = 0xFF800000;
    constexpr uint32_t defaultNaN = 0xFFC00000;
    constexpr Expected<float> cases[] = {
        {0x00000000, minusInfinity, QOR_STATUS_SING},
        {0x80000000, minusInfinity, QOR_STATUS_SING},
        {0x80000001, defaultNaN, QOR_STATUS_ERRDOM},
        {0xC0800000, defaultNaN, QOR_STATUS_ERRDOM},
        {0xFF800000, defaultNaN, QOR_STATUS_ERRDOM},
        {0xFF800001, 0xFFC00001, {}},
        {0x7F800000, 0x7F800000, {}},
        {0x3F800000, 0x00000000, {}},
    };
    for (const Kernel<float>& kernel : singles) {
        for (const auto& expected : cases)
            expectElement(kernel.entry, kernel.name, 3.0f, expected);
        Oracle oracle(kernel.function);
        for (const float x : {0x1p-149f, 0x1.fffffcp-127f, 0x1p-126f, 0x1.fffffep+127f})
            expectElement(kernel.entry, "", 3.0f,
                          {bitsOf(x), bitsOf(oracle.rounded(x)), {}});
    }
}

constexpr Range nearOne = {0.95, 1.05, Sign::positive};

TEST(Logarithms, Errors) {
    constexpr Range all = {1e-37, 1e38, Sign::positive};
    constexpr Range series = {0x1.ffp-1, 0x1.fffffffffffffp-1, Sign::positive};
    const double limits[2][2] = {{0.65, 0.75}, {0.75, 1.0}};
    for (int i = 0; i < 2; ++i) {
        const auto& [function, name, entry] = doubles[i];
        EXPECT_LE(largestError(entry, function, all), limits[i][0]);
        EXPECT_LE(largestError(entry, function, nearOne), limits[i][1]);
        EXPECT_LE(largestError(entry, function, series), limits[i][1]);
    }
    for (const auto& [function, name, entry] : singles) {
        EXPECT_LE(largestError(entry, function, all), 0.85);
        EXPECT_LE(largestError(entry, function, nearOne), 0.85);
    }
}

// What the neighbour of a special element is computed by tells in its last place.
TEST(Logarithms, NeighbourOfASpecialElement) {
    for (const auto& [function, name, entry] : singles) {
        EXPECT_LE(largestError<float>(entry, function, nearOne, INFINITY), 0.5001);
        EXPECT_GT(largestError<float>(entry, function, nearOne, 3.0f), 0.51);
    }
    for (const auto& [function, name, entry] : doubles)
        EXPECT_EQ(largestError<double>(entry, function, nearOne, INFINITY),
                  largestError<double>(entry, function, nearOne, 3.0));
}

// The float kernels bring back the unit as it was before a report, the double ones what
// matters of it: flags that a handler raises stay there.
TEST(Logarithms, FlagsRaisedInAReport) {
    const double a = -1;
    const float b = -1;
    double y;
    float z;
    Reports reports;
    reports.then = [](QorErrorRecord&) {
        asm volatile("fld1\n\tfldz\n\tfdivrp\n\tfstp %st(0)");
        return 0;
    };
    constexpr unsigned both = invalidFlag | divideByZeroFlag;
    EXPECT_EQ(flagsRaised([&] { _qordLn_HA(1, &a, &y); }) & both, both);
    EXPECT_EQ(flagsRaised([&] { _qorsLn_HA(1, &b, &z); }) & both, invalidFlag);
}

} // namespace
