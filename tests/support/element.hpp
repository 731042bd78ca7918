// Kernels with one argument: an element at every place of an array, among ordinary
// ones, and the largest error over an array.
//
//     expectElement<double>(_qordExp_HA, "_qordExp_HA", 1.0, {x, bits, 3});
//     EXPECT_LE(largestError<double>(_qordExp_HA, "Exp", range), 0.52);
#pragma once

#include <support/compare.hpp>
#include <support/oracle.hpp>
#include <support/reports.hpp>
#include <support/samples.hpp>

#include <algorithm>
#include <optional>

namespace qorkes::test {

template <class T> using Bits = std::conditional_t<sizeof(T) == 8, uint64_t, uint32_t>;

template <class T> struct Expected {
    Bits<T> argument;
    std::optional<Bits<T>> result; // none: any
    std::optional<int> status;     // none: no report
};

/// Result and report of `argument`, in place too, at each of 9 places: the last one is
/// alone in its group.
template <class T>
void expectElement(void (*kernel)(int n, const T* a, T* y), const std::string& name,
                   const T& ordinary, const Expected<T>& expected) {
    for (int place = 0; place < 9; ++place) {
        SCOPED_TRACE(testing::Message()
                     << std::hex << "0x" << expected.argument << ", element " << place);
        T a[9], y[9];
        std::fill(a, a + 9, ordinary);
        setBits(a[place], expected.argument);
        Reports reports;
        kernel(9, a, y);
        const auto seen = reports.seen;
        kernel(9, a, a);
        EXPECT_TRUE(sameBits(y, a, 9)) << "in place";

        if (expected.result) {
            EXPECT_EQ(bitsOf(y[place]), *expected.result);
        }
        ASSERT_EQ(seen.size(), expected.status ? 1u : 0u);
        if (!expected.status) continue;
        EXPECT_EQ(seen[0].status, *expected.status);
        EXPECT_EQ(seen[0].index, place);
        EXPECT_EQ(seen[0].funcName, name);
    }
}

/// Over `count` elements; with `beside`, every second one is that and not counted.
template <class T>
double largestError(void (*kernel)(int n, const T* a, T* y), const char* function,
                    const Range& range, std::optional<T> beside = {},
                    int count = 10000) {
    Oracle oracle(function);
    std::vector<T> a = draw<T>(range, count, 5), y(a.size());
    const std::size_t step = beside ? 2 : 1;
    for (std::size_t i = 1; beside && i < a.size(); i += 2) a[i] = *beside;
    const Reports unreported;
    kernel(static_cast<int>(a.size()), a.data(), y.data());
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); i += step)
        largest = std::max(largest, oracle.ulps(y[i], a[i]));
    return largest;
}

} // namespace qorkes::test
