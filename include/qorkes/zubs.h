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
 * 64fc complex numbers as pairs of real and imaginary part. Every operation whose
 * result is a status tests its arguments in the order told here and writes nothing when
 * a test fails. Arrays need the alignment of their elements alone, 4 bytes for doubles;
 * tables of the float transforms that a caller makes stand on 16 bytes.
 * Nothing here keeps state: calls on different arrays may run in parallel.
 */
#ifndef QORKES_ZUBS_H
#define QORKES_ZUBS_H

#include <qorkes/api.h>

#define ZubStatusOk              0
#define ZubStatusSizeError       (-6)  /* a length is below 1 */
#define ZubStatusNullPointer     (-8)  /* a pointer is NULL */
#define ZubStatusMemoryError     (-9)  /* an allocation failed */
#define ZubStatusFftOrderError   (-15) /* order of an FFT outside 0 to 30 */
#define ZubStatusFftFlagError    (-16) /* unknown normalisation flag */
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

/* ---- Real FFT ----------------------------------------------------------------------
 *
 * A plan holds the tables of one transform of N = 2^order real points, order 0 to 30,
 * in one precision. Forward, the plain sum
 *
 *     X[k] = sum over n of x[n] exp(-2 pi i k n / N)
 *
 * of which k = 0 to N/2 tell all, the rest being their conjugates. They come in the
 * Perm layout, N numbers like the input:
 *
 *     place     0       1      2      3      4      5    ...    N-2       N-1
 *            +-------+------+------+------+------+------+---+----------+----------+
 *            | X[0]  |X[N/2]| re   | im   | re   | im   |   | re       | im       |
 *            |       |      |    X[1]     |    X[2]     |...|      X[N/2 - 1]     |
 *            +-------+------+------+------+------+------+---+----------+----------+
 *
 * X[0] and X[N/2] are real; N = 1 has X[0] alone. The inverse, with the positive
 * exponent, takes this layout back to N reals: without scaling, N times the input.
 *
 * Root-mean-square error against an exact transform, relative to the result: below 0.35
 * sqrt(order) units of 2^-52 in double, 0.5 sqrt(order) units of 2^-23 in float.
 *
 * Method: N/2 complex points by radix 4, longer ones by rows and columns (Cooley and
 * Tukey, 1965; Bailey, 1990), and a recombination (Cooley, Lewis and Welch, 1970).
 * Arithmetic is done at the precision and rounding that the caller has in force.
 */
typedef struct FftCtx FftCtx;

#define ZubFftDivFwdByN  1 /* forward divides by N */
#define ZubFftDivInvByN  2 /* inverse divides by N */
#define ZubFftDivBySqrtN 4 /* both divide by sqrt(N) */
#define ZubFftNoDiv      8 /* neither divides */

/* Makes a plan. `flag` is one of the four above, `hint` is kept and has no effect. On a
 * failure *plan keeps its value.
 * Tests: plan NULL, order (ZubStatusFftOrderError), memory, flag
 * (ZubStatusFftFlagError). Tables that 2 GB cannot hold count as ZubStatusMemoryError:
 * double orders from 28, float orders from 29. */
QORKES_API int zubsFFTInitAlloc_R_64f(FftCtx** plan, int order, int flag, int hint);
QORKES_API int zubsFFTInitAlloc_R_32f(FftCtx** plan, int order, int flag, int hint);

/* Releases a plan; no transform may be running on it.
 * Tests, of every operation with a plan: NULL, then its kind: a plan of the other
 * precision or a released one gives ZubStatusContextMismatch. */
QORKES_API int zubsFFTFree_R_64f(FftCtx* plan);
QORKES_API int zubsFFTFree_R_32f(FftCtx* plan);

/* Bytes of the work buffer that a transform wants; 0 if it needs none. */
QORKES_API int zubsFFTGetBufSize_R_64f(const FftCtx* plan, int* bytes);
QORKES_API int zubsFFTGetBufSize_R_32f(const FftCtx* plan, int* bytes);

/* The transforms. dst may be src; otherwise they must not overlap and src is kept.
 * `buffer` has the size above and any alignment, or is NULL: then one is allocated for
 * the call, which can give ZubStatusMemoryError. Results are the same bits either way,
 * in place or not, at any alignment. Transforms do not change the plan: threads may
 * share it, each with a buffer of its own.
 * Tests: plan NULL, its kind, src and dst NULL. */
QORKES_API int zubsFFTFwd_RToPerm_64f(const double* src, double* dst,
                                      const FftCtx* plan, unsigned char* buffer);
QORKES_API int zubsFFTFwd_RToPerm_32f(const float* src, float* dst, const FftCtx* plan,
                                      unsigned char* buffer);
QORKES_API int zubsFFTInv_PermToR_64f(const double* src, double* dst,
                                      const FftCtx* plan, unsigned char* buffer);
QORKES_API int zubsFFTInv_PermToR_32f(const float* src, float* dst, const FftCtx* plan,
                                      unsigned char* buffer);

/* srcDst becomes the product, number by number, of two spectra of `len` real points in
 * Perm layout; an odd len has no X[N/2]. Tests: NULL, then len below 1. */
QORKES_API int zubsMulPerm_64f_I(const double* src, double* srcDst, int len);
QORKES_API int zubsMulPerm_32f_I(const float* src, float* srcDst, int len);

/* ---- Convolution -------------------------------------------------------------------
 *
 * dst receives all len1 + len2 - 1 elements of the linear convolution
 *
 *     dst[k] = sum over i of src1[i] src2[k - i]
 *
 * and must not overlap the sources. The lengths alone choose the way, L being the
 * longer and S the shorter one: results of fewer than 256 elements are summed directly,
 * and so is an S below 32; else L below 3 S takes one transform of everything, and any
 * other L overlap-save blocks of at least 4 S points (Stockham, 1966). The direct sum
 * rounds each output after each product, in the order of S from block to block of 4096
 * outputs. A float sum leaves out products with elements that there are none of.
 *
 * Plans and work arrays live for the call alone. dst may be partly written when
 * overlap-save fails. Tests: NULL, then a length below 1; ZubStatusMemoryError.
 */
QORKES_API int zubsConv_32f(const float* src1, int len1, const float* src2, int len2,
                            float* dst);
QORKES_API int zubsConv_64f(const double* src1, int len1, const double* src2, int len2,
                            double* dst);

/* ---- Engines of the FFT ------------------------------------------------------------
 *
 * What the real transforms are made of. Nothing here tests its arguments. n = 2^order
 * counts complex numbers, which stand as pairs of real and imaginary part; within the
 * float engines also split, in blocks of four real and then four imaginary parts. Fwd
 * has the negative exponent, Inv the positive one; both read the same tables, which
 * hold exp(-i t) as the pair cos t, -sin t.
 */

/* The table that all others are filled from: sin(2 pi k / N), k = 0 to N/4, for N =
 * 2^order. Below, `base` is such a table and baseOrder its order. */
QORKES_API void zubs_initTabTwdBase_64f(int order, double* table);
QORKES_API void zubs_initTabTwdBase_32f(int order, float* table);

/* Bit reversal of 2^order numbers, order at least 2. The first table has n/4 + 1 words,
 * in units of reals: pairs that change places, 0, places that stay, 0. The second has
 * n/4 + 1 words: twice the reversal of its place in order - 2 bits, and 0 at the end.
 */
QORKES_API void zubs_initTabBitRev(int order, int32_t* table);
QORKES_API void zubs_initTabBitRevNorm(int order, int32_t* table);

/* Puts n numbers into bit-reversed order by the first table: in place, and from one
 * array to another. */
QORKES_API void zubs_BitRev1_Z(double* data, int n, const int32_t* table);
QORKES_API void zubs_BitRev1_C(float* data, int n, const int32_t* table);
QORKES_API void zubs_BitRev2_Z(const double* src, double* dst, int n,
                               const int32_t* table);
QORKES_API void zubs_BitRev2_C(const float* src, float* dst, int n,
                               const int32_t* table);

/* Twiddles of the radix-4 cores. Double: (n/4 + 1) * 48 bytes, record k holding the
 * powers 1 to 3 of the k-th twiddle. Float: at most 8 n bytes, pass by pass, split by
 * fours, the powers 1 to 3 of each four; nothing for n = 8. */
QORKES_API void zubs_initTabTwd_L1_64f(int order, const double* base, int baseOrder,
                                       double* table);
QORKES_API void zubs_initTabTwd_L1_32f(int order, const float* base, int baseOrder,
                                       float* table);

/* The cores, on bit-reversed data in place: n from 4 (double) or 8 (float) to 1024. A
 * float core on data off a 16-byte boundary works in `buffer`, n numbers, and leaves
 * the result split unless `final` is set. */
QORKES_API void zubs_cRadix4Fwd_64fc(double* data, int n, const double* table);
QORKES_API void zubs_cRadix4Inv_64fc(double* data, int n, const double* table);
QORKES_API void zubs_cRadix4Fwd_32fc(float* data, int n, const float* table,
                                     float* buffer, int final);
QORKES_API void zubs_cRadix4Inv_32fc(float* data, int n, const float* table,
                                     float* buffer, int final);

/* The same from data in natural order, by the second reversal table. `buffer` is used
 * if dst is src or off a 16-byte boundary. */
QORKES_API void zubs_cRadix4FwdNorm_32fc(const float* src, float* dst, int n,
                                         const float* table, const int32_t* reversal,
                                         float* buffer);
QORKES_API void zubs_cRadix4InvNorm_32fc(const float* src, float* dst, int n,
                                         const float* table, const int32_t* reversal,
                                         float* buffer);

/* Long transforms, order from 10 (double) or 11 (float): bytes of the table block, of
 * the room that its making needs, and of the transforms' work buffer; the making, which
 * sets the plan's pointers into the block; and the transforms, which scale as the plan
 * says. */
QORKES_API void zubs_getSizeTwd_Large_64f(int order, int64_t* table, int64_t* temporary,
                                          int64_t* buffer);
QORKES_API void zubs_getSizesTwd_Large_32f(int order, int64_t* table,
                                           int64_t* temporary, int64_t* buffer);
QORKES_API void zubs_initTabTwd_Large_64f(FftCtx* plan, int order, const double* base,
                                          int baseOrder, double* table,
                                          double* temporary);
QORKES_API void zubs_initTabTwd_Large_32f(FftCtx* plan, int order, const float* base,
                                          int baseOrder, float* table,
                                          float* temporary);
QORKES_API void zubs_cFftFwd_Large_64fc(const FftCtx* plan, double* data, int order,
                                        double* buffer);
QORKES_API void zubs_cFftInv_Large_64fc(const FftCtx* plan, double* data, int order,
                                        double* buffer);
QORKES_API void zubs_cFftFwd_Large_32fc(const FftCtx* plan, float* data, int order,
                                        float* buffer);
QORKES_API void zubs_cFftInv_Large_32fc(const FftCtx* plan, float* data, int order,
                                        float* buffer);

/* Joins two transformed halves of split data by radix 2; `final` asks for pairs. */
QORKES_API void zubs_cFftFwd_Step_R2_32fc(float* data, int n, const float* table,
                                          int final);
QORKES_API void zubs_cFftInv_Step_R2_32fc(float* data, int n, const float* table,
                                          int final);

/* Four columns of a split matrix, `columns` numbers a row: out to four buffers of
 * `rows` pairs each, times the twiddles (mode 1) or their conjugates (mode -1); and
 * back from four split buffers, to pairs if `last`. */
QORKES_API void zubs_cFftBlkMergeMpy_32fc(const float* data, float* buffer,
                                          const float* twiddles, int mode, int columns,
                                          int rows);
QORKES_API void zubs_cFftBlkSplit_32fc(float* data, const float* buffer, int columns,
                                       int rows, int last);

/* From the transform of n complex numbers to the spectrum of the 2n reals they stand
 * for (direction 1), and back to twice that transform (direction -1); the other
 * direction of each is the same for the positive exponent. Places 0 and 1 are the
 * caller's. Tables: for 2n points, (cos / 2, 1/2 - sin / 2) and (cos, -sin); double
 * from k = 0, float from k = 1, split by fours. n from 1 (double) or 8 (float). */
QORKES_API void zubs_cRealRecombine_64f(double* data, int n, int direction,
                                        const double* table);
QORKES_API void zubs_cRealRecombine_32f(float* data, int n, int direction,
                                        const float* table);
QORKES_API void zubs_cCcsRecombine_64f(const double* src, double* dst, int n,
                                       int direction, const double* table);
QORKES_API void zubs_cCcsRecombine_32f(const float* src, float* dst, int n,
                                       int direction, const float* table);

/* data[i] times factor, in place. */
QORKES_API void zubs_rbMpy1_64f(double factor, double* data, int count);
QORKES_API void zubs_rbMpy1_32f(float factor, float* data, int count);

#endif
