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

template <auto f> void exactOfOne(mpfr_ptr value, mpfr_srcptr a, mpfr_srcptr) {
    f(value, a, MPFR_RNDN);
}
template <auto f> void exactOfTwo(mpfr_ptr value, mpfr_srcptr a, mpfr_srcptr b) {
    f(value, a, b, MPFR_RNDN);
}
inline void exactInverse(mpfr_ptr value, mpfr_srcptr a, mpfr_srcptr) {
    mpfr_ui_div(value, 1, a, MPFR_RNDN);
}
inline void exactInverseOfCbrt(mpfr_ptr value, mpfr_srcptr a, mpfr_srcptr) {
    mpfr_cbrt(value, a, MPFR_RNDN);
    mpfr_ui_div(value, 1, value, MPFR_RNDN);
}

/// The function of this name (a name of the catalogue), and of SinCos the first result,
/// the sine, or the second.
inline ExactFunction exactFunction(const char* name, int output = 0) {
    static constexpr struct {
        const char* name;
        ExactFunction exact;
        int output = 0;
    } rows[] = {
        {"Acos", exactOfOne<mpfr_acos>},
        {"Acosh", exactOfOne<mpfr_acosh>},
        {"Asin", exactOfOne<mpfr_asin>},
        {"Asinh", exactOfOne<mpfr_asinh>},
        {"Atan", exactOfOne<mpfr_atan>},
        {"Atan2", exactOfTwo<mpfr_atan2>},
        {"Atanh", exactOfOne<mpfr_atanh>},
        {"Cbrt", exactOfOne<mpfr_cbrt>},
        {"Cos", exactOfOne<mpfr_cos>},
        {"Cosh", exactOfOne<mpfr_cosh>},
        {"Div", exactOfTwo<mpfr_div>},
        {"Erf", exactOfOne<mpfr_erf>},
        {"Erfc", exactOfOne<mpfr_erfc>},
        {"Exp", exactOfOne<mpfr_exp>},
        {"Inv", exactInverse},
        {"InvCbrt", exactInverseOfCbrt},
        {"InvSqrt", exactOfOne<mpfr_rec_sqrt>},
        {"Ln", exactOfOne<mpfr_log>},
        {"Log10", exactOfOne<mpfr_log10>},
        {"Pow", exactOfTwo<mpfr_pow>},
        {"Powx", exactOfTwo<mpfr_pow>},
        {"Sin", exactOfOne<mpfr_sin>},
        {"SinCos", exactOfOne<mpfr_sin>},
        {"SinCos", exactOfOne<mpfr_cos>, 1},
        {"Sinh", exactOfOne<mpfr_sinh>},
        {"Sqrt", exactOfOne<mpfr_sqrt>},
        {"Tan", exactOfOne<mpfr_tan>},
        {"Tanh", exactOfOne<mpfr_tanh>},
    };
    for (const auto& row : rows)
        if (std::strcmp(row.name, name) == 0 && row.output == output) return row.exact;
    throw std::invalid_argument(name);
}

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
