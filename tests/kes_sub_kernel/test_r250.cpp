// R250 recomputed: the register word by word, then a sequence of its own indices.
#include "stream.hpp"

using namespace qorkes;
using namespace qorkes::test;

namespace {

Words tableOf(const Stream& stream) { return stateOf(stream, 250); }

Words expectedTable(uint32_t seed) {
    Words table;
    for (uint64_t x = seed; table.size() < 250;) {
        x = x * 69069 % 0x100000000;
        table.push_back(static_cast<uint32_t>(x));
    }
    for (uint32_t i = 0; i < 32; ++i) {
        const uint32_t kept = 0xFFFFFFFFu >> i, top = 0x80000000u >> i;
        table[3 + 7 * i] = (table[3 + 7 * i] & kept) | top;
    }
    return table;
}

TEST(R250, FillsItsRegisterFromOneSeedOrTakesIt) {
    for (const uint32_t seed : {1u, 2u, 20001u, 0xFFFFFFFFu})
        EXPECT_EQ(tableOf(newStream(KesBrngR250, {seed})), expectedTable(seed));
    EXPECT_EQ(expectedTable(1)[1], 475559465u);
    EXPECT_EQ(expectedTable(1)[220], 1u);

    Words register250(260);
    for (uint32_t i = 0; i < 260; ++i) register250[i] = i * i;
    const Words whole(register250.begin(), register250.begin() + 250);
    EXPECT_EQ(tableOf(newStream(KesBrngR250, register250)), whole);
    EXPECT_EQ(tableOf(newStream(KesBrngR250, whole)), whole);
    register250.resize(249);
    register250[0] = 5;
    EXPECT_EQ(tableOf(newStream(KesBrngR250, register250)), expectedTable(5));
    for (const Words& seed : {Words{}, Words{0}})
        EXPECT_EQ(tableOf(newStream(KesBrngR250, seed)), expectedTable(1));
    EXPECT_EQ(take<uint32_t>(newStream(KesBrngR250, Words(250)), 500), Words(500));
}

TEST(R250, CombinesWordsAndLeavesTheRegisterInPlace) {
    Words x = expectedTable(20001);
    for (std::size_t i = 0; i < 2000; ++i) x.push_back(x[i] ^ x[i + 103]);
    for (const int n :
         {1, 3, 102, 103, 146, 147, 148, 249, 250, 251, 397, 1000, 1999}) {
        const Stream stream = newStream(KesBrngR250, {20001});
        EXPECT_EQ(take<uint32_t>(stream, n),
                  Words(x.begin() + 250, x.begin() + 250 + n));
        const uint32_t* state = stateOf(stream);
        for (int i = n; i < n + 250; ++i)
            ASSERT_EQ(state[i % 250], x[static_cast<std::size_t>(i)]) << n;
        EXPECT_EQ(state[250], static_cast<uint32_t>(n % 250));
        EXPECT_EQ(state[251], static_cast<uint32_t>((n + 103) % 250));
    }
}

} // namespace
