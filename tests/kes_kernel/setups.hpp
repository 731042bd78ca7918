// Integer distributions that keep a set-up in the stream, against plain recomputations:
// one value at a time, from numbered words of the set-up.
//
// A law is a structure of the parameters with: id, words and block of its chunk and its
// draws; draw; isTable, whether it is a search of one uniform a value and not an
// attempt of two; setup, the words as they should be, NaN where nothing is said;
// attempt, from these and the uniforms; unfolded, the result from the attempt's;
// probability.
#pragma once

#include "goodness.hpp"
#include "scripted.hpp"

#include <qorkes/qor.h>

#include <cstdio>
#include <limits>
#include <optional>
#include <random>
#include <string>

namespace qorkes::test {

using Words = std::vector<double>;
using Value = std::optional<int32_t>; // none: rejected

constexpr double unsaid = std::numeric_limits<double>::quiet_NaN();

inline double rounded(long double x) { return static_cast<double>(x); }
inline int32_t truncated(long double x) {
    const double y = rounded(x);
    if (std::isinf(y)) return y < 0 ? -1 : 1; // what the bits of an infinity give
    return static_cast<int32_t>(y);
}
inline long double ln(long double x) {
    double y = rounded(x);
    _qordLn_HA(1, &y, &y);
    return y;
}
inline double root(long double x) {
    double y = rounded(x);
    _qordSqrt_HA(1, &y, &y);
    return y;
}

/// The first value whose entry is above u; past `count` entries by the terms that
/// next(x, term) gives, up to `last` or until they add nothing.
template <class Next>
int32_t searched(const double* entry, int count, double u, int32_t last, Next&& next) {
    for (int k = 0; k < count; ++k)
        if (u < entry[k]) return k;
    int32_t x = count - 1;
    if (x >= last) return last;
    long double sum = entry[x], term = sum - entry[x - 1];
    while (x < last && !(u < sum)) {
        term = next(x, term);
        if (sum + term == sum) break;
        sum += term;
        ++x;
    }
    return x;
}

/// Uniforms that reach every region: half of the odd ones small by any power of two,
/// some of the even ones next to 1, and the ends of the range.
inline std::vector<double> searchingUniforms(int n) {
    std::mt19937_64 engine(5);
    const auto uniform = [&] { return rounded(0x1p-53L * (engine() >> 11)); };
    std::vector<double> u = {0, 0, 0x1.fffffffffffffp-1, 0, 0x1.fffffffffffffp-1, 0.5};
    while (u.size() < static_cast<std::size_t>(n)) {
        u.push_back(engine() % 4 ? uniform() : 1 - uniform() / 16);
        u.push_back(engine() % 2 ? uniform() : std::exp2(-32 * uniform()));
    }
    return u;
}

template <class Law> const double* keptBy(const Stream& stream, const Law&) {
    return static_cast<const double*>(__kesSearchChunk(stream.get(), Law::id));
}

template <class Law>
std::vector<int32_t> drawn(const Stream& stream, const Law& law, int n) {
    std::vector<int32_t> r(static_cast<std::size_t>(n), -7);
    EXPECT_EQ(law.draw(stream.get(), n, r.data()), KesStatusOk);
    return r;
}

/// What the numbers give, and the counts of the draws that deliver them.
struct Recomputed {
    std::vector<int32_t> values;
    std::vector<int> counts;
};
template <class Law>
Recomputed recomputed(const Law& law, const Words& c, int n, const double* u) {
    const int each = law.isTable() ? 1 : 2;
    Recomputed all;
    while (n > static_cast<int>(all.values.size())) {
        const int wanted = n - static_cast<int>(all.values.size());
        all.counts.push_back(std::min(each * wanted, Law::block));
        for (int i = 0; i < all.counts.back(); i += each, u += each)
            if (const Value x = law.attempt(c.data(), u)) all.values.push_back(*x);
    }
    return all;
}

/// The words that the library kept, all of those that are known compared.
template <class Law> Words comparedSetup(const Stream& stream, const Law& law) {
    const double* kept = keptBy(stream, law);
    const Words wanted = law.setup();
    EXPECT_EQ(reinterpret_cast<const Chunk*>(stream->Chunks)->size, 8 * Law::words);
    EXPECT_EQ(wanted.size(), static_cast<std::size_t>(Law::words));
    for (std::size_t i = 0; i < wanted.size(); ++i)
        EXPECT_TRUE(std::isnan(wanted[i]) || kept[i] == wanted[i]) << "word " << i;
    return {kept, kept + Law::words};
}

template <class Law> void expectRecomputed(const Law& law) {
    constexpr int n = 20000;
    const auto numbers = searchingUniforms(64 * n);
    for (const int count : {n, 3, 0}) {
        const Stream stream = scriptedStream(numbers);
        auto r = drawn(stream, law, count);
        auto [values, counts] =
            recomputed(law, comparedSetup(stream, law), count, numbers.data());
        for (int32_t& x : values) x = law.unfolded(x);
        EXPECT_EQ(r, values);
        EXPECT_EQ(script.counts, counts);
    }
}

/// The second draw fails: what the first one gave is there, as it was before the end.
template <class Law> void expectFailure(const Law& law) {
    const auto numbers = searchingUniforms(4 * Law::block);
    const Stream stream = scriptedStream(numbers);
    script.failAt = 1;
    std::vector<int32_t> r(2 * Law::block, -7);
    EXPECT_EQ(law.draw(stream.get(), 2 * Law::block, r.data()), script.status);
    const auto c = comparedSetup(stream, law);
    const int each = law.isTable() ? 1 : 2;
    std::vector<int32_t> wanted;
    for (int i = 0; i < Law::block; i += each)
        if (const Value x =
                law.attempt(c.data(), &numbers[static_cast<std::size_t>(i)]))
            wanted.push_back(*x);
    EXPECT_TRUE(std::equal(wanted.begin(), wanted.end(), r.begin()));
    EXPECT_TRUE(std::all_of(r.begin() + static_cast<int>(wanted.size()) + 1, r.end(),
                            [](int32_t x) { return x == -7; }));
}

/// One set-up a stream: used again for the same parameters, made anew for others, and
/// taken along by a file.
template <class Law> void expectKept(const Law& law, const Law& other) {
    const Stream stream = newStream(KesBrngMT19937, {9});
    drawn(stream, law, 1);
    auto* kept = const_cast<double*>(keptBy(stream, law));
    const Words setup = law.setup();
    const auto said = [](double word) { return !std::isnan(word); };
    const auto last = std::find_if(setup.rbegin(), setup.rend(), said) - setup.rbegin();
    double& word = kept[Law::words - 1 - last];
    const double before = word;
    word = 0.125;
    drawn(stream, law, 1000);
    EXPECT_EQ(word, 0.125);
    drawn(stream, other, 1000);
    comparedSetup(stream, other);
    drawn(stream, law, 0);
    EXPECT_EQ(word, before);
    EXPECT_EQ(__kesGetNumChunks(stream.get()), 1);

    const std::string name = testing::TempDir() + "qorkes-setup.stream";
    ASSERT_EQ(__kesSaveStreamF(stream.get(), name.c_str(), -1), KesStatusOk);
    StreamState* loaded = nullptr;
    ASSERT_EQ(__kesLoadStreamF(&loaded, name.c_str()), KesStatusOk);
    const Stream copy(loaded);
    std::remove(name.c_str());
    EXPECT_TRUE(std::equal(kept, kept + Law::words, keptBy(copy, law)));
    EXPECT_EQ(drawn(copy, law, 1000), drawn(stream, law, 1000));
}

template <class Law> void expectFits(const Law& law, int32_t low, int32_t high) {
    const Stream stream = newStream(KesBrngMT19937, {77});
    const auto r = drawn(stream, law, 1000000);
    expectFit(chiSquare(r, low, high, [&](int32_t x) { return law.probability(x); }),
              law.name().c_str());
}

} // namespace qorkes::test
