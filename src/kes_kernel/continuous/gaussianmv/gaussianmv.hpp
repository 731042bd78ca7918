// Normal vectors a + t z: t is a lower triangular factor of the covariance matrix, z a
// vector of independent standard normal numbers.
#pragma once

#include <kes_kernel/frame.hpp>

namespace qorkes {

template <class T>
QORKES_INLINE void setColumn(int n, T* w, const T* t, ptrdiff_t stride, T z) {
    for (int i = 0; i < n; ++i) store(w[i], ext{t[i * stride]} * z);
}

/// w[i] = w[i] + t[i * stride] * z, rounded once; of floats, twice.
QORKES_INLINE void addColumn(int n, double* w, const double* t, ptrdiff_t stride,
                             double z) {
    for (int i = 0; i < n; ++i) w[i] = round64(ext{t[i * stride]} * z + w[i]);
}
QORKES_INLINE void addColumn(int n, float* w, const float* t, ptrdiff_t stride,
                             float z) {
    const __m128 factor = _mm_set1_ps(z);
    const auto add = [=](__m128 sum, __m128 x) {
        return _mm_add_ps(sum, _mm_mul_ps(x, factor));
    };
    if (stride == 1) return inFours(n, w, t, add);
    for (int i = 0; i < n; ++i)
        _mm_store_ss(w + i, add(_mm_load_ss(w + i), _mm_load_ss(t + i * stride)));
}

/// w = t z, column by column: of a whole matrix by rows, or of its packed columns.
template <class T>
QORKES_INLINE void triangularProduct(int dimen, bool isPacked, const T* t, const T* z,
                                     T* w) {
    const int stride = isPacked ? 1 : dimen;
    setColumn(dimen, w, t, stride, z[0]);
    for (int j = 1; j < dimen; ++j) {
        t += isPacked ? dimen - j + 1 : dimen + 1;
        addColumn(dimen - j, w + j, t, stride, z[j]);
    }
}

template <class T>
QORKES_INLINE int mixByTriangle(int n, T* r, int dimen, bool isPacked, const T* a,
                                const T* t) {
    T* const w = static_cast<T*>(std::malloc(static_cast<size_t>(dimen) * sizeof(T)));
    if (!w) return KesStatusNoMemory;
    for (T* z = r; n > 0; --n, z += dimen) {
        triangularProduct(dimen, isPacked, t, z, w);
        for (int i = 0; i < dimen; ++i) store(z[i], ext{w[i]} + a[i]);
    }
    std::free(w);
    return KesStatusOk;
}

/// z[i] = z[i] * t[i] + a[i], rounded once; of floats, twice.
QORKES_INLINE void mixVector(int n, double* z, const double* a, const double* t) {
    for (int i = 0; i < n; ++i) z[i] = round64(ext{z[i]} * t[i] + a[i]);
}
QORKES_INLINE void mixVector(int n, float* z, const float* a, const float* t) {
    multiply(n, z, t);
    inFours(n, z, a, [](__m128 x, __m128 y) { return _mm_add_ps(x, y); });
}

template <class T>
QORKES_INLINE void mixByDiagonal(int n, T* r, int dimen, const T* a, const T* t) {
    for (T* z = r; n > 0; --n, z += dimen) mixVector(dimen, z, a, t);
}

template <auto gaussian, class T>
QORKES_INLINE int gaussianVectors(int method, StreamState* stream, int n, T* r,
                                  int dimen, int mstorage, const T* a, const T* t) {
    if (dimen == 1) return gaussian(method, stream, n, r, *a, *t);
    const int status = gaussian(method, stream, n * dimen, r, 0, 1);
    if (failed(status)) return status;
    if (mstorage == KesMatrixStorageFull || mstorage == KesMatrixStoragePacked) {
        const bool isPacked = mstorage == KesMatrixStoragePacked;
        if (failed(mixByTriangle(n, r, dimen, isPacked, a, t)))
            return KesStatusNoMemory;
    } else if (mstorage == KesMatrixStorageDiagonal) {
        mixByDiagonal(n, r, dimen, a, t);
    }
    return status;
}

} // namespace qorkes
