// Where the errors of each function are measured: one row per function of the
// catalogue.
#pragma once

#include <support/samples.hpp>

#include <string_view>
#include <vector>

namespace qorkes::ulp {

using test::Range;
using test::Sign;

/// A named part of a function's domain, within which errors are reported apart.
struct Region {
    const char* name;
    Range a;
    Range b = {1, 1, Sign::positive};

    enum class Kind {
        arguments, // a and b are drawn
        results,   // f(a, b) is drawn from the first range, b from the second
        absolute,  // as arguments; errors count in ulps of results from 1/2 to 1
    } kind = Kind::arguments;
};

/// A function in both formats, each good to some units in its last place.
struct Screen {
    long double (*precise)(long double a, long double b);
    double (*quick)(double a, double b);

    template <class F> Screen(F f) : precise(f), quick(f) {}
};

struct FunctionRow {
    const char* name;
    Screen screen;

    std::vector<Region> doubles;
    std::vector<Region> singles; // those of double, if empty

    /// Multiples of this number are hard; 0 if there is no such.
    long double period = 0;

    /// The a for which f(a, b) is about `result`; null if no region needs it.
    long double (*firstFor)(long double result, long double b) = nullptr;
};

/// Throws if the table has no such function. The second result of SinCos, the cosine,
/// has a row of its own.
const FunctionRow& rowOf(std::string_view function, int output);

} // namespace qorkes::ulp
