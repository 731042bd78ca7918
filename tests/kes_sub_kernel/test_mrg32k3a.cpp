// MRG32K3A against its published numbers and form, the repair of seeds, and its
// matrices.
#include "stream.hpp"

#include <algorithm>

using namespace qorkes;
using namespace qorkes::test;

namespace {

constexpr int64_t m1 = 4294967087, m2 = 4294944443;

/// The terms by signed remainders, one recurrence at a time.
struct Published {
    int64_t x[3], y[3];

    uint32_t next() {
        const int64_t p1 = ((1403580 * x[1] - 810728 * x[0]) % m1 + m1) % m1;
        const int64_t p2 = ((527612 * y[2] - 1370589 * y[0]) % m2 + m2) % m2;
        std::rotate(x, x + 1, x + 3);
        std::rotate(y, y + 1, y + 3);
        x[2] = p1;
        y[2] = p2;
        return static_cast<uint32_t>(p1 > p2 ? p1 - p2 : p1 - p2 + m1);
    }
};

/// With six seeds of 12345 L'Ecuyer's own program prints these.
TEST(Mrg32k3a, DeliversThePublishedNumbers) {
    const double published[] = {0.127011, 0.318528, 0.309186, 0.825847, 0.221630};
    const Words z = take<uint32_t>(newStream(KesBrngMRG32K3A, Words(6, 12345)), 5);
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_NEAR(z[i] / (m1 + 1.0), published[i], 5e-7);
}

TEST(Mrg32k3a, FollowsThePublishedFormFromSeedsOfAllSizes) {
    const uint32_t last1 = m1 - 1, last2 = m2 - 1;
    for (const Words& seed :
         std::vector<Words>{{1, 2, 3, 4, 5, 6},
                            {last1, last1, last1, last2, last2, last2},
                            {0, last1, 0, last2, 0, 0},
                            {last1, 0, 1, 0, last2, last2}}) {
        const Stream stream = newStream(KesBrngMRG32K3A, seed);
        Published published = {{seed[0], seed[1], seed[2]},
                               {seed[3], seed[4], seed[5]}};
        for (const uint32_t z : take<uint32_t>(stream, 3001))
            ASSERT_EQ(z, published.next());
        EXPECT_EQ(take<uint32_t>(stream, 1)[0], published.next());
    }
}

TEST(Mrg32k3a, EqualTermsAreDeliveredAsTheModulus) {
    // Both recurrences give 0 next.
    const Stream stream = newStream(KesBrngMRG32K3A, {0, 0, 1, 0, 1, 0});
    for (const double range : {1.0, 3.0}) {
        const Stream copy = copyOf(stream);
        EXPECT_EQ(take<double>(copy, 1, {0, range})[0], range);
    }
    EXPECT_EQ(take<uint32_t>(stream, 1)[0], m1);
}

TEST(Mrg32k3a, RepairsSeeds) {
    const uint32_t n1 = m1, n2 = m2;
    const struct {
        Words seed, state;
    } rows[] = {
        {{}, {1, 1, 1, 1, 1, 1}},
        {{7}, {7, 1, 1, 1, 1, 1}},
        {{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {1, 2, 3, 4, 5, 6}},
        {{n1, 0xFFFFFFFF, 5}, {0, 208, 5, 1, 1, 1}},
        {{n1, 0, n1, n2 - 1, n2, 0xFFFFFFFF}, {1, 0, 0, n2 - 1, 0, 22852}},
        {{3, 3, 3, n2, n2, 0}, {3, 3, 3, 1, 0, 0}},
    };
    for (const auto& [seed, state] : rows) {
        EXPECT_EQ(stateOf(newStream(KesBrngMRG32K3A, seed), 6), state);
    }
}

/// A skip of 2^31 - 1, and again: the same terms as by a power of the power.
TEST(Mrg32k3a, JumpsFarByMatrices) {
    const uint32_t modulus = m1, coefficients[3] = {0, 1403580, modulus - 810728};
    uint32_t terms[3] = {1, 2, 3};
    uint32_t step[9] = {0, 1, 0, 0, 0, 1, coefficients[2], coefficients[1], 0};
    uint32_t power[9], twice[9];
    __kesiMatr3x3PowMod(step, power, modulus, 0x7FFFFFFF);
    __kesiMatr3x3PowMod(power, twice, modulus, 2);
    __kesiMatr3x3VectMulMod(twice, terms, terms, modulus);

    const Stream stream = newStream(KesBrngMRG32K3A, {1, 2, 3});
    for (int i = 0; i < 2; ++i)
        ASSERT_EQ(__kesSkipAheadStream(stream.get(), 0x7FFFFFFF), KesStatusOk);
    EXPECT_EQ(stateOf(stream, 3), Words(terms, terms + 3));

    const Words identity = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    const Words before(step, step + 9);
    __kesiMatr3x3PowMod(step, power, modulus, 0);
    EXPECT_EQ(Words(power, power + 9), identity);
    EXPECT_EQ(Words(step, step + 9), before);
}

} // namespace
