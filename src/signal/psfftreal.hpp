// Plans and real transforms of both precisions. A Precision gives:
//
//     Real, idCtx                  double and 9, float and 6
//     coreOrder                    the longest complex transform done by one core
//     coreBuffer(order)            bytes of work that core needs
//     sizes, initReversal, initCore, initLong   the tables' sizes and makers
//     initRecombination            the two tables of the recombination
//     spectrum, samples            the complex transform, from natural to natural order
//     toReal, toComplex            the recombination
#pragma once

#include <signal/psfftblkcn.hpp>
#include <signal/psfftsmall.hpp>

#include <climits>
#include <cstring>

namespace qorkes {

constexpr int largestOrder = 30;
constexpr int tableFreeOrders = 4;

/// Bytes of the complex transform's tables, of what their making needs, and of work.
struct LongSizes {
    int64_t table, temporary, buffer;
};

template <class T> T* allocate(int64_t bytes) {
    return bytes > INT_MAX ? nullptr
                           : static_cast<T*>(zubsMalloc_8u(static_cast<int>(bytes)));
}

template <class T> void deleteFftCtx(FftCtxOf<T>* plan) {
    plan->idCtx = 0;
    if (plan->isOwned != 1) return;
    zubsFree(plan->bitRevTab);
    zubsFree(plan->twdL1);
    zubsFree(plan->realRecTab);
    zubsFree(plan->ccsRecTab);
    zubsFree(plan);
}

/// False for an unknown flag.
template <class T> bool setNorm(FftCtxOf<T>& plan, int flag) {
    const double points = static_cast<double>(pointsOf(plan.order));
    switch (flag) {
    case ZubFftDivFwdByN:
    case ZubFftDivInvByN:
        plan.fwdNorm = flag == ZubFftDivFwdByN;
        plan.invNorm = flag == ZubFftDivInvByN;
        store(plan.normFactor, 1 / ext{points});
        return true;
    case ZubFftDivBySqrtN:
        plan.fwdNorm = plan.invNorm = 1;
        store(plan.normFactor, 1 / ext{round64(squareRoot(points))});
        return true;
    default:
        return flag == ZubFftNoDiv;
    }
}

/// What exists only while the tables of a plan are made.
template <class T> struct Scaffold {
    T* sines;
    T* temporary;
};

template <class Precision, class T = typename Precision::Real>
bool allocateTables(FftCtxOf<T>& plan, Scaffold<T>& scaffold) {
    const int order = plan.order - 1;
    LongSizes sizes = {coreTableBytes<T>(order), 0, Precision::coreBuffer(order)};
    if (order > Precision::coreOrder) sizes = Precision::sizes(order);
    const int64_t recombination = to16(pointsOf(plan.order) / 2 * int64_t{sizeof(T)});
    plan.bufSize = static_cast<int32_t>(sizes.buffer);
    scaffold.sines = allocate<T>((pointsOf(plan.order) / 4 + 1) * int64_t{sizeof(T)});
    plan.bitRevTab =
        allocate<int32_t>((pointsOf(order) / 4 + 1) * int64_t{sizeof(int)});
    plan.twdL1 = allocate<T>(sizes.table);
    plan.realRecTab = allocate<T>(recombination);
    plan.ccsRecTab = allocate<T>(recombination);
    if (sizes.temporary > 0) scaffold.temporary = allocate<T>(sizes.temporary);
    return scaffold.sines && plan.bitRevTab && plan.twdL1 && plan.realRecTab &&
           plan.ccsRecTab && (sizes.temporary == 0 || scaffold.temporary);
}

template <class Precision, class T = typename Precision::Real>
void fillTables(FftCtxOf<T>& plan, const Scaffold<T>& scaffold) {
    const int order = plan.order - 1;
    fillSines(plan.order, scaffold.sines);
    const Sines<T> sines{scaffold.sines, plan.order};
    Precision::initReversal(order, plan.bitRevTab);
    if (order <= Precision::coreOrder)
        Precision::initCore(order, sines, plan.twdL1);
    else
        Precision::initLong(plan, order, sines, plan.twdL1, scaffold.temporary);
    Precision::initRecombination(plan, sines);
}

template <class Precision>
int initAlloc(FftCtx** result, int order, int flag, int hint) {
    using T = typename Precision::Real;
    if (!result) return ZubStatusNullPointer;
    if (order < 0 || order > largestOrder) return ZubStatusFftOrderError;
    auto* const plan = allocate<FftCtxOf<T>>(sizeof(FftCtxOf<T>));
    if (!plan) return ZubStatusMemoryError;
    *plan = {};
    plan->idCtx = Precision::idCtx;
    plan->order = order;
    plan->hint = hint;
    plan->isOwned = 1;
    int status = ZubStatusOk;
    if (!setNorm(*plan, flag)) {
        status = ZubStatusFftFlagError;
    } else if (order >= tableFreeOrders) {
        Scaffold<T> scaffold{};
        if (allocateTables<Precision>(*plan, scaffold))
            fillTables<Precision>(*plan, scaffold);
        else
            status = ZubStatusMemoryError;
        zubsFree(scaffold.sines);
        zubsFree(scaffold.temporary);
    }
    if (status == ZubStatusOk)
        *result = reinterpret_cast<FftCtx*>(plan);
    else
        deleteFftCtx(plan);
    return status;
}

template <class Precision> int checkPlan(const FftCtx* plan) {
    if (!plan) return ZubStatusNullPointer;
    return planOf<typename Precision::Real>(plan)->idCtx == Precision::idCtx
               ? ZubStatusOk
               : ZubStatusContextMismatch;
}

template <class Precision> int freePlan(FftCtx* plan) {
    const int status = checkPlan<Precision>(plan);
    if (status == ZubStatusOk) deleteFftCtx(planOf<typename Precision::Real>(plan));
    return status;
}

template <class Precision> int getBufSize(const FftCtx* plan, int* bytes) {
    if (!bytes) return ZubStatusNullPointer;
    const int status = checkPlan<Precision>(plan);
    if (status != ZubStatusOk) return status;
    const int32_t size = planOf<typename Precision::Real>(plan)->bufSize;
    *bytes = size > 0 ? size + 16 : 0;
    return ZubStatusOk;
}

/// a + b and a - b of the first two numbers.
template <class T> QORKES_INLINE void sumAndDifference(const T* x, T* y) {
    rFFT_2<T, false>(x, y, T{});
}

/// Runs transform(work) on the caller's buffer, moved to a 16-byte boundary, or on one
/// of its own.
template <class T, class Transform>
int withBuffer(const FftCtxOf<T>& plan, unsigned char* buffer, Transform transform) {
    T* own = nullptr;
    T* work = nullptr;
    if (plan.bufSize > 0 && buffer) {
        const size_t missing = -reinterpret_cast<uintptr_t>(buffer) & 15;
        work = reinterpret_cast<T*>(buffer + missing);
    } else if (plan.bufSize > 0) {
        work = own = allocate<T>(plan.bufSize);
        if (!own) return ZubStatusMemoryError;
    }
    transform(work);
    zubsFree(own);
    return ZubStatusOk;
}

/// The routines for orders 0 to 3.
template <Direction direction, class T>
const SmallTransform<T>* smallTransforms(const FftCtxOf<T>& plan) {
    if constexpr (direction == Direction::forward)
        return plan.fwdNorm ? tbl_rFFTfwd_norm_small<T> : tbl_rFFTfwd_small<T>;
    else
        return plan.invNorm ? tbl_rFFTinv_norm_small<T> : tbl_rFFTinv_small<T>;
}

/// After the tests, the small transform of the plan's order or steps(plan, work).
template <class Precision, Direction direction, class T, class Steps>
int run(const T* src, T* dst, const FftCtx* handle, unsigned char* buffer,
        Steps steps) {
    const int status = checkPlan<Precision>(handle);
    if (status != ZubStatusOk) return status;
    if (!src || !dst) return ZubStatusNullPointer;
    const FftCtxOf<T>& plan = *planOf<T>(handle);
    if (plan.order >= tableFreeOrders)
        return withBuffer(plan, buffer, [&](T* work) { steps(plan, work); });
    smallTransforms<direction>(plan)[plan.order](src, dst, plan.normFactor);
    return ZubStatusOk;
}

template <class Precision, class T = typename Precision::Real>
int forward(const T* src, T* dst, const FftCtx* handle, unsigned char* buffer) {
    return run<Precision, Direction::forward>(
        src, dst, handle, buffer, [=](const FftCtxOf<T>& plan, T* work) {
            Precision::spectrum(plan, src, dst, plan.order - 1, work);
            sumAndDifference(dst, dst);
            Precision::toReal(dst, 1 << (plan.order - 1), plan.realRecTab);
        });
}

template <class Precision, class T = typename Precision::Real>
int inverse(const T* src, T* dst, const FftCtx* handle, unsigned char* buffer) {
    return run<Precision, Direction::inverse>(
        src, dst, handle, buffer, [=](const FftCtxOf<T>& plan, T* work) {
            sumAndDifference(src, dst);
            Precision::toComplex(src, dst, 1 << (plan.order - 1), plan.ccsRecTab);
            Precision::samples(plan, dst, plan.order - 1, work);
        });
}

} // namespace qorkes
