#include <qorkes/zubs.h>
#include <support/platform.hpp>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <numeric>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

Bytes numbered(size_t n) {
    Bytes bytes(n);
    for (size_t i = 0; i < n; ++i)
        bytes[i] = static_cast<unsigned char>(i * 131 + i / 256 + 1);
    return bytes;
}

TEST(Memory, AlignedOrNull) {
    for (int len : {1, 5, 31, 32, 33, 1000, 70000}) {
        const std::pair<void*, size_t> arrays[] = {{zubsMalloc_8u(len), 1},
                                                   {zubsMalloc_32f(len), 4},
                                                   {zubsMalloc_64f(len), 8}};
        for (const auto& [array, size] : arrays) {
            ASSERT_NE(array, nullptr);
            EXPECT_EQ(reinterpret_cast<uintptr_t>(array) % 32, 0u);
            std::memset(array, 0xA5, static_cast<size_t>(len) * size);
            zubsFree(array);
        }
    }
    for (int len : {0, -1, INT_MIN}) {
        EXPECT_EQ(zubsMalloc_8u(len), nullptr);
        EXPECT_EQ(zubsMalloc_32f(len), nullptr);
        EXPECT_EQ(zubsMalloc_64f(len), nullptr);
    }
    if (qorkes::test::hasSmallAddresses) {
        EXPECT_EQ(zubsMalloc_64f(INT_MAX), nullptr);
    }
    zubsFree(nullptr);
}

// Lengths through every piece of the short way and on both sides of every threshold.
std::vector<int> lengthsInBytes() {
    std::vector<int> lengths(200);
    std::iota(lengths.begin(), lengths.end(), 1);
    for (int around : {8192, 16384, 20480, 28672, 70001})
        for (int d : {-17, -8, -1, 0, 1, 8, 4093}) lengths.push_back(around + d);
    return lengths;
}

TEST(Memory, ClearsExactlyTheArray) {
    for (int n : lengthsInBytes())
        for (size_t at = 0; at < 17; ++at) {
            Bytes bytes = numbered(static_cast<size_t>(n) + 64), expected = bytes;
            std::memset(expected.data() + at, 0, static_cast<size_t>(n));
            ASSERT_EQ(zubsZero_8u(bytes.data() + at, n), ZubStatusOk);
            ASSERT_TRUE(bytes == expected) << n << " bytes at " << at;
        }
}

template <class T, class Copy> void copiesExactly(Copy copy) {
    for (int n : lengthsInBytes()) {
        const int len = n / static_cast<int>(sizeof(T));
        if (len == 0) continue;
        const size_t bytes = static_cast<size_t>(len) * sizeof(T);
        const Bytes source = numbered(bytes + 64);
        for (size_t from = 0; from < 20; from += 4)
            for (size_t to = 0; to < 20; to += 4) {
                Bytes result(bytes + 64, 0xEE), expected = result;
                std::memcpy(expected.data() + to, source.data() + from, bytes);
                ASSERT_EQ(copy(reinterpret_cast<const T*>(source.data() + from),
                               reinterpret_cast<T*>(result.data() + to), len),
                          ZubStatusOk);
                ASSERT_TRUE(result == expected) << len << ' ' << from << ' ' << to;
            }
    }
}
TEST(Memory, CopiesExactlyTheArray) {
    copiesExactly<float>(zubsCopy_32f);
    copiesExactly<double>(zubsCopy_64f);
}

TEST(Memory, FloatAndDoubleClearsChangeWayByBytes) {
    for (int len : {1, 2559, 2560, 5119, 5120}) {
        std::vector<double> d(static_cast<size_t>(len) + 1, 3.0);
        std::vector<float> f(static_cast<size_t>(len) + 1, 3.0f);
        EXPECT_EQ(zubsZero_64f(d.data(), len), ZubStatusOk);
        EXPECT_EQ(zubsZero_32f(f.data(), len), ZubStatusOk);
        // Sums also show that the x87 registers are usable again.
        EXPECT_EQ(std::accumulate(d.begin(), d.end(), 0.0L), 3.0L);
        EXPECT_EQ(std::accumulate(f.begin(), f.end(), 0.0L), 3.0L);
    }
}

TEST(Memory, NullIsTestedBeforeTheLength) {
    float f[2] = {1, 2};
    double d[2] = {1, 2};
    EXPECT_EQ(zubsCopy_32f(nullptr, f, 0), ZubStatusNullPointer);
    EXPECT_EQ(zubsCopy_32f(f, nullptr, 1), ZubStatusNullPointer);
    EXPECT_EQ(zubsCopy_64f(nullptr, d, 1), ZubStatusNullPointer);
    EXPECT_EQ(zubsZero_8u(nullptr, 0), ZubStatusNullPointer);
    EXPECT_EQ(zubsCopy_32f(f, f + 1, 0), ZubStatusSizeError);
    EXPECT_EQ(zubsCopy_64f(d, d + 1, -1), ZubStatusSizeError);
    EXPECT_EQ(zubsZero_32f(f, 0), ZubStatusSizeError);
    EXPECT_EQ(zubsZero_64f(d, 0), ZubStatusSizeError);
    EXPECT_EQ(f[1], 2.0f);
    EXPECT_EQ(d[1], 2.0);
}

} // namespace
