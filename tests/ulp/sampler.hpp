// Sample arguments.
#pragma once

#include "functions.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <type_traits>

namespace qorkes::ulp {

template <class T> struct Bits {
    using Word = std::conditional_t<sizeof(T) == 8, std::uint64_t, std::uint32_t>;

    static Word of(T x) {
        Word word;
        std::memcpy(&word, &x, sizeof word);
        return word;
    }
    static T number(Word word) {
        T x;
        std::memcpy(&x, &word, sizeof x);
        return x;
    }
};

template <class T> bool contains(const Range& range, T x) {
    const T magnitude = std::fabs(x);
    return magnitude >= range.smallest && magnitude <= range.largest &&
           (range.sign == Sign::both ||
            std::signbit(x) == (range.sign == Sign::negative));
}

/// Draws numbers of a range: evenly over its bit patterns, in order or at random,
/// evenly over its values, next to its ends, and next to multiples of a period.
template <class T> class Sampler {
public:
    Sampler(const Range& range, std::int64_t count, long double period, unsigned seed)
        : range_(range), first_(Bits<T>::of(static_cast<T>(range.smallest))),
          span_(Bits<T>::of(static_cast<T>(range.largest)) - first_), count_(count),
          period_(period), random_(seed) {}

    /// The i-th of `count`.
    T operator()(std::int64_t i) {
        const T magnitude = magnitudeAt(i);
        const bool isNegative = range_.sign == Sign::negative ||
                                (range_.sign == Sign::both && (random_() & 1));
        return isNegative ? -magnitude : magnitude;
    }

private:
    using Word = typename Bits<T>::Word;

    T magnitudeAt(std::int64_t i) {
        constexpr int nearEnds = 1024;
        if (i < nearEnds) return atOffset(static_cast<Word>(i));
        if (i < 2 * nearEnds) return atOffset(span_ - static_cast<Word>(i - nearEnds));
        switch (i % 4) {
        case 0:
            return atOffset(static_cast<Word>(random_()) % (span_ + 1));
        case 1:
            return period_ > 0 ? nearMultiple() : evenly();
        default:
            return atOffset(
                static_cast<Word>(static_cast<long double>(i) / count_ * span_));
        }
    }
    T atOffset(Word offset) {
        return Bits<T>::number(first_ + std::min(offset, span_));
    }
    long double fraction() {
        return static_cast<long double>(random_() >> 11) * 0x1p-53L;
    }
    T evenly() {
        const T x = static_cast<T>(
            range_.smallest +
            fraction() * (static_cast<long double>(range_.largest) - range_.smallest));
        return x;
    }
    /// A multiple of the period, some of its neighbours included.
    T nearMultiple() {
        const long double magnitude =
            atOffset(static_cast<Word>(random_()) % (span_ + 1));
        const T multiple = static_cast<T>(std::round(magnitude / period_) * period_);
        return contains(Range{range_.smallest, range_.largest, Sign::both}, multiple)
                   ? multiple
                   : static_cast<T>(magnitude);
    }

    Range range_;
    Word first_, span_;
    std::int64_t count_;
    long double period_;
    std::mt19937_64 random_;
};

} // namespace qorkes::ulp
