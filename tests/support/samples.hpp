// Arguments for every function of the catalogue: ordinary ones, which take a kernel's
// fast path and report nothing, and special ones with the status that they report. All
// hold for double and for float.
#pragma once

#include <support/platform.hpp>

#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <vector>

namespace qorkes::test {

enum class Sign { positive, negative, both };

/// Magnitudes spread evenly over the binades from `smallest` to `largest`.
struct Range {
    double smallest, largest;
    Sign sign;
};

struct Special {
    double a, b;
    int status;
};

struct Samples {
    const char* function;
    Range a;
    Range b; // of functions with two arguments; a scalar one is the same in all calls
    std::vector<Special> specials;
};

inline const Samples& samplesOf(const char* function) {
    using enum Sign;
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr Range none = {1, 1, positive};
    constexpr Range angles = {1e-3, 1e4, both};
    constexpr Range wide = {1e-30, 1e30, both};
    constexpr Range widePositive = {1e-30, 1e30, positive};
    static const Samples rows[] = {
        {"Acos", {1e-4, 0.999, both}, none, {{2, 0, 1}, {-infinity, 0, 1}}},
        {"Acosh", {1.01, 1e10, positive}, none, {{0.5, 0, 1}, {-3, 0, 1}}},
        {"Asin", {1e-4, 0.999, both}, none, {{-2, 0, 1}, {infinity, 0, 1}}},
        {"Asinh", {1e-3, 1e10, both}, none, {}},
        {"Atan", {1e-3, 1e6, both}, none, {}},
        {"Atan2", {1e-6, 1e6, both}, {1e-6, 1e6, both}, {}},
        {"Atanh", {1e-4, 0.99, both}, none, {{1, 0, 2}, {-1, 0, 2}, {2, 0, 1}}},
        {"Cbrt", wide, none, {}},
        {"Cos", angles, none, {{infinity, 0, 1}, {-infinity, 0, 1}}},
        {"Cosh", {1e-3, 80, both}, none, {{1000, 0, 3}, {-1000, 0, 3}}},
        {"Div", {1e-9, 1e9, both}, {1e-9, 1e9, both}, {{3, 0.0, 2}, {-3, -0.0, 2}}},
        {"Erf", {1e-3, 5, both}, none, {}},
        {"Erfc", {1e-3, 5, both}, none, {{100, 0, 4}}},
        {"Exp", {1e-3, 80, both}, none, {{1000, 0, 3}, {-1000, 0, 4}}},
        {"Inv", {1e-9, 1e9, both}, none, {{0.0, 0, 2}, {-0.0, 0, 2}}},
        {"InvCbrt", wide, none, {{0.0, 0, 2}, {-0.0, 0, 2}}},
        {"InvSqrt", widePositive, none, {{0.0, 0, 2}, {-0.0, 0, 2}, {-4, 0, 1}}},
        {"Ln", widePositive, none, {{0.0, 0, 2}, {-0.0, 0, 2}, {-4, 0, 1}}},
        {"Log10", widePositive, none, {{0.0, 0, 2}, {-0.0, 0, 2}, {-4, 0, 1}}},
        {"Pow", {1e-3, 1e3, positive}, {0.01, 10, both}, {{0, -2, 1}, {-2, 0.5, 1}}},
        {"Powx",
         {1e-3, 1e3, positive},
         {0.75, 0.75, negative},
         {{0, -0.75, 1}, {-2, -0.75, 1}}},
        {"Sin", angles, none, {{infinity, 0, 1}, {-infinity, 0, 1}}},
        {"SinCos", angles, none, {{infinity, 0, 1}, {-infinity, 0, 1}}},
        {"Sinh", {1e-3, 80, both}, none, {{1000, 0, 3}, {-1000, 0, 3}}},
        {"Sqrt", widePositive, none, {{-4, 0, 1}, {-infinity, 0, 1}}},
        {"Tan", angles, none, {{infinity, 0, 1}, {-infinity, 0, 1}}},
        {"Tanh", {1e-4, 10, both}, none, {}},
    };
    for (const Samples& row : rows)
        if (std::strcmp(row.function, function) == 0) return row;
    throw std::invalid_argument(function);
}

/// n numbers of a range, the same in every run.
template <class T> std::vector<T> draw(const Range& range, int n, unsigned seed) {
    Random random(seed);
    std::vector<T> numbers;
    for (int i = 0; i < n; ++i) {
        const double position = random() * 0x1p-32;
        const double magnitude =
            range.smallest * std::pow(range.largest / range.smallest, position);
        const bool isNegative =
            range.sign == Sign::negative || (range.sign == Sign::both && random() & 1);
        numbers.push_back(static_cast<T>(isNegative ? -magnitude : magnitude));
    }
    return numbers;
}

} // namespace qorkes::test
