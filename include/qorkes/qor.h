/* Vector mathematics: elementary functions on whole arrays.
 *
 * Every kernel applies one function to n elements and writes n results:
 *
 *     double a[3] = {1.0, 4.0, -9.0}, y[3];
 *     _qordSqrt_HA(3, a, y);              // 1, 2, NaN
 *     int status = _qorGetErrStatus();    // QOR_STATUS_ERRDOM, from the third element
 *
 * Names: _qor, d or s for double or float, the function, the accuracy. Double kernels
 * come as HA (high) and 50, float kernels as HA, 21 and 11; where a second algorithm
 * was not worth having, the lower accuracy is another name for the same kernel and
 * reports under the name of the kernel that does the work.
 *
 * Arguments: n of 0 and below does nothing. Pointers are not tested. Arrays need no
 * alignment. The result array may be an argument array; arrays may not overlap in any
 * other way. The caller's x87 control word and the controls in MXCSR are back on
 * return, and results do not depend on them except where a function says so. Exception
 * flags that arithmetic raises may stay. MXCSR's denormals-are-zero, which came after
 * this processor level, is left as it is and does what it says.
 *
 * A special element gets its defined result and a report (below); the kernel then goes
 * on with the next one. Kernels are reentrant.
 */
#ifndef QORKES_QOR_H
#define QORKES_QOR_H

#include <qorkes/api.h>

/* ---- Status, mode and reports ------------------------------------------------------
 *
 * Each thread has a status word (the code of the last element reported, never cleared
 * by a kernel), a mode word and an error callback. A report
 *   1. stores its code in the status word;
 *   2. ends there, if the mode's error byte is exactly QorModeErrIgnore;
 *   3. calls the callback, if the mode has QorModeErrCallback (any of the bits 0xF000)
 *      and one is set. An answer other than 0 ends the report and leaves the result
 *      array as it is;
 *   4. runs the standard handlers that the mode names: errno (EFAULT for a code that
 *      is none of those below), text on stderr, exception flag of the x87 unit;
 *   5. stores the record's results in the result arrays, since a callback may change
 *      them; for QOR_STATUS_BADSIZE and QOR_STATUS_BADMEM there are none.
 */

#define QOR_STATUS_OK        0
#define QOR_STATUS_BADSIZE   (-1) /* for callers of the report entries; no kernel */
#define QOR_STATUS_BADMEM    (-2) /* for callers of the report entries; no kernel */
#define QOR_STATUS_ERRDOM    1 /* argument out of domain; errno EDOM, raises invalid */
#define QOR_STATUS_SING      2 /* singularity; errno ERANGE, raises divide by zero */
#define QOR_STATUS_OVERFLOW  3 /* errno ERANGE, raises nothing */
#define QOR_STATUS_UNDERFLOW 4 /* errno ERANGE, raises underflow */

/* The mode word. A new thread has 6658: accuracy 2, errno, exception and callback. */
#define QorModeAccuracyOne 0x1u
#define QorModeAccuracyTwo 0x2u
#define QorModeFpNarrow    0x10u /* x87 at 53 bits (accuracies 1 and 2), to nearest */
#define QorModeFpWide      0x20u /* x87 at 64 bits, to nearest */
#define QorModeFpRestore   0x30u /* command: the words from before the first setting */
#define QorModeErrIgnore   0x100u
#define QorModeErrErrno    0x200u
#define QorModeErrStderr   0x400u
#define QorModeErrExcept   0x800u
#define QorModeErrCallback 0x1000u

/* What a callback sees of one element. Numbers of a float kernel are widened; for
 * QOR_STATUS_BADSIZE and QOR_STATUS_BADMEM the four numbers are not set. A kernel with
 * one input gives it as both arguments, one with one output as both results. The record
 * is gone when the callback returns. */
typedef struct QorErrorRecord {
    int32_t status;
    int32_t index; /* of the element; for QOR_STATUS_BADSIZE the offending size */
    double argument1;
    double argument2;
    double result1;
    double result2;
    char funcName[64];
    int32_t funcNameLength;
} QorErrorRecord;

typedef int (*QorErrorCallBack)(QorErrorRecord* record);

/* The calling thread's mode word, and a change of it. The accuracy digit is replaced if
 * `mode` has one, the whole error byte likewise (so neither can be emptied); then the
 * floating-point command is carried out on the control words of the thread. The words
 * to restore are shared by all threads and unguarded. Returns the mode before. */
QORKES_API int _qorGetMode(void);
QORKES_API int _qorSetMode(unsigned mode);

/* The status word; the two setters return the value before. */
QORKES_API int _qorGetErrStatus(void);
QORKES_API int _qorSetErrStatus(int status);
QORKES_API int _qorClearErrStatus(void);

/* The callback. Setting one also sets QorModeErrCallback, clearing it clears the bit,
 * both as _qorSetMode would. The setters return the callback before. */
QORKES_API QorErrorCallBack _qorGetErrorCallBack(void);
QORKES_API QorErrorCallBack _qorSetErrorCallBack(QorErrorCallBack callback);
QORKES_API QorErrorCallBack _qorClearErrorCallBack(void);

/* Reports element `index`, as a kernel does: inputs a and b, provisional results in y
 * and z, name shorter than 64 bytes. The return value has no meaning. */
QORKES_API int _qorsError(int status, int index, const float* a, const float* b,
                          float* y, float* z, const char* name);
QORKES_API int _qordError(int status, int index, const double* a, const double* b,
                          double* y, double* z, const char* name);

/* Length of a string; and s1 followed by s2, with its end, in dest: returns the length
 * of both. */
QORKES_API int hox_qor_service_strlen1(const char* s);
QORKES_API int hox_qor_service_strcat1(const char* s1, const char* s2, char* dest);

/* The processor level of this build: 1, for x87, SSE and MMX. */
QORKES_API int dll_cpu_version(void);

/* ---- Inv: y = 1 / a ----------------------------------------------------------------
 *
 * Double: groups of four share one extended-precision division (Montgomery, 1987).
 * Float: correctly rounded.
 *
 *   a = +-0   infinity of the same sign   QOR_STATUS_SING
 */
QORKES_API void _qordInv_HA(int n, const double* a, double* y);
QORKES_API void _qordInv_50(int n, const double* a, double* y);
QORKES_API void _qorsInv_HA(int n, const float* a, float* y);
QORKES_API void _qorsInv_21(int n, const float* a, float* y);
QORKES_API void _qorsInv_11(int n, const float* a, float* y);

/* ---- Div: y = a / b ----------------------------------------------------------------
 *
 * As Inv.
 *
 *   b = +-0   a / b, infinity or NaN   QOR_STATUS_SING; float: not if a is a NaN
 */
QORKES_API void _qordDiv_HA(int n, const double* a, const double* b, double* y);
QORKES_API void _qordDiv_50(int n, const double* a, const double* b, double* y);
QORKES_API void _qorsDiv_HA(int n, const float* a, const float* b, float* y);
QORKES_API void _qorsDiv_21(int n, const float* a, const float* b, float* y);
QORKES_API void _qorsDiv_11(int n, const float* a, const float* b, float* y);

/* ---- Sqrt: y = sqrt(a) -------------------------------------------------------------
 *
 * Double: table of quadratics for 1/sqrt and one Newton step (Ito, Takagi and Yajima,
 * "Efficient initial approximation for multiplicative division and square root by a
 * multiplication with operand modification", 1997, for the class of methods). Float:
 * the processor's estimate of 1/sqrt and one third-order step.
 *
 *   +-0, +infinity        the argument
 *   NaN                   the NaN, quiet
 *   negative, -infinity   0x7FF8A5A55A5A5A5A; float: 0xFFC00000   QOR_STATUS_ERRDOM
 */
QORKES_API void _qordSqrt_HA(int n, const double* a, double* y);
QORKES_API void _qordSqrt_50(int n, const double* a, double* y);
QORKES_API void _qorsSqrt_HA(int n, const float* a, float* y);
QORKES_API void _qorsSqrt_21(int n, const float* a, float* y);
QORKES_API void _qorsSqrt_11(int n, const float* a, float* y);

/* One root by the same table (float: by its quadratic alone, good to 1e-8), without a
 * report, at the precision and rounding that the caller has in force. */
QORKES_API double _qordsqrt_scalar(double x);
QORKES_API float _qorssqrt_scalar(float x);

/* ---- InvSqrt: y = 1 / sqrt(a) ------------------------------------------------------
 *
 * As Sqrt. A float group of eight with any element that is no positive normal number,
 * and such an element behind the last group, is computed by root and division at the
 * caller's x87 precision and rounding.
 *
 *   +-0                   infinity of the same sign   QOR_STATUS_SING
 *   +infinity             +0
 *   NaN                   the NaN, quiet
 *   negative, -infinity   0x7FF8A5A55A5A5A5A; float: 0xFFC00000   QOR_STATUS_ERRDOM
 */
QORKES_API void _qordInvSqrt_HA(int n, const double* a, double* y);
QORKES_API void _qordInvSqrt_50(int n, const double* a, double* y);
QORKES_API void _qorsInvSqrt_HA(int n, const float* a, float* y);
QORKES_API void _qorsInvSqrt_21(int n, const float* a, float* y);
QORKES_API void _qorsInvSqrt_11(int n, const float* a, float* y);

/* ---- Cbrt: y = a^(1/3) -------------------------------------------------------------
 *
 * Double: table of quadratics for m^(-1/3) and one Newton step (as Sqrt), the exponent
 * divided by three with a multiplication (Granlund and Montgomery, "Division by
 * invariant integers using multiplication", 1994). Float: quadratics for m^(1/3) alone.
 * No report.
 *
 *   +-0, +-infinity   the argument
 *   NaN               the NaN, quiet
 */
QORKES_API void _qordCbrt_HA(int n, const double* a, double* y);
QORKES_API void _qordCbrt_50(int n, const double* a, double* y);
QORKES_API void _qorsCbrt_HA(int n, const float* a, float* y);
QORKES_API void _qorsCbrt_21(int n, const float* a, float* y);
QORKES_API void _qorsCbrt_11(int n, const float* a, float* y);

/* ---- InvCbrt: y = a^(-1/3) ---------------------------------------------------------
 *
 * As Cbrt; float: quadratics for m^(-1/3).
 *
 *   +-0           infinity of the same sign   QOR_STATUS_SING
 *   +-infinity    zero of the same sign
 *   NaN           the NaN, quiet
 */
QORKES_API void _qordInvCbrt_HA(int n, const double* a, double* y);
QORKES_API void _qordInvCbrt_50(int n, const double* a, double* y);
QORKES_API void _qorsInvCbrt_HA(int n, const float* a, float* y);
QORKES_API void _qorsInvCbrt_21(int n, const float* a, float* y);
QORKES_API void _qorsInvCbrt_11(int n, const float* a, float* y);

/* ---- Exp: y = e^a ------------------------------------------------------------------
 *
 * Powers of two from tables and a short polynomial in what they leave (Tang,
 * "Table-driven implementation of the exponential function in IEEE floating-point
 * arithmetic", 1989, for the class of methods), on the x87 unit at 64 bits, float
 * at 53.
 *
 *   NaN                     the NaN, quiet
 *   +infinity, -infinity    +infinity, +0
 *   overflow                +infinity   QOR_STATUS_OVERFLOW
 *   total loss              +0          QOR_STATUS_UNDERFLOW
 *
 * Overflow is from 709.7827128933841 up, float 88.72283935546875; total loss is at
 * -745.1332191019412 and below, float below -103.97207641601562. A float result that is
 * denormal is silent. In double, magnitudes from 708.3964185322642 on are reported too,
 * up to 709.7822265625 if positive: the result is e^a, denormal if a is negative, and
 * the status says nothing. It is an even number from 0 to 62.
 */
QORKES_API void _qordExp_HA(int n, const double* a, double* y);
QORKES_API void _qordExp_50(int n, const double* a, double* y);
QORKES_API void _qorsExp_HA(int n, const float* a, float* y);
QORKES_API void _qorsExp_21(int n, const float* a, float* y);
QORKES_API void _qorsExp_11(int n, const float* a, float* y);

/* ---- Ln: y = ln(a) -----------------------------------------------------------------
 *
 * Double: logarithm and reciprocal of the top 8 bits of the mantissa from a table and a
 * polynomial in the rest (Tang, "Table-driven implementation of the logarithm function
 * in IEEE floating-point arithmetic", 1990, for the class of methods); just below 1 the
 * Taylor series. Float: a cubic for each of 256 pieces of the mantissa. Arguments that
 * are no positive normal numbers take the logarithm of the x87 unit.
 *
 *   +-0                     -infinity            QOR_STATUS_SING
 *   negative, -infinity     the default NaN      QOR_STATUS_ERRDOM
 *   +infinity               +infinity
 *   NaN                     the NaN, quiet; QOR_STATUS_ERRDOM in double if the NaN's
 * high word is 0xFFF00000
 *
 * A float is computed by the unit's logarithm too if its neighbour is special: elements
 * count in pairs from the first one. A report of a float kernel saves and restores the
 * state of the x87 unit, so exception flags that a handler raises do not survive it.
 */
QORKES_API void _qordLn_HA(int n, const double* a, double* y);
QORKES_API void _qordLn_50(int n, const double* a, double* y);
QORKES_API void _qorsLn_HA(int n, const float* a, float* y);
QORKES_API void _qorsLn_21(int n, const float* a, float* y);
QORKES_API void _qorsLn_11(int n, const float* a, float* y);

/* ---- Log10: y = log10(a) -----------------------------------------------------------
 *
 * As Ln, with tables and polynomials of its own.
 */
QORKES_API void _qordLog10_HA(int n, const double* a, double* y);
QORKES_API void _qordLog10_50(int n, const double* a, double* y);
QORKES_API void _qorsLog10_HA(int n, const float* a, float* y);
QORKES_API void _qorsLog10_21(int n, const float* a, float* y);
QORKES_API void _qorsLog10_11(int n, const float* a, float* y);

/* ---- Pow: y = a^b ------------------------------------------------------------------
 *
 * HA: log2 and 2^x by tables, the logarithm and its product with b in two parts (Tang,
 * "Table-driven implementation of the logarithm function in IEEE floating-point
 * arithmetic", 1990, for the class of methods; Dekker, "A floating-point technique for
 * extending the available precision", 1971, for the parts). 50: the same in extended
 * precision, in one part; bases in [0.25, 4) by the processor's logarithm. Float 21: a
 * cubic and a quadratic.
 *
 *   b = +-0                           1, whatever a is
 *   a = 1; a = -1, b infinite         1, whatever b is
 *   a or b a NaN                      the NaN (that of a, if both are), quiet
 *   b infinite                        +infinity or +0, by |a|
 *   a = +-0, b = -infinity            +infinity   QOR_STATUS_ERRDOM
 *   a infinite                        infinity or 0, of a's sign for odd b
 *   a < 0, b finite and no integer    0xFFF8000000000000; float: 0xFFC00000
 *                                                 QOR_STATUS_ERRDOM
 *   a = +-0, b > 0                    0, of a's sign for odd b
 *   a = +-0, b < 0                    infinity, of a's sign for odd b
 *                                                 QOR_STATUS_ERRDOM
 *   too large, too small              infinity, 0, unreported; denormal results are
 *                                     rounded once
 *
 * A b of 2^52 and above counts as an even integer (_qorsPow_21: of 2^23 and above).
 */
QORKES_API void _qordPow_HA(int n, const double* a, const double* b, double* y);
QORKES_API void _qordPow_50(int n, const double* a, const double* b, double* y);
QORKES_API void _qorsPow_HA(int n, const float* a, const float* b, float* y);
QORKES_API void _qorsPow_21(int n, const float* a, const float* b, float* y);
QORKES_API void _qorsPow_11(int n, const float* a, const float* b, float* y);

/* ---- Powx: y = a^b with one b for all elements -------------------------------------
 *
 * As Pow HA, in all accuracies. A report shows a in the place of b.
 */
QORKES_API void _qordPowx_HA(int n, const double* a, double b, double* y);
QORKES_API void _qordPowx_50(int n, const double* a, double b, double* y);
QORKES_API void _qorsPowx_HA(int n, const float* a, float b, float* y);
QORKES_API void _qorsPowx_21(int n, const float* a, float b, float* y);
QORKES_API void _qorsPowx_11(int n, const float* a, float b, float* y);

/* ---- Sin: y = sin(a), a in radians -------------------------------------------------
 *
 * The nearest multiple of pi is taken off, in parts of which all but the last have exact
 * products with its count (Cody and Waite, "Software manual for the elementary
 * functions", 1980), and what is left goes through an odd polynomial: in double one for
 * each of 65 pieces at 64 bits on the x87 unit, in float one for all. Far arguments,
 * infinities and NaNs go to the scalar code (below), and their whole group of four with
 * them: doubles from 128000 up, floats above 500000, _21 above 1000000.
 *
 *   +-0           the argument
 *   +-infinity    the default NaN   QOR_STATUS_ERRDOM
 *   NaN           float: the NaN, quiet; double: the default NaN, QOR_STATUS_ERRDOM if
 *                 its high word is 0x7FF00000 or 0xFFF00000
 *
 * They are reported as "dSin_HA", "sSin_HA" and "sSin_LA".
 *
 * The double kernels of Sin and Cos reinitialise the x87 unit before they hand a group
 * over: its exception flags are lost.
 */
QORKES_API void _qordSin_HA(int n, const double* a, double* y);
QORKES_API void _qordSin_50(int n, const double* a, double* y);
QORKES_API void _qorsSin_HA(int n, const float* a, float* y);
QORKES_API void _qorsSin_21(int n, const float* a, float* y);
QORKES_API void _qorsSin_11(int n, const float* a, float* y);

/* ---- Cos: y = cos(a), a in radians -------------------------------------------------
 *
 * As Sin, with the nearest odd multiple of pi/2; _21 hands over above 10048. NaNs and
 * infinities as there, reported as "dCos_HA", "sCos_HA", "sCos_LA".
 */
QORKES_API void _qordCos_HA(int n, const double* a, double* y);
QORKES_API void _qordCos_50(int n, const double* a, double* y);
QORKES_API void _qorsCos_HA(int n, const float* a, float* y);
QORKES_API void _qorsCos_21(int n, const float* a, float* y);
QORKES_API void _qorsCos_11(int n, const float* a, float* y);

/* ---- SinCos: y = sin(a), z = cos(a), a in radians ----------------------------------
 *
 * As Sin, with the nearest multiple of pi/2 and a polynomial for each of the two;
 * floats are handed over above 1000000. An infinity gives the default NaN in both,
 * reported as "dSinCos_HA", "sSinCos_HA", "sSinCos_LA". y may be a, or z may, but not
 * both.
 */
QORKES_API void _qordSinCos_HA(int n, const double* a, double* y, double* z);
QORKES_API void _qordSinCos_50(int n, const double* a, double* y, double* z);
QORKES_API void _qorsSinCos_HA(int n, const float* a, float* y, float* z);
QORKES_API void _qorsSinCos_21(int n, const float* a, float* y, float* z);
QORKES_API void _qorsSinCos_11(int n, const float* a, float* y, float* z);

/* ---- Tan: y = tan(a), a in radians -------------------------------------------------
 *
 * As Sin, with the nearest multiple of pi/2 and a quotient of two polynomials; groups
 * of four share one division. Floats are handed over above 128000, _21 above 500000.
 * Near a pole there is no report. Infinities are reported as "dTan_HA" (_50:
 * "dTan_LA"), "sTan_HA", "sTan_LA".
 */
QORKES_API void _qordTan_HA(int n, const double* a, double* y);
QORKES_API void _qordTan_50(int n, const double* a, double* y);
QORKES_API void _qorsTan_HA(int n, const float* a, float* y);
QORKES_API void _qorsTan_21(int n, const float* a, float* y);
QORKES_API void _qorsTan_11(int n, const float* a, float* y);

/* ---- Asin: y = asin(a) -------------------------------------------------------------
 *
 * Up to 1/2 in magnitude an odd series. From there to 1, with w = 1 - |a|, pi/2 less
 * sqrt(w) times a series in w, on the x87 unit at 64 bits; in float pi/2 less twice the
 * arcsine of sqrt(w/2) (Cody and Waite, "Software manual for the elementary functions",
 * 1980), in four lanes, HA with the root in two parts.
 *
 *   +-1                                 +-pi/2
 *   above 1 in magnitude, +-infinity    the default NaN   QOR_STATUS_ERRDOM
 *   NaN                                 the NaN, quiet; in double without its sign
 */
QORKES_API void _qordAsin_HA(int n, const double* a, double* y);
QORKES_API void _qordAsin_50(int n, const double* a, double* y);
QORKES_API void _qorsAsin_HA(int n, const float* a, float* y);
QORKES_API void _qorsAsin_21(int n, const float* a, float* y);
QORKES_API void _qorsAsin_11(int n, const float* a, float* y);

/* ---- Acos: y = acos(a) -------------------------------------------------------------
 *
 * As Asin: pi/2 less the arcsine up to 1/2 in magnitude, beyond it the root times its
 * series, or pi less that. 1 gives +0, and -1 gives pi.
 */
QORKES_API void _qordAcos_HA(int n, const double* a, double* y);
QORKES_API void _qordAcos_50(int n, const double* a, double* y);
QORKES_API void _qorsAcos_HA(int n, const float* a, float* y);
QORKES_API void _qorsAcos_21(int n, const float* a, float* y);
QORKES_API void _qorsAcos_11(int n, const float* a, float* y);

/* ---- Atan: y = atan(a) -------------------------------------------------------------
 *
 * The angle of a base c near |a|, and an odd series in t = (|a| - c) / (1 + c |a|), or
 * in -1/|a| from the last bound on (Cody and Waite 1980); double on the x87 unit at 53
 * bits, float in four lanes. 21 and 11 take one long series for a or 1/a. No report.
 *
 *   +-infinity    +-pi/2
 *   NaN           the NaN, quiet; in double without its sign
 *
 * _qorsAtan_21 computes a group of four that has an infinity or a NaN by
 * _qorsatan_scalar, at the caller's x87 precision and rounding.
 */
QORKES_API void _qordAtan_HA(int n, const double* a, double* y);
QORKES_API void _qordAtan_50(int n, const double* a, double* y);
QORKES_API void _qorsAtan_HA(int n, const float* a, float* y);
QORKES_API void _qorsAtan_21(int n, const float* a, float* y);
QORKES_API void _qorsAtan_11(int n, const float* a, float* y);

/* ---- Atan2: y = the angle of the point (b, a), in [-pi, pi] ------------------------
 *
 * As Atan with the ratio a / b, and pi less the angle where b is negative. No report:
 * zeros and infinities have the angles of the C library's atan2(a, b), and a NaN gives
 * a NaN.
 *
 * Double: a group of four with any number below 2^-1021 or above 2^1020 in magnitude
 * comes from the processor's arctangent, and may differ from what its points give
 * elsewhere in the last place. Float: points with a number below 2^-62 or above 2^62
 * come from _qorsatan2_scalar. 21 and 11 compute under the caller's MXCSR.
 */
QORKES_API void _qordAtan2_HA(int n, const double* a, const double* b, double* y);
QORKES_API void _qordAtan2_50(int n, const double* a, const double* b, double* y);
QORKES_API void _qorsAtan2_HA(int n, const float* a, const float* b, float* y);
QORKES_API void _qorsAtan2_21(int n, const float* a, const float* b, float* y);
QORKES_API void _qorsAtan2_11(int n, const float* a, const float* b, float* y);

/* One arctangent, and the angle of one point (b, a), good to 1e-8 and 1.6e-8, without a
 * report, at the precision and rounding that the caller has in force. Zeros, infinities
 * and NaNs as above; where an angle is a multiple of pi/4 that _qorsatan2_scalar does
 * not compute, it is the float nearest to it. */
QORKES_API long double _qorsatan_scalar(float x);
QORKES_API long double _qorsatan2_scalar(float a, float b);

/* ---- Sinh: y = sinh(a) -------------------------------------------------------------
 *
 * e^a and e^-a from one reduction, both by powers of two from tables and a short
 * polynomial for the rest (Tang 1989, as Exp), on the x87 unit at 64 bits. Up to
 * 0.000946044921875 in magnitude the Taylor series; a float below 0.0003 is its own
 * result.
 *
 *   NaN           double: the NaN as it is; float: the NaN, quiet
 *   +-infinity    the argument
 *   overflow      infinity with the sign of a   QOR_STATUS_OVERFLOW
 *
 * Overflow is from 710.475860073944 up in magnitude, float 89.4159927368164. In double
 * it raises the overflow exception, for an infinite argument too.
 */
QORKES_API void _qordSinh_HA(int n, const double* a, double* y);
QORKES_API void _qordSinh_50(int n, const double* a, double* y);
QORKES_API void _qorsSinh_HA(int n, const float* a, float* y);
QORKES_API void _qorsSinh_21(int n, const float* a, float* y);
QORKES_API void _qorsSinh_11(int n, const float* a, float* y);

/* ---- Cosh: y = cosh(a) -------------------------------------------------------------
 *
 * As Sinh, but for the arguments near 0. Infinity and overflow give +infinity.
 */
QORKES_API void _qordCosh_HA(int n, const double* a, double* y);
QORKES_API void _qordCosh_50(int n, const double* a, double* y);
QORKES_API void _qorsCosh_HA(int n, const float* a, float* y);
QORKES_API void _qorsCosh_21(int n, const float* a, float* y);
QORKES_API void _qorsCosh_11(int n, const float* a, float* y);

/* ---- Tanh: y = tanh(a) -------------------------------------------------------------
 *
 * Double: 1 - 2/(e^2a + 1), the power by a table and a polynomial, on the x87 unit at
 * 64 bits. Float: the tangent of the nearest sixteenth from a table, of the rest by a
 * quotient of two polynomials, and the addition theorem, at 53 bits. Near 0 the Taylor
 * series: below 0.002, float 0.001. No report.
 *
 *   denormal                             the argument
 *   20 and up, float 10, in magnitude    1 with the sign of a, infinities included
 *   NaN                                  the NaN, quiet; in double 1 with the sign of
 * the NaN if its high word without sign is 0x7FF00000
 */
QORKES_API void _qordTanh_HA(int n, const double* a, double* y);
QORKES_API void _qordTanh_50(int n, const double* a, double* y);
QORKES_API void _qorsTanh_HA(int n, const float* a, float* y);
QORKES_API void _qorsTanh_21(int n, const float* a, float* y);
QORKES_API void _qorsTanh_11(int n, const float* a, float* y);

/* ---- Asinh: y = asinh(a) -----------------------------------------------------------
 *
 * ln(|a| + sqrt(a^2 + 1)) with the sign of a, the logarithm as in Ln; double on the x87
 * unit at 64 bits, float at 53. Below 0.001953125 in magnitude the Taylor series; a
 * float below 2^-27 is its own result, as are NaNs and infinities. No report.
 */
QORKES_API void _qordAsinh_HA(int n, const double* a, double* y);
QORKES_API void _qordAsinh_50(int n, const double* a, double* y);
QORKES_API void _qorsAsinh_HA(int n, const float* a, float* y);
QORKES_API void _qorsAsinh_21(int n, const float* a, float* y);
QORKES_API void _qorsAsinh_11(int n, const float* a, float* y);

/* ---- Acosh: y = acosh(a) -----------------------------------------------------------
 *
 * ln(a + sqrt(a^2 - 1)), as Asinh; below 1.00048828125 in double a root and a
 * polynomial.
 *
 *   +infinity, positive NaN    the argument
 *   below 1, -infinity         a NaN of all ones but for its sign   QOR_STATUS_ERRDOM
 *   negative NaN               that NaN too, without report
 */
QORKES_API void _qordAcosh_HA(int n, const double* a, double* y);
QORKES_API void _qordAcosh_50(int n, const double* a, double* y);
QORKES_API void _qorsAcosh_HA(int n, const float* a, float* y);
QORKES_API void _qorsAcosh_21(int n, const float* a, float* y);
QORKES_API void _qorsAcosh_11(int n, const float* a, float* y);

/* ---- Atanh: y = atanh(a) -----------------------------------------------------------
 *
 * ln((1 + |a|) / (1 - |a|)) / 2 with the sign of a, as Asinh. Below 0.0009765625 in
 * magnitude the Taylor series; a float below 2^-28 is its own result.
 *
 *   +-1                     infinity with the sign of a             QOR_STATUS_SING
 *   above 1 in magnitude    a NaN of all ones, the sign that of a   QOR_STATUS_ERRDOM
 *   NaN                     the same, without report
 */
QORKES_API void _qordAtanh_HA(int n, const double* a, double* y);
QORKES_API void _qordAtanh_50(int n, const double* a, double* y);
QORKES_API void _qorsAtanh_HA(int n, const float* a, float* y);
QORKES_API void _qorsAtanh_21(int n, const float* a, float* y);
QORKES_API void _qorsAtanh_11(int n, const float* a, float* y);

/* ---- Erf: y = erf(a), 2/sqrt(pi) times the integral of exp(-x^2) from 0 to a -------
 *
 * A polynomial about the middle of each quarter of a binade (the method of intervals of
 * Cody, "Rational Chebyshev approximations for the error function", 1969, with
 * polynomials and more intervals), on the x87 unit at 53 bits; the leading terms of
 * double are exact (Dekker 1971, as Pow). No report.
 *
 *   +-0                                       the argument
 *   5.9215871957945083 and up in magnitude    1 with the sign of a, infinities included
 *   NaN                                       the NaN, quiet
 */
QORKES_API void _qordErf_HA(int n, const double* a, double* y);
QORKES_API void _qordErf_50(int n, const double* a, double* y);
QORKES_API void _qorsErf_HA(int n, const float* a, float* y);
QORKES_API void _qorsErf_21(int n, const float* a, float* y);
QORKES_API void _qorsErf_11(int n, const float* a, float* y);

/* ---- Erfc: y = 1 - erf(a) ----------------------------------------------------------
 *
 * As Erf, with intervals of their own; from 1.8284 up the polynomials are those of
 * erfc(a) exp(a^2), and the exponential is computed by table and polynomial (Tang 1989,
 * as Exp).
 *
 *   too large for a result other than 0    +0   QOR_STATUS_UNDERFLOW
 *   +infinity, -infinity                   0, 2
 *   NaN                                    the NaN, quiet
 *
 * The result is 0 from 27.226017111108366 up, float 10.054194928818097. One that is
 * denormal is rounded once and silent.
 */
QORKES_API void _qordErfc_HA(int n, const double* a, double* y);
QORKES_API void _qordErfc_50(int n, const double* a, double* y);
QORKES_API void _qorsErfc_HA(int n, const float* a, float* y);
QORKES_API void _qorsErfc_21(int n, const float* a, float* y);
QORKES_API void _qorsErfc_11(int n, const float* a, float* y);

/* ---- Sine, cosine and tangent of one argument --------------------------------------
 *
 * _dSin, _dCos and _dTan are good to little more than half an ulp for every double, in
 * plain double arithmetic: a table row for the nearest multiple of pi/32 and
 * polynomials (Tang, "Table-lookup algorithms for elementary functions and their error
 * analysis", 1991, for the class of methods). Magnitudes below 2^-252 give x and 1.0.
 * An infinity gives a NaN and raises invalid; a NaN gives a NaN; nothing is reported.
 * _dSinCos stores the values of _dSin and _dCos.
 *
 * _qorreduce_pio2d takes off the nearest multiple of pi/2, for every finite x: out[0] +
 * out[1] is what is left, the second what the first lacks, and the result its count
 * modulo 4. From 2^30 on it multiplies by the digits of 4/pi that matter (Payne and
 * Hanek, "Radian reduction for trigonometric functions", 1983). Not checked: infinities
 * and NaNs.
 */
QORKES_API double _dSin(double x);
QORKES_API double _dCos(double x);
QORKES_API void _dSinCos(double x, double* s, double* c);
QORKES_API double _dTan(double x);
QORKES_API int _qorreduce_pio2d(double x, double out[2]);

/* Scalar code: element i alone, by the functions above, whatever its size, and with the
 * reports of the kernels. HA, LA and A11 differ in the name that a report gets:
 * "dSin_HA", "dSin_LA", "dSin_A11" and so on. The status pointer is not used. */
QORKES_API void _qordSin_SC_HA(int i, const double* a, double* y, int* status);
QORKES_API void _qordSin_SC_LA(int i, const double* a, double* y, int* status);
QORKES_API void _qordSin_SC_A11(int i, const double* a, double* y, int* status);
QORKES_API void _qorsSin_SC_HA(int i, const float* a, float* y, int* status);
QORKES_API void _qorsSin_SC_LA(int i, const float* a, float* y, int* status);
QORKES_API void _qorsSin_SC_A11(int i, const float* a, float* y, int* status);

QORKES_API void _qordCos_SC_HA(int i, const double* a, double* y, int* status);
QORKES_API void _qordCos_SC_LA(int i, const double* a, double* y, int* status);
QORKES_API void _qordCos_SC_A11(int i, const double* a, double* y, int* status);
QORKES_API void _qorsCos_SC_HA(int i, const float* a, float* y, int* status);
QORKES_API void _qorsCos_SC_LA(int i, const float* a, float* y, int* status);
QORKES_API void _qorsCos_SC_A11(int i, const float* a, float* y, int* status);

QORKES_API void _qordSinCos_SC_HA(int i, const double* a, double* y, double* z,
                                  int* status);
QORKES_API void _qordSinCos_SC_LA(int i, const double* a, double* y, double* z,
                                  int* status);
QORKES_API void _qordSinCos_SC_A11(int i, const double* a, double* y, double* z,
                                   int* status);
QORKES_API void _qorsSinCos_SC_HA(int i, const float* a, float* y, float* z,
                                  int* status);
QORKES_API void _qorsSinCos_SC_LA(int i, const float* a, float* y, float* z,
                                  int* status);
QORKES_API void _qorsSinCos_SC_A11(int i, const float* a, float* y, float* z,
                                   int* status);

QORKES_API void _qordTan_SC_HA(int i, const double* a, double* y, int* status);
QORKES_API void _qordTan_SC_LA(int i, const double* a, double* y, int* status);
QORKES_API void _qordTan_SC_A11(int i, const double* a, double* y, int* status);
QORKES_API void _qorsTan_SC_HA(int i, const float* a, float* y, int* status);
QORKES_API void _qorsTan_SC_LA(int i, const float* a, float* y, int* status);
QORKES_API void _qorsTan_SC_A11(int i, const float* a, float* y, int* status);

/* ---- Pack and Unpack ---------------------------------------------------------------
 *
 * Elements of a strided (I), indexed (V) or masked (M) array, gathered side by side or
 * scattered back:
 *
 *     double pairs[6] = {1, 10, 2, 20, 3, 30}, firsts[3];
 *     _qordPackI(3, pairs, 2, firsts);    // 1, 2, 3
 *
 *   PackI     y[i] = a[i * incra]         UnpackI   y[i * incry] = a[i]
 *   PackV     y[i] = a[ia[i]]             UnpackV   y[iy[i]] = a[i]
 *   PackM     the a[i] with ma[i] != 0    UnpackM   to the y[i] with my[i] != 0
 *
 * for i from 0 to n - 1, ascending; strides and indices count elements and may be 0 or
 * negative. Nothing is computed and nothing reported; bits are kept, but that a
 * signaling NaN comes out quiet from _qordPackM and _qordUnpackM. Not checked:
 * pointers, bounds, overlap, and in the I and V forms n below 0 (one block of eight is
 * moved). Unselected elements of y stay as they are; the count of selected ones is the
 * caller's.
 */
QORKES_API void _qordPackI(int n, const double* a, int incra, double* y);
QORKES_API void _qordPackV(int n, const double* a, const int* ia, double* y);
QORKES_API void _qordPackM(int n, const double* a, const int* ma, double* y);
QORKES_API void _qorsPackI(int n, const float* a, int incra, float* y);
QORKES_API void _qorsPackV(int n, const float* a, const int* ia, float* y);
QORKES_API void _qorsPackM(int n, const float* a, const int* ma, float* y);
QORKES_API void _qordUnpackI(int n, const double* a, double* y, int incry);
QORKES_API void _qordUnpackV(int n, const double* a, double* y, const int* iy);
QORKES_API void _qordUnpackM(int n, const double* a, double* y, const int* my);
QORKES_API void _qorsUnpackI(int n, const float* a, float* y, int incry);
QORKES_API void _qorsUnpackV(int n, const float* a, float* y, const int* iy);
QORKES_API void _qorsUnpackM(int n, const float* a, float* y, const int* my);

#endif
