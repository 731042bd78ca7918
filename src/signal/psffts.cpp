// Real FFT in single precision: zubsFFTInitAlloc_R_32f, zubsFFTFree_R_32f,
// zubsFFTGetBufSize_R_32f, zubsFFTFwd_RToPerm_32f, zubsFFTInv_PermToR_32f.
//
// From 16 points on, N reals are taken as N/2 complex numbers, transformed, and
// recombined. Up to 512 complex points the transform reads the data in reversed order
// by itself.
#include <signal/lanes.hpp>
#include <signal/psfftreal.hpp>

using namespace qorkes;

namespace {

constexpr int fusedOrder = 9;

struct Precision {
    using Real = float;
    static constexpr int idCtx = 6;
    static constexpr int coreOrder = 10;

    static int64_t coreBuffer(int order) { return to16(8 * pointsOf(order)); }
    static LongSizes sizes(int order) {
        LongSizes sizes;
        zubs_getSizesTwd_Large_32f(order, &sizes.table, &sizes.temporary,
                                   &sizes.buffer);
        return sizes;
    }
    static void initReversal(int order, int32_t* table) {
        if (order <= fusedOrder)
            zubs_initTabBitRevNorm(order, table);
        else
            zubs_initTabBitRev(order, table);
    }
    static void initCore(int order, const Sines<float>& sines, float* table) {
        zubs_initTabTwd_L1_32f(order, sines.table, sines.order, table);
    }
    static void initLong(FftCtxOf<float>& plan, int order, const Sines<float>& sines,
                         float* block, float* temporary) {
        zubs_initTabTwd_Large_32f(reinterpret_cast<FftCtx*>(&plan), order, sines.table,
                                  sines.order, block, temporary);
    }
    /// From k = 1 on, by fours: the first components, then the second.
    static void initRecombination(FftCtxOf<float>& plan, const Sines<float>& sines) {
        SplitWriter writer{plan.ccsRecTab};
        for (int64_t k = 1; k <= pointsOf(plan.order) / 4; k += 4)
            writer.write(sines, plan.order, [=](int lane) { return k + lane; });
        for (int64_t i = 0; i < pointsOf(plan.order) / 2; ++i) {
            const ext half = i % 8 < 4 ? 0.0L : 0.5L;
            plan.realRecTab[i] = round32(half + 0.5L * plan.ccsRecTab[i]);
        }
    }

    static void spectrum(const FftCtxOf<float>& plan, const float* src, float* dst,
                         int order, float* work) {
        const int n = 1 << order;
        if (order <= fusedOrder) {
            zubs_cRadix4FwdNorm_32fc(src, dst, n, plan.twdL1, plan.bitRevTab, work);
        } else {
            if (src == dst)
                zubs_BitRev1_C(dst, n, plan.bitRevTab);
            else
                zubs_BitRev2_C(src, dst, n, plan.bitRevTab);
            if (order > coreOrder)
                return zubs_cFftFwd_Large_32fc(reinterpret_cast<const FftCtx*>(&plan),
                                               dst, order, work);
            zubs_cRadix4Fwd_32fc(dst, n, plan.twdL1, work, 1);
        }
        if (plan.fwdNorm) zubs_rbMpy1_32f(plan.normFactor, dst, 2 * n);
    }
    static void samples(const FftCtxOf<float>& plan, float* dst, int order,
                        float* work) {
        const int n = 1 << order;
        if (order <= fusedOrder) {
            zubs_cRadix4InvNorm_32fc(dst, dst, n, plan.twdL1, plan.bitRevTab, work);
        } else {
            zubs_BitRev1_C(dst, n, plan.bitRevTab);
            if (order > coreOrder)
                return zubs_cFftInv_Large_32fc(reinterpret_cast<const FftCtx*>(&plan),
                                               dst, order, work);
            zubs_cRadix4Inv_32fc(dst, n, plan.twdL1, work, 1);
        }
        if (plan.invNorm) zubs_rbMpy1_32f(plan.normFactor, dst, 2 * n);
    }
    static void toReal(float* data, int n, const float* table) {
        zubs_cRealRecombine_32f(data, n, 1, table);
    }
    static void toComplex(const float* src, float* dst, int n, const float* table) {
        zubs_cCcsRecombine_32f(src, dst, n, -1, table);
    }
};

} // namespace

int zubsFFTInitAlloc_R_32f(FftCtx** plan, int order, int flag, int hint) {
    return initAlloc<Precision>(plan, order, flag, hint);
}
int zubsFFTFree_R_32f(FftCtx* plan) { return freePlan<Precision>(plan); }
int zubsFFTGetBufSize_R_32f(const FftCtx* plan, int* bytes) {
    return getBufSize<Precision>(plan, bytes);
}
int zubsFFTFwd_RToPerm_32f(const float* src, float* dst, const FftCtx* plan,
                           unsigned char* buffer) {
    return forward<Precision>(src, dst, plan, buffer);
}
int zubsFFTInv_PermToR_32f(const float* src, float* dst, const FftCtx* plan,
                           unsigned char* buffer) {
    return inverse<Precision>(src, dst, plan, buffer);
}
