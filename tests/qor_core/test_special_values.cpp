// Special values, limits and reports of the functions of one argument, of their kernels
// in every accuracy.
#include <support/kernels.hpp>
#include <support/oracle.hpp>
#include <support/samples.hpp>
#include <support/special_values.hpp>

using namespace qorkes;
using namespace qorkes::test;
using catalogue::Function;
using catalogue::Kernel;

namespace {

using Names = std::initializer_list<const char*>;

/// Rows of patterns, for kernels that do their work themselves. Both results of a
/// kernel with two are the same.
template <class T>
void expectPatterns(Names functions, const std::vector<SpecialPair<T>>& rows) {
    for (const char* name : functions) {
        const Function& function = *catalogue::find(name);
        const T ordinary = draw<T>(samplesOf(name).a, 1, 1)[0];
        for (const Kernel<T>& kernel : kernelsOf<T>(function)) {
            if (!isOwnCode(kernel)) continue;
            for (const bool isSecond : {false, true}) {
                if (isSecond && function.form != catalogue::Form::oneToTwo) continue;
                const auto run = [&](int n, const T* a, const T* b, T* y) {
                    std::vector<T> z(static_cast<std::size_t>(n));
                    T* const other = z.data();
                    call(function.form, kernel.entry, n, a, b, isSecond ? other : y,
                         isSecond ? y : other);
                };
                expectSpecialPairs(run, kernel.reportsAs, rows, ordinary);
            }
        }
    }
}

/// All arguments that have one result, and its status.
template <class T>
void expect(Names functions, const std::vector<T>& arguments, T result,
            std::optional<int> status = {}) {
    std::vector<SpecialPair<T>> rows;
    for (const T& a : arguments) rows.push_back({bitsOf(a), 0, bitsOf(result), status});
    expectPatterns(functions, rows);
}

template <class T> std::vector<T> negative(std::vector<T> numbers) {
    for (T& x : numbers) x = -x;
    return numbers;
}

/// Negative arguments, too, of odd functions.
template <class T>
void expectOdd(Names functions, const std::vector<T>& arguments, T result,
               std::optional<int> status = {}) {
    expect<T>(functions, arguments, result, status);
    expect<T>(functions, negative(arguments), -result, status);
}

/// The value, correctly rounded, of arguments for which kernels give that, without a
/// report.
template <class T>
void expectRounded(Names functions, const std::vector<T>& arguments) {
    for (const char* function : functions) {
        Oracle oracle(function);
        for (const T a : arguments) expect<T>({function}, {a}, oracle.rounded(a));
    }
}
template <class T>
void expectBothRounded(Names functions, const std::vector<T>& arguments) {
    expectRounded<T>(functions, arguments);
    expectRounded<T>(functions, negative(arguments));
}

template <class T> struct Tables {
    using Limits = std::numeric_limits<T>;
    static constexpr bool isDouble = std::is_same_v<T, double>;
    static constexpr T inf = Limits::infinity(), nan = Limits::quiet_NaN(),
                       tiny = Limits::denorm_min(), least = Limits::min(),
                       max = Limits::max();

    static constexpr T of(double d, float s) { return isDouble ? T(d) : T(s); }
    static T above(T x) { return std::nextafter(x, inf); }
    static T below(T x) { return std::nextafter(x, -inf); }
    static T number(Bits<T> bits) {
        T x;
        setBits(x, bits);
        return x;
    }
    static T allOnes() { return number(static_cast<Bits<T>>(-1) >> 1); }

    static void roots() {
        const T none = isDouble ? number(Bits<T>(0x7FF8A5A55A5A5A5A)) : -nan;
        expect<T>({"Sqrt", "InvSqrt"},
                  {-inf, -1, -tiny, below(-tiny), -below(least), -max}, none, 1);
        expectRounded<T>({"Sqrt"}, {0, -0.0, inf});
        expectRounded<T>({"Sqrt", "InvSqrt"}, {of(4, 2) * tiny, least, 1 / least});
        expectBothRounded<T>({"Cbrt"}, {0, 8, 27, inf});
        expectBothRounded<T>({"Cbrt", "InvCbrt"}, {of(1, 4) * tiny, inf});
        expectOdd<T>({"InvCbrt"}, {0.125}, 2);
        expectOdd<T>({"Inv", "InvCbrt"}, {0}, inf, 2);
        expect<T>({"InvSqrt"}, {0}, inf, 2);
        expect<T>({"InvSqrt"}, {-0.0}, -inf, 2);
        expect<T>({"InvSqrt"}, {inf}, 0);
        expectBothRounded<T>({"Inv"}, {tiny, least / 2, 2 / least, inf});
    }

    static void exponentials() {
        // The last argument with a finite value, the last with one that is not 0.
        const T last = of(0x1.62e42fefa39efp+9, 0x1.62e42ep+6f);
        const T end = of(-0x1.74910d52d3051p+9, -0x1.9fe368p+6f);
        expect<T>({"Exp"}, {above(last), max}, inf, 3);
        expect<T>({"Exp"}, {below(end), -max}, 0, 4);
        expectRounded<T>({"Exp"}, {0, -0.0, tiny, last, inf, -inf});
        if (!isDouble) expectRounded<T>({"Exp"}, {-above(last), end});

        const T tooLarge = of(0x1.633ce8fb9f87ep+9, 0x1.65a9fap+6f);
        expectOdd<T>({"Sinh"}, {tooLarge, max}, inf, 3);
        expect<T>({"Cosh"}, {tooLarge, -tooLarge, max, -max}, inf, 3);
        expectBothRounded<T>({"Sinh", "Cosh"}, {0, tiny, 10, inf});
        if (!isDouble) expectBothRounded<T>({"Sinh", "Cosh"}, {below(tooLarge)});

        const T one = of(20, 10);
        expectOdd<T>({"Tanh"}, {one, inf}, 1);
        const T small = of(0x1.0624dffffffffp-9, 0x1.0624dcp-10f);
        expectBothRounded<T>({"Tanh"}, {0, tiny, least, small, below(one)});
    }

    static void logarithms() {
        expect<T>({"Ln", "Log10"}, {0, -0.0}, -inf, 2);
        expect<T>({"Ln", "Log10"}, {-tiny, -4, -max, -inf}, -nan, 1);
        expectRounded<T>({"Ln", "Log10"}, {tiny, below(least), least, 1, max, inf});
        // Where the logarithm takes over, and both ends.
        const T asinhLimit = of(0x1p-9, 0x1p-27f), atanhLimit = of(0x1p-10, 0x1p-28f);
        expectBothRounded<T>({"Asinh"}, {0, tiny, below(asinhLimit), asinhLimit});
        expectBothRounded<T>({"Asinh"}, {max, inf});
        expectBothRounded<T>({"Atanh"}, {0, tiny, below(atanhLimit), atanhLimit});
        expectBothRounded<T>({"Atanh"}, {below(1)});
        const T none = allOnes();
        expectOdd<T>({"Atanh"}, {1}, inf, 2);
        expectOdd<T>({"Atanh"}, {above(1), inf}, none, 1);
        expect<T>({"Acosh"}, {below(1), 0.5, 0, -0.0, -2, -inf}, none, 1);
        const T near = of(0x1.001ffffffffffp+0, 0x1.000002p+0f);
        expectRounded<T>({"Acosh"}, {1, near, max, inf});
        if (isDouble) expectRounded<T>({"Acosh"}, {above(near)});
    }

    static void angles() {
        const T little = of(0x1p-30, 0x1p-20f), beyond = of(0x1.00001p+0, 2);
        expect<T>({"Acos", "Asin"}, {above(1), beyond, max, inf}, -nan, 1);
        expect<T>({"Acos", "Asin"}, {below(-1), -beyond, -max, -inf}, -nan, 1);
        expectBothRounded<T>({"Acos", "Asin"}, {0, tiny, little, 1});
        expectBothRounded<T>({"Atan"}, {0, tiny, least, max, inf});
        expect<T>({"Sin", "Cos", "Tan", "SinCos"}, {inf, -inf}, -nan, 1);
        expectBothRounded<T>({"Sin", "Tan"}, {0, tiny});
    }

    static void errorFunctions() {
        const T one = of(0x1.7afb48dc96628p+2, 0x1.7afb48p+2f);
        const T two = of(-0x1.7744f8f74e94ap+2, -0x1.ea8f96p+1f);
        const T last = of(0x1.b39dc41e48bfcp+4, 0x1.41bbf6p+3f);
        expectBothRounded<T>({"Erf"}, {0, tiny, one, max, inf});
        expect<T>({"Erfc"}, {0, -tiny, -0x1p-71}, 1);
        expect<T>({"Erfc"}, {two, -max, -inf}, 2);
        expect<T>({"Erfc"}, {last}, tiny);
        expect<T>({"Erfc"}, {above(last), max}, 0, 4);
        expect<T>({"Erfc"}, {inf}, 0);
    }
};

template <class T> class SpecialValues : public testing::Test {};
using Precisions = testing::Types<double, float>;
TYPED_TEST_SUITE(SpecialValues, Precisions);

TYPED_TEST(SpecialValues, Roots) { Tables<TypeParam>::roots(); }
TYPED_TEST(SpecialValues, Exponentials) { Tables<TypeParam>::exponentials(); }
TYPED_TEST(SpecialValues, Logarithms) { Tables<TypeParam>::logarithms(); }
TYPED_TEST(SpecialValues, Angles) { Tables<TypeParam>::angles(); }
TYPED_TEST(SpecialValues, ErrorFunctions) { Tables<TypeParam>::errorFunctions(); }

/// Doubles for which the exponential is computed in the range of its results, and says
/// so by a status: twice the middle index of the argument.
TEST(SpecialValues, FlaggedDoublesOfExp) {
    Oracle oracle("Exp");
    for (const double x :
         {0x1.6232bdd7abcd3p+9, 709.0, 0x1.62e41ffffffffp+9, -0x1.6232bdd7abcd3p+9,
          -709.0, -0x1.748p+9, -0x1.74910d52d3051p+9}) {
        const int steps = static_cast<int>(std::nearbyint(x * M_LOG2E * 16384));
        expect<double>({"Exp"}, {x}, oracle.rounded(x), 2 * (steps >> 4 & 31));
    }
    expectRounded<double>({"Exp"},
                          {0x1.6232bdd7abcd2p+9, -0x1.6232bdd7abcd2p+9, 0x1.62e42p+9});
}

/// NaNs that come out with their sign and payload, quiet.
template <class T> void expectQuieted(Names functions, std::vector<Bits<T>> patterns) {
    constexpr Bits<T> quiet = Bits<T>{1} << (std::numeric_limits<T>::digits - 2);
    for (const Bits<T> nan : patterns)
        expectPatterns<T>(functions, {{nan, 0, nan | quiet}});
}

TEST(SpecialValues, NaNsOfDoubles) {
    constexpr uint64_t ones = 0x7FFFFFFFFFFFFFFF, none = 0xFFF8000000000000;
    const Names usual = {"Cbrt",    "Erf",  "Erfc",    "Exp", "Inv",
                         "InvCbrt", "Sqrt", "InvSqrt", "Ln",  "Log10"};
    expectQuieted<double>(usual, {0x7FF8000000000123, 0x7FF0000000000001,
                                  0xFFF4000000000000, 0xFFF0000100000000});
    expectQuieted<double>(
        {"Cbrt", "Erf", "Erfc", "Exp", "Inv", "InvCbrt", "Sqrt", "InvSqrt"},
        {0xFFF0000000000001});
    // Low words alone do not make a negative one a NaN.
    expectPatterns<double>({"Ln", "Log10"},
                           {{0xFFF0000000000001, 0, 0xFFF8000000000001, 1},
                            {0xFFF00000FFFFFFFF, 0, 0xFFF80000FFFFFFFF, 1}});
    expectPatterns<double>({"Sin", "Cos", "Tan", "SinCos"},
                           {{0x7FF0000000000001, 0, none, 1},
                            {0xFFF00000FFFFFFFF, 0, none, 1},
                            {0x7FF0000100000000, 0, none},
                            {0x7FF8000000000001, 0, none}});
    // Neither made quiet nor changed otherwise.
    expectPatterns<double>({"Sinh", "Cosh", "Asinh"},
                           {{0x7FF0000000000001, 0, 0x7FF0000000000001},
                            {0xFFF8000000000123, 0, 0xFFF8000000000123}});
    expectPatterns<double>({"Acosh"}, {{0x7FF0000000000001, 0, 0x7FF0000000000001},
                                       {0xFFF0000000000001, 0, ones}});
    expectPatterns<double>({"Atanh"}, {{0x7FF0000000000001, 0, ones},
                                       {0xFFF0000000000001, 0, ~uint64_t{0}}});
    expectPatterns<double>({"Tanh"}, {{0x7FF0000000000001, 0, 0x3FF0000000000000},
                                      {0xFFF0000000000001, 0, 0xBFF0000000000000},
                                      {0xFFF4000000000001, 0, 0xFFFC000000000001}});
    // The sign is lost.
    expectPatterns<double>({"Acos", "Asin", "Atan"},
                           {{0x7FF0000000000001, 0, 0x7FF8000000000001},
                            {0xFFFC000000000123, 0, 0x7FFC000000000123}});
}

TEST(SpecialValues, NaNsOfFloats) {
    const Names usual = {"Acos", "Asin", "Atan", "Cbrt",    "Cos",     "Cosh", "Erf",
                         "Erfc", "Exp",  "Inv",  "InvCbrt", "InvSqrt", "Ln",   "Log10",
                         "Sin",  "Sinh", "Sqrt", "SinCos",  "Tan",     "Tanh"};
    expectQuieted<float>(usual, {0x7FC00123, 0xFFC00123, 0x7F800001, 0xFFA00000});
    expectPatterns<float>({"Asinh"},
                          {{0x7F800001, 0, 0x7F800001}, {0xFFC00123, 0, 0xFFC00123}});
    expectPatterns<float>({"Acosh"},
                          {{0x7F800001, 0, 0x7F800001}, {0xFF800001, 0, 0x7FFFFFFF}});
    expectPatterns<float>({"Atanh"},
                          {{0x7F800001, 0, 0x7FFFFFFF}, {0xFF800001, 0, 0xFFFFFFFF}});
}

} // namespace
