// What all power kernels share: the one table of special cases, and the way from such a
// case to its result and its report.
#pragma once

#include <qor_core/frame.hpp>

#include <limits>

namespace qorkes {

/// The second argument of element i is b[i * step]: 1 for Pow, 0 for Powx.
enum ExponentStep { oneForAll = 0, oneEach = 1 };

enum class Integer { none, odd, even };

/// The words of a number, without its sign where that is masked out.
template <class T> struct PowerWords {
    using Word = std::conditional_t<std::is_same_v<T, double>, uint64_t, uint32_t>;
    static constexpr int fractionBits = std::numeric_limits<T>::digits - 1;
    static constexpr int bias = std::numeric_limits<T>::max_exponent - 1;
    static constexpr Word magnitude = ~Word{0} >> 1;
    static constexpr Word one = std::bit_cast<Word>(T{1});
    static constexpr Word infinity =
        std::bit_cast<Word>(std::numeric_limits<T>::infinity());
};

/// Whether y is an integer. From 2^52 on (float: 2^23) every number counts as even.
template <class T> QORKES_INLINE Integer TestInt(const T& y) {
    using Words = PowerWords<T>;
    using Word = typename Words::Word;
    const Word magnitude = bitsOf(y) & Words::magnitude;
    const int exponent =
        static_cast<int>(magnitude >> Words::fractionBits) - Words::bias;
    if (magnitude == 0) return Integer::even;
    if (exponent < 0 || magnitude >= Words::infinity) return Integer::none;
    if (exponent >= Words::fractionBits) return Integer::even;
    constexpr Word leading = Word{1} << Words::fractionBits;
    const Word mantissa = (magnitude & (leading - 1)) | leading;
    const Word unit = leading >> exponent;
    if (mantissa & (unit - 1)) return Integer::none;
    return mantissa & unit ? Integer::odd : Integer::even;
}

enum class PowerKind { ordinary, special, domainError };

/// A row of the table. An ordinary power is that of |x|; `isNegative` is its sign.
template <class T> struct PowerCase {
    PowerKind kind;
    bool isNegative;
    T value; // with its sign; of other powers
};

/// The table, in the order of the tests:
///
///   y = +-0                          1
///   x = 1; x = -1 and y infinite     1
///   x or y a NaN                     the NaN (x, if both are), quiet
///   x = +-0, y = -infinity           +infinity, domain error
///   y infinite                       +infinity or +0, by |x|
///   x infinite                       infinity or 0, of x's sign for odd y
///   x = +-0, y < 0                   infinity, of x's sign for odd y; domain error
///   x = +-0, y > 0                   0, of x's sign for odd y
///   x < 0, y no integer              NaN 0xFFF8... (float: 0xFFC0...), domain error
///   x = -1                           1, or -1 for odd y
template <class T> QORKES_COLD PowerCase<T> powerCase(const T& x, const T& y) {
    using enum PowerKind;
    using Words = PowerWords<T>;
    constexpr T infinity = std::numeric_limits<T>::infinity();
    const auto magnitude = bitsOf(x) & Words::magnitude;
    const bool xIsNegative = bitsOf(x) > Words::magnitude;
    const bool yIsNegative = bitsOf(y) > Words::magnitude;
    const bool yIsInfinite = (bitsOf(y) & Words::magnitude) == Words::infinity;

    if (isZero(y)) return {special, false, 1};
    if (magnitude == Words::one && (!xIsNegative || yIsInfinite))
        return {special, false, 1};
    if (isNaN(x)) return {special, false, static_cast<T>(ext{x} + x)};
    if (isNaN(y)) return {special, false, static_cast<T>(ext{y} + y)};
    if (yIsInfinite && magnitude == 0 && yIsNegative)
        return {domainError, false, infinity};
    if (yIsInfinite) {
        const bool isLarge = (magnitude > Words::one) != yIsNegative;
        return {special, false, isLarge ? infinity : T{0}};
    }

    const Integer integer = TestInt(y);
    const bool isNegative = xIsNegative && integer == Integer::odd;
    const T signedZero = isNegative ? T{-0.0} : T{0};
    const T signedInfinity = isNegative ? -infinity : infinity;
    if (magnitude == Words::infinity)
        return {special, isNegative, yIsNegative ? signedZero : signedInfinity};
    if (magnitude == 0 && yIsNegative) return {domainError, isNegative, signedInfinity};
    if (magnitude == 0) return {special, isNegative, signedZero};
    if (xIsNegative && integer == Integer::none)
        return {domainError, false, -std::numeric_limits<T>::quiet_NaN()};
    if (magnitude == Words::one)
        return {special, isNegative, isNegative ? T{-1} : T{1}};
    return {ordinary, isNegative, 0};
}

/// Stores the result of a case, with `magnitude()` for |x|^y if it is ordinary, and
/// reports a domain error under `name`. The report of a Powx kernel has no second
/// argument.
template <class T, const char* name, ExponentStep step, class Value, class Magnitude>
QORKES_INLINE void storePower(const PowerCase<Value>& power, int i, const T* a,
                              const T* b, T* y, Magnitude&& magnitude) {
    if (power.kind == PowerKind::ordinary)
        y[i] = power.isNegative ? -magnitude() : magnitude();
    else
        y[i] = static_cast<T>(power.value);
    if (power.kind == PowerKind::domainError)
        errorCall<T, name>(QOR_STATUS_ERRDOM, i, a, step == oneEach ? b : a, y, y);
}

} // namespace qorkes
