#include "precisions.hpp"
#include "reference.hpp"

#include <cstdlib>
#include <cstring>
#include <thread>

using namespace qorkes::test;

namespace {

template <class T> struct RealFft : testing::Test {};
TYPED_TEST_SUITE(RealFft, Precisions);

template <class T>
std::vector<T> forward(const Plan<T>& plan, const std::vector<T>& x) {
    std::vector<T> y(x.size());
    EXPECT_EQ(Zubs<T>::forward(x.data(), y.data(), plan.handle, nullptr), ZubStatusOk);
    return y;
}
template <class T>
std::vector<T> inverse(const Plan<T>& plan, const std::vector<T>& y) {
    std::vector<T> x(y.size());
    EXPECT_EQ(Zubs<T>::inverse(y.data(), x.data(), plan.handle, nullptr), ZubStatusOk);
    return x;
}
template <class T> Exact limitOf(int order) {
    return Zubs<T>::errorPerRootOfOrder * std::sqrt(Exact(order));
}

TEST(Reference, EqualsTheDirectSum) {
    const auto x = randomNumbers<double>(64);
    const std::vector<Complex> spectrum = transform({x.begin(), x.end()}, -1);
    for (size_t k = 0; k < 64; ++k) {
        Complex sum = 0;
        for (size_t n = 0; n < 64; ++n)
            sum += Exact{x[n]} * std::polar(Exact{1}, -twoPi * Exact(k * n % 64) / 64);
        EXPECT_LT(std::abs(sum - spectrum[k]), 1e-17L);
    }
}

// QORKES_FFT_ORDER raises the last order.
TYPED_TEST(RealFft, ErrorOfEveryOrder) {
    const char* const last = std::getenv("QORKES_FFT_ORDER");
    for (int order = 0; order <= (last ? std::atoi(last) : 16); ++order) {
        const Plan<TypeParam> plan(order);
        const auto x =
            randomNumbers<TypeParam>(size_t{1} << order, 7u + unsigned(order));
        EXPECT_LE(relativeError(forward(plan, x), forwardExactly(x)),
                  limitOf<TypeParam>(order))
            << "forward, order " << order;
        EXPECT_LE(relativeError(inverse(plan, x), inverseExactly(x)),
                  limitOf<TypeParam>(order))
            << "inverse, order " << order;
    }
}

TYPED_TEST(RealFft, ImpulseLinearityAndShift) {
    for (int order : {3, 4, 9, 11, 13, 14}) {
        const size_t n = size_t{1} << order;
        const Plan<TypeParam> plan(order);
        const Exact limit = 2 * limitOf<TypeParam>(order);

        std::vector<TypeParam> impulse(n);
        impulse[0] = 1;
        const auto flat = fromPerm(forward(plan, impulse));
        EXPECT_EQ(flat, std::vector<Complex>(n, 1)) << order;

        const auto x = randomNumbers<TypeParam>(n, 2),
                   y = randomNumbers<TypeParam>(n, 3);
        std::vector<TypeParam> sum(n), shifted(n);
        for (size_t i = 0; i < n; ++i) {
            sum[i] = x[i] / 2 + y[i] / 4;
            shifted[i] = x[(i + n - 3) % n];
        }
        const auto fx = forward(plan, x), fy = forward(plan, y);
        std::vector<Exact> fsum(n);
        for (size_t i = 0; i < n; ++i) fsum[i] = fx[i] / 2.0L + fy[i] / 4.0L;
        EXPECT_LE(relativeError(forward(plan, sum), fsum), limit) << order;

        auto turned = fromPerm(fx);
        for (size_t k = 0; k < n; ++k)
            turned[k] *= std::polar(Exact{1}, -twoPi * Exact(3 * k % n) / Exact(n));
        EXPECT_LE(relativeError(forward(plan, shifted), toPerm(turned)), limit)
            << order;
    }
}

TYPED_TEST(RealFft, FlagsScaleAsNamed) {
    for (int order : {0, 1, 2, 3, 4, 7, 11, 12, 13, 14}) {
        const size_t n = size_t{1} << order;
        const auto x = randomNumbers<TypeParam>(n);
        const auto unscaled = forward(Plan<TypeParam>(order), x);
        const Exact inverseN = Exact{1} / Exact(n);
        const struct {
            int flag;
            Exact forward, roundTrip;
        } cases[] = {{ZubFftDivFwdByN, inverseN, 1},
                     {ZubFftDivInvByN, 1, 1},
                     {ZubFftDivBySqrtN, std::sqrt(inverseN), 1},
                     {ZubFftNoDiv, 1, Exact(n)}};
        for (const auto& c : cases) {
            const Plan<TypeParam> plan(order, c.flag);
            const auto y = forward(plan, x);
            // The root that is a factor is rounded itself.
            const bool hasRoot = c.flag == ZubFftDivBySqrtN;
            const Exact limit =
                2 * limitOf<TypeParam>(order + 1) +
                (hasRoot ? std::numeric_limits<TypeParam>::epsilon() : TypeParam{0});
            EXPECT_LE(relativeError(y, unscaled, c.forward), limit) << order << c.flag;
            EXPECT_LE(relativeError(inverse(plan, y), x, c.roundTrip), limit)
                << order << ' ' << c.flag;
        }
    }
}

/// Runs `call` on data at every alignment, in place and not, with either buffer.
template <class T, class Call>
void expectSameBits(const Plan<T>& plan, const std::vector<T>& x,
                    const std::vector<T>& expected, Call call) {
    const size_t n = x.size();
    int bytes;
    ASSERT_EQ(Zubs<T>::bufSize(plan.handle, &bytes), ZubStatusOk);
    std::vector<unsigned char> work(size_t(bytes) + 1);
    for (const size_t offset : {0, 4, 8, 12}) {
        // 4 bytes are all the alignment that a double has on this machine.
        std::vector<char> memory(2 * n * sizeof(T) + 64);
        const size_t base = -reinterpret_cast<uintptr_t>(memory.data()) & 15;
        T* const src = reinterpret_cast<T*>(memory.data() + base + offset);
        T* const dst = src + n;
        for (unsigned char* buffer : {(unsigned char*)nullptr, work.data() + 1}) {
            std::memcpy(src, x.data(), n * sizeof(T));
            ASSERT_EQ(call(src, dst, plan.handle, buffer), ZubStatusOk);
            EXPECT_EQ(std::memcmp(dst, expected.data(), n * sizeof(T)), 0) << offset;
            EXPECT_EQ(std::memcmp(src, x.data(), n * sizeof(T)), 0) << "source changed";
            ASSERT_EQ(call(src, src, plan.handle, buffer), ZubStatusOk);
            EXPECT_EQ(std::memcmp(src, expected.data(), n * sizeof(T)), 0)
                << "in place " << offset;
        }
    }
}
TYPED_TEST(RealFft, SameBitsHoweverCalled) {
    for (int order = 0; order <= 15; ++order) {
        SCOPED_TRACE(order);
        const Plan<TypeParam> plan(order, ZubFftDivBySqrtN);
        const auto x = randomNumbers<TypeParam>(size_t{1} << order);
        expectSameBits(plan, x, forward(plan, x), Zubs<TypeParam>::forward);
        expectSameBits(plan, x, inverse(plan, x), Zubs<TypeParam>::inverse);
    }
}

TYPED_TEST(RealFft, OnePlanServesSeveralThreads) {
    const Plan<TypeParam> plan(13);
    const auto x = randomNumbers<TypeParam>(1 << 13);
    const auto expected = forward(plan, x);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&] {
            for (int i = 0; i < 20; ++i) EXPECT_EQ(forward(plan, x), expected);
        });
    for (auto& thread : threads) thread.join();
}

TYPED_TEST(RealFft, StatusInTheOrderStated) {
    using Z = Zubs<TypeParam>;
    using Other = Zubs<std::conditional_t<sizeof(TypeParam) == 8, float, double>>;
    FftCtx* plan = nullptr;
    EXPECT_EQ(Z::initAlloc(nullptr, 31, 3, 0), ZubStatusNullPointer);
    EXPECT_EQ(Z::initAlloc(&plan, 31, 3, 0), ZubStatusFftOrderError);
    EXPECT_EQ(Z::initAlloc(&plan, -1, 2, 0), ZubStatusFftOrderError);
    for (int flag : {0, 3, 5, 16, -1})
        EXPECT_EQ(Z::initAlloc(&plan, 5, flag, 0), ZubStatusFftFlagError);
    for (int order = Z::firstImpossibleOrder; order <= 30; ++order)
        EXPECT_EQ(Z::initAlloc(&plan, order, 2, 0), ZubStatusMemoryError);
    EXPECT_EQ(plan, nullptr);

    TypeParam x[8] = {1};
    int bytes = -1;
    const Plan<TypeParam> own(3);
    FftCtx* other;
    ASSERT_EQ(Other::initAlloc(&other, 3, 2, 0), ZubStatusOk);
    EXPECT_EQ(Z::bufSize(own.handle, &bytes), ZubStatusOk);
    EXPECT_EQ(bytes, 0);
    EXPECT_EQ(Z::bufSize(other, &bytes), ZubStatusContextMismatch);
    EXPECT_EQ(Z::bufSize(nullptr, &bytes), ZubStatusNullPointer);
    EXPECT_EQ(Z::release(nullptr), ZubStatusNullPointer);
    EXPECT_EQ(Z::release(other), ZubStatusContextMismatch);
    for (auto call : {Z::forward, Z::inverse}) {
        EXPECT_EQ(call(x, x, nullptr, nullptr), ZubStatusNullPointer);
        EXPECT_EQ(call(nullptr, x, other, nullptr), ZubStatusContextMismatch);
        EXPECT_EQ(call(nullptr, x, own.handle, nullptr), ZubStatusNullPointer);
        EXPECT_EQ(call(x, nullptr, own.handle, nullptr), ZubStatusNullPointer);
    }
    Other::release(other);
}

TYPED_TEST(RealFft, ProductOfSpectra) {
    using Z = Zubs<TypeParam>;
    for (int len : {1, 2, 3, 4, 9, 16, 17, 40}) {
        const auto a = randomNumbers<TypeParam>(size_t(len), 4);
        auto b = randomNumbers<TypeParam>(size_t(len), 5);
        std::vector<Exact> expected(a.size());
        const int alone = len % 2 ? 1 : 2;
        for (int i = 0; i < alone; ++i)
            expected[size_t(i)] = Exact{a[size_t(i)]} * b[size_t(i)];
        for (size_t i = size_t(alone); i < a.size(); i += 2) {
            const Complex product = Complex(a[i], a[i + 1]) * Complex(b[i], b[i + 1]);
            expected[i] = product.real();
            expected[i + 1] = product.imag();
        }
        ASSERT_EQ(Z::multiply(a.data(), b.data(), len), ZubStatusOk);
        EXPECT_LE(relativeError(b, expected), Z::epsilon) << len;
    }
    TypeParam x[2] = {3, 5};
    EXPECT_EQ(Z::multiply(x, x, 1), ZubStatusOk);
    EXPECT_EQ(x[0], 9);
    EXPECT_EQ(x[1], 5);
    EXPECT_EQ(Z::multiply(nullptr, x, 0), ZubStatusNullPointer);
    EXPECT_EQ(Z::multiply(x, x, 0), ZubStatusSizeError);
}

} // namespace
