// What every distribution does alike: uniforms by the one door, blocks, the stream's
// memory from call to call, and the last scaling.
//
// Temporaries are `ext`; they are rounded where they are stored to an array or a chunk
// and where they become a kernel's argument.
#pragma once

#include <common/ext.hpp>
#include <qorkes/kes.h>

#include <algorithm>
#include <cstdlib>
#include <xmmintrin.h>

namespace qorkes {

/// x as a number of this type.
template <class T> QORKES_INLINE T rounded(ext x) {
    T result;
    store(result, x);
    return result;
}

/// n uniforms from [a, b); returns the stream's status.
QORKES_INLINE int uniforms(StreamState* stream, int n, double* r, double a = 0,
                           double b = 1) {
    return _kesdRngUniform(0, stream, n, r, a, b);
}
QORKES_INLINE int uniforms(StreamState* stream, int n, float* r, float a = 0,
                           float b = 1) {
    return _kessRngUniform(0, stream, n, r, a, b);
}

/// A negative status ends a call; a warning does not.
QORKES_INLINE bool failed(int status) { return status < 0; }

/// block(start, count) over [0, n): full blocks, then the rest, which is a block too
/// when nothing is left. Each returns a status; the last one is the call's.
template <int size, class Block> QORKES_INLINE int inBlocks(int n, Block&& block) {
    for (int start = 0;; start += size) {
        const int count = std::min(n - start, size);
        const int status = block(start, count);
        if (failed(status) || count < size) return status;
    }
}

/// The chunk of this number, made from `initial` when the stream has none.
template <class Record>
QORKES_INLINE int chunkOf(StreamState* stream, int id, Record*& record,
                          const Record& initial) {
    record = static_cast<Record*>(__kesSearchChunk(stream, id));
    if (record) return KesStatusOk;
    record = static_cast<Record*>(std::malloc(sizeof(Record)));
    if (!record) return KesStatusNoMemory;
    *record = initial;
    const int status = __kesAddChunk(stream, id, record, sizeof(Record));
    if (failed(status)) std::free(record);
    return status;
}

/// r[i] = r[i] * factor + shift, rounded once.
QORKES_INLINE void scale(int n, double* r, ext factor, double shift) {
    for (int i = 0; i < n; ++i) r[i] = round64(r[i] * factor + shift);
}

/// lane(four of r) to each four of r; the last ones in the low lanes of a register.
template <class Lane> QORKES_INLINE void inFours(int n, float* r, Lane&& lane) {
    int i = 0;
    for (; i < n - 3; i += 4) _mm_storeu_ps(r + i, lane(_mm_loadu_ps(r + i)));
    for (; i < n; ++i) _mm_store_ss(r + i, lane(_mm_load_ss(r + i)));
}

/// The same of lane(four of r, four of x).
template <class Lane>
QORKES_INLINE void inFours(int n, float* r, const float* x, Lane&& lane) {
    int i = 0;
    for (; i < n - 3; i += 4)
        _mm_storeu_ps(r + i, lane(_mm_loadu_ps(r + i), _mm_loadu_ps(x + i)));
    for (; i < n; ++i)
        _mm_store_ss(r + i, lane(_mm_load_ss(r + i), _mm_load_ss(x + i)));
}

/// r[i] = r[i] * factor + shift, rounded twice.
QORKES_INLINE void scale(int n, float* r, float factor, float shift) {
    const __m128 factors = _mm_set1_ps(factor), shifts = _mm_set1_ps(shift);
    inFours(n, r, [=](__m128 x) { return _mm_add_ps(_mm_mul_ps(x, factors), shifts); });
}

/// r[i] = r[i] * factor.
QORKES_INLINE void multiply(int n, double* r, double factor) {
    for (int i = 0; i < n; ++i) r[i] = round64(ext{r[i]} * factor);
}
QORKES_INLINE void multiply(int n, float* r, float factor) {
    const __m128 factors = _mm_set1_ps(factor);
    inFours(n, r, [=](__m128 x) { return _mm_mul_ps(x, factors); });
}

/// r[i] = r[i] * x[i].
QORKES_INLINE void multiply(int n, double* r, const double* x) {
    for (int i = 0; i < n; ++i) r[i] = round64(ext{r[i]} * x[i]);
}
QORKES_INLINE void multiply(int n, float* r, const float* x) {
    inFours(n, r, x, [](__m128 a, __m128 b) { return _mm_mul_ps(a, b); });
}

/// r[i] = -r[i]; of floats 0 - r[i], which has no negative zero.
QORKES_INLINE void negate(int n, double* r) {
    for (int i = 0; i < n; ++i) r[i] = round64(-ext{r[i]});
}
QORKES_INLINE void negate(int n, float* r) {
    inFours(n, r, [](__m128 x) { return _mm_sub_ps(_mm_setzero_ps(), x); });
}

/// Takes n pairs apart: first[i] = u[2 i], u[i] = u[2 i + 1] * factor.
QORKES_INLINE void splitPairs(int n, double* u, double* first, double factor = 1) {
    for (int i = 0; i < n; ++i) {
        first[i] = u[2 * i];
        u[i] = round64(ext{u[2 * i + 1]} * factor);
    }
}
QORKES_INLINE void splitPairs(int n, float* u, float* first, float factor = 1) {
    const __m128 factors = _mm_set1_ps(factor);
    int i = 0;
    for (; i < n - 3; i += 4) {
        const __m128 a = _mm_loadu_ps(u + 2 * i), b = _mm_loadu_ps(u + 2 * i + 4);
        const __m128 second = _mm_shuffle_ps(a, b, _MM_SHUFFLE(3, 1, 3, 1));
        _mm_storeu_ps(first + i, _mm_shuffle_ps(a, b, _MM_SHUFFLE(2, 0, 2, 0)));
        _mm_storeu_ps(u + i, _mm_mul_ps(second, factors));
    }
    for (; i < n; ++i) {
        first[i] = u[2 * i];
        u[i] = round32(ext{u[2 * i + 1]} * factor);
    }
}

} // namespace qorkes
