// Erf and Erfc: special values and reports, where their steps meet, denormal arguments
// and results, flags.
#include <qorkes/qor.h>
#include <support/element.hpp>
#include <support/fpu.hpp>
#include <support/special_values.hpp>

#include <cmath>

using namespace qorkes;
using namespace qorkes::test;

namespace {

/// At these arguments and the neighbours of each, of either sign if `isOdd`.
template <class T>
void expectAccurateAround(void (*kernel)(int, const T*, T*), const char* function,
                          double limit, bool isOdd,
                          std::initializer_list<double> places) {
    Oracle oracle(function);
    const Reports unreported;
    for (const double place : places) {
        const T x = static_cast<T>(place);
        for (const T near :
             {x, std::nextafter(x, T(-1e30)), std::nextafter(x, T(1e30))})
            for (const T a : {near, isOdd ? -near : near}) {
                T y;
                kernel(1, &a, &y);
                EXPECT_LE(oracle.ulps(y, a), limit) << a;
            }
    }
}

TEST(Erf, SpecialValues) {
    expectSpecialValues<double>(_qordErf_HA, "",
                                {
                                    {0x0000000000000000, 0x0000000000000000, 0},
                                    {0x8000000000000000, 0x8000000000000000, 0},
                                    {0x7FF0000000000000, 0x3FF0000000000000, 0},
                                    {0xFFF0000000000000, 0xBFF0000000000000, 0},
                                    {0x7FF8000000000123, 0x7FF8000000000123, 0},
                                    {0xFFF0000000000001, 0xFFF8000000000001, 0},
                                    {0x4017AFB48DC96628, 0x3FF0000000000000, 0},
                                    {0xFFEFFFFFFFFFFFFF, 0xBFF0000000000000, 0},
                                    {0x8000000000000001, 0x8000000000000001, 0},
                                });
    expectSpecialValues<float>(_qorsErf_HA, "",
                               {
                                   {0x00000000, 0x00000000, 0},
                                   {0x80000000, 0x80000000, 0},
                                   {0x7F800000, 0x3F800000, 0},
                                   {0xFF800000, 0xBF800000, 0},
                                   {0x7FC00123, 0x7FC00123, 0},
                                   {0xFF800001, 0xFFC00001, 0},
                                   {0x40BD7DA4, 0x3F800000, 0},
                                   {0xFF7FFFFF, 0xBF800000, 0},
                                   {0x80000001, 0x80000001, 0},
                               });
}

TEST(Erf, IsAccurateWhereItsStepsMeet) {
    const auto places = {0x1p-40, 0.125, 0.15625, 0.5,
                         1.0,     4.0,   5.0,     5.9215871957945083};
    expectAccurateAround<double>(_qordErf_HA, "Erf", 0.51, true, places);
    expectAccurateAround<float>(_qorsErf_HA, "Erf", 0.501, true, places);
    EXPECT_LE(largestError<double>(_qordErf_HA, "Erf", {1e-30, 6, Sign::both}), 0.51);
    EXPECT_LE(largestError<float>(_qorsErf_HA, "Erf", {1e-30, 6, Sign::both}), 0.501);
}

/// 2/sqrt(pi) times the argument is denormal, or not any more, and rounded once.
TEST(Erf, DenormalArgumentsAndResultsAreRoundedOnce) {
    const Range doubles = {0x1p-1074, 0x1p-1020, Sign::both};
    EXPECT_LE(largestError<double>(_qordErf_HA, "Erf", doubles), 0.50001);
    const Range floats = {0x1p-149, 0x1p-124, Sign::both};
    EXPECT_LE(largestError<float>(_qorsErf_HA, "Erf", floats), 0.50001);
    expectAccurateAround<double>(
        _qordErf_HA, "Erf", 0.50001, true,
        {0x1p-1074, 5.4323092248710971e-312, 1.971920364530142e-308, 0x1p-1022});
}

TEST(Erf, OnlyAnInfiniteArgumentIsExact) {
    const auto flagsOf = [](double x) {
        return flagsRaised([&] {
            double y;
            _qordErf_HA(1, &x, &y);
        });
    };
    EXPECT_EQ(flagsOf(-INFINITY), 0u);
    EXPECT_EQ(flagsOf(6), inexactFlag);
    EXPECT_EQ(flagsOf(1), inexactFlag);
}

} // namespace
