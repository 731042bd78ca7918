// The signal primitives of both precisions under one name, for typed tests.
#pragma once

#include <qorkes/zubs.h>

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace qorkes::test {

template <class T> struct Zubs;

#define ENTRIES(bits)                                                                  \
    static constexpr auto initAlloc = zubsFFTInitAlloc_R_##bits##f;                    \
    static constexpr auto release = zubsFFTFree_R_##bits##f;                           \
    static constexpr auto bufSize = zubsFFTGetBufSize_R_##bits##f;                     \
    static constexpr auto forward = zubsFFTFwd_RToPerm_##bits##f;                      \
    static constexpr auto inverse = zubsFFTInv_PermToR_##bits##f;                      \
    static constexpr auto multiply = zubsMulPerm_##bits##f_I;                          \
    static constexpr auto convolve = zubsConv_##bits##f

template <> struct Zubs<double> {
    ENTRIES(64);
    static constexpr long double epsilon = 0x1p-52L;
    static constexpr long double errorPerRootOfOrder = 0.35L * epsilon;
    static constexpr int firstImpossibleOrder = 28;
};
template <> struct Zubs<float> {
    ENTRIES(32);
    static constexpr long double epsilon = 0x1p-23L;
    static constexpr long double errorPerRootOfOrder = 0.5L * epsilon;
    static constexpr int firstImpossibleOrder = 29;
};
#undef ENTRIES

using Precisions = ::testing::Types<double, float>;

/// A plan that ends with its scope.
template <class T> struct Plan {
    FftCtx* handle = nullptr;
    explicit Plan(int order, int flag = ZubFftNoDiv) {
        EXPECT_EQ(Zubs<T>::initAlloc(&handle, order, flag, 0), ZubStatusOk);
    }
    ~Plan() { Zubs<T>::release(handle); }
    Plan(const Plan&) = delete;
    Plan& operator=(const Plan&) = delete;
};

template <class T> std::vector<T> randomNumbers(size_t n, unsigned seed = 1) {
    std::minstd_rand generator(seed);
    std::uniform_real_distribution<T> uniform(-1, 1);
    std::vector<T> x(n);
    for (T& v : x) v = uniform(generator);
    return x;
}

} // namespace qorkes::test
