// What the tests of rejection methods share: calls against variates made one at a time,
// the draws of a call, and draws that fail.
#pragma once

#include "continuous.hpp"

#include <algorithm>
#include <cmath>
#include <functional>

namespace qorkes::test {

using Parameters = std::vector<double>;
using Counts = std::vector<int>;

/// Calls around the ends of blocks take the uniforms that variates made one at a time
/// take, and give the same bits.
template <class T>
void expectOneAtATime(const std::string& name, const Parameters& parameters,
                      const Stream& plainStream, const std::function<T()>& plain) {
    SCOPED_TRACE(name + ' ' + testing::PrintToString(parameters));
    const Stream stream = newStream(plainStream->BrngId, {1});
    ASSERT_GE(__kesCopyStreamState(stream.get(), plainStream.get()), KesStatusOk);
    for (const int n : {1, 1, 2, 0, 3, 511, 512, 513, 1, 1025, 1, 1537}) {
        std::vector<T> r = variates<T>(name, 0, stream, n, parameters), wanted;
        std::generate_n(std::back_inserter(wanted), n, plain);
        ASSERT_TRUE(sameBits(wanted.data(), r.data(), n)) << n;
        ASSERT_EQ(take<T>(stream, 1), take<T>(plainStream, 1)) << n;
    }
}

/// The counts of uniforms by which the stream draws n variates.
template <class T>
Counts countsOf(const std::string& name, const Stream& stream, int n,
                const Parameters& parameters) {
    script.counts.clear();
    variates<T>(name, 0, stream, n, parameters);
    return script.counts;
}

/// Calls for 500 variates that fail at one draw after the other keep what they have,
/// which are those of `standard`; `rest(i)` is what follows.
template <class T>
void expectFailures(const std::string& name, const Parameters& parameters,
                    const Parameters& standard, const std::function<T(int i)>& rest) {
    SCOPED_TRACE(name + ' ' + testing::PrintToString(parameters));
    constexpr int n = 500;
    const auto numbers = take<double>(newStream(KesBrngMT19937, {5}), 10 * n);
    const auto whole = variates<T>(name, 0, scriptedStream(numbers), n, standard);
    const int draws = static_cast<int>(script.counts.size());
    ASSERT_GT(draws, 1);
    for (int failAt = 0; failAt < draws; ++failAt) {
        SCOPED_TRACE(failAt);
        const Stream stream = scriptedStream(numbers);
        script.failAt = failAt;
        std::vector<T> r(n, T(-7));
        EXPECT_EQ(variates(name, 0, stream, n, r.data(), parameters), script.status);
        const auto kept = std::ranges::mismatch(r, whole).in1 - r.begin();
        EXPECT_NEAR(n - static_cast<int>(kept), script.counts.back() / 2, 1);
        for (int i = static_cast<int>(kept); i < n; ++i)
            ASSERT_EQ(r[static_cast<std::size_t>(i)], rest(i)) << i;
    }
}

/// Parameters without variates end in numbers that are none.
inline void expectNoNumbers(const std::string& name, const Parameters& parameters) {
    const Stream stream = newStream(KesBrngMCG59, {1});
    for (const double x : variates<double>(name, 0, stream, 512, parameters))
        ASSERT_TRUE(std::isnan(x));
}

} // namespace qorkes::test
