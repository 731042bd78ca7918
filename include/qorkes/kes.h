/* Random streams, distributions, convolution and correlation tasks.
 *
 * A stream holds the complete state of one basic random number generator. It is made
 * from a generator's identifier and seed words, drawn from by any mixture of
 * distributions, and deleted:
 *
 *     StreamState* stream;
 *     const uint32_t seed[1] = {7777777};
 *     double r[1000];
 *     int status = __kesNewStreamEx(&stream, KesBrngMCG59, 1, seed);
 *     if (status >= 0) status = _kesdRngUniform(0, stream, 1000, r, 0.0, 1.0);
 *     __kesDeleteStream(&stream);
 *
 * The same generator, seed and calls give the same numbers for ever.
 *
 * Every function returns a status unless it says otherwise: 0 is success, below 0 a
 * failure from the list that follows. Arguments are not tested beyond what a function
 * says: pointers are taken to be valid and counts to be sensible.
 *
 * One stream belongs to one thread at a time; different streams may be used in
 * parallel. Nothing here locks.
 */
#ifndef QORKES_KES_H
#define QORKES_KES_H

#include <qorkes/api.h>

/* ---- Status codes -------------------------------------------------------------- */

#define KesStatusOk                   0
#define KesStatusBadMethod            (-2) /* method is not 0, 1 or 2 */
#define KesStatusBadArgument          (-3) /* argument of an abstract stream */
#define KesStatusNoMemory             (-4) /* malloc failed */
#define KesStatusNullPointer          (-5) /* a required function or buffer is null */
#define KesStatusInvalidBrng          (-1000) /* identifier unknown, or abstract */
#define KesStatusLeapfrogUnsupported  (-1002)
#define KesStatusSkipAheadUnsupported (-1003)
#define KesStatusBrngsIncompatible    (-1005) /* two streams of different rows */
#define KesStatusBrngTableFull        (-1007)
#define KesStatusBadStateSize         (-1008) /* below 0 */
#define KesStatusBadWordSize          (-1009) /* not 4, 8 or 16 */
#define KesStatusBadSeedCount         (-1010) /* below 1 */
#define KesStatusBadBitCount          (-1011) /* below 1 */
#define KesStatusFileClose            (-1100) /* fclose failed */
#define KesStatusFileOpen             (-1101) /* fopen failed */
#define KesStatusFileWrite            (-1102) /* fwrite failed */
#define KesStatusFileRead             (-1103) /* fread failed */
#define KesStatusBadFileFormat        (-1110) /* no stream file of this registry */
#define KesStatusBadFileVersion       (-1111) /* version byte is not 0 */
#define KesStatusBadUpdate            (-1120) /* Update's count is out of range */
#define KesStatusNoNumbers            (-1121) /* Update had no numbers */
#define KesStatusBadAbstractKind      (-1122) /* not the stream's own output kind */

/* ---- Registry of generators -------------------------------------------------------
 *
 * A generator is one row of a table: five numbers and four functions. Its identifier is
 * (row + 1) << 20, plus the number of the member for the two families. Identifiers
 * below 0x100000 are those of the first numbering, which has a table of its own: 0 to 3
 * for MCG31M1, R250, MRG32K3A and MCG59, 4 to 276 for the members of WH, 277 for Sobol,
 * 278 for Niederreiter.
 */

#define KesBrngMCG31M1   0x100000
#define KesBrngR250      0x200000
#define KesBrngMRG32K3A  0x300000
#define KesBrngMCG59     0x400000
#define KesBrngWH        0x500000 /* + member, 0 to 272 */
#define KesBrngSobol     0x600000
#define KesBrngNiederr   0x700000
#define KesBrngMT19937   0x800000
#define KesBrngMT2203    0x900000 /* + member, 0 to 1023 */
#define KesBrngiAbstract 0xa00000
#define KesBrngdAbstract 0xb00000
#define KesBrngsAbstract 0xc00000

/* What every stream begins with; the generator's state record follows at once. */
typedef struct StreamState {
    int32_t BrngId; /* the identifier the stream was created with */
    uint8_t Flag;   /* 1 */
    uint8_t Reserved[3];
    int64_t Chunks; /* head of the list of chunks: a pointer, sign-extended */
} StreamState;

/* The four functions of a generator.
 *
 * InitStream, method 0: seeds from n words at params; n of 0 and below asks for the
 * generator's default. Method 1, leapfrog: n is the stride, params[0] the index k of
 * this stream. Method 2, skip-ahead: n elements, params is null. Any other method:
 * KesStatusBadMethod.
 *
 * Output: n elements to r, real numbers from [a, b) as a + (b - a) u, or the
 * generator's own words (WordSize bytes an element; for WH and MCG59 that is 4 and 2
 * words). All three continue the one sequence: m and then n elements are what m + n
 * would have been. a is not compared with b. */
typedef int (*BrngInitStream)(int method, StreamState* stream, int n,
                              const uint32_t* params);
typedef int (*BrngSingles)(StreamState* stream, int n, float* r, float a, float b);
typedef int (*BrngDoubles)(StreamState* stream, int n, double* r, double a, double b);
typedef int (*BrngIntegers)(StreamState* stream, int n, uint32_t* r);

/* A row of the registry. */
typedef struct BrngRecord {
    int32_t StateSize; /* bytes of the whole stream record, StreamState included */
    int32_t SeedCount; /* what __kesCopyStreamState moves, in units of WordSize */
    int32_t HasZero;   /* 1 if 0 may be delivered; declared only */
    int32_t WordSize;  /* bytes of one integer element: 4, 8 or 16 */
    int32_t BitCount;  /* significant bits of it; declared only */
    BrngInitStream InitStream;
    BrngSingles sBRng;
    BrngDoubles dBRng;
    BrngIntegers iBRng;
} BrngRecord;

/* The same nine words on a caller's side. */
typedef BrngRecord BrngProperties;

/* The tables, for a layer in front of this one: the first numbering and the current
 * one. Rows behind the last generator are zero. */
#define KesBrngTableRows 512
QORKES_API const BrngRecord __RegBrngs[KesBrngTableRows];
QORKES_API BrngRecord __RegBrngsNew[KesBrngTableRows];

/* The table that `brng` belongs to, its row there and its member of a family. Cannot
 * fail: whether there is such a row is for __kesIsBrngValid to say. */
QORKES_API const BrngRecord* __kesGetBrngBaseOffset(int brng, int* row, int* offset);

/* KesStatusOk or KesStatusInvalidBrng. Negative rows and members are not refused. */
QORKES_API int __kesIsBrngValid(const BrngRecord* table, int row, int offset);

/* Copies the row of `brng` to props. KesStatusInvalidBrng leaves props alone. */
QORKES_API int __kesGetBrngProperties(int brng, BrngProperties* props);

/* Returns the number of rows of the current numbering, 12 before any registration. */
QORKES_API int __kesGetNumRegBrngs(void);

/* Adds a generator of the caller's and returns its identifier, 0xd00000 for the first.
 * Refused, in this order: StateSize below 0, WordSize other than 4, 8 and 16, SeedCount
 * below 1, BitCount below 1, a null function (KesStatusNullPointer). StateSize includes
 * the 16 bytes of StreamState; nothing tests that it does. The table holds 512 rows and
 * the 513th is not refused. There is no way back. Register before other threads use
 * streams. */
QORKES_API int __kesRegisterBrng(const BrngProperties* props);

/* ---- Streams ------------------------------------------------------------------- */

/* Makes a stream of generator `brng` from n seed words. KesStatusInvalidBrng (also for
 * the abstract kinds, which have constructors of their own) leaves *stream alone;
 * KesStatusNoMemory sets it to null; a failure of the generator itself leaves a stream
 * to be deleted. */
QORKES_API int __kesNewStreamEx(StreamState** stream, int brng, int n,
                                const uint32_t* params);

/* The first half of that: checks the row, allocates the record, fills in its header and
 * nothing else. */
QORKES_API int __kesAllocateStream(StreamState** stream, const BrngRecord* table,
                                   int brng, int row, int offset);

/* Frees the stream with its chunks and sets *stream to null. */
QORKES_API int __kesDeleteStream(StreamState** stream);

/* Makes a stream that continues as the source does. The bytes are copied, and with them
 * the head of the list of chunks: the two streams share their chunks, and deleting one
 * frees them for both. */
QORKES_API int __kesCopyStream(StreamState** newStream, const StreamState* srcStream);

/* Copies WordSize * SeedCount bytes of state between two streams of one row, members of
 * a family counting as one. Returns the identifier of the destination, a positive
 * number in the current numbering, or 0 if the two are one stream. Streams of different
 * rows give KesStatusBrngsIncompatible after the destination has been overwritten all
 * the same. For WH the bytes are 32 more than the record has. */
QORKES_API int __kesCopyStreamState(StreamState* dstStream,
                                    const StreamState* srcStream);

/* Makes the stream deliver elements k, k + nstreams, k + 2 nstreams, ... of what it
 * would have delivered. k is not compared with nstreams. */
QORKES_API int __kesLeapfrogStream(StreamState* stream, int k, int nstreams);

/* Passes over the next nskip elements; after a leapfrog, in strides. */
QORKES_API int __kesSkipAheadStream(StreamState* stream, int nskip);

/* Returns the identifier that the stream was created with. */
QORKES_API int __kesGetStreamStateBrng(const StreamState* stream);

/* ---- Chunks -----------------------------------------------------------------------
 *
 * Blocks that distributions keep with a stream from one call to the next: a spare
 * variate, the set-up for the last parameters. Node and block come from malloc and
 * belong to the stream.
 */
typedef struct Chunk {
    int32_t id;
    int32_t size; /* of data, in bytes */
    void* data;
    struct Chunk* next;
} Chunk;

/* Puts a block at the head of the list, where it hides an older one of the same id.
 * KesStatusNoMemory leaves stream and block as they are. */
QORKES_API int __kesAddChunk(StreamState* stream, int id, void* data, int size);

/* Returns the newest block with this id, or null. */
QORKES_API void* __kesSearchChunk(const StreamState* stream, int id);

/* Returns the length of the list. */
QORKES_API int __kesGetNumChunks(const StreamState* stream);

/* Frees all nodes and blocks. */
QORKES_API void __kesDeleteChunks(StreamState* stream);

/* ---- Generators -------------------------------------------------------------------
 *
 * The functions of each row. Streams reach them through the registry. Output slots
 * return 0, and for n of 0 and below they change nothing, unless it is said otherwise.
 */

/* Powers modulo a number below 2^32, modulo 2^31 - 1, and modulo 2^59. An exponent of 0
 * gives 1; an exponent below 0 does not return. */
QORKES_API uint32_t __kesiPowMod(uint32_t base, int32_t exponent, uint32_t modulus);
QORKES_API uint32_t __kesiPowMod2P31M1(uint32_t base, int32_t exponent);
QORKES_API uint64_t __kesiPowMod2P59(uint32_t baseLow, uint32_t baseHigh,
                                     int32_t exponent);

/* ---- Generator MCG31M1: multiplicative, modulo 2^31 - 1 ---------------------------
 *
 * x becomes 1132489760 x mod (2^31 - 1) and is delivered before the step: 31 bits,
 * never 0, period 2^31 - 2. Multiplier from L'Ecuyer, "Tables of linear congruential
 * generators of different sizes and good lattice structure", 1999.
 *
 * Seed: one word, taken modulo 2^31 - 1; 1 stands in for 0 and for no seed. Leapfrog
 * replaces the multiplier by its power, so that later jumps count in strides. Real
 * numbers are x (b - a) / (2^31 - 1) + a, in float arithmetic for floats.
 *
 * The integer slot looks at n after its first element: n = 0 writes r[0] and steps
 * once, n below 0 writes r[0] and r[1] and steps twice.
 */
QORKES_API int __kesBRngMCG31M1InitStream(int method, StreamState* stream, int n,
                                          const uint32_t* params);
QORKES_API int __kessBRngMCG31M1(StreamState* stream, int n, float* r, float a,
                                 float b);
QORKES_API int __kesdBRngMCG31M1(StreamState* stream, int n, double* r, double a,
                                 double b);
QORKES_API int __kesiBRngMCG31M1(StreamState* stream, int n, uint32_t* r);

/* ---- Generator MCG59: multiplicative, modulo 2^59 ---------------------------------
 *
 * x becomes 13^13 x mod 2^59 and is delivered before the step, as two words, low word
 * first: 59 bits, period 2^57 from an odd seed.
 *
 * Seed: low word and high word, the latter taken modulo 2^27; 1 stands in for 0 and for
 * no seed. An even seed stands as it is: its trailing zero bits stay for ever. Leapfrog
 * as for MCG31M1. Real numbers are x (b - a) / 2^59 + a, rounded once, which may reach b.
 */
QORKES_API int __kesBRngMCG59InitStream(int method, StreamState* stream, int n,
                                        const uint32_t* params);
QORKES_API int __kessBRngMCG59(StreamState* stream, int n, float* r, float a, float b);
QORKES_API int __kesdBRngMCG59(StreamState* stream, int n, double* r, double a,
                               double b);
QORKES_API int __kesiBRngMCG59(StreamState* stream, int n, uint32_t* r);

/* ---- Generator MRG32K3A: two multiple recurrences, combined -----------------------
 *
 * x[i] = 1403580 x[i-2] - 810728 x[i-3] mod m1 = 2^32 - 209,
 * y[i] = 527612 y[i-1] - 1370589 y[i-3] mod m2 = 2^32 - 22853; what is delivered is
 * x - y mod m1, with m1 for 0: 32 bits, never 0, period about 2^191. L'Ecuyer, "Good
 * parameters and implementations for combined multiple recursive random number
 * generators", Operations Research 47, 1999.
 *
 * Seed: up to six words, the older terms first, x before y; 1 stands in for those that
 * are missing. Each is taken modulo m1 or m2, and three that are 0 become 1, 0, 0. The
 * first number follows from the first new terms. Skip-ahead, but no leapfrog. Real
 * numbers are z (b - a) / m1 + a: b itself can be reached, where L'Ecuyer divides by
 * m1 + 1.
 */
QORKES_API int __kesBRngMRG32K3AInitStream(int method, StreamState* stream, int n,
                                           const uint32_t* params);
QORKES_API int __kessBRngMRG32K3A(StreamState* stream, int n, float* r, float a,
                                  float b);
QORKES_API int __kesdBRngMRG32K3A(StreamState* stream, int n, double* r, double a,
                                  double b);
QORKES_API int __kesiBRngMRG32K3A(StreamState* stream, int n, uint32_t* r);

/* The jumps of MRG32K3A. Matrices are 3 by 3 in rows, of numbers below m, as are
 * vectors; results may be stored over arguments. MulMod: c = a b. VectMulMod: w = a v.
 * PowMod: r = a^e, which destroys a; e is not below 0. Vect3PowMod moves v, three terms
 * of a recurrence with the oldest first, on by e terms; c holds the coefficients of the
 * newest, the middle and the oldest. */
QORKES_API void __kesiMatr3x3MulMod(const uint32_t* a, const uint32_t* b, uint32_t* c,
                                    uint32_t m);
QORKES_API void __kesiMatr3x3VectMulMod(const uint32_t* a, const uint32_t* v,
                                        uint32_t* w, uint32_t m);
QORKES_API void __kesiMatr3x3PowMod(uint32_t* a, uint32_t* r, uint32_t m, int32_t e);
QORKES_API void __kesiVect3PowMod(uint32_t* v, const uint32_t* c, uint32_t m,
                                  int32_t e);

/* ---- Generator MT19937: Mersenne Twister ------------------------------------------
 *
 * The twisted shift register of 624 words with its published parameters: 32 bits, equi-
 * distributed in 623 dimensions, period 2^19937 - 1. Matsumoto and Nishimura, "Mersenne
 * Twister", ACM Transactions on Modeling and Computer Simulation 8, 1998.
 *
 * Seed: any number of words, all of which count; no seed is the seed of a single 1.
 * They go through the authors' init_by_array of 2002. No leapfrog, no skip-ahead. Real
 * numbers are x (b - a) / 2^32 + a; a float may be rounded up to b. Output slots use r
 * as their working memory.
 */
QORKES_API int __kesBRngMT19937InitStream(int method, StreamState* stream, int n,
                                          const uint32_t* params);
QORKES_API int __kessBRngMT19937(StreamState* stream, int n, float* r, float a,
                                 float b);
QORKES_API int __kesdBRngMT19937(StreamState* stream, int n, double* r, double a,
                                 double b);
QORKES_API int __kesiBRngMT19937(StreamState* stream, int n, uint32_t* r);

/* ---- Generator MT2203: a family of small Mersenne Twisters ------------------------
 *
 * 1024 generators of period 2^2203 - 1 for as many independent streams: twisted shift
 * registers of 69 words with a matrix word and two tempering masks of their own, found
 * by dynamic creation, so that the characteristic polynomials are irreducible and
 * different. Matsumoto and Nishimura, "Dynamic creation of pseudorandom number
 * generators", Monte Carlo and Quasi-Monte Carlo Methods 1998, 2000.
 *
 * Member m is KesBrngMT2203 + m. Seeding, output and what cannot be done are as with
 * MT19937. A stream carries its member's parameters; __kesCopyStreamState moves the
 * words and not the parameters.
 */
#define KesMt2203Members 1024

typedef struct KesMt2203Row {
    uint32_t MatrixA; /* matrix word; its low 16 bits are the member's own */
    uint32_t MaskB;   /* tempering mask for the shift by 7 */
    uint32_t MaskC;   /* tempering mask for the shift by 15 */
} KesMt2203Row;

QORKES_API const KesMt2203Row _kes_mt2203_table[KesMt2203Members];

QORKES_API int __kesBRngMT2203InitStream(int method, StreamState* stream, int n,
                                         const uint32_t* params);
QORKES_API int __kessBRngMT2203(StreamState* stream, int n, float* r, float a, float b);
QORKES_API int __kesdBRngMT2203(StreamState* stream, int n, double* r, double a,
                                double b);
QORKES_API int __kesiBRngMT2203(StreamState* stream, int n, uint32_t* r);

/* ---- Generator Niederreiter: quasi-random, in up to 318 dimensions ----------------
 *
 * Niederreiter's sequence in base 2: points of the unit cube that fill it more evenly
 * than random ones. Component d of member i is the exclusive or of those direction
 * numbers of d that the Gray code of i selects; these are the columns of a generator
 * matrix that comes from the d-th irreducible polynomial over GF(2). Bratley, Fox and
 * Niederreiter, "Implementation and tests of low-discrepancy sequences", ACM
 * Transactions on Modeling and Computer Simulation 2, 1992.
 *
 * Seed, delivery, selection of a dimension and the state are as with Sobol below, and
 * so is a skip from the start of a point. A skip from inside a point that leads out of
 * it goes on two points before the one that Sobol would go on at, or at the present
 * point where that comes later; the component is the same.
 */
#define KesNiederrDimensions 318

/* The polynomials, the coefficient of t^i in bit i, and their degrees. */
QORKES_API const uint32_t uNiederrIrredPoly[KesNiederrDimensions];
QORKES_API const int32_t iNiederrIrredPolyDeg[KesNiederrDimensions];

QORKES_API int __kesBRngNiederrInitStream(int method, StreamState* stream, int n,
                                          const uint32_t* params);
QORKES_API int __kessBRngNiederr(StreamState* stream, int n, float* r, float a,
                                 float b);
QORKES_API int __kesdBRngNiederr(StreamState* stream, int n, double* r, double a,
                                 double b);
QORKES_API int __kesiBRngNiederr(StreamState* stream, int n, uint32_t* r);

/* ---- Generator R250: generalised feedback shift register --------------------------
 *
 * x[i] = x[i-250] xor x[i-147]: 32 bits, period 2^250 - 1. Kirkpatrick and Stoll, "A
 * very fast shift-register sequence random number generator", Journal of Computational
 * Physics 40, 1981.
 *
 * Seed: 250 words and more are the register as they stand, all zeros too. Of fewer the
 * first one counts, 1 standing in for 0 and for no seed: the register is filled by
 * powers of 69069 modulo 2^32 and 32 of its words are made linearly independent. That is
 * a poor start, which counts of bits show long after; 250 random words are a good one.
 * No leapfrog, no skip-ahead. Real numbers are x (b - a) / 2^32 + a; rounding may reach
 * b.
 */
QORKES_API int __kesBRngR250InitStream(int method, StreamState* stream, int n,
                                       const uint32_t* params);
QORKES_API int __kessBRngR250(StreamState* stream, int n, float* r, float a, float b);
QORKES_API int __kesdBRngR250(StreamState* stream, int n, double* r, double a,
                              double b);
QORKES_API int __kesiBRngR250(StreamState* stream, int n, uint32_t* r);

/* ---- Generator Sobol: quasi-random, in up to 40 dimensions ------------------------
 *
 * Sobol's sequence: points of the unit cube that fill it more evenly than random ones.
 * Component d of member i is the exclusive or of those direction numbers of d that the
 * Gray code of i selects; these come from a primitive polynomial over GF(2) and start
 * numbers. Bratley and Fox, "Algorithm 659: Implementing Sobol's quasirandom sequence
 * generator", ACM Transactions on Mathematical Software 14, 1988, with the start
 * numbers taken one row further on than the polynomials.
 *
 * Seed: one word, the number of dimensions; 1 stands in for no seed and for more
 * dimensions than there are. A number below 1, as a signed word, is not refused, and
 * drawing then divides by it.
 *
 * Numbers are the components of one point after the other, from member 1 on: member 0,
 * the origin, is left out. A draw may end inside a point and the next one goes on
 * there. A word is a fraction of 32 bits; real numbers are x (b - a) / 2^32 + a, where
 * rounding may reach b. Real slots use r as their working memory.
 *
 * Leapfrog selects a dimension: with a stride of 0x7FFFFFFF component k alone is
 * delivered from then on, at first the one that is due next. Another stride, and k that
 * is no dimension, is KesStatusLeapfrogUnsupported. Another component can be selected
 * later, which passes over one point; there is no way back to all of them.
 *
 * Skip-ahead by n of 1 and more (else KesStatusSkipAheadUnsupported) passes over n
 * numbers of all components, also where one is selected. After 2^32 - 1 points the
 * sequence is at its end.
 *
 * The state begins with the index of the present point and the number of dimensions.
 */
#define KesSobolDimensions 40

/* Start numbers in rows of eight, polynomials with the coefficient of t^i in bit i, and
 * their degrees. Dimension d, from 1 on, has polynomial d - 1 and start numbers from
 * row d; dimension 39 takes the words behind the last row, which are the polynomials.
 */
QORKES_API const uint32_t uSobolMInit[KesSobolDimensions - 1][8];
QORKES_API const uint32_t uSobolIrredPoly[KesSobolDimensions - 1];
QORKES_API const int32_t iSobolIrredPolyDeg[KesSobolDimensions - 1];

QORKES_API int __kesBRngSobolInitStream(int method, StreamState* stream, int n,
                                        const uint32_t* params);
QORKES_API int __kessBRngSobol(StreamState* stream, int n, float* r, float a, float b);
QORKES_API int __kesdBRngSobol(StreamState* stream, int n, double* r, double a,
                               double b);
QORKES_API int __kesiBRngSobol(StreamState* stream, int n, uint32_t* r);

/* ---- Generator WH: a family of four multiplicative generators combined ------------
 *
 * 273 generators for as many independent streams: four components s[j] that become
 * a[j] s[j] mod m[j], with primes just below 2^24 that no other component of any member
 * has, and primitive roots for multipliers. Each member's period is close to 2^93.
 * Wichmann and Hill, "Generating good pseudo-random numbers", Computational Statistics
 * and Data Analysis 51, 2006, is where the form is from.
 *
 * Member m is KesBrngWH + m, and m + 4 in the first numbering. Seed: up to four words,
 * each taken modulo its m[j]; 1 stands in for a remainder of 0 and for those that are
 * missing. A count below 0 is read as four. Leapfrog as for MCG31M1.
 *
 * Integer elements are the four components, a word of 24 bits each, before the step.
 * Real numbers are u (b - a) + a with u the fraction of s[1] / m[1] + ... + s[4] / m[4]
 * and b - a rounded to double. Where rounding that sum to double takes it up to an
 * integer, u is a hair below 0; rounding may reach b.
 */
#define KesWHMembers 273

/* Multipliers, moduli, and the doubles next to the reciprocals of these: component j,
 * 0 to 3, of member m at 4 m + j. */
QORKES_API const uint8_t _kes_WH_A[4 * KesWHMembers];
QORKES_API const uint32_t _kes_WH_M[4 * KesWHMembers];
QORKES_API const double _kesdWH_IM_Tab[4 * KesWHMembers];

QORKES_API int __kesBRngWHInitStream(int method, StreamState* stream, int n,
                                     const uint32_t* params);
QORKES_API int __kessBRngWH(StreamState* stream, int n, float* r, float a, float b);
QORKES_API int __kesdBRngWH(StreamState* stream, int n, double* r, double a, double b);
QORKES_API int __kesiBRngWH(StreamState* stream, int n, uint32_t* r);

/* ---- Stream files -----------------------------------------------------------------
 *
 * A file holds one stream: 16 bytes of header ("RNG", version 0, sizes, identifier),
 * the generator's state byte for byte, and the chunks, so that distributions go on
 * where they were too. Little-endian, without padding. Words of a state that its
 * generator never writes (unused directions of Sobol and Niederreiter) go into the file
 * as memory held them.
 */

/* Writes the stream to a file, over one that is there. The name ends in a zero if
 * length is below 0; else it is that many bytes. KesStatusInvalidBrng, of a stream that
 * no row of the registry is for, KesStatusNoMemory, KesStatusFileOpen,
 * KesStatusFileWrite (part of the file stays; also for a block of size 0) or
 * KesStatusFileClose. */
QORKES_API int __kesSaveStreamF(const StreamState* stream, const char* name,
                                int length);

/* Makes a stream that continues as the saved one. KesStatusFileOpen, KesStatusFileRead
 * (the file is too short), KesStatusBadFileFormat (no stream file, or of a generator
 * that is not registered so), KesStatusBadFileVersion, KesStatusFileClose or
 * KesStatusNoMemory; bytes behind the last chunk are not looked at. After a failure a
 * stream that *stream holds is deleted, also one from before the call: pass a variable
 * that is null. A loaded abstract stream has the pointers it was saved with. */
QORKES_API int __kesLoadStreamF(StreamState** stream, const char* name);

/* ---- Abstract streams -------------------------------------------------------------
 *
 * Streams of numbers that the caller produces: a hardware source, another generator, a
 * file. The caller owns a circular buffer of n elements, which must outlive the stream,
 * and a function that fills it when the stream runs out; whatever draws from streams
 * then draws from these.
 *
 * An abstract stream gives only what its buffer holds: words for UniformBits and what
 * is made of them, doubles, or floats. Other draws return KesStatusBadAbstractKind.
 * Real numbers v of the buffer's range [low, high) are mapped to the range [a, b) of a
 * draw: (v - low) (b - a) / (high - low) + a, doubles rounded once, floats at each
 * operation.
 *
 * The function is called with what it may not change and must not draw from the stream:
 * n, the size of the buffer; nmin, how many numbers would satisfy this draw, or n if
 * that is less; nmax, how many there is room for; idx, the element to begin with. It
 * writes up to nmax numbers from there on, from the end of the buffer going on at its
 * start, and returns how many it wrote. Fewer than nmin lead to another call; more than
 * the draw takes are kept for the next. A count below 0 or above nmax ends the draw
 * with KesStatusBadUpdate, 0 with KesStatusNoNumbers: r has then received numbers, but
 * the stream is as before the draw, and numbers that were unread will be delivered
 * again.
 */
typedef int (*UpdateIntegers)(StreamState* stream, int* n, uint32_t* buffer, int* nmin,
                              int* nmax, int* idx);
typedef int (*UpdateDoubles)(StreamState* stream, int* n, double* buffer, int* nmin,
                             int* nmax, int* idx);
typedef int (*UpdateSingles)(StreamState* stream, int* n, float* buffer, int* nmin,
                             int* nmax, int* idx);

/* Make a stream with nothing unread: the first draw calls update. KesStatusBadArgument
 * for n = 0, a null pointer, or low >= high (a NaN is not refused, nor is n below 0).
 */
QORKES_API int __kesiNewAbstractStream(StreamState** stream, int n, uint32_t* buffer,
                                       UpdateIntegers update);
QORKES_API int __kesdNewAbstractStream(StreamState** stream, int n, double* buffer,
                                       double low, double high, UpdateDoubles update);
QORKES_API int __kessNewAbstractStream(StreamState** stream, int n, float* buffer,
                                       float low, float high, UpdateSingles update);

/* Their rows. InitStream takes pointers at params: to n, the buffer, for real kinds to
 * low and to high, and update. No leapfrog, no skip-ahead. */
QORKES_API int __kesBRngiAbstractInitStream(int method, StreamState* stream, int n,
                                            const uint32_t* params);
QORKES_API int __kessBRngiAbstract(StreamState* stream, int n, float* r, float a,
                                   float b);
QORKES_API int __kesdBRngiAbstract(StreamState* stream, int n, double* r, double a,
                                   double b);
QORKES_API int __kesiBRngiAbstract(StreamState* stream, int n, uint32_t* r);
QORKES_API int __kesBRngdAbstractInitStream(int method, StreamState* stream, int n,
                                            const uint32_t* params);
QORKES_API int __kessBRngdAbstract(StreamState* stream, int n, float* r, float a,
                                   float b);
QORKES_API int __kesdBRngdAbstract(StreamState* stream, int n, double* r, double a,
                                   double b);
QORKES_API int __kesiBRngdAbstract(StreamState* stream, int n, uint32_t* r);
QORKES_API int __kesBRngsAbstractInitStream(int method, StreamState* stream, int n,
                                            const uint32_t* params);
QORKES_API int __kessBRngsAbstract(StreamState* stream, int n, float* r, float a,
                                   float b);
QORKES_API int __kesdBRngsAbstract(StreamState* stream, int n, double* r, double a,
                                   double b);
QORKES_API int __kesiBRngsAbstract(StreamState* stream, int n, uint32_t* r);

/* ---- Distributions ----------------------------------------------------------------
 *
 * Each writes n variates to r and returns the status of the generator beneath. Names:
 * d, s or i for doubles, floats or integers. `method` chooses between algorithms where
 * a distribution says that it has several, and is ignored elsewhere. Parameters are not
 * tested.
 */

/* ---- Distribution Bernoulli -------------------------------------------------------
 *
 * 1 with probability p, else 0; 0 <= p <= 1. Mean p, variance p (1 - p).
 *
 * Method: 1 where a float uniform from [0, 1) is below p. One float uniform a variate,
 * in one draw; a draw that fails leaves what it wrote in r. A float has 24 bits, so p
 * is met to 6e-8; a uniform that is rounded up to 1 gives 0 for p = 1 too.
 */
QORKES_API int _kesiRngBernoulli(int method, StreamState* stream, int n, int32_t* r,
                                 double p);

/* ---- Distribution Beta ------------------------------------------------------------
 *
 * Density ((x - a) / beta)^(p-1) (1 - (x - a) / beta)^(q-1) / (B(p, q) beta) on
 * [a, a + beta]; shapes p > 0 and q > 0, displacement a, scale beta > 0.
 *
 *     p < 1, q < 1    powers of two uniforms by rejection, where p and q are small:
 *                     Johnk, "Erzeugung von betaverteilten und gammaverteilten
 *                     Zufallszahlen", Metrika 8, 1964; a switching envelope where
 *                     0.8522552176537243 p^2 - 0.9562409713408151 + q > 0: Atkinson and
 *                     Whittaker, "A switching algorithm for the generation of beta
 *                     random variables with at least one parameter less than 1",
 *                     Journal of the Royal Statistical Society A 139, 1976
 *     only one below  a switching envelope of the same source
 *     p > 1, q > 1    a logistic envelope: Cheng, "Generating beta variates with
 *                     nonintegral shape parameters", Communications of the ACM 21, 1978
 *     one of them 1   a power of a uniform: 1 - u^(1/q) if p is 1, else u^(1/p)
 *
 * The last line takes one uniform a variate, drawn by one call. The others take two an
 * attempt, in blocks of as many attempts as variates are missing, at most 512: n of 0
 * and below draws nothing. A shape that is no number gives a uniform on [a, a + beta)
 * if the other one is no 1.
 *
 * If a draw fails, r holds the variates so far, in [0, 1], and may hold uniforms behind
 * them. Shapes so small that both powers underflow always or nearly so (1e-9 and less),
 * and illegal ones, give no variate: after 2^20 attempts in vain the rest of r becomes
 * NaN.
 */
QORKES_API int _kesdRngBeta(int method, StreamState* stream, int n, double* r, double p,
                            double q, double a, double beta);
QORKES_API int _kessRngBeta(int method, StreamState* stream, int n, float* r, float p,
                            float q, float a, float beta);

/* ---- Distribution Binomial --------------------------------------------------------
 *
 * Successes among ntrial trials of probability p: k = 0 ... ntrial with probability
 * C(ntrial, k) p^k (1 - p)^(ntrial - k); ntrial >= 0, 0 <= p <= 1. Mean ntrial p,
 * variance ntrial p (1 - p).
 *
 * Method: failures are counted in the place of successes from p = 0.5 on. A mean below
 * 30 of what is counted: the first of 64 kept cumulative probabilities that is above a
 * uniform (inversion by sequential search, Devroye, "Non-uniform random variate
 * generation", 1986, chapter III.2), going on with further terms up to ntrial, or until
 * a term adds nothing. Else BTPE, rejection from a triangle, two parallelograms and two
 * exponential tails (Kachitvichyanukul and Schmeiser, "Binomial random variate
 * generation", Communications of the ACM 31, 1988), with 32 kept probabilities on
 * either side of the mode. Far below the mode, and where its squeeze does not decide,
 * acceptance departs from the exact one by less than 1e6 draws show.
 *
 * Stream: one double uniform a variate in draws of at most 512, or two an attempt in
 * draws of twice the variates still wanted and at most 512: none is left over. Set-up
 * for the last ntrial and p stays with the stream, in chunk 5 of 680 bytes.
 * KesStatusNoMemory, or a failure of a draw: r has received the variates of the draws
 * before, still counted from the rarer outcome.
 */
QORKES_API int _kesiRngBinomial(int method, StreamState* stream, int n, int32_t* r,
                                int32_t ntrial, double p);

/* ---- Distribution Cauchy ----------------------------------------------------------
 *
 * Density 1 / (pi beta (1 + z^2)), z = (x - a) / beta: centre a, scale beta > 0. No
 * moments. a + beta tan(v), v uniform on [-pi/2, pi/2), by _qordTan_50 or _qorsTan_21:
 * the inverse of the distribution function (von Neumann 1951). One uniform a variate.
 * Doubles may differ in their last places where a sequence is cut into other calls:
 * four tangents share a division.
 */
QORKES_API int _kesdRngCauchy(int method, StreamState* stream, int n, double* r,
                              double a, double beta);
QORKES_API int _kessRngCauchy(int method, StreamState* stream, int n, float* r, float a,
                              float beta);

/* ---- Distribution Exponential -----------------------------------------------------
 *
 * Density exp(-(x - a) / beta) / beta for x >= a: displacement a, scale beta > 0; mean
 * a + beta, deviation beta. a - beta ln(u), u uniform on [0, 1), by Ln HA: the inverse
 * of the distribution function (von Neumann, "Various techniques used in connection
 * with random digits", 1951). One uniform a variate; u = 0 gives an infinity. Rounding
 * may put a double below a; floats are held at a.
 */
QORKES_API int _kesdRngExponential(int method, StreamState* stream, int n, double* r,
                                   double a, double beta);
QORKES_API int _kessRngExponential(int method, StreamState* stream, int n, float* r,
                                   float a, float beta);

/* ---- Distribution Gamma -----------------------------------------------------------
 *
 * Density ((x - a) / beta)^(alpha-1) exp(-(x - a) / beta) / (Gamma(alpha) beta) on
 * [a, infinity); shape alpha > 0, displacement a, scale beta > 0.
 *
 *     alpha > 1         the cube of a normal by rejection: Marsaglia and Tsang, "A
 *                       simple method for generating gamma variables", ACM
 *                       Transactions on Mathematical Software 26, 2000
 *     alpha = 1         _kesdRngExponential, _kessRngExponential
 *     0.6 <= alpha < 1  a Weibull envelope: Vaduva, "On computer generation of gamma
 *                       random variables by rejection and composition procedures",
 *                       Mathematische Operationsforschung und Statistik 8, 1977
 *     alpha < 0.6       a power of a variate of the exponential power distribution:
 *                       Devroye, "Non-Uniform Random Variate Generation", 1986
 *
 * Shapes other than 1 take two uniforms an attempt, in blocks of as many attempts as
 * variates are missing, at most 512: n of 0 and below draws nothing. Above 1, attempts
 * are drawn in pairs, since two normals come together; one that is over waits with the
 * stream (chunk 7 for doubles, 8 for floats) and is made first when the stream is next
 * asked for gamma variates of any shape above 1.
 *
 * If a draw fails, r holds the variates so far, without displacement and scale, and an
 * attempt that waited is lost. KesStatusNoMemory if there is none for the chunk. Shapes
 * of 0 and below take the last way as they are; where that never gives a variate, the
 * rest of r becomes NaN after 2^20 attempts in vain.
 */
QORKES_API int _kesdRngGamma(int method, StreamState* stream, int n, double* r,
                             double alpha, double a, double beta);
QORKES_API int _kessRngGamma(int method, StreamState* stream, int n, float* r,
                             float alpha, float a, float beta);

/* ---- Distribution Gaussian --------------------------------------------------------
 *
 * Density exp(-z^2 / 2) / (sigma sqrt(2 pi)), z = (x - a) / sigma: mean a, deviation
 * sigma > 0. The transform of Box and Muller, "A note on the generation of random
 * normal deviates", Annals of Mathematical Statistics 29, 1958: of two uniforms u, v
 * follow sqrt(-2 ln(u)) sin(2 pi v) and sqrt(-2 ln(u)) cos(2 pi v), which are
 * independent. By Ln HA and Sqrt HA; Sin, Cos, SinCos HA for doubles and 21 for floats.
 *
 *   method 0   the sine value alone: two uniforms a variate, nothing kept
 *   method 1   the sine value, then the cosine value: two uniforms for two variates
 *
 * Other methods are not refused; they lead astray. Uniforms are drawn in blocks of
 * 1024; method 0 ends with a draw of what is left, even if that is none. Method 1 keeps
 * the two uniforms of a pair whose cosine value is still to come with the stream (chunk
 * 2, floats chunk 1, where -1 stands for none), and begins the next call with it: the
 * sequence is the same in whatever calls it is drawn, but for last places of the two
 * values of a pair that calls share, since SinCos and its halves may round differently.
 * n = 0 must not be asked of it: it writes two variates when one is kept.
 * KesStatusNoMemory if the chunk cannot be made. A draw that fails leaves numbers that
 * are not scaled, and with method 1 a chunk that no longer holds uniforms.
 */
QORKES_API int _kesdRngGaussian(int method, StreamState* stream, int n, double* r,
                                double a, double sigma);
QORKES_API int _kessRngGaussian(int method, StreamState* stream, int n, float* r,
                                float a, float sigma);

/* ---- Distribution GaussianMV ------------------------------------------------------
 *
 * n vectors of dimen elements, one after another: normal with the mean vector a and the
 * covariance matrix T T', for which the caller gives a lower triangular T, such as the
 * factor of Cholesky. Each is a + T z with z from Gaussian by the same method (Scheuer
 * and Stoller, "On the generation of normal random vectors", Technometrics 4, 1962);
 * the product is summed column by column, doubles rounded once for each term. dimen = 1
 * is Gaussian with a[0] and t[0].
 *
 *   KesMatrixStorageFull       dimen rows of dimen; nothing above the diagonal is read
 *   KesMatrixStoragePacked     the columns of the triangle, each from the diagonal down
 *   KesMatrixStorageDiagonal   the diagonal alone
 *   another number             r keeps standard normal numbers; no failure
 *
 * Full and packed factors need an array of dimen elements from malloc: r keeps standard
 * normal numbers when there is none (KesStatusNoMemory). That n * dimen stays below 2^31
 * is not checked.
 */
#define KesMatrixStorageFull     0
#define KesMatrixStoragePacked   1
#define KesMatrixStorageDiagonal 2

QORKES_API int _kesdRngGaussianMV(int method, StreamState* stream, int n, double* r,
                                  int dimen, int mstorage, const double* a,
                                  const double* t);
QORKES_API int _kessRngGaussianMV(int method, StreamState* stream, int n, float* r,
                                  int dimen, int mstorage, const float* a,
                                  const float* t);

/* ---- Distribution Geometric -------------------------------------------------------
 *
 * The failures before the first success: k = 0, 1, ... with probability p (1 - p)^k;
 * 0 < p <= 1. Mean (1 - p) / p, variance (1 - p) / p^2.
 *
 * Method: inversion, ln u / ln(1 - p) truncated (Devroye, "Non-uniform random variate
 * generation", 1986, chapter X.2), with a float uniform u from [0, 1) and its float
 * logarithm: means above 1e5 show the steps of u. One float uniform a variate, in one
 * draw; a draw that fails leaves what it wrote in r. Variates of 2^31 and more are not
 * representable: what is stored for them, and for u = 0, means nothing.
 */
QORKES_API int _kesiRngGeometric(int method, StreamState* stream, int n, int32_t* r,
                                 double p);

/* ---- Distribution Gumbel ----------------------------------------------------------
 *
 * Density exp(z - exp(z)) / beta, z = (x - a) / beta: the limit law of smallest values
 * (Gumbel, "Statistics of extremes", 1958), mode a, scale beta > 0; mean a - 0.57722
 * beta, deviation pi beta / sqrt(6). a + beta ln(e) by Ln HA, e from Exponential with 0
 * and 1. One uniform a variate; a float e of 0 gives -infinity.
 */
QORKES_API int _kesdRngGumbel(int method, StreamState* stream, int n, double* r,
                              double a, double beta);
QORKES_API int _kessRngGumbel(int method, StreamState* stream, int n, float* r, float a,
                              float beta);

/* ---- Distribution Hypergeometric --------------------------------------------------
 *
 * Marked items in a sample of s from a lot of l with m marked, not put back: k with
 * probability C(m, k) C(l - m, s - k) / C(l, s); 0 <= s <= l, 0 <= m <= l. Mean s m /
 * l, variance s m (l - m) (l - s) / (l^2 (l - 1)).
 *
 * Method: the smaller of marked and unmarked items in the smaller of sample and rest
 * are counted. Is there one result only, no uniform is drawn. A mode below 40: the
 * first of up to 64 kept cumulative probabilities that is above a uniform, going on
 * with further terms up to the greatest value, or until a term adds nothing. Else H2PE,
 * rejection from a rectangle and two exponential tails (Kachitvichyanukul and
 * Schmeiser, "Computer generation of hypergeometric random variates", Journal of
 * Statistical Computation and Simulation 22, 1985), with 32 kept probabilities on
 * either side of the mode.
 *
 * Values more than 32 below a mode of up to about 300 are too likely: acceptance goes
 * no farther than one step beyond the kept probabilities. The total variation from the
 * exact law is 0.0145 for the worst lots, those with a mode of some 230 in a small
 * sample from a large lot (l = 100000, s = 10000, m = 2330).
 *
 * Stream: one double uniform a variate in draws of at most 512, or two an attempt in
 * draws of twice the variates still wanted and at most 512: none is left over. Set-up
 * for the last l, s and m stays with the stream, in chunk 6 of 648 bytes.
 * KesStatusNoMemory, or a failure of a draw: r has received the counts of the draws
 * before, which are not yet those of marked items in the sample.
 */
QORKES_API int _kesiRngHypergeometric(int method, StreamState* stream, int n,
                                      int32_t* r, int32_t l, int32_t s, int32_t m);

/* ---- Distribution Laplace ---------------------------------------------------------
 *
 * Density exp(-abs(x - a) / beta) / (2 beta): mean a, deviation sqrt(2) beta, beta > 0.
 * a -+ beta ln(u) by Ln HA, below a when a second uniform is above 0.5 (Devroye, "Non-
 * uniform random variate generation", 1986). Two uniforms a variate, u first, drawn in
 * blocks of 2048; the last draw is of what is left, even if that is none.
 */
QORKES_API int _kesdRngLaplace(int method, StreamState* stream, int n, double* r,
                               double a, double beta);
QORKES_API int _kessRngLaplace(int method, StreamState* stream, int n, float* r,
                               float a, float beta);

/* ---- Distribution Lognormal -------------------------------------------------------
 *
 * b + beta exp(z), z normal with mean a and deviation sigma > 0: density
 * exp(-(ln((x - b) / beta) - a)^2 / (2 sigma^2)) / (sigma sqrt(2 pi) (x - b)) for x >
 * b; mean b + beta exp(a + sigma^2 / 2) (Aitchison and Brown, "The lognormal
 * distribution", 1957). z is Gaussian by method 1, with what is said there of pairs,
 * chunks and n = 0; then Exp HA.
 */
QORKES_API int _kesdRngLognormal(int method, StreamState* stream, int n, double* r,
                                 double a, double sigma, double b, double beta);
QORKES_API int _kessRngLognormal(int method, StreamState* stream, int n, float* r,
                                 float a, float sigma, float b, float beta);

/* ---- Distribution Negbinomial -----------------------------------------------------
 *
 * Failures before the a-th success in trials of probability p: k = 0, 1, ... with
 * probability G(a + k) / (G(a) k!) p^a (1 - p)^k, G being the gamma function; a > 0,
 * not only whole, 0 < p <= 1. Mean a (1 - p) / p, variance a (1 - p) / p^2.
 *
 * Method, with m = (a - 1) (1 - p) / p. Below 100: the first of 128 kept cumulative
 * probabilities that is above a uniform, going on with further terms until one adds
 * nothing. Else rejection from a rectangle about the mode, a triangle on either side
 * and two exponential tails, with 64 kept probabilities on either side of the mode
 * (after Stadlober and Zechner, "The patchwork rejection technique for sampling from
 * unimodal distributions", ACM Transactions on Modeling and Computer Simulation 9,
 * 1999). Where these regions cannot be formed, the left tail beginning below 1 (a of
 * about 2 and less), the table serves large m too; a variate then takes as many steps
 * as its value.
 *
 * The regions do not cover the law for p above one half, and more is missing as p and a
 * grow: the total variation from the exact law is 0.0125 for a = 301 and p = 0.75,
 * 0.074 for 1000 and 0.9, 0.352 for 20000 and 0.99. For p of 0.4 and below, 1e6 draws
 * show no difference. Variates of 2^31 and more are not representable: what is stored
 * for them means nothing.
 *
 * Stream: one double uniform a variate in draws of at most 256, or two an attempt in
 * draws of twice the variates still wanted and at most 256: none is left over. Set-up
 * for the last a and p stays with the stream, in chunk 4 of 1304 bytes.
 * KesStatusNoMemory, or a failure of a draw: r has received the variates of the draws
 * before.
 */
QORKES_API int _kesiRngNegbinomial(int method, StreamState* stream, int n, int32_t* r,
                                   double a, double p);

/* ---- Distribution Poisson, PoissonV -----------------------------------------------
 *
 * k = 0, 1, ... with probability exp(-lambda) lambda^k / k!; lambda >= 0. Mean and
 * variance lambda. PoissonV takes one mean for each variate, an array of n.
 *
 * Method 0 is exact. Below a mean of 27: the first of the cumulative probabilities that
 * a double uniform is below (inversion by sequential search, Devroye, "Non-uniform
 * random variate generation", 1986, chapter III.2), one uniform a variate, drawn in
 * blocks of 512. A uniform that is not below their sum, which rounding may leave short
 * of 1, goes on with further terms until they add nothing. From 27 on: PTPE, acceptance
 * from a hat of triangle, parallelograms and two exponential tails (Schmeiser and
 * Kachitvichyanukul, "Poisson random variate generation", Research Memorandum 81-4,
 * Purdue University, 1981), two float uniforms an attempt, in draws of twice the
 * variates still wanted and at most 512. Set-up for the last mean of each kind stays
 * with the stream, in chunk 3 of 672 bytes, so that a stream serves a small and a large
 * mean without setting up again.
 *
 * Method 1 and PoissonV are approximate and faster: a float normal variate (method 1 of
 * Gaussian, of which they share the spare variate) goes through a polynomial fitted to
 * the distribution's quantiles (after Cornish and Fisher, Review of the International
 * Statistical Institute 5, 1937), one normal a variate. `qorkes-mapping` prints how far
 * their laws are from the exact one: a total variation below 1e-3 for means up to 16,
 * below 3e-4 from there to 2000 (method 1) and 8192 (PoissonV). Beyond, the steps of
 * floats show in method 1, and PoissonV has one curve for all means, which misses
 * several variates in a hundred by one. Two exceptions: method 1 below a mean of 1
 * compares one float uniform from [0, exp(lambda)) with partial sums of the exponential
 * series, and gives at most 11; PoissonV below 1/16 does that with a uniform made from
 * the normal.
 *
 * KesStatusNoMemory or a failure of the generator beneath: method 0 has then written
 * the variates of the blocks before, the others leave floats in r.
 */
QORKES_API int _kesiRngPoisson(int method, StreamState* stream, int n, int32_t* r,
                               double lambda);
QORKES_API int _kesiRngPoissonV(int method, StreamState* stream, int n, int32_t* r,
                                const double* lambda);

/* ---- Distribution Rayleigh --------------------------------------------------------
 *
 * Density 2 z exp(-z^2) / beta, z = (x - a) / beta, for x >= a: displacement a, scale
 * beta > 0; mean a + beta sqrt(pi) / 2, deviation beta sqrt(1 - pi/4). The scale is
 * sqrt(2) times that of the usual form. a + beta sqrt(-ln(u)), u uniform on [0, 1), by
 * Ln HA and Sqrt HA: the inverse of the distribution function (von Neumann 1951). One
 * uniform a variate; u = 0 gives an infinity.
 */
QORKES_API int _kesdRngRayleigh(int method, StreamState* stream, int n, double* r,
                                double a, double beta);
QORKES_API int _kessRngRayleigh(int method, StreamState* stream, int n, float* r,
                                float a, float beta);

/* ---- Distribution Uniform ---------------------------------------------------------
 *
 * Uniform on [a, b), as the generator of the stream delivers it: one element of the
 * sequence a variate. Rounding may reach b.
 */
QORKES_API int _kesdRngUniform(int method, StreamState* stream, int n, double* r,
                               double a, double b);
QORKES_API int _kessRngUniform(int method, StreamState* stream, int n, float* r,
                               float a, float b);

/* Integers a, a + 1, ..., b - 1 with equal probability; a < b. The floors of doubles
 * from [a, b), one double uniform a variate, in one sequence however n is divided:
 * n / 2 at once where that is above 1024, the rest in draws of 1024 and less. A range
 * wider than the generator's steps leaves gaps; a double that is rounded up to b gives
 * b. A draw that fails ends the call, with the variates of earlier draws in r. */
QORKES_API int _kesiRngUniform(int method, StreamState* stream, int n, int32_t* r,
                               int32_t a, int32_t b);

/* ---- Distribution UniformBits -----------------------------------------------------
 *
 * The generator's own integers, n elements of its WordSize bytes each.
 */
QORKES_API int _kesiRngUniformBits(int method, StreamState* stream, int n, uint32_t* r);

/* ---- Distribution Weibull ---------------------------------------------------------
 *
 * Density alpha z^(alpha - 1) exp(-z^alpha) / beta, z = (x - a) / beta, for x >= a:
 * shape alpha > 0, displacement a, scale beta > 0 (Weibull, "A statistical distribution
 * function of wide applicability", Journal of Applied Mechanics 18, 1951); mean
 * a + beta gamma(1 + 1/alpha). a + beta (-ln(u))^(1/alpha), u uniform on [0, 1), by Ln
 * HA and Powx HA: the inverse of the distribution function. One uniform a variate; u =
 * 0 gives an infinity.
 */
QORKES_API int _kesdRngWeibull(int method, StreamState* stream, int n, double* r,
                               double alpha, double a, double beta);
QORKES_API int _kessRngWeibull(int method, StreamState* stream, int n, float* r,
                               float alpha, float a, float beta);

/* ---- Scalar helpers ---------------------------------------------------------------
 *
 * One number at a time, for callers; no distribution of the library uses them. They
 * compute at the precision of the caller's x87 control word.
 *
 *   __kesdLn      ln(x) by rows of 256 and a polynomial (Tang, "Table-driven
 *                 implementation of the logarithm function", ACM Transactions on
 *                 Mathematical Software 16, 1990); -infinity of +-0, a NaN below 0
 *   __kessLn      the same, rounded to float
 *   __kesdFloor   the greatest integer not above x; -0 of -0
 *   __kesdSqrt    the square root of the x87 unit
 */
QORKES_API double __kesdLn(double x);
QORKES_API float __kessLn(float x);
QORKES_API double __kesdFloor(double x);
QORKES_API double __kesdSqrt(double x);

/* ---- Tasks: convolution and correlation --------------------------------------------
 *
 * In one dimension, with arrays x, y and z of nx, ny and nz elements:
 *
 *     convolution   z[k] = sum over j of x[j] y[start + k dec - j]
 *     correlation   z[k] = sum over i of x[i] y[i + start + k dec]
 *
 * over all indices that lie inside both arrays; an empty sum is 0. In several
 * dimensions every index has that many entries, and start and dec one for each. The
 * full result has nx + ny - 1 places in a dimension: 0 to nx + ny - 2 of a convolution,
 * the lags 1 - nx to ny - 1 of a correlation. z is any part of it, every dec-th place
 * from start on:
 *
 *     const double x[3] = {1, 2, 3}, y[5] = {4, 5, 6, 7, 8};
 *     double z[7];
 *     const int nx = 3, ny = 5, nz = 7;
 *     TaskRecord* task;
 *     __kesNewTask(&task, KesTaskConvolution, 0, KesTaskModeAuto, 0, KesTaskDouble, 1,
 *                  &nx, &ny, &nz);
 *     __kesExec(task, x, 0, y, 0, z, 0);     z: 4 13 28 34 40 37 24
 *     __kesDeleteTask(&task);
 *
 * As a correlation, from lag -2 on, the same gives 12 23 32 38 44 23 8.
 *
 * In memory dimension 0 varies fastest. Two dimensions, two rows of x and y each:
 *
 *     const int xshape[2] = {2, 2}, yshape[2] = {3, 2}, zshape[2] = {4, 3};
 *     x:  1 2     y:  1 0 0     z:  1 2 0 0
 *         3 4         0 1 0         3 5 2 0
 *                                   0 3 4 0
 *
 * A stride tells how far apart, in elements, neighbours of a dimension lie. A null
 * pointer stands for dense strides: 1, and from there on the products of the shape.
 * With a negative stride the pointer is still the lowest address, and element 0 lies
 * furthest from it. Stride 0 repeats one element of x or y.
 *
 * A task is made once and executed any number of times. A failure sticks: once an edit
 * or an execution has failed, every further edit, commit, copy and execution returns
 * that status at once, and only deleting works. A task belongs to one thread at a time;
 * different tasks may run in parallel.
 */

#define KesStatusCcNotImplemented (-2000) /* no kernel for this combination */
#define KesStatusCcNullX          (-2011)
#define KesStatusCcBadXShape      (-2012) /* an entry below 1 */
#define KesStatusCcNullY          (-2021)
#define KesStatusCcBadYShape      (-2022) /* an entry below 1 */
#define KesStatusCcNullZ          (-2031)
#define KesStatusCcBadZShape      (-2032) /* an entry below 1 */
#define KesStatusCcBadZStride     (-2033) /* a stride of zero */
#define KesStatusCcBadStart       (-2034) /* outside the full result */
#define KesStatusCcBadDecimation  (-2035) /* below 1, or past the full result */
#define KesStatusCcNoMemory       (-2101) /* no memory for a work array */
#define KesStatusCcFftFailed      (-2102)
#define KesStatusCcBadParameter   (-2211) /* parameter code outside 1 to 19 */
#define KesStatusCcFixedParameter (-2212) /* parameter that cannot be edited */
#define KesStatusCcNoRelease      (-2220) /* private data without a release */
#define KesStatusCcCopyFailed     (-2230) /* private data could not be cloned */
#define KesStatusCcDeleteFailed   (-2240) /* deleted, but its private data failed */

#define KesTaskConvolution 1
#define KesTaskCorrelation 2

#define KesTaskModeAuto   0
#define KesTaskModeDirect 1
#define KesTaskModeFft    2

#define KesTaskSingle 1
#define KesTaskDouble 2 /* as any number but 1 */

/* What __kesEditTask can change. */
#define KesTaskParamMode         3
#define KesTaskParamEditWord     4
#define KesTaskParamStart        5
#define KesTaskParamDecimation   6
#define KesTaskParamInternalType 9

#define KesTaskMaxRank 7

struct TaskRecord;
typedef int (*KesTaskRelease)(struct TaskRecord* task, void* privateData);
typedef int (*KesTaskClone)(struct TaskRecord* newTask, void** newPrivateData,
                            void* privateData);

/* A task. The shape, start, decimation and stride arrays are the task's own copies;
 * x alone is the caller's array and has to stay as long as the task executes on it. */
typedef struct TaskRecord {
    int32_t status; /* 0, or the first failure */
    int32_t job;    /* 1: convolution; any other: correlation */
    int32_t callerWordA;
    int32_t mode;
    int32_t editWord;
    int32_t* start;      /* null: the default */
    int32_t* decimation; /* null: 1 in every dimension */
    int32_t callerWordB;
    int32_t dataType;     /* 1: the arrays hold floats; any other: doubles */
    int32_t internalType; /* 1: computed in single precision; any other: double */
    int32_t rank;
    int32_t* xshape;
    int32_t* yshape;
    int32_t* zshape;
    int32_t* xstride; /* of the fixed operand */
    const void* x;    /* the fixed operand, or null */
    int32_t startStore[KesTaskMaxRank];
    int32_t decimationStore[KesTaskMaxRank];
    int32_t xshapeStore[KesTaskMaxRank];
    int32_t yshapeStore[KesTaskMaxRank];
    int32_t zshapeStore[KesTaskMaxRank];
    int32_t xstrideStore[KesTaskMaxRank];
    int32_t committed; /* 1 after a commit or an execution, 0 after an edit */
    void* privateData; /* for extensions; null in the tasks made here */
    KesTaskRelease privateRelease;
    KesTaskClone privateClone;
} TaskRecord;

/* Makes a task. callerWordA and callerWordB are kept for the caller; type goes for the
 * data and the arithmetic; rank is at most KesTaskMaxRank, and the shapes have that
 * many entries. Nothing of this is tested here: shapes are tested by the execution.
 * Status: KesStatusNullPointer for a null address, KesStatusNoMemory. */
QORKES_API int __kesNewTask(TaskRecord** task, int job, int callerWordA, int mode,
                            int callerWordB, int type, int rank, const int* xshape,
                            const int* yshape, const int* zshape);

/* The same with a fixed operand x of strides xstride (null: dense) for __kesExecX. */
QORKES_API int __kesNewTaskX(TaskRecord** task, int job, int callerWordA, int mode,
                             int callerWordB, int type, int rank, const int* xshape,
                             const int* yshape, const int* zshape, const void* x,
                             const int* xstride);

/* An independent copy of a healthy task; of x the pointer. Private data goes through
 * privateClone; if that fails, there is no copy: KesStatusCcCopyFailed. */
QORKES_API int __kesCopyTask(TaskRecord** newTask, const TaskRecord* task);

/* Frees the task and clears the pointer; a null task is no failure. Private data goes
 * through privateRelease and free; KesStatusCcDeleteFailed if the release failed. */
QORKES_API int __kesDeleteTask(TaskRecord** task);

/* Changes a parameter to what stands at `value`: one word, or for start and decimation
 * one word a dimension. A code that cannot be edited or a null value is a failure that
 * sticks. */
QORKES_API int __kesEditTask(TaskRecord* task, int parameter, const void* value);

/* Marks a healthy task as ready; executions do so by themselves. */
QORKES_API int __kesCommitTask(TaskRecord* task);

/* The task's status; the setter returns the one before. The task is not tested. */
QORKES_API int __kesccSetStatus(TaskRecord* task, int status);
QORKES_API int __kesccGetStatus(const TaskRecord* task);

/* Executes a task on arrays of its data type, each with an array of rank strides or
 * null. z must not overlap x and y.
 *
 * Missing parameters: dec is 1; start is 0, and for KesTaskCorrelation (no other job)
 * 1 - xshape. Rank 1 is computed by the direct kernels in KesTaskModeDirect and by the
 * FFT kernels in any other mode; any other rank by the direct kernels, and refused in
 * KesTaskModeFft. Doubles are not computed in single precision: rank 1 refuses, other
 * ranks use the double kernel. What is refused gives KesStatusCcNotImplemented.
 *
 * Status: the task's own if that is a failure; else that of the kernel, which the task
 * keeps. Kernels test before they write to z; KesStatusCcNoMemory leaves z alone too.
 */
QORKES_API int __kesExec(TaskRecord* task, const void* x, const int* xstride,
                         const void* y, const int* ystride, void* z,
                         const int* zstride);

/* The same with the x and xstride of the task. */
QORKES_API int __kesExecX(TaskRecord* task, const void* y, const int* ystride, void* z,
                          const int* zstride);

/* ---- Kernels of the tasks ----------------------------------------------------------
 *
 * Names: Conv or Corr; DD double data and arithmetic, SD float data and double
 * arithmetic, SS float data and arithmetic; Direct1D sums, Fft1D transforms (zubsConv),
 * DirectAll sums in 2 to 7 dimensions and computes nothing in others. Shapes are
 * numbers of elements; the arrays of DirectAll have an entry for each dimension.
 *
 * Tests of Direct1D and Fft1D: x null, xshape below 1; y null, yshape below 1; z null,
 * zshape below 1, zstride 0; start outside the full result; decimation below 1 or a
 * last element of z outside the full result. DirectAll tests x, y, z for null, and then
 * in each dimension the shapes, zstride, start and decimation.
 *
 * Direct kernels, double: products are summed in extended precision (as the caller has
 * set the x87 unit), rounded once in one dimension and after each run over dimension 0
 * in several. Float: every product and sum is rounded, and in one dimension the order
 * of summation depends on the address of y. FFT kernels: see zubsConv for the error.
 *
 * DirectAll does not look at the stride of dimension 0 where those of the higher
 * dimensions are dense: it reads and writes such an array as dense altogether.
 * (SD and the x of a convolution keep to all their strides.)
 *
 * Of the _nodec forms, which have no decimation, the two of SSDirect1D compute; the
 * others return KesStatusCcNotImplemented.
 */
typedef int KesTaskKernelD(const double* x, int xstride, const double* y, int ystride,
                           double* z, int zstride, int xshape, int yshape, int start,
                           int zshape, int decimation);
typedef int KesTaskKernelS(const float* x, int xstride, const float* y, int ystride,
                           float* z, int zstride, int xshape, int yshape, int start,
                           int zshape, int decimation);
typedef int KesTaskKernelNodecD(const double* x, int xstride, const double* y,
                                int ystride, double* z, int zstride, int xshape,
                                int yshape, int start, int zshape);
typedef int KesTaskKernelNodecS(const float* x, int xstride, const float* y,
                                int ystride, float* z, int zstride, int xshape,
                                int yshape, int start, int zshape);
typedef int KesTaskKernelAllD(int rank, const double* x, const int* xshape,
                              const int* xstride, const double* y, const int* yshape,
                              const int* ystride, double* z, const int* zshape,
                              const int* zstride, const int* start,
                              const int* decimation);
typedef int KesTaskKernelAllS(int rank, const float* x, const int* xshape,
                              const int* xstride, const float* y, const int* yshape,
                              const int* ystride, float* z, const int* zshape,
                              const int* zstride, const int* start,
                              const int* decimation);
typedef int KesTaskKernelAllNodecD(int rank, const double* x, const int* xshape,
                                   const int* xstride, const double* y,
                                   const int* yshape, const int* ystride, double* z,
                                   const int* zshape, const int* zstride,
                                   const int* start);
typedef int KesTaskKernelAllNodecS(int rank, const float* x, const int* xshape,
                                   const int* xstride, const float* y,
                                   const int* yshape, const int* ystride, float* z,
                                   const int* zshape, const int* zstride,
                                   const int* start);

QORKES_API KesTaskKernelD _kesConvDDDirect1D_dec;
QORKES_API KesTaskKernelS _kesConvSDDirect1D_dec;
QORKES_API KesTaskKernelS _kesConvSSDirect1D_dec;
QORKES_API KesTaskKernelD _kesCorrDDDirect1D_dec;
QORKES_API KesTaskKernelS _kesCorrSDDirect1D_dec;
QORKES_API KesTaskKernelS _kesCorrSSDirect1D_dec;
QORKES_API KesTaskKernelNodecD _kesConvDDDirect1D_nodec;
QORKES_API KesTaskKernelNodecS _kesConvSDDirect1D_nodec;
QORKES_API KesTaskKernelNodecS _kesConvSSDirect1D_nodec;
QORKES_API KesTaskKernelNodecD _kesCorrDDDirect1D_nodec;
QORKES_API KesTaskKernelNodecS _kesCorrSDDirect1D_nodec;
QORKES_API KesTaskKernelNodecS _kesCorrSSDirect1D_nodec;

QORKES_API KesTaskKernelAllD _kesConvDDDirectAll_dec;
QORKES_API KesTaskKernelAllS _kesConvSDDirectAll_dec;
QORKES_API KesTaskKernelAllS _kesConvSSDirectAll_dec;
QORKES_API KesTaskKernelAllD _kesCorrDDDirectAll_dec;
QORKES_API KesTaskKernelAllS _kesCorrSDDirectAll_dec;
QORKES_API KesTaskKernelAllS _kesCorrSSDirectAll_dec;
QORKES_API KesTaskKernelAllNodecD _kesConvDDDirectAll_nodec;
QORKES_API KesTaskKernelAllNodecS _kesConvSDDirectAll_nodec;
QORKES_API KesTaskKernelAllNodecS _kesConvSSDirectAll_nodec;
QORKES_API KesTaskKernelAllNodecD _kesCorrDDDirectAll_nodec;
QORKES_API KesTaskKernelAllNodecS _kesCorrSDDirectAll_nodec;
QORKES_API KesTaskKernelAllNodecS _kesCorrSSDirectAll_nodec;

QORKES_API KesTaskKernelD _kesConvDDFft1D_dec;
QORKES_API KesTaskKernelS _kesConvSDFft1D_dec;
QORKES_API KesTaskKernelS _kesConvSSFft1D_dec;
QORKES_API KesTaskKernelD _kesCorrDDFft1D_dec;
QORKES_API KesTaskKernelS _kesCorrSDFft1D_dec;
QORKES_API KesTaskKernelS _kesCorrSSFft1D_dec;
QORKES_API KesTaskKernelNodecD _kesConvDDFft1D_nodec;
QORKES_API KesTaskKernelNodecS _kesConvSDFft1D_nodec;
QORKES_API KesTaskKernelNodecS _kesConvSSFft1D_nodec;
QORKES_API KesTaskKernelNodecD _kesCorrDDFft1D_nodec;
QORKES_API KesTaskKernelNodecS _kesCorrSDFft1D_nodec;
QORKES_API KesTaskKernelNodecS _kesCorrSSFft1D_nodec;

#endif
