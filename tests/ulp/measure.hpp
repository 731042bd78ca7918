// The largest error of a kernel or its peer, over samples of each region of its
// function or over every float there is.
//
// MPFR is slow, so an error is first taken against the function in long double. That is
// off by no more than screenUlps units in its last place, which is `slack` of an ulp of
// the result; only an error within `slack` of the largest one known so far, or above
// it, can be a new largest one, and is worked out with MPFR. Where every float is run,
// the function in double tells of most results that they cannot. Every 1000th result
// goes to MPFR in any case, and a screen that is further off than allowed stops the
// run.
#pragma once

#include "profile.hpp"
#include "sampler.hpp"

#include <support/kernels.hpp>
#include <support/oracle.hpp>

#include <functional>
#include <string>

namespace qorkes::ulp {

template <class T> struct Extreme {
    std::string region;
    double ulps = 0;
    T a{}, b{}, result{}, expected{};
};

constexpr double screenUlps = 16;

template <class T>
constexpr double slack = screenUlps* std::numeric_limits<long double>::epsilon() /
                         std::numeric_limits<T>::epsilon();

/// The exponent e of value = f 2^e with f in [1/2, 1).
inline int exponentOf(long double value) {
    std::uint16_t word;
    std::memcpy(&word, reinterpret_cast<const char*>(&value) + 8, sizeof word);
    return (word & 0x7FFF) - 16382;
}

/// 2^e, without a call.
inline long double powerOfTwo(int e) {
    const std::uint64_t mantissa = std::uint64_t{1} << 63;
    const auto exponent = static_cast<std::uint16_t>(e + 16383);
    long double power = 0;
    std::memcpy(&power, &mantissa, sizeof mantissa);
    std::memcpy(reinterpret_cast<char*>(&power) + 8, &exponent, sizeof exponent);
    return power;
}

template <class T> double screenedUlpsOfSpecial(T result, long double value) {
    if (std::isnan(result) && std::isnan(value)) return 0;
    return static_cast<T>(value) == result ? 0 : HUGE_VAL;
}

/// Whether a result is infinite or no number as the value is, told by patterns: in
/// arithmetic such numbers cost hundreds of cycles.
template <class T> bool isSameSpecial(const T& result, const double& value) {
    const auto magnitudeOf = [](auto bits) { return bits << 1; };
    const auto infinity = Bits<T>::of(std::numeric_limits<T>::infinity());
    const auto bits = Bits<T>::of(result);
    if (std::isnan(value)) return magnitudeOf(bits) > magnitudeOf(infinity);
    return magnitudeOf(bits) == magnitudeOf(infinity) &&
           std::signbit(result) == std::signbit(value);
}

/// True for powers of two, which may stand for a value just below, where an ulp is half
/// as large.
inline bool isPowerOfTwo(long double value) {
    std::uint64_t mantissa;
    std::memcpy(&mantissa, &value, sizeof mantissa);
    return mantissa << 1 == 0;
}

/// The error of `result` in ulps of T, as long double arithmetic sees it: too large
/// rather than too small.
template <class T> double screenedUlps(T result, long double value) {
    using Limits = std::numeric_limits<T>;
    const long double difference = std::fabs(result - value);
    if (!(difference <= std::numeric_limits<long double>::max()))
        return screenedUlpsOfSpecial(result, value);
    const int exponent = std::clamp(exponentOf(value) - isPowerOfTwo(value),
                                    Limits::min_exponent, Limits::max_exponent);
    return static_cast<double>(difference * powerOfTwo(Limits::digits - exponent));
}

template <class T>
std::vector<Extreme<T>> largerOf(std::vector<Extreme<T>> a,
                                 const std::vector<Extreme<T>>& b) {
    for (std::size_t i = 0; i < a.size(); ++i)
        if (b[i].ulps > a[i].ulps) a[i] = b[i];
    return a;
}

/// What is measured: all results for n arguments. A scalar second argument is b[0].
template <class T>
using Loop = std::function<void(int n, const T* a, const T* b, T* y, T* z)>;

/// One of a loop's results, and the largest errors found.
template <class T> class Measurement {
public:
    Measurement(const catalogue::Function& function, Loop<T> loop, int output)
        : function_(function), loop_(std::move(loop)), output_(output),
          row_(rowOf(function.name, output)),
          regions_(sizeof(T) == 4 && !row_.singles.empty() ? row_.singles
                                                           : row_.doubles),
          oracle_(function.name, output), extremes_(1 + regions_.size()) {
        extremes_[0].region = "everywhere";
        for (std::size_t i = 0; i < regions_.size(); ++i) {
            extremes_[i + 1].region = regions_[i].name;
            profiles_.emplace_back(regions_[i]);
        }
    }

    /// The first is for all regions together.
    const std::vector<Extreme<T>>& extremes() const { return extremes_; }

    /// For each region, along what is drawn from its first range: errors as the screen
    /// sees them.
    const std::vector<Profile>& profiles() const { return profiles_; }

    void sample(std::int64_t count) {
        const std::int64_t each = count / static_cast<std::int64_t>(regions_.size());
        for (std::size_t i = 0; i < regions_.size(); ++i) sampleRegion(i, each);
    }

    /// Every float whose bits are `from` to `to` - 1; `progress` hears of each million.
    /// Some samples first show how large errors get, so that few go to MPFR.
    void run(std::uint64_t from, std::uint64_t to,
             const std::function<void()>& progress) {
        sample(100000);
        for (std::uint64_t word = from; word < to; word += block) {
            for (std::uint32_t i = 0; i < block; ++i)
                a_[i] = Bits<T>::number(static_cast<std::uint32_t>(word) + i);
            const T* result = results(block);
            for (int i = 0; i < block; ++i) {
                const bool isChecked = ++judged_ % 1000 == 0;
                if (isChecked) checkQuick(a_[i], b_[i]);
                if (isChecked || !isSmall(result[i], row_.screen.quick(a_[i], b_[i])))
                    judge(result[i], a_[i], b_[i], isChecked, nullptr);
            }
            if (word % (1 << 20) == 0) progress();
        }
    }

private:
    static constexpr int block = 1024;

    void sampleRegion(std::size_t index, std::int64_t count) {
        const Region& region = regions_[index];
        const auto seed = static_cast<unsigned>(index);
        const bool byResult = region.kind == Region::Kind::results;
        Sampler<T> first(region.a, count, row_.period, 2 * seed);
        Sampler<T> second(region.b, count, 0, 2 * seed + 1);
        const bool isScalar = function_.form == catalogue::Form::arrayAndScalar;
        for (std::int64_t done = 0; done < count; done += block) {
            for (int i = 0; i < block; ++i) {
                b_[i] = isScalar && i > 0 ? b_[0] : second((done + i) * 7919 % count);
                const T a = first(done + i);
                a_[i] = byResult ? static_cast<T>(row_.firstFor(a, b_[i])) : a;
            }
            const int n = static_cast<int>(std::min<std::int64_t>(block, count - done));
            const T* result = results(n);
            for (int i = 0; i < n; ++i)
                judge(result[i], a_[i], b_[i], ++judged_ % 1000 == 0,
                      &profiles_[index]);
        }
    }

    /// The results for a_ and b_.
    const T* results(int n) {
        loop_(n, a_, b_, y_, z_);
        return output_ == 0 ? y_ : z_;
    }

    void judge(T result, T a, T b, bool isChecked, Profile* profile) {
        const long double value = row_.screen.precise(a, b);
        const double ulps = screenedUlps(result, value);
        if (isChecked) checkScreen(ulps, result, a, b);
        const double weighted = ulps * weightOf(a, value);
        if (profile) profile->take(a, result, weighted);
        if (ulps > slack<T>) consider(weighted, value, result, a, b);
    }

    /// True for most errors that are no new largest one in any region: an ulp of a
    /// value below 2^e is at least 2^(e - digits), so one multiplication tells.
    bool isSmall(const T& result, const double& value) const {
        if (!std::isfinite(value)) return isSameSpecial(result, value);
        return std::fabs(result - value) <= smallError_ * std::fabs(value);
    }

    void checkQuick(T a, T b) const {
        const long double value = row_.screen.precise(a, b);
        if (!std::isfinite(static_cast<double>(value))) return;
        const long double error = std::fabs(row_.screen.quick(a, b) - value);
        constexpr long double tolerance =
            screenUlps * std::numeric_limits<double>::epsilon();
        if (error > tolerance * std::fabs(value) &&
            error > std::numeric_limits<double>::min())
            throw std::runtime_error(std::string("the double value of ") +
                                     function_.name + " is off by more than allowed");
    }

    void setSmallError() {
        constexpr double quickSlack = screenUlps *
                                      std::numeric_limits<double>::epsilon() /
                                      std::numeric_limits<T>::epsilon();
        double least = HUGE_VAL;
        for (const Extreme<T>& extreme : extremes_)
            least = std::min(least, extreme.ulps);
        smallError_ = std::max(least - quickSlack, 0.0) *
                      static_cast<double>(powerOfTwo(-std::numeric_limits<T>::digits));
    }

    void consider(double screened, long double value, T result, T a, T b) {
        double exact = -1;
        for (std::size_t k = 0; k < extremes_.size(); ++k) {
            if (screened <= extremes_[k].ulps - slack<T>) continue;
            if (k > 0 && !isIn(regions_[k - 1], a, b, result)) continue;
            if (exact < 0) exact = oracle_.ulps(result, a, b) * weightOf(a, value);
            if (exact > extremes_[k].ulps)
                extremes_[k] = {extremes_[k].region,  exact, a, b, result,
                                oracle_.rounded(a, b)};
        }
        setSmallError();
    }

    /// What takes ulps of the result to ulps of numbers from 1/2 to 1, where those
    /// count.
    double weightOf(T a, long double value) const {
        for (const Region& region : regions_)
            if (region.kind == Region::Kind::absolute && contains(region.a, a))
                return std::ldexp(1.0, std::min(exponentOf(value), 0));
        return 1;
    }

    bool isIn(const Region& region, T a, T b, T result) const {
        const bool byResult = region.kind == Region::Kind::results;
        return contains(region.a, byResult ? result : a) &&
               (function_.form == catalogue::Form::oneToOne ||
                function_.form == catalogue::Form::oneToTwo || contains(region.b, b));
    }

    void checkScreen(double screened, T result, T a, T b) {
        if (!std::isfinite(screened) || !std::isfinite(result)) return;
        if (oracle_.ulps(result, a, b) > screened + slack<T>)
            throw std::runtime_error(std::string("the long double value of ") +
                                     function_.name + " is off by more than allowed");
    }

    const catalogue::Function& function_;
    Loop<T> loop_;
    int output_;
    const FunctionRow& row_;
    const std::vector<Region>& regions_;
    test::Oracle oracle_;
    std::vector<Extreme<T>> extremes_;
    std::vector<Profile> profiles_;
    T a_[block]{}, b_[block]{}, y_[block], z_[block];
    std::uint32_t judged_ = 0;
    double smallError_ = 0; // relative to the value; none up to it is a new largest one
};

} // namespace qorkes::ulp
