#include "precisions.hpp"
#include "reference.hpp"

#include <algorithm>
#include <cmath>

using namespace qorkes::test;

namespace {

template <class T> struct Convolution : testing::Test {};
TYPED_TEST_SUITE(Convolution, Precisions);

template <class T>
std::vector<Exact> exactly(const std::vector<T>& a, const std::vector<T>& b) {
    std::vector<Exact> sum(a.size() + b.size() - 1);
    for (size_t j = 0; j < b.size(); ++j)
        for (size_t i = 0; i < a.size(); ++i) sum[i + j] += Exact{a[i]} * b[j];
    return sum;
}

template <class T>
std::vector<T> convolved(const std::vector<T>& a, const std::vector<T>& b) {
    // One element more shows that nothing is written behind the end.
    std::vector<T> dst(a.size() + b.size(), T(77));
    EXPECT_EQ(
        Zubs<T>::convolve(a.data(), int(a.size()), b.data(), int(b.size()), dst.data()),
        ZubStatusOk);
    EXPECT_EQ(dst.back(), T(77));
    dst.pop_back();
    return dst;
}

// All ways and their boundaries; test_allocation tells which way is taken.
TYPED_TEST(Convolution, EqualsTheExactSum) {
    const std::pair<size_t, size_t> lengths[] = {
        {1, 1},     {2, 1},     {7, 3},    {8, 1},     {9, 5},      {10, 6},
        {11, 7},    {90, 40},   {224, 32}, {224, 33},  {225, 31},   {225, 32},
        {230, 90},  {269, 90},  {270, 90}, {128, 128}, {129, 128},  {1000, 1000},
        {4095, 1},  {4096, 1},  {4097, 2}, {8200, 31}, {5000, 100}, {9999, 333},
        {4000, 32}, {4066, 32}, {4067, 32}};
    for (const auto& [n, m] : lengths) {
        const auto a = randomNumbers<TypeParam>(n, 1),
                   b = randomNumbers<TypeParam>(m, 2);
        const auto result = convolved(a, b);
        const Exact limit = Zubs<TypeParam>::epsilon * std::sqrt(Exact(m) + 1);
        EXPECT_LE(relativeError(result, exactly(a, b)), limit) << n << ' ' << m;
        if (n != m) {
            EXPECT_EQ(convolved(b, a), result) << "exchanged " << n << ' ' << m;
        }
    }
}

// A direct sum rounds each output after each product, block after block.
TYPED_TEST(Convolution, BlocksOfTheDirectSum) {
    const auto a = randomNumbers<TypeParam>(100000),
               b = randomNumbers<TypeParam>(31, 2);
    std::vector<TypeParam> expected(a.size() + b.size() - 1);
    for (size_t block = 0; block < a.size(); block += 4096)
        for (size_t j = 0; j < b.size(); ++j)
            for (size_t i = block; i < std::min(block + 4096, a.size()); ++i) {
                // Single precision rounds the product as well.
                volatile TypeParam product = a[i] * b[j];
                expected[i + j] = sizeof(TypeParam) == 4
                                      ? TypeParam(expected[i + j] + product)
                                      : TypeParam(expected[i + j] + Exact{a[i]} * b[j]);
            }
    EXPECT_EQ(convolved(a, b), expected);
}

TYPED_TEST(Convolution, NullIsTestedBeforeLengths) {
    using Z = Zubs<TypeParam>;
    TypeParam x[4] = {};
    EXPECT_EQ(Z::convolve(nullptr, 0, x, 1, x), ZubStatusNullPointer);
    EXPECT_EQ(Z::convolve(x, 1, nullptr, 0, x), ZubStatusNullPointer);
    EXPECT_EQ(Z::convolve(x, 0, x, 1, nullptr), ZubStatusNullPointer);
    EXPECT_EQ(Z::convolve(x, 0, x, 1, x), ZubStatusSizeError);
    EXPECT_EQ(Z::convolve(x, 1, x, -1, x), ZubStatusSizeError);
}

} // namespace
