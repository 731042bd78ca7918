// What holds for every generator: one sequence however it is drawn, jumps that equal
// draws, copies that go the same way, reals that are their words in the range.
#include "generators.hpp"
#include "stream.hpp"

#include <support/fpu.hpp>
#include <support/guard.hpp>

#include <mpfr.h>

#include <algorithm>
#include <cstdio>

using namespace qorkes;
using namespace qorkes::test;

namespace {

class EveryGenerator : public testing::TestWithParam<Generator> {
protected:
    const Generator& generator = GetParam();
    Stream fresh() const { return newStream(generator.brng, generator.seed); }

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
    BrngProperties row;
    ASSERT_EQ(__kesGetBrngProperties(generator.brng, &row), KesStatusOk);
    for (const int method : {-1, 3})
        EXPECT_EQ(row.InitStream(method, stream.get(), 1, generator.seed.data()),
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

    BrngProperties row;
    ASSERT_EQ(__kesGetBrngProperties(generator.brng, &row), KesStatusOk);
    const bool staysInside =
        row.WordSize * row.SeedCount <= row.StateSize - int{sizeof(StreamState)};
    if (!staysInside) return;
    EXPECT_EQ(__kesCopyStreamState(stream.get(), reference.get()), generator.brng);
    EXPECT_EQ(take<float>(stream, 100), numbers);
}

TEST_P(EveryGenerator, FilesGoOnWhereTheStreamWas) {
    const std::string name = testing::TempDir() + generator.name + ".stream";
    const Stream stream = fresh();
    take<uint32_t>(stream, generator.boundary + 1);
    ASSERT_EQ(__kesSaveStreamF(stream.get(), name.c_str(), -1), KesStatusOk);
    StreamState* loaded = nullptr;
    ASSERT_EQ(__kesLoadStreamF(&loaded, name.c_str()), KesStatusOk);
    EXPECT_EQ(loaded->BrngId, generator.brng);
    expectSameFuture(stream, Stream(loaded));
    std::remove(name.c_str());
}

TEST_P(EveryGenerator, LeavesTheUnitsAlone) {
    const Stream stream = fresh();
    BrngProperties row;
    ASSERT_EQ(__kesGetBrngProperties(generator.brng, &row), KesStatusOk);
    double d[100];
    float s[100];
    uint32_t words[400];
    for (const Fpu& setting : fpuSettings()) {
        EXPECT_TRUE(leavesFpuAlone(
            setting, [&] { row.dBRng(stream.get(), 99, d, -1.5, 2.25); }));
        EXPECT_TRUE(leavesFpuAlone(
            setting, [&] { row.sBRng(stream.get(), 99, s, -1.5f, 2.25f); }));
        EXPECT_TRUE(
            leavesFpuAlone(setting, [&] { row.iBRng(stream.get(), 99, words); }));
    }
}

/// A number of MPFR that is rounded to a given length by whatever sets it.
class Rounded {
public:
    explicit Rounded(int bits) { mpfr_init2(value_, bits); }
    ~Rounded() { mpfr_clear(value_); }
    Rounded(const Rounded&) = delete;
    Rounded& operator=(const Rounded&) = delete;
    operator mpfr_ptr() { return value_; }

private:
    mpfr_t value_;
};

/// The real number that is due for words low and high.
double modelled(const Rounding& bits, double step, double a, double b, uint64_t word) {
    Rounded width(bits.width), unroundedScale(64), scale(bits.scale);
    mpfr_set_d(width, b, MPFR_RNDN);
    mpfr_sub_d(width, width, a, MPFR_RNDN);
    mpfr_mul_d(unroundedScale, width, step, MPFR_RNDN);
    mpfr_set(scale, unroundedScale, MPFR_RNDN);
    Rounded number(bits.word), result(bits.work), stored(bits.store);
    mpfr_set_uj(number, word, MPFR_RNDN);
    mpfr_mul(result, number, scale, MPFR_RNDN);
    mpfr_add_d(result, result, a, MPFR_RNDN);
    mpfr_set(stored, result, MPFR_RNDN);
    return mpfr_get_d(stored, MPFR_RNDN);
}

template <class T>
void checkReals(const Generator& generator, const Rounding& bits, Range<T> range) {
    constexpr int n = 2000;
    const Stream words = newStream(generator.brng, generator.seed);
    const Stream reals = newStream(generator.brng, generator.seed);
    const std::vector<uint32_t> w = take<uint32_t>(words, n);
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
