// The multiplicative generators against their closed form: number i is seed * a^i
// modulo m.
#include "stream.hpp"

using namespace qorkes;
using namespace qorkes::test;

namespace {

/// seed * a^i mod m, each i on its own. No product is lost: a modulus is a power of two
/// or has 32 bits.
uint64_t closed(uint64_t seed, uint64_t a, uint64_t m, uint64_t i) {
    uint64_t value = seed % m;
    for (; i != 0; i >>= 1, a = a * a % m)
        if (i & 1) value = value * a % m;
    return value;
}

struct Mcg {
    int brng;
    uint64_t multiplier;
    uint64_t modulus;
};
constexpr Mcg mcg31m1 = {KesBrngMCG31M1, 1132489760, 0x7FFFFFFF};
constexpr Mcg mcg59 = {KesBrngMCG59, 302875106592253, uint64_t{1} << 59};

uint64_t nextOf(const Stream& stream) {
    const Words words = take<uint32_t>(stream, 1);
    return words.size() == 1 ? words[0] : uint64_t{words[1]} << 32 | words[0];
}

class BothMcg : public testing::TestWithParam<Mcg> {};

TEST_P(BothMcg, NumbersAndJumpsFollowTheClosedForm) {
    const Mcg& mcg = GetParam();
    const auto at = [&](uint64_t i) {
        return closed(2147480001, mcg.multiplier, mcg.modulus, i);
    };
    const Stream stream = newStream(mcg.brng, {2147480001});
    for (uint64_t i = 0; i < 1000; ++i) ASSERT_EQ(nextOf(stream), at(i)) << i;

    ASSERT_EQ(__kesSkipAheadStream(stream.get(), 0x7FFFFFFF), KesStatusOk);
    uint64_t position = 1000 + uint64_t{0x7FFFFFFF};
    const Stream skipped = copyOf(stream);
    ASSERT_EQ(nextOf(skipped), at(position));

    // A second leapfrog works on the sequence of the first.
    ASSERT_EQ(__kesLeapfrogStream(stream.get(), 12345, 1000003), KesStatusOk);
    ASSERT_EQ(__kesLeapfrogStream(stream.get(), 4, 7), KesStatusOk);
    position += 12345 + 4 * uint64_t{1000003};
    const uint64_t stride = 7 * uint64_t{1000003};
    for (uint64_t i = 0; i < 5; ++i)
        ASSERT_EQ(nextOf(stream), at(position + i * stride)) << i;
}

INSTANTIATE_TEST_SUITE_P(All, BothMcg, testing::Values(mcg31m1, mcg59));

TEST(Mcg, SeedsBecomeFirstNumbers) {
    const struct {
        int brng;
        Words seed;
        uint64_t first;
    } rows[] = {
        {KesBrngMCG31M1, {}, 1},
        {KesBrngMCG31M1, {0}, 1},
        {KesBrngMCG31M1, {5, 9}, 5},
        {KesBrngMCG31M1, {0x7FFFFFFE}, 0x7FFFFFFE},
        {KesBrngMCG31M1, {0x7FFFFFFF}, 1},
        {KesBrngMCG31M1, {0x80000000}, 1},
        {KesBrngMCG31M1, {0x80000007}, 8},
        {KesBrngMCG31M1, {0xFFFFFFFE}, 1},
        {KesBrngMCG31M1, {0xFFFFFFFF}, 1},
        {KesBrngMCG59, {}, 1},
        {KesBrngMCG59, {0}, 1},
        {KesBrngMCG59, {6}, 6},
        {KesBrngMCG59, {0, 0x08000000}, 1},
        {KesBrngMCG59, {7, 0xFFFFFFFF, 3}, 0x07FFFFFF00000007},
    };
    for (const auto& row : rows)
        EXPECT_EQ(nextOf(newStream(row.brng, row.seed)), row.first)
            << std::hex << row.brng << " " << row.first;
}

TEST(Mcg, WordsOfMcg31m1StoreBeforeLookingAtTheCount) {
    const Words all = take<uint32_t>(newStream(KesBrngMCG31M1, {5}), 4);
    for (const int n : {0, -1, -2, -1000}) {
        const std::size_t stored = n == 0 ? 1 : 2;
        uint32_t r[3] = {};
        const Stream stream = newStream(KesBrngMCG31M1, {5});
        EXPECT_EQ(draw(stream, n, r), KesStatusOk);
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_EQ(r[i], i < stored ? all[i] : 0) << n;
        EXPECT_EQ(take<uint32_t>(stream, 1)[0], all[stored]) << n;
    }
    const Stream stream = newStream(KesBrngMCG59, {5});
    uint32_t untouched = 77;
    EXPECT_EQ(draw(stream, 0, &untouched), KesStatusOk);
    EXPECT_EQ(draw(stream, -1, &untouched), KesStatusOk);
    EXPECT_EQ(untouched, 77u);
    EXPECT_EQ(nextOf(stream), 5u);
}

TEST(Powers, AgreeWithTheClosedForm) {
    for (const uint32_t base : {0u, 1u, 2u, 69069u, 0x7FFFFFFEu})
        for (const int32_t exponent : {0, 1, 2, 3, 1000, 0x40000000, 0x7FFFFFFF}) {
            const auto e = static_cast<uint64_t>(exponent);
            EXPECT_EQ(__kesiPowMod2P31M1(base, exponent),
                      closed(1, base, 0x7FFFFFFF, e));
            EXPECT_EQ(__kesiPowMod(base, exponent, 4294967291),
                      closed(1, base, 4294967291, e));
            const uint64_t wide = uint64_t{0x07654321} << 32 | base;
            EXPECT_EQ(__kesiPowMod2P59(base, 0x07654321, exponent),
                      closed(1, wide, mcg59.modulus, e));
        }
}

} // namespace
