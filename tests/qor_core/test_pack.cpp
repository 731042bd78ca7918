// Pack and Unpack in both precisions: order, bounds, strides of every sign, and bits.
#include <common/bits.hpp>
#include <qorkes/qor.h>

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace {

template <class T> struct Moves;

#define MOVES(p)                                                                       \
    static constexpr auto packI = _qor##p##PackI;                                      \
    static constexpr auto packV = _qor##p##PackV;                                      \
    static constexpr auto packM = _qor##p##PackM;                                      \
    static constexpr auto unpackI = _qor##p##UnpackI;                                  \
    static constexpr auto unpackV = _qor##p##UnpackV;                                  \
    static constexpr auto unpackM = _qor##p##UnpackM

template <> struct Moves<double> {
    MOVES(d);
    static constexpr uint64_t signaling = 0xFFF4000000000001;
    static constexpr uint64_t afterMask = 0xFFFC000000000001;
};
template <> struct Moves<float> {
    MOVES(s);
    static constexpr uint32_t signaling = 0xFFA00001, afterMask = signaling;
};
#undef MOVES

template <class T> class Pack : public testing::Test {};
using Precisions = testing::Types<double, float>;
TYPED_TEST_SUITE(Pack, Precisions);

constexpr int fence = 4; // elements on either side that nothing may touch

/// 64 numbers, each its own index.
template <class T> std::vector<T> ramp() {
    std::vector<T> a(64);
    std::iota(a.begin(), a.end(), T{0});
    return a;
}

template <class T> std::vector<T> blank() {
    return std::vector<T>(64 + 2 * fence, T{-1});
}

TYPED_TEST(Pack, StridesOfEverySignAtEveryCount) {
    using T = TypeParam;
    const std::vector<T> a = ramp<T>();
    for (int n : {0, 1, 7, 8, 9, 17})
        for (int stride : {-3, -1, 0, 1, 3}) {
            const int origin = stride < 0 ? 63 : 0;
            std::vector<T> packed = blank<T>(), expected = packed;
            for (int i = 0; i < n; ++i)
                expected[static_cast<size_t>(fence + i)] =
                    a[static_cast<size_t>(origin + i * stride)];
            Moves<T>::packI(n, a.data() + origin, stride, packed.data() + fence);
            EXPECT_EQ(packed, expected) << n << " by " << stride;

            std::vector<T> spread = blank<T>();
            expected = spread;
            for (int i = 0; i < n; ++i)
                expected[static_cast<size_t>(fence + origin + i * stride)] =
                    a[static_cast<size_t>(i)];
            Moves<T>::unpackI(n, a.data(), spread.data() + fence + origin, stride);
            EXPECT_EQ(spread, expected) << n << " by " << stride;
        }
}

TYPED_TEST(Pack, IndexAndMaskFormsUndoThemselves) {
    using T = TypeParam;
    const std::vector<T> a = ramp<T>();
    std::vector<int> index, mask(64);
    for (int i = 0; i < 64; ++i)
        if (i % 3 == 1) {
            index.push_back(i);
            mask[static_cast<size_t>(i)] = i % 2 ? 1 : -0x80000000;
        }
    const int count = static_cast<int>(index.size());
    std::vector<T> byIndex = blank<T>(), byMask = blank<T>();
    Moves<T>::packV(count, a.data(), index.data(), byIndex.data());
    Moves<T>::packM(64, a.data(), mask.data(), byMask.data());
    EXPECT_EQ(byIndex, byMask);
    EXPECT_EQ(byIndex[2], 7);
    EXPECT_EQ(byIndex[static_cast<size_t>(count)], -1);

    std::vector<T> backByIndex = blank<T>(), backByMask = blank<T>();
    Moves<T>::unpackV(count, byIndex.data(), backByIndex.data(), index.data());
    Moves<T>::unpackM(64, byMask.data(), backByMask.data(), mask.data());
    EXPECT_EQ(backByIndex, backByMask);
    for (int i = 0; i < 64; ++i)
        EXPECT_EQ(backByMask[static_cast<size_t>(i)], i % 3 == 1 ? i : -1);
}

TYPED_TEST(Pack, NegativeCountMovesOneBlockExceptByMask) {
    using T = TypeParam;
    const std::vector<T> a = ramp<T>();
    std::vector<int> index(64, 5), mask(64, 1);
    for (int n : {-1, -8, -100}) {
        std::vector<T> y = blank<T>();
        Moves<T>::packI(n, a.data(), 2, y.data());
        EXPECT_EQ(y[7], 14);
        EXPECT_EQ(y[8], -1);
        Moves<T>::packV(n, a.data(), index.data(), y.data());
        EXPECT_EQ(y[7], 5);
        y = blank<T>();
        Moves<T>::packM(n, a.data(), mask.data(), y.data());
        Moves<T>::unpackM(n, a.data(), y.data(), mask.data());
        EXPECT_EQ(y, blank<T>());
    }
}

TYPED_TEST(Pack, BitsOfASignalingNaN) {
    using T = TypeParam;
    const int zero = 0, one = 1;
    T nan{}, y{};
    qorkes::setBits(nan, Moves<T>::signaling);
    const auto result = [&y] { return qorkes::bitsOf(y); };
    EXPECT_EQ((Moves<T>::packI(1, &nan, 1, &y), result()), Moves<T>::signaling);
    EXPECT_EQ((Moves<T>::packV(1, &nan, &zero, &y), result()), Moves<T>::signaling);
    EXPECT_EQ((Moves<T>::packM(1, &nan, &one, &y), result()), Moves<T>::afterMask);
    EXPECT_EQ((Moves<T>::unpackI(1, &nan, &y, 1), result()), Moves<T>::signaling);
    EXPECT_EQ((Moves<T>::unpackV(1, &nan, &y, &zero), result()), Moves<T>::signaling);
    EXPECT_EQ((Moves<T>::unpackM(1, &nan, &y, &one), result()), Moves<T>::afterMask);
}

} // namespace
