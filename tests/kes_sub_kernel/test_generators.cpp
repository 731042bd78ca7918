// What holds for every generator: one sequence however it is drawn, jumps that equal
// draws, copies that go the same way, reals that are their words in the range.
#include "generators.hpp"
#include "stream.hpp"

#include <common/ext.hpp>
#include <support/fpu.hpp>
#include <support/guard.hpp>

#include <algorithm>

using namespace qorkes;
using namespace qorkes::test;

namespace {

class EveryGenerator : public testing::TestWithParam<Generator> {
protected:
    const Generator& generator = GetParam();
    Stream fresh() const { return newStream(generator.brng, generator.seed); }
    BrngProperties row() const {
        BrngProperties properties;
        EXPECT_EQ(__kesGetBrngProperties(generator.brng, &properties), KesStatusOk);
        return properties;
    }

    /// Counts on both sides of the boundary and of twice that.
    std::vector<int> counts() const {
        const int b = generator.boundary;
        return {1, 2, b - 1, b, b + 1, 2 * b - 1, 2 * b, 2 * b + 1, 3 * b + 5};
    }

    template <class T> std::vector<T> singly(int n) const {
        const Stream stream = fresh();
        std::vector<T> all;
        for (int i = 0; i < n; ++i)
            for (const T x : take<T>(stream, 1)) all.push_back(x);
        return all;
    }

    /// `before` words and then n numbers, against numbers drawn one by one; the array
    /// ends at an inaccessible page.
    template <class T> void checkSplits() const {
        const int most = counts().back();
        const std::vector<T> expected = singly<T>(2 * most + 1);
        GuardedMemory memory(expected.size() * sizeof(T));
        for (const int before : counts())
            for (const int n : counts()) {
                const Stream stream = fresh();
                const int w = width<T>(stream);
                take<uint32_t>(stream, before);
                T* r = memory.atEnd<T>(static_cast<std::size_t>(n * w));
                ASSERT_EQ(draw(stream, n, r), KesStatusOk);
                ASSERT_TRUE(std::equal(r, r + n * w, expected.data() + before * w))
                    << before << " and " << n;
                const std::vector<T> next = take<T>(stream, 1);
                ASSERT_TRUE(std::equal(next.begin(), next.end(),
                                       expected.data() + (before + n) * w))
                    << "after " << before << " and " << n;
            }
    }
};

void expectSameFuture(const Stream& expected, const Stream& actual) {
    EXPECT_EQ(take<uint32_t>(expected, 50), take<uint32_t>(actual, 50));
}

TEST_P(EveryGenerator, DeliversOneSequenceHoweverItIsDrawn) {
    checkSplits<uint32_t>();
    checkSplits<double>();
    checkSplits<float>();
}

TEST_P(EveryGenerator, RealSlotsDoNothingForNoNumbers) {
    const Stream stream = fresh();
    double x = 7;
    float y = 7;
    for (const int n : {0, -1}) {
        EXPECT_EQ(draw(stream, n, &x), KesStatusOk);
        EXPECT_EQ(draw(stream, n, &y), KesStatusOk);
    }
    EXPECT_EQ(x, 7);
    EXPECT_EQ(y, 7);
    expectSameFuture(fresh(), stream);
}

TEST_P(EveryGenerator, SkipAheadEqualsDraws) {
    for (const int skip : generator.skips)
        for (const int before : {0, 1, generator.boundary}) {
            const Stream drawn = fresh(), skipped = fresh();
            if (before > 0) take<float>(skipped, before);
            take<float>(drawn, before + skip);
            ASSERT_EQ(__kesSkipAheadStream(skipped.get(), skip), KesStatusOk);
            expectSameFuture(drawn, skipped);
        }
    if (generator.skips.empty()) {
        const Stream stream = fresh();
        EXPECT_EQ(__kesSkipAheadStream(stream.get(), 5), KesStatusSkipAheadUnsupported);
        expectSameFuture(fresh(), stream);
    }
}

TEST_P(EveryGenerator, LeapfrogTakesEveryNth) {
    constexpr int strides = 3, length = 40;
    if (!generator.leapfrogs) {
        const Stream stream = fresh();
        EXPECT_EQ(__kesLeapfrogStream(stream.get(), 1, strides),
                  KesStatusLeapfrogUnsupported);
        expectSameFuture(fresh(), stream);
        return;
    }
    const std::vector<double> all = take<double>(fresh(), strides * length);
    for (int k = 0; k < strides; ++k) {
        const Stream stream = fresh();
        ASSERT_EQ(__kesLeapfrogStream(stream.get(), k, strides), KesStatusOk);
        const std::vector<double> own = take<double>(stream, length);
        for (std::size_t i = 0; i < length; ++i)
            ASSERT_EQ(own[i], all[strides * i + static_cast<std::size_t>(k)]);
        // Jumps work on the sequence as it is now.
        const Stream skipped = copyOf(stream);
        ASSERT_EQ(__kesSkipAheadStream(skipped.get(), 10), KesStatusOk);
        take<double>(stream, 10);
        expectSameFuture(stream, skipped);
    }
}

TEST_P(EveryGenerator, RefusesOtherMethods) {
    const Stream stream = fresh();
    for (const int method : {-1, 3})
        EXPECT_EQ(row().InitStream(method, stream.get(), 1, generator.seed.data()),
                  KesStatusBadMethod);
    expectSameFuture(fresh(), stream);
}

TEST_P(EveryGenerator, CopiesGoTheSameWayApart) {
    const Stream stream = fresh();
    take<uint32_t>(stream, generator.boundary + 1);
    const Stream copy = copyOf(stream), reference = copyOf(stream);
    EXPECT_EQ(__kesGetStreamStateBrng(copy.get()), generator.brng);
    const std::vector<float> numbers = take<float>(copy, 100);
    EXPECT_EQ(take<float>(stream, 100), numbers);

    const BrngProperties sizes = row();
    const bool staysInside =
        sizes.WordSize * sizes.SeedCount <= sizes.StateSize - int{sizeof(StreamState)};
    if (!staysInside) return;
    EXPECT_EQ(__kesCopyStreamState(stream.get(), reference.get()), generator.brng);
    EXPECT_EQ(take<float>(stream, 100), numbers);
}

TEST_P(EveryGenerator, FilesGoOnWhereTheStreamWas) {
    const Stream stream = fresh();
    take<uint32_t>(stream, generator.boundary + 1);
    const Stream loaded = reloaded(stream);
    EXPECT_EQ(loaded->BrngId, generator.brng);
    expectSameFuture(stream, loaded);
}

TEST_P(EveryGenerator, LeavesTheUnitsAlone) {
    const Stream stream = fresh();
    const BrngProperties slots = row();
    double d[100];
    float s[100];
    uint32_t words[400];
    StreamState* const state = stream.get();
    for (const Fpu& fpu : fpuSettings()) {
        EXPECT_TRUE(
            leavesFpuAlone(fpu, [&] { slots.dBRng(state, 99, d, -1.5, 2.25); }));
        EXPECT_TRUE(
            leavesFpuAlone(fpu, [&] { slots.sBRng(state, 99, s, -1.5, 2.25); }));
        EXPECT_TRUE(leavesFpuAlone(fpu, [&] { slots.iBRng(state, 99, words); }));
    }
}

/// By way of memory: the compiler keeps a rounded number wide.
ext rounded(ext x, int bits) {
    if (bits == 64) return x;
    volatile double stored64 = round64(x);
    volatile float stored32 = round32(x);
    return bits == 53 ? ext{stored64} : ext{stored32};
}

/// The real number that is due for a word.
ext modelled(const Rounding& bits, double step, ext a, ext b, uint64_t word) {
    const ext scale = rounded(rounded(b - a, bits.width) * step, bits.scale);
    const ext product = rounded(rounded(word, bits.word) * scale, bits.work);
    return rounded(rounded(product + a, bits.work), bits.store);
}

template <class T>
void checkReals(const Generator& generator, const Rounding& bits, Range<T> range) {
    constexpr int n = 2000;
    const Stream words = newStream(generator.brng, generator.seed);
    const Stream reals = newStream(generator.brng, generator.seed);
    const Words w = take<uint32_t>(words, n);
    const std::vector<T> r = take<T>(reals, n, range);
    const bool isPair = width<uint32_t>(words) == 2;
    for (std::size_t i = 0; i < n; ++i) {
        const uint64_t word = isPair ? uint64_t{w[2 * i + 1]} << 32 | w[2 * i] : w[i];
        ASSERT_EQ(r[i], modelled(bits, generator.step, range.a, range.b, word))
            << "element " << i << " of [" << range.a << ", " << range.b << ")";
    }
}

TEST_P(EveryGenerator, RealsAreWordsInTheRange) {
    if (generator.step == 0) GTEST_SKIP() << "of another form";
    for (const auto& [a, b] :
         {Range<double>{0, 1}, {-1.5, 2.25}, {-1e-4, 3.3}, {5, -3e7}}) {
        checkReals<double>(generator, generator.doubles, {a, b});
        checkReals<float>(generator, generator.singles,
                          {static_cast<float>(a), static_cast<float>(b)});
    }
}

INSTANTIATE_TEST_SUITE_P(All, EveryGenerator, testing::ValuesIn(generators),
                         [](const auto& row) { return row.param.name; });

} // namespace
