// The signal primitives of both precisions under one name, for typed tests.
#pragma once

#include <qorkes/zubs.h>

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace qorkes::test {

template <class T> struct Zubs;

template <> struct Zubs<double> {
    static constexpr auto initAlloc = zubsFFTInitAlloc_R_64f;
    static constexpr auto release = zubsFFTFree_R_64f;
    static constexpr auto bufSize = zubsFFTGetBufSize_R_64f;
    static constexpr auto forward = zubsFFTFwd_RToPerm_64f;
    static constexpr auto inverse = zubsFFTInv_PermToR_64f;
    static constexpr auto multiply = zubsMulPerm_64f_I;
    static constexpr auto convolve = zubsConv_64f;
    static constexpr long double epsilon = 0x1p-52L;
    static constexpr long double errorPerRootOfOrder = 0.35L * epsilon;
    static constexpr int firstImpossibleOrder = 28;
};

template <> struct Zubs<float> {
    static constexpr auto initAlloc = zubsFFTInitAlloc_R_32f;
    static constexpr auto release = zubsFFTFree_R_32f;
    static constexpr auto bufSize = zubsFFTGetBufSize_R_32f;
    static constexpr auto forward = zubsFFTFwd_RToPerm_32f;
    static constexpr auto inverse = zubsFFTInv_PermToR_32f;
    static constexpr auto multiply = zubsMulPerm_32f_I;
    static constexpr auto convolve = zubsConv_32f;
    static constexpr long double epsilon = 0x1p-23L;
    static constexpr long double errorPerRootOfOrder = 0.5L * epsilon;
    static constexpr int firstImpossibleOrder = 29;
};

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
