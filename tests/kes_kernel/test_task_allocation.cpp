// With malloc and free of this program: tasks and kernels when memory fails.
#include "operation.hpp"

#include <gtest/gtest.h>

using namespace qorkes::test;

#if defined(__SANITIZE_ADDRESS__)
TEST(TaskAllocation, NeedsMallocForItself) {
    GTEST_SKIP() << "the sanitizer has malloc";
}
#else

#include <support/ledger.hpp>
#include <support/platform.hpp>

namespace {

TEST(TaskAllocation, NoRecord) {
    const int shape = 1;
    TaskRecord *const none = nullptr, *task = none;
    const auto create = [&] {
        return __kesNewTask(&task, 1, 0, 0, 0, 1, 1, &shape, &shape, &shape);
    };
    EXPECT_EQ(watched(1, create), KesStatusNoMemory);
    EXPECT_EQ(task, none);
    create();
    TaskRecord* copy = none;
    const auto copying = [&] { return __kesCopyTask(&copy, task); };
    EXPECT_EQ(watched(1, copying), KesStatusNoMemory);
    EXPECT_EQ(copy, none);
    EXPECT_EQ(watched(0, [&] { return __kesDeleteTask(&task); }), KesStatusOk);
    EXPECT_EQ(ledger.live, -1);
}

/// Every failing allocation is reported and leaves nothing, z included. The first
/// `copies` are dense copies, others are the transform's. Returns their number.
template <class T>
int failEach(const Kernel<T>& kernel, const Operation& o, int copies) {
    SCOPED_TRACE(kernel.name);
    std::minstd_rand random(1);
    const auto x = randomArray<T>(o.x.room(o.rank), random);
    const auto y = randomArray<T>(o.y.room(o.rank), random);
    const std::vector<T> before(o.z.room(o.rank), T(77));
    std::vector<T> z = before;
    const int calls = failingEach(
        [&] { return kernel.run(o, x.data(), y.data(), z.data()); },
        [&](int status, int k) {
            EXPECT_EQ(status, k <= copies ? KesStatusCcNoMemory : KesStatusCcFftFailed);
            EXPECT_EQ(ledger.live, 0) << "call " << k;
            EXPECT_EQ(z, before) << "call " << k;
        });
    EXPECT_EQ(ledger.live, 0);
    EXPECT_NE(z, before);
    return calls;
}

/// Dense arrays, or strides that no dimension has in a dense one.
Operation operation(int job, int rank, bool dense) {
    Operation o = {job, rank, {}, {}, {}, {}, {}};
    for (int d = 0; d < rank; ++d) {
        o.x.shape[d] = rank == 1 ? 300 : 3;
        o.y.shape[d] = rank == 1 ? 200 : 5;
        o.z.shape[d] = o.x.shape[d] + o.y.shape[d] - 1;
        o.start[d] = o.firstPlace(d);
        o.dec[d] = 1;
    }
    for (Array* array : {&o.x, &o.y, &o.z})
        for (int d = 0, next = 1; d < rank; next *= array->shape[d++])
            array->stride[d] = dense ? next : 1 - 2 * next;
    return o;
}

template <class T>
void failAll(const Pair<T>& lines, const Pair<T>& ffts, const Pair<T>& grids,
             bool copiesAll) {
    for (int job : {1, 2})
        for (bool dense : {false, true}) {
            const int needed = dense && !copiesAll ? 0 : 3;
            const auto reversed = [&](int reversing) {
                return std::max(needed, int{job == reversing});
            };
            const Operation line = operation(job, 1, dense);
            const Operation grid = operation(job, 3, dense);
            int copies = reversed(KesTaskConvolution);
            EXPECT_EQ(failEach(lines[job - 1], line, copies), copies);
            EXPECT_EQ(failEach(grids[job - 1], grid, copies), copies);
            copies = reversed(KesTaskCorrelation);
            EXPECT_GT(failEach(ffts[job - 1], line, copies), copies + 6);
        }
}
TEST(TaskAllocation, EveryFailureIsReportedAndLeavesNothing) {
    failAll(ddDirect, ddFft, ddAll, false);
    failAll(sdDirect, sdFft, sdAll, true);
    failAll(ssDirect, ssFft, ssAll, false);
}

// Arrays that repeat one element can have more than memory has.
TEST(TaskAllocation, CopiesBeyondMemory) {
    Operation o = operation(KesTaskConvolution, 7, true);
    const double x = 1, y = 1;
    double z = 77;
    for (int d = 0; d < 7; ++d) {
        o.x.shape[d] = 1 << 30, o.y.shape[d] = o.z.shape[d] = 1;
        o.x.stride[d] = 0;
    }
    EXPECT_EQ(ddAll[0].run(o, &x, &y, &z), KesStatusCcNoMemory);
    EXPECT_EQ(z, 77);
    if (!hasSmallAddresses) return; // of one dimension, they can be
    EXPECT_EQ(ddDirect[0].run(o, &x, &y, &z), KesStatusCcNoMemory);
    EXPECT_EQ(ddFft[0].run(o, &x, &y, &z), KesStatusCcNoMemory);
    EXPECT_EQ(z, 77);
}

} // namespace
#endif
