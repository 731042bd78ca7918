/* Signal primitives: aligned memory, bulk copy and clear, real FFT, convolution.
 *
 *     double x[1024], spectrum[1024];
 *     FftCtx* plan;
 *     if (zubsFFTInitAlloc_R_64f(&plan, 10, ZubFftDivInvByN, 0) == ZubStatusOk) {
 *         zubsFFTFwd_RToPerm_64f(x, spectrum, plan, 0);
 *         zubsFFTFree_R_64f(plan);
 *     }
 *
 * Names: zubs, the operation, the element: 8u bytes, 32f floats, 64f doubles, 32fc and
 * 64fc complex numbers as pairs of real and imaginary part. Every operation whose result
 * is a status tests its arguments in the order told here and writes nothing when a test
 * fails. Arrays need the alignment of their elements alone, 4 bytes for doubles. Nothing
 * here keeps state: calls on different arrays may run in parallel.
 */
#ifndef QORKES_ZUBS_H
#define QORKES_ZUBS_H

#include <qorkes/api.h>

#define ZubStatusOk 0
#define ZubStatusSizeError (-6)        /* a length is below 1 */
#define ZubStatusNullPointer (-8)      /* a pointer is NULL */
#define ZubStatusMemoryError (-9)      /* an allocation failed */
#define ZubStatusFftOrderError (-15)   /* order of an FFT outside 0 to 30 */
#define ZubStatusFftFlagError (-16)    /* unknown normalisation flag */
#define ZubStatusContextMismatch (-17) /* not a live plan of this precision */

/* ---- Aligned memory ----------------------------------------------------------------
 *
 * An uninitialised array of `len` elements whose address is a multiple of 32, or NULL
 * if len is below 1 or memory is short. zubsFree alone releases it; NULL is allowed.
 */
QORKES_API void* zubsMalloc_8u(int len);
QORKES_API float* zubsMalloc_32f(int len);
QORKES_API double* zubsMalloc_64f(int len);
QORKES_API void zubsFree(void* p);

/* ---- Copy and clear ----------------------------------------------------------------
 *
 * `len` elements are copied from src to dst, or set to zero. The arrays of a copy must
 * not overlap; this is not tested. Copies from 8192 bytes and clears from 20480 bytes
 * on write past the cache, so that a large operation leaves the caller's working set
 * where it is; reading the result back at once costs more there.
 *
 * Tests: NULL (ZubStatusNullPointer), then len below 1 (ZubStatusSizeError).
 */
QORKES_API int zubsZero_8u(unsigned char* dst, int len);
QORKES_API int zubsZero_32f(float* dst, int len);
QORKES_API int zubsZero_64f(double* dst, int len);
QORKES_API int zubsCopy_32f(const float* src, float* dst, int len);
QORKES_API int zubsCopy_64f(const double* src, double* dst, int len);

#endif
