// With malloc and free of this program: what fails when memory does, what is left
// behind, and by what they allocate, which way convolutions take.
#include "precisions.hpp"

#include <algorithm>

using namespace qorkes::test;

#if defined(__SANITIZE_ADDRESS__)
TEST(Allocation, NeedsMallocForItself) { GTEST_SKIP() << "the sanitizer has malloc"; }
#else

#include <support/ledger.hpp>

namespace {

template <class T> struct Allocation : testing::Test {};
TYPED_TEST_SUITE(Allocation, Precisions);

template <class Call> int failingEach(Call call) {
    return qorkes::test::failingEach(call, [](int status, int k) {
        EXPECT_EQ(status, ZubStatusMemoryError) << "call " << k;
        EXPECT_EQ(ledger.live, 0) << "call " << k;
    });
}

TYPED_TEST(Allocation, EveryFailureIsReportedAndLeavesNothing) {
    using Z = Zubs<TypeParam>;
    for (int order : {0, 3, 4, 10, 11, 12, 14, 22}) {
        const int calls = failingEach([=] {
            FftCtx* plan = nullptr;
            const int status = Z::initAlloc(&plan, order, 2, 0);
            EXPECT_EQ(plan == nullptr, status != ZubStatusOk);
            if (plan) Z::release(plan);
            return status;
        });
        EXPECT_EQ(ledger.live, 0) << order;
        EXPECT_GE(calls, order < 4 ? 1 : 6) << order;
    }

    const Plan<TypeParam> plan(14);
    std::vector<TypeParam> x(1 << 14), y(3000);
    for (auto call : {Z::forward, Z::inverse})
        EXPECT_EQ(failingEach([&] { return call(x.data(), x.data(), plan.handle, 0); }),
                  1);

    for (int taps : {900, 100})
        EXPECT_GT(failingEach([&] {
                      return Z::convolve(x.data(), 1000, x.data() + 2000, taps,
                                         y.data());
                  }),
                  6);
}

TYPED_TEST(Allocation, ReleasedPlanIsRefused) {
    FftCtx* plan;
    ASSERT_EQ(Zubs<TypeParam>::initAlloc(&plan, 2, 2, 0), ZubStatusOk);
    TypeParam x[4] = {};
    ledger.keeping = true; // so that the record may still be looked at
    EXPECT_EQ(Zubs<TypeParam>::release(plan), ZubStatusOk);
    EXPECT_EQ(Zubs<TypeParam>::forward(x, x, plan, nullptr), ZubStatusContextMismatch);
    EXPECT_EQ(Zubs<TypeParam>::release(plan), ZubStatusContextMismatch);
    ledger.keeping = false;
}

// A one-shot transform of N points keeps 2 N elements, overlap-save one more at least,
// of fewer points; a direct sum keeps nothing.
TYPED_TEST(Allocation, WayOfAConvolution) {
    enum Way { direct, oneShot, overlapSave };
    const struct {
        int len1, len2;
        Way way;
        size_t points;
    } cases[] = {{1, 1, direct, 0},           {223, 33, direct, 0},
                 {224, 33, overlapSave, 256}, {224, 32, direct, 0},
                 {225, 32, overlapSave, 128}, {225, 31, direct, 0},
                 {90, 40, direct, 0},         {230, 90, oneShot, 512},
                 {269, 90, oneShot, 512},     {270, 90, overlapSave, 512},
                 {129, 128, oneShot, 256},    {4096, 31, direct, 0}};
    std::vector<TypeParam> x(5000), y(5000);
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.len1 << ' ' << c.len2);
        const int status = watched(0, [&] {
            return Zubs<TypeParam>::convolve(x.data(), c.len1, x.data(), c.len2,
                                             y.data());
        });
        EXPECT_EQ(status, ZubStatusOk);
        EXPECT_EQ(ledger.live, 0);
        EXPECT_EQ(ledger.calls == 0, c.way == direct);
        if (c.way == direct) continue;
        int order = 0, bytes = 0;
        while (size_t{1} << order < c.points) ++order;
        const Plan<TypeParam> plan(order);
        Zubs<TypeParam>::bufSize(plan.handle, &bytes);
        const size_t unit = c.way == oneShot ? 4 : sizeof(TypeParam);
        const size_t room = (size_t(bytes) + unit - 1) / unit + (c.way == overlapSave);
        EXPECT_EQ(ledger.largest,
                  (2 * c.points + room) * sizeof(TypeParam) + 32 + sizeof(void*));
    }
}

} // namespace
#endif
