// Mersenne Twisters: published numbers, seeds, and the raw words and the position that
// each way of delivering leaves in the state.
#include "stream.hpp"

#include <random>
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
};

class EveryTwister : public testing::TestWithParam<Twister> {
protected:
    const Twister& twister = GetParam();
    const int size = static_cast<int>(twister.size);

    std::vector<uint32_t> words(const Stream& stream) const {
        const auto* state = reinterpret_cast<const uint32_t*>(stream.get() + 1);
        return {state, state + twister.size};
    }
    int position(const Stream& stream) const {
        return reinterpret_cast<const int32_t*>(stream.get() + 1)[twister.size];
    }
};

/// The state is a window on the sequence of raw words. Within what it holds only the
/// position moves; up to a windowful more, the window moves by its size; beyond that it
/// ends where the delivery ends.
TEST_P(EveryTwister, StateIsTheWindowThatEachPathLeaves) {
    const std::vector<uint32_t> seed = {5, 6, 7};
    std::vector<uint32_t> raw = words(newStream(twister.brng, seed));
    for (std::size_t i = 0; raw.size() < 20 * twister.size; ++i) {
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
            ASSERT_EQ(words(stream), std::vector<uint32_t>(raw.begin() + start,
                                                           raw.begin() + start + size))
                << before << " and " << n;
        }
}

TEST_P(EveryTwister, SeedsOfAnyLengthCountWhole) {
    const std::vector<uint32_t> none = take<uint32_t>(newStream(twister.brng, {}), 5);
    EXPECT_EQ(take<uint32_t>(newStream(twister.brng, {1}), 5), none);
    std::vector<uint32_t> seed(twister.size + 100, 9);
    const std::vector<uint32_t> all = take<uint32_t>(newStream(twister.brng, seed), 5);
    ++seed.back();
    EXPECT_NE(take<uint32_t>(newStream(twister.brng, seed), 5), all);
}

INSTANTIATE_TEST_SUITE_P(All, EveryTwister, testing::ValuesIn(twisters),
                         [](const auto& row) { return row.param.name; });

/// The first numbers that Matsumoto and Nishimura published with init_by_array, and the
/// standard library's generator from the same state.
TEST(Mt19937, DeliversThePublishedSequence) {
    const Stream stream = newStream(KesBrngMT19937, {0x123, 0x234, 0x345, 0x456});
    std::stringstream state;
    const auto* words = reinterpret_cast<const uint32_t*>(stream.get() + 1);
    for (int i = 0; i < 625; ++i) state << words[i] << ' ';
    std::mt19937 peer;
    state >> peer;

    const std::vector<uint32_t> r = take<uint32_t>(stream, 10000);
    const uint32_t published[] = {1067595299, 955945823, 477289528, 4107218783,
                                  4228976476};
    for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(r[i], published[i]);
    for (std::size_t i = 0; i < r.size(); ++i)
        ASSERT_EQ(r[i], static_cast<uint32_t>(peer())) << i;
}

} // namespace
