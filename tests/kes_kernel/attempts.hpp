// What the tests of rejection methods share: the uniforms of a script, a comparison of
// draws with variates made one at a time, and draws that fail.
#pragma once

#include <common/ext.hpp>
#include <kes_kernel/kernels.hpp>
#include <kes_kernel/scripted.hpp>
#include <support/compare.hpp>

#include <algorithm>
#include <functional>

namespace qorkes::test {

template <class T> using Draw = std::function<int(StreamState*, int n, T* r)>;

/// The numbers of the script, one at a time.
template <class T> struct Uniforms {
    std::size_t taken = 0;
    T next() { return static_cast<T>(script.numbers[taken++ % script.numbers.size()]); }
};

/// The last step of a distribution. Products of floats that stay in a register are not
/// rounded, whatever they are converted to.
inline double scaled(ext x, double beta, double a) { return round64(x * beta + a); }
inline float scaled(ext x, float beta, float a) {
    volatile float y = round32(x);
    y = round32(y * ext{beta});
    y = round32(y + ext{a});
    return y;
}

inline Stream randomStream() {
    return scriptedStream(take<double>(newStream(KesBrngMT19937, {5}), 20011));
}

/// Calls around the ends of blocks take the uniforms that variates made one at a time
/// take, and give the same bits.
template <class T>
void expectOneAtATime(const Stream& stream, const Draw<T>& draw, Uniforms<T>& uniforms,
                      const std::function<T()>& variate) {
    for (const int n : {1, 1, 2, 0, 3, 511, 512, 513, 1, 1025, 1, 1537}) {
        SCOPED_TRACE(n);
        std::vector<T> r(static_cast<std::size_t>(n) + 1, T(-7)), plain;
        ASSERT_EQ(draw(stream.get(), n, r.data()), KesStatusOk);
        for (int i = 0; i < n; ++i) plain.push_back(variate());
        plain.push_back(-7);
        ASSERT_TRUE(sameBits(plain.data(), r.data(), n + 1));
        ASSERT_EQ(script.next, uniforms.taken);
    }
}

/// The counts of uniforms by which n variates are drawn.
template <class T>
std::vector<int> countsOf(const Stream& stream, const Draw<T>& draw, int n) {
    script.counts.clear();
    std::vector<T> r(static_cast<std::size_t>(n));
    EXPECT_EQ(draw(stream.get(), n, r.data()), KesStatusOk);
    return script.counts;
}

/// Calls for 500 variates that fail at one draw after the other keep what they have,
/// which is what the standard distribution gives; `rest(i)` is what follows.
template <class T>
void expectFailures(const Draw<T>& standard, const Draw<T>& scaled,
                    const std::function<T(int i)>& rest) {
    constexpr int n = 500;
    std::vector<T> whole(n), r(n);
    ASSERT_EQ(standard(randomStream().get(), n, whole.data()), KesStatusOk);
    const int draws = static_cast<int>(script.counts.size());
    ASSERT_GT(draws, 1);
    for (int failAt = 0; failAt < draws; ++failAt) {
        SCOPED_TRACE(failAt);
        const Stream stream = randomStream();
        script.failAt = failAt;
        r.assign(n, T(-7));
        EXPECT_EQ(scaled(stream.get(), n, r.data()), script.status);
        const auto kept = std::ranges::mismatch(r, whole).in1 - r.begin();
        EXPECT_NEAR(n - kept, script.counts.back() / 2, 1);
        for (int i = static_cast<int>(kept); i < n; ++i)
            ASSERT_EQ(r[static_cast<std::size_t>(i)], rest(i)) << i;
    }
}

} // namespace qorkes::test
