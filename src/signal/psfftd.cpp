// Real FFT in double precision: zubsFFTInitAlloc_R_64f, zubsFFTFree_R_64f,
// zubsFFTGetBufSize_R_64f, zubsFFTFwd_RToPerm_64f, zubsFFTInv_PermToR_64f.
//
// From 16 points on, N reals are taken as N/2 complex numbers, transformed, and
// recombined.
#include <signal/psfftreal.hpp>

using namespace qorkes;

namespace {

struct Precision {
    using Real = double;
    static constexpr int idCtx = 9;
    static constexpr int coreOrder = 9;

    static int64_t coreBuffer(int) { return 0; }
    static LongSizes sizes(int order) {
        LongSizes sizes;
        zubs_getSizeTwd_Large_64f(order, &sizes.table, &sizes.temporary, &sizes.buffer);
        return sizes;
    }
    static void initReversal(int order, int32_t* table) {
        zubs_initTabBitRev(order, table);
    }
    static void initCore(int order, const Sines<double>& sines, double* table) {
        zubs_initTabTwd_L1_64f(order, sines.table, sines.order, table);
    }
    static void initLong(FftCtxOf<double>& plan, int order, const Sines<double>& sines,
                         double* block, double* temporary) {
        zubs_initTabTwd_Large_64f(reinterpret_cast<FftCtx*>(&plan), order, sines.table,
                                  sines.order, block, temporary);
    }
    static void initRecombination(FftCtxOf<double>& plan, const Sines<double>& sines) {
        for (int64_t k = 0; k < pointsOf(plan.order) / 4; ++k) {
            const Twiddle<double> w = sines.at(plan.order, k);
            plan.realRecTab[2 * k] = round64(0.5L * w.cosine);
            plan.realRecTab[2 * k + 1] = round64(0.5L + 0.5L * w.minusSine);
            plan.ccsRecTab[2 * k] = w.cosine;
            plan.ccsRecTab[2 * k + 1] = w.minusSine;
        }
    }

    static void spectrum(const FftCtxOf<double>& plan, const double* src, double* dst,
                         int order, double* work) {
        const int n = 1 << order;
        if (src == dst)
            zubs_BitRev1_Z(dst, n, plan.bitRevTab);
        else
            zubs_BitRev2_Z(src, dst, n, plan.bitRevTab);
        if (order > coreOrder)
            return zubs_cFftFwd_Large_64fc(reinterpret_cast<const FftCtx*>(&plan), dst,
                                           order, work);
        zubs_cRadix4Fwd_64fc(dst, n, plan.twdL1);
        if (plan.fwdNorm) zubs_rbMpy1_64f(plan.normFactor, dst, 2 * n);
    }
    static void samples(const FftCtxOf<double>& plan, double* dst, int order,
                        double* work) {
        const int n = 1 << order;
        zubs_BitRev1_Z(dst, n, plan.bitRevTab);
        if (order > coreOrder)
            return zubs_cFftInv_Large_64fc(reinterpret_cast<const FftCtx*>(&plan), dst,
                                           order, work);
        zubs_cRadix4Inv_64fc(dst, n, plan.twdL1);
        if (plan.invNorm) zubs_rbMpy1_64f(plan.normFactor, dst, 2 * n);
    }
    static void toReal(double* data, int n, const double* table) {
        zubs_cRealRecombine_64f(data, n, 1, table);
    }
    static void toComplex(const double* src, double* dst, int n, const double* table) {
        zubs_cCcsRecombine_64f(src, dst, n, -1, table);
    }
};

} // namespace

int zubsFFTInitAlloc_R_64f(FftCtx** plan, int order, int flag, int hint) {
    return initAlloc<Precision>(plan, order, flag, hint);
}
int zubsFFTFree_R_64f(FftCtx* plan) { return freePlan<Precision>(plan); }
int zubsFFTGetBufSize_R_64f(const FftCtx* plan, int* bytes) {
    return getBufSize<Precision>(plan, bytes);
}
int zubsFFTFwd_RToPerm_64f(const double* src, double* dst, const FftCtx* plan,
                           unsigned char* buffer) {
    return forward<Precision>(src, dst, plan, buffer);
}
int zubsFFTInv_PermToR_64f(const double* src, double* dst, const FftCtx* plan,
                           unsigned char* buffer) {
    return inverse<Precision>(src, dst, plan, buffer);
}
