// WH: the parameters of all members, components by plain remainders, seeds, and the
// real numbers of the four together.
#include "stream.hpp"

#include <common/ext.hpp>

#include <cmath>
#include <cstring>
#include <numeric>
#include <set>

using namespace qorkes;
using namespace qorkes::test;

namespace {

uint32_t power(uint64_t base, uint32_t exponent, uint32_t modulus) {
    uint64_t result = 1;
    for (; exponent != 0; exponent >>= 1, base = base * base % modulus)
        if (exponent & 1) result = result * base % modulus;
    return static_cast<uint32_t>(result);
}

/// The primes that divide n.
Words primeDivisors(uint32_t n) {
    Words primes;
    for (uint32_t d = 2; d * d <= n; ++d)
        for (; n % d == 0; n /= d)
            if (primes.empty() || primes.back() != d) primes.push_back(d);
    if (n > 1) primes.push_back(n);
    return primes;
}

TEST(Wh, MembersHaveFullPeriods) {
    std::set<uint32_t> moduli;
    for (int member = 0; member < KesWHMembers; ++member) {
        const uint32_t* m = _kes_WH_M + 4 * member;
        const uint8_t* a = _kes_WH_A + 4 * member;
        for (int j = 0; j < 4; ++j) {
            moduli.insert(m[j]);
            EXPECT_TRUE(m[j] >= 16718909 && m[j] <= 16776971) << member;
            EXPECT_EQ(primeDivisors(m[j]), Words{m[j]}) << member;
            EXPECT_TRUE(a[j] >= 112 && a[j] <= 127) << member;
            for (const uint32_t q : primeDivisors(m[j] - 1))
                EXPECT_NE(power(a[j], (m[j] - 1) / q, m[j]), 1u) << member;
            // Then the periods m - 1 have 2 in common and no more.
            for (int i = 0; i < j; ++i) {
                EXPECT_EQ(std::gcd(m[i] - 1, m[j] - 1), 2u) << member;
                EXPECT_NE(a[i], a[j]) << member;
            }
        }
    }
    EXPECT_EQ(moduli.size(), 1092u);
}

TEST(Wh, ReciprocalsAreCorrectlyRounded) {
    for (int i = 0; i < 4 * KesWHMembers; ++i) {
        const ext r = _kesdWH_IM_Tab[i], m = _kes_WH_M[i];
        const ext spacing = std::nextafter(_kesdWH_IM_Tab[i], 1.0) - r;
        EXPECT_LE(std::fabs(std::fma(m, r, -1.0L)), m * spacing / 2) << i;
    }
}

/// Members that have always been what they are.
TEST(Wh, ParametersOfKnownMembers) {
    const struct {
        int member;
        uint8_t a[4];
        uint32_t m[4];
    } rows[] = {
        {0, {125, 117, 127, 126}, {16770647, 16770643, 16770623, 16770617}},
        {3, {123, 125, 122, 126}, {16769591, 16769537, 16769479, 16769387}},
        {272, {126, 127, 125, 124}, {16766363, 16766359, 16766327, 16766231}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(std::memcmp(_kes_WH_A + 4 * row.member, row.a, 4), 0) << row.member;
        EXPECT_EQ(std::memcmp(_kes_WH_M + 4 * row.member, row.m, 16), 0) << row.member;
    }
}

TEST(Wh, ComponentsAreMultiplicativeGenerators) {
    for (const int member : {0, 100, 271}) {
        const uint32_t* m = _kes_WH_M + 4 * member;
        Words s = {m[0] - 1, 1, 12345678, m[3] / 2};
        const Stream stream = newStream(KesBrngWH + member, s);
        const Stream first = newStream(4 + member, s);
        const Stream strided = copyOf(stream);
        // Multipliers of full length.
        ASSERT_EQ(__kesLeapfrogStream(strided.get(), 1, 4), KesStatusOk);
        const Words all = take<uint32_t>(stream, 2001);
        EXPECT_EQ(take<uint32_t>(first, 2001), all);
        const Words fourth = take<uint32_t>(strided, 500);
        for (std::size_t i = 0; i < all.size(); ++i) {
            const std::size_t j = i % 4;
            ASSERT_EQ(all[i], s[j]) << i;
            s[j] = static_cast<uint32_t>(uint64_t{_kes_WH_A[4 * member + int(j)]} *
                                         s[j] % m[j]);
            if (i / 4 % 4 == 1) {
                ASSERT_EQ(fourth[i / 16 * 4 + j], all[i]);
            }
        }
        for (int j = 0; j < 4; ++j)
            EXPECT_EQ(stateOf(strided)[4 + j],
                      power(_kes_WH_A[4 * member + j], 4, m[j]));
    }
}

TEST(Wh, SeedsAreReducedAndCountedUpToFour) {
    const uint32_t m = _kes_WH_M[0];
    const uint32_t seeds[5] = {m, 2 * _kes_WH_M[1] + 5, 0, 0xFFFFFFFF, 7};
    const uint32_t last = 0xFFFFFFFF % _kes_WH_M[3];
    const struct {
        int n;
        Words expected;
    } rows[] = {{0, {1, 1, 1, 1}},    {1, {1, 1, 1, 1}},    {2, {1, 5, 1, 1}},
                {4, {1, 5, 1, last}}, {5, {1, 5, 1, last}}, {-1, {1, 5, 1, last}}};
    for (const auto& [n, expected] : rows) {
        StreamState* made = nullptr;
        ASSERT_EQ(__kesNewStreamEx(&made, KesBrngWH, n, seeds), KesStatusOk);
        EXPECT_EQ(take<uint32_t>(Stream(made), 1), expected) << n;
    }
}

TEST(Wh, StateCopyMovesTwiceTheState) {
    struct Record {
        StreamState header;
        uint32_t words[20];
    } from = {}, to = {};
    from.header.BrngId = KesBrngWH;
    to.header.BrngId = KesBrngWH + 7;
    std::iota(from.words, from.words + 20, 1);
    EXPECT_EQ(__kesCopyStreamState(&to.header, &from.header), KesBrngWH + 7);
    EXPECT_EQ(std::memcmp(to.words, from.words, 64), 0);
    EXPECT_EQ(to.words[16], 0u);
}

/// The real number that is due for four components: products and sums of 64 bits, the
/// integer part that of the sum rounded to 53.
template <class T> T modelled(int member, const uint32_t* s, Range<T> range) {
    ext sum = 0;
    for (int j = 3; j >= 0; --j) sum += ext{_kesdWH_IM_Tab[4 * member + j]} * s[j];
    volatile double width = round64(ext{range.b} - range.a), rounded = round64(sum);
    volatile T real = static_cast<T>((sum - std::trunc(rounded)) * width + range.a);
    return real;
}

template <class T>
void expectReals(int member, const Words& seed, int n, Range<T> range) {
    const Stream words = newStream(KesBrngWH + member, seed), reals = copyOf(words);
    const Words s = take<uint32_t>(words, n);
    const std::vector<T> r = take<T>(reals, n, range);
    for (std::size_t i = 0; i < r.size(); ++i)
        ASSERT_EQ(r[i], modelled(member, s.data() + 4 * i, range)) << i;
}

TEST(Wh, RealsAreTheFractionOfTheSum) {
    for (const auto& [a, b] : {Range<double>{0, 1}, {-1.5, 2.25}, {1e-4, 3.3}}) {
        expectReals<double>(17, {1, 2, 3, 4}, 3000, {a, b});
        expectReals<float>(17, {1, 2, 3, 4}, 3000,
                           {static_cast<float>(a), static_cast<float>(b)});
    }
}

/// Seeds whose exact sum is an integer less 1 / (m1 m2 m3 m4): s[j] is -1 over the
/// other moduli. Reciprocals that are too small leave the sum below the integer to
/// which it is then rounded.
TEST(Wh, FractionsNextToAnIntegerStayAsComputed) {
    int below = 0;
    for (int member = 0; member < KesWHMembers; ++member) {
        const uint32_t* m = _kes_WH_M + 4 * member;
        Words seed;
        for (int j = 0; j < 4; ++j) {
            uint64_t others = 1;
            for (int i = 0; i < 4; ++i)
                if (i != j) others = others * m[i] % m[j];
            seed.push_back(m[j] - power(others, m[j] - 2, m[j]));
        }
        expectReals<double>(member, seed, 1, {0, 1});
        below += take<double>(newStream(KesBrngWH + member, seed), 1)[0] < 0;
    }
    EXPECT_GT(below, 0);
}

} // namespace
