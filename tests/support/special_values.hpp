// Tables of special values, checked row by row: each argument alone and in every lane
// among ordinary elements, the result bit for bit, the report with its name.
//
//     expectSpecialValues<double>(_qordSqrt_HA, "_qordSqrt_HA", {
//         {0x7FF0000000000000, 0x7FF0000000000000, 0},
//     });
#pragma once

#include <support/reports.hpp>

#include <common/bits.hpp>

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

namespace qorkes::test {

template <class T> using Bits = std::conditional_t<sizeof(T) == 8, uint64_t, uint32_t>;

/// Argument, result and status (0: no report) of a function of one argument.
template <class T> struct SpecialValue {
    Bits<T> a, y;
    int status;
};

/// The same with two arguments.
template <class T> struct SpecialPair {
    Bits<T> a, b, y;
    int status;
};

/// One row, as element `lane` of `count`, the others being 1.
template <class T, class Call>
void expectSpecialValue(Call&& call, const char* reportsAs, const SpecialPair<T>& row,
                        std::size_t lane, std::size_t count) {
    SCOPED_TRACE(testing::Message()
                 << reportsAs << std::hex << ": 0x" << row.a << ", 0x" << row.b
                 << std::dec << " as element " << lane << " of " << count);
    std::vector<T> a(count, 1), b(count, 1), y(count);
    setBits(a[lane], row.a);
    setBits(b[lane], row.b);
    Reports reports;
    call(static_cast<int>(count), a.data(), b.data(), y.data());

    EXPECT_EQ(bitsOf(y[lane]), row.y) << std::hex << "0x" << bitsOf(y[lane]);
    ASSERT_EQ(reports.seen.size(), row.status ? 1u : 0u);
    if (row.status == 0) return;
    EXPECT_EQ(reports.seen[0].status, row.status);
    EXPECT_EQ(reports.seen[0].index, static_cast<int>(lane));
    EXPECT_STREQ(reports.seen[0].funcName, reportsAs);
}

/// `call(n, a, b, y)` on each row alone and in every lane of a long array.
template <class T, class Call>
void expectSpecialPairs(Call&& call, const char* reportsAs,
                        const std::vector<SpecialPair<T>>& rows) {
    constexpr std::size_t longest = 19;
    for (const SpecialPair<T>& row : rows) {
        expectSpecialValue(call, reportsAs, row, 0, 1);
        for (std::size_t lane = 0; lane < longest; ++lane)
            expectSpecialValue(call, reportsAs, row, lane, longest);
    }
}

template <class T>
void expectSpecialValues(void (*kernel)(int n, const T* a, T* y), const char* reportsAs,
                         const std::vector<SpecialValue<T>>& rows) {
    std::vector<SpecialPair<T>> pairs;
    for (const SpecialValue<T>& row : rows)
        pairs.push_back({row.a, 0, row.y, row.status});
    expectSpecialPairs([=](int n, const T* a, const T*, T* y) { kernel(n, a, y); },
                       reportsAs, pairs);
}

} // namespace qorkes::test
