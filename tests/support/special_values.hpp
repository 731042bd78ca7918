// Tables of special values, checked row by row: arguments alone and at every place
// among ordinary elements, the result bit for bit, the report with its name.
#pragma once

#include <support/reports.hpp>

#include <common/bits.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <type_traits>
#include <vector>

namespace qorkes::test {

template <class T> using Bits = std::conditional_t<sizeof(T) == 8, uint64_t, uint32_t>;

/// Arguments, result and status (none: no report; 0 is one).
template <class T> struct SpecialPair {
    Bits<T> a, b, y;
    std::optional<int> status = {};
};

/// One row, as element `lane` of `count`, with `ordinary` ones beside it.
template <class T, class Call>
void expectSpecialPair(Call&& call, const char* reportsAs, const SpecialPair<T>& row,
                       const T& ordinary, std::size_t lane, std::size_t count) {
    SCOPED_TRACE(testing::Message()
                 << reportsAs << std::hex << ": 0x" << row.a << ", 0x" << row.b
                 << std::dec << " as element " << lane << " of " << count);
    std::vector<T> a(count, ordinary), b(count, 1), y(count);
    setBits(a[lane], row.a);
    setBits(b[lane], row.b);
    Reports reports;
    call(static_cast<int>(count), a.data(), b.data(), y.data());

    EXPECT_EQ(bitsOf(y[lane]), row.y) << std::hex << "0x" << bitsOf(y[lane]);
    ASSERT_EQ(reports.seen.size(), row.status ? 1u : 0u);
    if (!row.status) return;
    EXPECT_EQ(reports.seen[0].status, *row.status);
    EXPECT_EQ(reports.seen[0].index, static_cast<int>(lane));
    EXPECT_STREQ(reports.seen[0].funcName, reportsAs);
}

/// `call(n, a, b, y)` on each row alone and in every lane of a long array.
template <class T, class Call>
void expectSpecialPairs(Call&& call, const char* reportsAs,
                        const std::vector<SpecialPair<T>>& rows, T ordinary = 1) {
    constexpr std::size_t longest = 19;
    for (const SpecialPair<T>& row : rows) {
        expectSpecialPair(call, reportsAs, row, ordinary, 0, 1);
        for (std::size_t lane = 0; lane < longest; ++lane)
            expectSpecialPair(call, reportsAs, row, ordinary, lane, longest);
    }
}

} // namespace qorkes::test
