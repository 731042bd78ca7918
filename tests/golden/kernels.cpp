// Kernels over fixed arguments, special ones among them.
#include "digest.hpp"

#include <support/kernels.hpp>
#include <support/samples.hpp>

namespace qorkes {
namespace {

using catalogue::Function;
using catalogue::Kernel;

/// Numbers of a range that no library has a part in: mantissas of random bits under
/// exponents that stay inside.
template <class T> std::vector<T> ordinary(const test::Range& range, unsigned first) {
    const int low = std::ilogb(range.smallest) + 1;
    const int exponents = std::max(std::ilogb(range.largest) - low, 1);
    test::Random random(first);
    std::vector<T> numbers;
    for (std::size_t i = 0; i < arguments; ++i) {
        const uint32_t leading = random(), trailing = random();
        const auto mantissa =
            static_cast<double>(1 + leading * 0x1p-32L + trailing * 0x1p-64L);
        const int exponent =
            low + static_cast<int>(random() % static_cast<unsigned>(exponents));
        const bool isNegative = range.sign == test::Sign::negative ||
                                (range.sign == test::Sign::both && random() % 2 == 1);
        const double x = std::ldexp(mantissa, exponent);
        numbers.push_back(static_cast<T>(isNegative ? -x : x));
    }
    return numbers;
}

/// The same with a number of each other kind in front.
template <class T>
std::vector<T> argumentsOf(const test::Range& range, unsigned first) {
    using Limits = std::numeric_limits<T>;
    constexpr T infinity = Limits::infinity(), largest = Limits::max();
    constexpr T tiny = Limits::denorm_min(), smallest = Limits::min();
    const T others[] = {0,
                        T(-0.0),
                        infinity,
                        -infinity,
                        Limits::quiet_NaN(),
                        tiny,
                        -tiny,
                        smallest,
                        -smallest,
                        largest,
                        -largest,
                        T(1),
                        T(-1),
                        T(0.5),
                        T(-0.5),
                        T(2),
                        smallest - tiny,
                        T(1e-9),
                        T(3)};
    std::vector<T> numbers = ordinary<T>(range, first);
    std::copy(std::begin(others), std::end(others), numbers.begin());
    return numbers;
}

/// Kernels with results that are the processor's own in their last bits: by its
/// logarithm or angle, or from its estimates of roots and reciprocals.
constexpr const char* kernelsOfUnit[] = {
    "_qordAtan2_HA", "_qordPow_50",  "_qorsAcos_HA",    "_qorsAsin_HA",
    "_qorsAtan_21",  "_qorsSqrt_HA", "_qorsInvSqrt_HA",
};

template <class T> GoldenRow rowOf(const Function& function, const Kernel<T>& kernel) {
    const test::Samples& samples = test::samplesOf(function.name);
    const std::vector<T> a = argumentsOf<T>(samples.a, 1);
    std::vector<T> b = argumentsOf<T>(samples.b, 2);
    std::rotate(b.begin(), b.begin() + 7, b.begin() + 19); // pairs of special numbers
    std::vector<T> y(arguments), z(arguments);
    const bool hasScalar = function.form == catalogue::Form::arrayAndScalar;
    call(function.form, kernel.entry, static_cast<int>(arguments), a.data(),
         hasScalar ? &b.back() - 10 : b.data(), y.data(), z.data());
    if (function.form == catalogue::Form::oneToTwo)
        y.insert(y.end(), z.begin(), z.end());
    return {kernel.symbol, numbersOf(y), isAmong(kernel.symbol, kernelsOfUnit)};
}

template <class T> void addKernelsOf(std::vector<GoldenRow>& rows) {
    for (const Function& function : catalogue::functions())
        for (const Kernel<T>& kernel : kernelsOf<T>(function))
            if (isOwnCode(kernel)) rows.push_back(rowOf(function, kernel));
}

} // namespace

void addKernels(std::vector<GoldenRow>& rows) {
    addKernelsOf<double>(rows);
    addKernelsOf<float>(rows);
}

} // namespace qorkes
