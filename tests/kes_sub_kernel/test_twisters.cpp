// Mersenne Twisters: published numbers, seeds, and the raw words and the position that
// each way of delivering leaves in the state.
#include "stream.hpp"

#include <random>
#include <set>
#include <sstream>

using namespace qorkes;
using namespace qorkes::test;

namespace {

struct Twister {
    const char* name;
    int brng;
    std::size_t size, middle;
    uint32_t upperMask, matrix;
};

std::ostream& operator<<(std::ostream& out, const Twister& twister) {
    return out << twister.name;
}

const Twister twisters[] = {
    {"MT19937", KesBrngMT19937, 624, 397, 0x80000000, 0x9908B0DF},
    {"MT2203", KesBrngMT2203, 69, 34, 0xFFFFFFE0, 0xAF81055F},
};

class EveryTwister : public testing::TestWithParam<Twister> {
protected:
    const Twister& twister = GetParam();
    const int size = static_cast<int>(twister.size);

    Words words(const Stream& stream) const { return stateOf(stream, twister.size); }
    int position(const Stream& stream) const {
        return static_cast<int32_t>(stateOf(stream)[twister.size]);
    }
};

/// The state is a window on the sequence of raw words. Within what it holds only the
/// position moves; up to a windowful more, the window moves by its size; beyond that it
/// ends where the delivery ends.
TEST_P(EveryTwister, StateIsTheWindowThatEachPathLeaves) {
    const Words seed = {5, 6, 7};
    Words raw = words(newStream(twister.brng, seed));
    for (std::size_t i = 0; raw.size() < 1500 + 16 * twister.size; ++i) {
        const uint32_t y =
            (raw[i] & twister.upperMask) | (raw[i + 1] & ~twister.upperMask);
        raw.push_back(raw[i + twister.middle] ^ (y >> 1) ^
                      (y & 1 ? twister.matrix : 0));
    }
    const int wrap = size - static_cast<int>(twister.middle);
    const int counts[] = {1,        2,        wrap - 1, wrap,         wrap + 1,
                          wrap + 2, size - 1, size,     size + 1,     size + 2,
                          size + 3, 2 * size, 700,      3 * size + 5, 5 * size};
    for (const int before : counts)
        for (const int n : counts) {
            const Stream stream = newStream(twister.brng, seed);
            int start = 0, expected = size;
            for (const int count : {before, n}) {
                take<uint32_t>(stream, count);
                if (count > size) {
                    start += expected + count - size;
                    expected = size;
                } else if (expected + count > size) {
                    start += size;
                    expected += count - size;
                } else {
                    expected += count;
                }
            }
            ASSERT_EQ(position(stream), expected) << before << " and " << n;
            ASSERT_EQ(words(stream),
                      Words(raw.begin() + start, raw.begin() + start + size))
                << before << " and " << n;
        }
}

/// However many passes a long draw of reals takes.
TEST_P(EveryTwister, LongDrawsLeaveOneStateForAllKinds) {
    for (const int n : {4095, 4096, 4097, 10000}) {
        const Stream integers = newStream(twister.brng, {3});
        const Stream doubles = copyOf(integers), singles = copyOf(integers);
        take<uint32_t>(integers, n);
        take<double>(doubles, n);
        take<float>(singles, n);
        EXPECT_EQ(stateOf(doubles, twister.size + 1),
                  stateOf(integers, twister.size + 1));
        EXPECT_EQ(stateOf(singles, twister.size + 1),
                  stateOf(integers, twister.size + 1));
    }
}

TEST_P(EveryTwister, SeedsOfAnyLengthCountWhole) {
    const Words none = take<uint32_t>(newStream(twister.brng, {}), 5);
    EXPECT_EQ(take<uint32_t>(newStream(twister.brng, {1}), 5), none);
    Words seed(twister.size + 100, 9);
    const Words all = take<uint32_t>(newStream(twister.brng, seed), 5);
    ++seed.back();
    EXPECT_NE(take<uint32_t>(newStream(twister.brng, seed), 5), all);
}

INSTANTIATE_TEST_SUITE_P(All, EveryTwister, testing::ValuesIn(twisters),
                         [](const auto& row) { return row.param.name; });

/// 10000 numbers of the standard library's engine, put into the state of a stream.
template <class Engine> Words continued(const Stream& stream, std::size_t size) {
    std::stringstream state;
    for (const uint32_t word : stateOf(stream, size + 1)) state << word << ' ';
    Engine engine;
    state >> engine;
    Words numbers(10000);
    for (uint32_t& number : numbers) number = static_cast<uint32_t>(engine());
    return numbers;
}

/// The first numbers that Matsumoto and Nishimura published with init_by_array.
TEST(Mt19937, DeliversThePublishedSequence) {
    const Stream stream = newStream(KesBrngMT19937, {0x123, 0x234, 0x345, 0x456});
    const Words peer = continued<std::mt19937>(stream, 624);
    const Words r = take<uint32_t>(stream, 10000);
    const uint32_t published[] = {1067595299, 955945823, 477289528, 4107218783,
                                  4228976476};
    for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(r[i], published[i]);
    EXPECT_EQ(r, peer);
}

template <uint32_t matrix, uint32_t maskB, uint32_t maskC>
using SmallTwister =
    std::mersenne_twister_engine<uint32_t, 32, 69, 34, 5, matrix, 12, 0xFFFFFFFF, 7,
                                 maskB, 15, maskC, 18, 1812433253>;

TEST(Mt2203, MembersAreTheirOwnTwisters) {
    const auto expectMember = [](int member, auto engine) {
        const Stream stream = newStream(KesBrngMT2203 + member, {1, 2, 3});
        const Words peer = continued<decltype(engine)>(stream, 69);
        EXPECT_EQ(take<uint32_t>(stream, 10000), peer) << member;
    };
    expectMember(0, SmallTwister<0xAF81055F, 0xDD7EEF80, 0xEFD78000>());
    expectMember(5, SmallTwister<0x8C920424, 0x66AD7F80, 0xEFD68424>());
    expectMember(1023, SmallTwister<0xE1B6093F, 0x9D326E80, 0xEFD58000>());
}

TEST(Mt2203, ParametersTellTheMembersApart) {
    std::set<uint32_t> identifiers;
    for (const KesMt2203Row& row : _kes_mt2203_table) {
        identifiers.insert(row.MatrixA & 0xFFFF);
        EXPECT_TRUE(row.MatrixA & 0x80000000);
        EXPECT_EQ(row.MaskB & 0x7F, 0u);
    }
    EXPECT_EQ(identifiers.size(), std::size_t{KesMt2203Members});
}

} // namespace
