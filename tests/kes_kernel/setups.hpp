// Integer distributions that keep a set-up in the stream: draws against values made one
// at a time from its words, by their numbers in the chunk, and accepted by exact
// probabilities. A digest holds every word to its bits and its place.
//
// A law is a structure of the parameters with: the layout of its chunk (id, words,
// cumulative, entries, up) and the block of its draws; table, whether it
// is a search of one uniform a value and not an attempt of two; draw; unfolded, the
// result of an attempt's value; probability, mode and last value of the folded problem;
// attempt.
#pragma once

#include "goodness.hpp"
#include "scripted.hpp"

#include <common/bits.hpp>

#include <optional>
#include <random>

namespace qorkes::test {

using ext = long double;
using Value = std::optional<int32_t>; // none: rejected

inline ext logChoose(ext n, ext k) {
    return std::lgamma(n + 1) - std::lgamma(k + 1) - std::lgamma(n - k + 1);
}

inline int32_t truncated(ext x) {
    if (std::isinf(x)) return x < 0 ? -1 : 1; // what the bits of an infinity give
    return static_cast<int32_t>(static_cast<double>(x));
}

template <class Law> ext ratio(const Law& law, int32_t x) {
    return law.probability(x) / law.probability(law.mode());
}

template <class Law> const double* keptBy(const Stream& stream, const Law&) {
    return static_cast<const double*>(__kesSearchChunk(stream.get(), Law::id));
}

template <class Law> int entriesOf(const Law& law) {
    return std::min(law.last(), Law::entries - 1) + 1;
}

/// The first value whose entry is above u; past the table by further terms, to the last
/// value or one that adds nothing.
template <class Law> Value searched(const Law& law, const double* entry, double u) {
    const int count = entriesOf(law);
    const auto found = std::upper_bound(entry, entry + count, u) - entry;
    if (found < count) return static_cast<int32_t>(found);
    int32_t x = count - 1;
    ext sum = entry[x], term = sum - entry[x - 1];
    while (x < law.last() && sum <= u) {
        ++x;
        term *= law.probability(x) / law.probability(x - 1);
        if (sum + term == sum) break;
        sum += term;
    }
    return x;
}

/// Uniforms for every region: even ones next to 1, odd ones next to 1 or small by any
/// power of two, then zeros and the ends of the range.
inline std::vector<double> searchingUniforms(int n) {
    std::mt19937_64 engine(5);
    const auto uniform = [&] { return std::ldexp(double(engine() >> 11), -53); };
    const double greatest = 1 - 0x1p-53;
    std::vector<double> u = {0, 0, greatest, 0, greatest, 0.5};
    for (int i = 0; i < 100; ++i) u.insert(u.end(), {0.01 * i, 0});
    while (u.size() < static_cast<std::size_t>(n)) {
        u.push_back(engine() % 4 ? uniform() : 1 - uniform() / 16);
        const double v[] = {uniform(), 1 - uniform() / 32, std::exp2(-32 * uniform())};
        u.push_back(v[engine() % 3]);
    }
    return u;
}

/// The words of a new stream's chunk.
template <class Law> std::vector<double> setupOf(const Law& law) {
    const Stream stream = newStream(KesBrngMT19937, {1});
    EXPECT_EQ(law.draw(stream.get(), 0, nullptr), KesStatusOk);
    const double* c = keptBy(stream, law);
    return {c, c + law.words};
}

/// Draws n values while `failAt` draws succeed, and compares the values and
/// the counts of uniforms. After a failure the values are as they were before the end.
template <class Law> void expectDraws(const Law& law, int n, int failAt = -1) {
    const auto numbers = searchingUniforms(16 * n + 2000);
    const Stream stream = scriptedStream(numbers);
    script.failAt = failAt;
    std::vector<int32_t> r(n, -7), wanted;
    const int status = law.draw(stream.get(), n, r.data());
    EXPECT_EQ(status, failAt < 0 ? KesStatusOk : script.status);
    const auto* chunk = reinterpret_cast<const Chunk*>(stream->Chunks);
    ASSERT_EQ(chunk->size, 8 * Law::words);
    const double* c = keptBy(stream, law);

    const int each = law.table ? 1 : 2;
    std::vector<int> counts;
    const double* u = numbers.data();
    while (static_cast<int>(wanted.size()) < n) {
        const int count = std::min(each * (n - int(wanted.size())), Law::block);
        counts.push_back(count);
        if (static_cast<int>(counts.size()) == failAt + 1) break;
        for (const double* end = u + count; u < end; u += each) {
            const Value x = law.table ? searched(law, c + Law::cumulative, *u)
                                      : law.attempt(c, u[0], u[1]);
            if (x) wanted.push_back(failAt < 0 ? law.unfolded(*x) : *x);
        }
    }
    ASSERT_LE(u, numbers.data() + numbers.size());
    r.resize(wanted.size()); // a rejected value may stand behind
    EXPECT_EQ(r, wanted);
    EXPECT_EQ(script.counts, counts);
}

/// The 64-bit digest of Fowler, Noll and Vo of all words of the laws' chunks.
template <class Laws> uint64_t digestOfSetups(const Laws& laws) {
    uint64_t digest = 0xCBF29CE484222325;
    for (const auto& law : laws)
        for (const double& word : setupOf(law))
            digest = (digest ^ bitsOf(word)) * 0x100000001B3;
    return digest;
}

/// Of draws with their recomputation, and of the set-ups with what they have always
/// been.
template <class Laws> void expectAgreement(const Laws& laws, uint64_t setups) {
    EXPECT_EQ(digestOfSetups(laws), setups);
    for (const auto& law : laws) {
        SCOPED_TRACE(law.name());
        expectDraws(law, law.table ? 2000 : 20000);
        expectDraws(law, 3);
        expectDraws(law, 0);
        expectDraws(law, 2 * law.block, 1);
    }
}

/// Kept for the same parameters, made anew for others, and taken along by a file.
template <class Law> void expectKept(const Law& law, const Law& other) {
    const Stream stream = newStream(KesBrngMT19937, {9});
    std::vector<int32_t> r(1000), s(1000);
    const auto draw = [&r](const Stream& from, const Law& by, int n) {
        EXPECT_EQ(by.draw(from.get(), n, r.data()), KesStatusOk);
    };
    draw(stream, law, 0);
    const double* kept = keptBy(stream, law);
    double& word =
        const_cast<double&>(kept[law.table ? Law::cumulative + 9 : Law::up + 9]);
    const double before = word;
    word = 0.125;
    draw(stream, law, 1000);
    EXPECT_EQ(word, 0.125);
    draw(stream, other, 1000);
    // Behind a table, words of the envelope before it are left.
    const int made = other.table ? Law::cumulative + entriesOf(other) : Law::words;
    EXPECT_TRUE(std::equal(kept, kept + made, setupOf(other).data()));
    draw(stream, law, 0);
    EXPECT_EQ(word, before);
    EXPECT_EQ(__kesGetNumChunks(stream.get()), 1);

    const Stream copy = reloaded(stream);
    EXPECT_TRUE(std::equal(kept, kept + Law::words, keptBy(copy, law)));
    draw(stream, law, 1000);
    r.swap(s);
    draw(copy, law, 1000);
    EXPECT_EQ(r, s);
}

template <class Law> std::vector<int32_t> millionOf(const Law& law) {
    const Stream stream = newStream(KesBrngMT19937, {77});
    std::vector<int32_t> r(1000000);
    EXPECT_EQ(law.draw(stream.get(), 1000000, r.data()), KesStatusOk);
    return r;
}

template <class Laws> void expectFits(const Laws& laws) {
    for (const auto& law : laws) {
        const auto [low, high] = law.range();
        const auto exact = [&law](int32_t x) { return law.exact(x); };
        expectFit(chiSquare(millionOf(law), low, high, exact), law.name().c_str());
    }
}

/// The total variation from the exact law is what the public header says.
template <class Law> void expectDeparture(const Law& law, double variation) {
    const auto [low, high] = law.range();
    std::vector<double> difference(high + 1);
    for (int32_t x = low; x <= high; ++x) difference[x] = law.exact(x);
    for (const int32_t x : millionOf(law)) difference[x] -= 1e-6;
    double sum = 0;
    for (const double d : difference) sum += std::fabs(d) / 2;
    EXPECT_NEAR(sum, variation, 0.002) << law.name();
}

} // namespace qorkes::test
