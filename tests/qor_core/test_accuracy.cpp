// Errors of the functions of one argument against exact values: over ranges, beside the
// places where steps meet, at powers of two and the ends of table rows.
#include "accuracy.hpp"

#include <gtest/gtest.h>

using namespace qorkes;
using namespace qorkes::test;

namespace {

struct Row {
    const char* kernel;
    Range range;
    double limit;
    int count = 10000;
};

constexpr Sign positive = Sign::positive, negative = Sign::negative, both = Sign::both;

template <class T> const std::vector<Row> rows;

// Worst where a formula takes over and where the error of a reduction is that of a far
// argument. Denormal arguments and results are rounded once where 0.50001 stands.
template <>
const std::vector<Row> rows<double> = {
    {"Acos", {1e-9, 1, both}, 0.70},
    {"Acos", {0.9999, 1, negative}, 0.51}, // near pi, with its low part
    {"Acosh", {1, 1.001, positive}, 0.85},
    {"Acosh", {1.001, 1e308, positive}, 0.60},
    {"Asin", {1e-9, 1, both}, 0.70},
    {"Asinh", {1e-300, 0x1p-9, both}, 0.51},
    {"Asinh", {0x1p-9, 0x1p-6, both}, 0.95},
    {"Asinh", {0x1p-6, 1e308, both}, 0.72},
    {"Atan", {1e-9, 2.4375, both}, 0.90},
    {"Atan", {2.4375, 1e300, both}, 0.80},
    {"Atanh", {1e-300, 0x1p-10, both}, 0.51},
    {"Atanh", {0x1p-10, 0x1p-6, both}, 0.85},
    {"Atanh", {0x1p-6, 0.9999, both}, 0.62},
    {"Cbrt", {0x1p-1022, 1.7e308, both}, 0.75},
    {"Cbrt", {0x1p-1074, 0x1p-1022, both}, 0.75},
    {"Cosh", {0x1p-40, 0x1.fp-11, both}, 0.51},
    {"Cosh", {0x1.fp-11, 0.01, both}, 1.0},
    {"Cosh", {0.01, 16, both}, 0.58},
    {"Cosh", {16, 710.4758, both}, 1.0},
    {"Erf", {1e-30, 6, both}, 0.51},
    {"Erf", {0x1p-1074, 0x1p-1020, both}, 0.50001},
    {"Erfc", {1e-21, 5.87, both}, 0.51, 400},
    {"Erfc", {1, 26.5432, positive}, 0.51, 400},
    {"Erfc", {26.5432, 27.22601711, positive}, 0.50001, 400},
    {"Exp", {1e-20, 20, both}, 0.52},
    {"Exp", {20, 708.39, both}, 0.80},
    {"Exp", {708.40, 745.13, negative}, 0.78},
    {"InvCbrt", {0x1p-1022, 1.7e308, both}, 0.66},
    {"InvCbrt", {0x1p-1074, 0x1p-1022, both}, 0.66},
    {"InvSqrt", {0x1p-1074, 1.7e308, positive}, 0.85},
    {"Ln", {1e-37, 1e38, positive}, 0.65},
    {"Ln", {0.95, 1.05, positive}, 0.75},
    {"Ln", {0x1.ffp-1, 0x1.fffffffffffffp-1, positive}, 0.75}, // by the series
    {"Log10", {1e-37, 1e38, positive}, 0.75},
    {"Log10", {0.95, 1.05, positive}, 1.0},
    {"Log10", {0x1.ffp-1, 0x1.fffffffffffffp-1, positive}, 1.0},
    {"Sinh", {0x1p-40, 0x1.fp-11, both}, 0.51},
    {"Sinh", {0x1.fp-11, 0.01, both}, 1.0},
    {"Sinh", {0.01, 16, both}, 0.58},
    {"Sinh", {16, 710.4758, both}, 1.0},
    {"Sqrt", {0x1p-1074, 1.7e308, positive}, 0.80},
    {"Tanh", {1e-300, 0.002, both}, 0.51},
    {"Tanh", {0.002, 0.02, both}, 0.85},
    {"Tanh", {0.02, 20, both}, 0.56},
};

template <>
const std::vector<Row> rows<float> = {
    {"Acos", {1e-30, 1, both}, 0.85},
    {"Acos_21", {1e-30, 1, both}, 3.5},
    {"Acosh", {1, 1.01, positive}, 1.05},
    {"Acosh", {1.01, 1e38, positive}, 1.05},
    {"Asin", {1e-30, 1, both}, 0.85},
    {"Asin_21", {1e-30, 1, both}, 4.5},
    {"Asinh", {1e-30, 1e38, both}, 1.05},
    {"Atan", {1e-30, 1e30, both}, 1.1},
    {"Atan_21", {1e-30, 1e30, both}, 3.3},
    {"Atanh", {1e-30, 0.9999, both}, 1.05},
    {"Cbrt", {0x1p-126, 3.4e38, both}, 0.68},
    {"Cbrt", {0x1p-149, 0x1p-126, both}, 0.68},
    {"Cosh", {1e-20, 89.4, both}, 0.75},
    {"Erf", {1e-30, 6, both}, 0.501},
    {"Erf", {0x1p-149, 0x1p-124, both}, 0.50001},
    {"Erfc", {1e-9, 3.8, both}, 0.501, 400},
    {"Erfc", {1, 9.1, positive}, 0.501, 400},
    {"Erfc", {9.19, 10.0541, positive}, 0.50001, 400},
    {"Exp", {1e-10, 88.7, both}, 0.66},
    {"Exp", {88, 103.9, negative}, 0.66},
    {"InvCbrt", {0x1p-126, 3.4e38, both}, 0.92},
    {"InvCbrt", {0x1p-149, 0x1p-126, both}, 0.92},
    {"InvSqrt", {0x1p-149, 3.4e38, positive}, 1.6},
    {"Ln", {1e-37, 1e38, positive}, 0.85},
    {"Ln", {0.95, 1.05, positive}, 0.85},
    {"Log10", {1e-37, 1e38, positive}, 0.85},
    {"Log10", {0.95, 1.05, positive}, 0.85},
    {"Sinh", {1e-20, 89.4, both}, 0.60},
    {"Sqrt", {0x1p-149, 3.4e38, positive}, 0.90},
    {"Tanh", {1e-30, 10, both}, 0.85},
};

template <class T> class Accuracy : public testing::Test {};
using Precisions = testing::Types<double, float>;
TYPED_TEST_SUITE(Accuracy, Precisions);

TYPED_TEST(Accuracy, OverRanges) {
    for (const auto& [kernel, range, limit, count] : rows<TypeParam>)
        EXPECT_LE(largestError(kernel, draw<TypeParam>(range, count, 5)), limit)
            << kernel << " from " << range.smallest << " to " << range.largest;
}

/// Where the steps of one kernel or another meet: bounds of intervals, of series and of
/// table rows.
const std::vector<double> bounds = {0.125, 0.15625, 0.1892, 0.4375, 0.6875,
                                    0.72,  1.1875,  2.29,   2.4375, 3.83,
                                    5,     5.8,     6,      15};
/// Last low words under high words that tell intervals; results that begin to be 1, 2,
/// denormal, or too large.
const std::vector<double> ends = {0x1.c0000ffffffffp-2,    0x1.60000ffffffffp-1,
                                  0x1.30000ffffffffp+0,    0x1.d413cccfe779ap+0,
                                  0x1.38000ffffffffp+1,    0x1.7744f8f74e941p+2,
                                  0x1.7afb48dc96628p+2,    0x1.9e89f995ad3adp+4,
                                  0x1.a8b12fc6e4892p+4,    0x1.63p+9,
                                  0x1.633cdffffffffp+9,    0x1.633ce8fb9f87dp+9,
                                  5.4323092248710971e-312, 1.971920364530142e-308};

/// Arguments on both sides of these, of every power of two and of the ends of
/// all table rows of the roots, and these places.
template <class T> std::vector<T> edgesWithin(const Range& range) {
    std::vector<double> places = bounds;
    places.insert(places.end(), ends.begin(), ends.end());
    for (int e = -1074; e < 1024; ++e) places.push_back(std::ldexp(1, e));
    for (int k = 0; k < 384; ++k) places.push_back(1 + k * 0x1p-7);
    std::vector<T> arguments;
    for (const double place : places) {
        const T x = static_cast<T>(place);
        if (place < range.smallest || place > range.largest) continue;
        for (const T towards : {T{0}, x, std::numeric_limits<T>::infinity()}) {
            const T near = std::nextafter(x, towards);
            if (range.sign != negative) arguments.push_back(near);
            if (range.sign != positive) arguments.push_back(-near);
        }
    }
    return arguments;
}

TYPED_TEST(Accuracy, WhereStepsMeet) {
    for (const auto& [kernel, range, limit, count] : rows<TypeParam>)
        EXPECT_LE(largestError(kernel, edgesWithin<TypeParam>(range)), limit)
            << kernel << " from " << range.smallest << " to " << range.largest;
}

/// Elements beside one for which a kernel leaves its usual way.
TYPED_TEST(Accuracy, BesideElementsOfTheOtherWay) {
    using T = TypeParam;
    for (const Row& row : rows<T>) {
        if (!std::strstr(row.kernel, "Cbrt")) continue;
        for (const T other : {T{0}, T{1}})
            EXPECT_LE(largestErrorBeside(other, row.kernel, row.range), row.limit);
    }
    constexpr Range nearOne = {0.95, 1.05, positive};
    for (const char* kernel : {"Ln", "Log10"}) {
        const double special =
            largestErrorBeside(std::numeric_limits<T>::infinity(), kernel, nearOne);
        const double ordinary = largestErrorBeside(T{3}, kernel, nearOne);
        if (std::is_same_v<T, double>) {
            EXPECT_EQ(special, ordinary);
        } else {
            EXPECT_LE(special, 0.5001);
            EXPECT_GT(ordinary, 0.51);
        }
    }
}

} // namespace
