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

TEST(Erfc, SpecialValuesAndLimits) {
    expectSpecialValues<double>(
        _qordErfc_HA, "_qordErfc_HA",
        {
            {0x0000000000000000, 0x3FF0000000000000, 0},
            {0x8000000000000001, 0x3FF0000000000000, 0},
            {0xBB80000000000000, 0x3FF0000000000000, 0}, // -2^-71
            {0x7FF0000000000000, 0x0000000000000000, 0},
            {0xFFF0000000000000, 0x4000000000000000, 0},
            {0x7FF8000000000123, 0x7FF8000000000123, 0},
            {0xFFF0000000000001, 0xFFF8000000000001, 0},
            {0xC017744F8F74E94A, 0x4000000000000000, 0},
            {0xFFEFFFFFFFFFFFFF, 0x4000000000000000, 0},
            {0x403B39DC41E48BFC, 0x0000000000000001, 0},
            {0x403B39DC41E48BFD, 0x0000000000000000, 4},
            {0x7FEFFFFFFFFFFFFF, 0x0000000000000000, 4},
        });
    expectSpecialValues<float>(_qorsErfc_HA, "_qorsErfc_HA",
                               {
                                   {0x00000000, 0x3F800000, 0},
                                   {0x80000001, 0x3F800000, 0},
                                   {0x7F800000, 0x00000000, 0},
                                   {0xFF800000, 0x40000000, 0},
                                   {0x7FC00123, 0x7FC00123, 0},
                                   {0xFF800001, 0xFFC00001, 0},
                                   {0xC07547CB, 0x40000000, 0},
                                   {0xFF7FFFFF, 0x40000000, 0},
                                   {0x4120DDFB, 0x00000001, 0},
                                   {0x4120DDFC, 0x00000000, 4},
                                   {0x7F7FFFFF, 0x00000000, 4},
                               });
}

/// Of few elements, since exact values take long.
template <class T>
double largestErfcError(void (*kernel)(int, const T*, T*), const Range& range) {
    return largestError<T>(kernel, "Erfc", range, {}, 400);
}

TEST(Erfc, IsAccurateWhereItsStepsMeet) {
    const double scaledRows = std::sqrt(8.0) - 1, lastRow = std::pow(2, 4.75) - 1;
    expectAccurateAround<double>(_qordErfc_HA, "Erfc", 0.51, true,
                                 {0x1p-70, 0x1p-54, 0.1892, 0.5, 1, scaledRows, 5.8});
    expectAccurateAround<double>(
        _qordErfc_HA, "Erfc", 0.51, false,
        {6, 15, lastRow, 26.543258454250982, -5.86358474875516});
    expectAccurateAround<float>(_qorsErfc_HA, "Erfc", 0.501, true,
                                {0x1p-70, 0x1p-25, 0.1892, 0.5, 1, scaledRows, 3.83});
    EXPECT_LE(largestErfcError<double>(_qordErfc_HA, {1e-20, 5.8, Sign::both}), 0.51);
    EXPECT_LE(largestErfcError<double>(_qordErfc_HA, {1, 26.5, Sign::positive}), 0.51);
    EXPECT_LE(largestErfcError<float>(_qorsErfc_HA, {1e-9, 3.8, Sign::both}), 0.501);
    EXPECT_LE(largestErfcError<float>(_qorsErfc_HA, {1, 9.1, Sign::positive}), 0.501);
}

TEST(Erfc, DenormalResultsAreRoundedOnceAndNotReported) {
    const Range doubles = {26.5432, 27.22601711, Sign::positive};
    EXPECT_LE(largestErfcError<double>(_qordErfc_HA, doubles), 0.50001);
    const Range floats = {9.19, 10.0541, Sign::positive};
    EXPECT_LE(largestErfcError<float>(_qorsErfc_HA, floats), 0.50001);

    const double x[] = {26.55, 26.7, 27.2};
    const float s[] = {9.2f, 10.0f, 10.05f};
    double y[3];
    float t[3];
    const Reports reports;
    EXPECT_TRUE(flagsRaised([&] { _qordErfc_HA(3, x, y); }) & underflowFlag);
    _qorsErfc_HA(3, s, t);
    EXPECT_TRUE(reports.seen.empty());
    EXPECT_EQ(std::fpclassify(y[2]), FP_SUBNORMAL);
    EXPECT_EQ(std::fpclassify(t[1]), FP_SUBNORMAL);
}

TEST(Erfc, TwoIsInexactButForAnInfinity) {
    const auto flagsOf = [](double x) {
        return flagsRaised([&] {
            double y;
            _qordErfc_HA(1, &x, &y);
        });
    };
    EXPECT_EQ(flagsOf(-5.9), inexactFlag);
    EXPECT_EQ(flagsOf(-INFINITY), 0u);
    EXPECT_EQ(flagsOf(INFINITY), 0u);
}

} // namespace
