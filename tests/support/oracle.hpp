// Exact values of the catalogue's functions, from MPFR, and the error of a result.
//
//     Oracle oracle("Sqrt");
//     EXPECT_EQ(oracle.rounded(2.0), y);
//     EXPECT_LE(oracle.ulps(y, 2.0), 0.51);
//
// To be called under the default control words.
#pragma once

#include <mpfr.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <type_traits>

namespace qorkes::test {

/// Writes f(a, b), or f(a), to the first operand.
using ExactFunction = void (*)(mpfr_ptr value, mpfr_srcptr a, mpfr_srcptr b);

// One row, for a function of MPFR with one or two arguments.
#define QORKES_EXACT_1(name, f)                                                        \
    {                                                                                  \
        name, 0, [](mpfr_ptr v, mpfr_srcptr a, mpfr_srcptr) { f(v, a, MPFR_RNDN); }    \
    }
#define QORKES_EXACT_2(name, f)                                                        \
    {                                                                                  \
        name, 0,                                                                       \
            [](mpfr_ptr v, mpfr_srcptr a, mpfr_srcptr b) { f(v, a, b, MPFR_RNDN); }    \
    }

/// The function of this name (a name of the catalogue), and of SinCos the first result,
/// the sine, or the second.
inline ExactFunction exactFunction(const char* name, int output = 0) {
    static constexpr struct {
        const char* name;
        int output;
        ExactFunction exact;
    } rows[] = {
        QORKES_EXACT_1("Acos", mpfr_acos),
        QORKES_EXACT_1("Acosh", mpfr_acosh),
        QORKES_EXACT_1("Asin", mpfr_asin),
        QORKES_EXACT_1("Asinh", mpfr_asinh),
        QORKES_EXACT_1("Atan", mpfr_atan),
        QORKES_EXACT_2("Atan2", mpfr_atan2),
        QORKES_EXACT_1("Atanh", mpfr_atanh),
        QORKES_EXACT_1("Cbrt", mpfr_cbrt),
        QORKES_EXACT_1("Cos", mpfr_cos),
        QORKES_EXACT_1("Cosh", mpfr_cosh),
        QORKES_EXACT_2("Div", mpfr_div),
        QORKES_EXACT_1("Erf", mpfr_erf),
        QORKES_EXACT_1("Erfc", mpfr_erfc),
        QORKES_EXACT_1("Exp", mpfr_exp),
        {"Inv", 0,
         [](mpfr_ptr v, mpfr_srcptr a, mpfr_srcptr) {
             mpfr_ui_div(v, 1, a, MPFR_RNDN);
         }},
        {"InvCbrt", 0,
         [](mpfr_ptr v, mpfr_srcptr a, mpfr_srcptr) {
             mpfr_cbrt(v, a, MPFR_RNDN);
             mpfr_ui_div(v, 1, v, MPFR_RNDN);
         }},
        QORKES_EXACT_1("InvSqrt", mpfr_rec_sqrt),
        QORKES_EXACT_1("Ln", mpfr_log),
        QORKES_EXACT_1("Log10", mpfr_log10),
        QORKES_EXACT_2("Pow", mpfr_pow),
        QORKES_EXACT_2("Powx", mpfr_pow),
        QORKES_EXACT_1("Sin", mpfr_sin),
        QORKES_EXACT_1("SinCos", mpfr_sin),
        {"SinCos", 1,
         [](mpfr_ptr v, mpfr_srcptr a, mpfr_srcptr) { mpfr_cos(v, a, MPFR_RNDN); }},
        QORKES_EXACT_1("Sinh", mpfr_sinh),
        QORKES_EXACT_1("Sqrt", mpfr_sqrt),
        QORKES_EXACT_1("Tan", mpfr_tan),
        QORKES_EXACT_1("Tanh", mpfr_tanh),
    };
    for (const auto& row : rows)
        if (std::strcmp(row.name, name) == 0 && row.output == output) return row.exact;
    throw std::invalid_argument(name);
}

#undef QORKES_EXACT_1
#undef QORKES_EXACT_2

class Oracle {
public:
    explicit Oracle(const char* function, int output = 0)
        : exact_(exactFunction(function, output)) {
        mpfr_inits2(precision, a_, b_, value_, error_, nullptr);
    }
    ~Oracle() { mpfr_clears(a_, b_, value_, error_, nullptr); }
    Oracle(const Oracle&) = delete;
    Oracle& operator=(const Oracle&) = delete;

    /// f(a, b), rounded to the nearest T, denormals included.
    template <class T> T rounded(T a, T b = 0) {
        compute(a, b);
        if constexpr (std::is_same_v<T, double>)
            return mpfr_get_d(value_, MPFR_RNDN);
        else
            return mpfr_get_flt(value_, MPFR_RNDN);
    }

    /// The distance of `result` from f(a, b), in units of the spacing of T at f(a, b);
    /// among denormals that is the smallest denormal. Beyond the range of T, result and
    /// value count as the first power of two that is too large. Both NaN, or both
    /// infinite with one sign: 0; one of the two alone: infinity.
    template <class T> double ulps(T result, T a, T b = 0) {
        using Limits = std::numeric_limits<T>;
        compute(a, b);
        if (std::isnan(result) || mpfr_nan_p(value_))
            return std::isnan(result) && mpfr_nan_p(value_) ? 0 : infinity;
        mpfr_set_d(error_, result, MPFR_RNDN);
        if (mpfr_inf_p(value_)) return mpfr_equal_p(error_, value_) ? 0 : infinity;

        for (const mpfr_ptr x : {static_cast<mpfr_ptr>(error_), mpfr_ptr{value_}})
            if (mpfr_inf_p(x) ||
                (!mpfr_zero_p(x) && mpfr_get_exp(x) > Limits::max_exponent))
                mpfr_set_si_2exp(x, mpfr_sgn(x), Limits::max_exponent, MPFR_RNDN);
        const long exponent =
            mpfr_zero_p(value_)
                ? Limits::min_exponent
                : std::clamp<long>(mpfr_get_exp(value_), Limits::min_exponent,
                                   Limits::max_exponent);
        mpfr_sub(error_, error_, value_, MPFR_RNDN);
        mpfr_mul_2si(error_, error_, Limits::digits - exponent, MPFR_RNDN);
        return std::fabs(mpfr_get_d(error_, MPFR_RNDN));
    }

private:
    /// Enough for the hardest roundings to double of functions of one variable.
    static constexpr mpfr_prec_t precision = 160;
    static constexpr double infinity = std::numeric_limits<double>::infinity();

    void compute(double a, double b) {
        mpfr_set_d(a_, a, MPFR_RNDN);
        mpfr_set_d(b_, b, MPFR_RNDN);
        exact_(value_, a_, b_);
    }

    ExactFunction exact_;
    mpfr_t a_, b_, value_, error_;
};

} // namespace qorkes::test
