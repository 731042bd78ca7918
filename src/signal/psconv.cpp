// zubsConv_32f, zubsConv_64f: the linear convolution of two arrays.
//
// Short ones by the direct sum, in blocks that stay in the first-level cache; long ones
// by one transform of everything, or, if one array is much shorter, by overlap-save
// (Stockham, "High-speed convolution and correlation", 1966).
#include <qorkes/zubs.h>
#include <signal/values.hpp>

#include <algorithm>
#include <climits>

using namespace qorkes;

namespace {

constexpr int shortestTransformed = 256; // result
constexpr int fewestTaps = 32;           // of the shorter array
constexpr int overlapRatio = 3;
constexpr int directBlock = 4096;

/// The operands, the longer one first, and the result.
template <class T> struct Operands {
    const T* longer;
    int longerLen;
    const T* shorter;
    int shorterLen;
    T* dst;
    int dstLen;
};

// The primitives of a precision under one name.
template <class T> struct Primitives;
template <> struct Primitives<double> {
    static constexpr auto allocate = zubsMalloc_64f;
    static constexpr auto copy = zubsCopy_64f;
    static constexpr auto zero = zubsZero_64f;
    static constexpr auto newPlan = zubsFFTInitAlloc_R_64f;
    static constexpr auto freePlan = zubsFFTFree_R_64f;
    static constexpr auto bufSize = zubsFFTGetBufSize_R_64f;
    static constexpr auto forward = zubsFFTFwd_RToPerm_64f;
    static constexpr auto inverse = zubsFFTInv_PermToR_64f;
    static constexpr auto multiply = zubsMulPerm_64f_I;
};
template <> struct Primitives<float> {
    static constexpr auto allocate = zubsMalloc_32f;
    static constexpr auto copy = zubsCopy_32f;
    static constexpr auto zero = zubsZero_32f;
    static constexpr auto newPlan = zubsFFTInitAlloc_R_32f;
    static constexpr auto freePlan = zubsFFTFree_R_32f;
    static constexpr auto bufSize = zubsFFTGetBufSize_R_32f;
    static constexpr auto forward = zubsFFTFwd_RToPerm_32f;
    static constexpr auto inverse = zubsFFTInv_PermToR_32f;
    static constexpr auto multiply = zubsMulPerm_32f_I;
};

/// A plan of N points, two arrays of N numbers and the plan's work buffer.
template <class T> struct Workspace {
    FftCtx* plan;
    int points;
    T* a;
    T* b;
    unsigned char* buffer;
};

template <class T> void close(Workspace<T>& w) {
    zubsFree(w.a);
    Primitives<T>::freePlan(w.plan);
}

/// `room(bytes)` is the number of elements that a work buffer of that size takes.
template <class T, class Room> int open(Workspace<T>& w, int order, Room room) {
    using P = Primitives<T>;
    const int status = P::newPlan(&w.plan, order, ZubFftDivInvByN, 0);
    if (status != ZubStatusOk) return status;
    w.points = 1 << order;
    int bytes;
    P::bufSize(w.plan, &bytes);
    const int64_t count = 2 * int64_t{w.points} + room(bytes);
    w.a = count > INT_MAX ? nullptr : P::allocate(static_cast<int>(count));
    if (!w.a) {
        P::freePlan(w.plan);
        return ZubStatusMemoryError;
    }
    w.b = w.a + w.points;
    w.buffer = bytes ? reinterpret_cast<unsigned char*>(w.b + w.points) : nullptr;
    return ZubStatusOk;
}

/// Fills `to` with `count` numbers and zeros.
template <class T> void fill(const Workspace<T>& w, const T* from, int count, T* to) {
    Primitives<T>::copy(from, to, count);
    if (count < w.points) Primitives<T>::zero(to + count, w.points - count);
}

template <class T> int transform(const Workspace<T>& w, T* data) {
    return Primitives<T>::forward(data, data, w.plan, w.buffer);
}

/// data becomes its convolution with what `spectrum` is the transform of, modulo N.
template <class T> int convolve(const Workspace<T>& w, const T* spectrum, T* data) {
    using P = Primitives<T>;
    P::multiply(spectrum, data, w.points);
    return P::inverse(data, data, w.plan, w.buffer);
}

int orderFor(int points, int smallest) {
    int order = smallest;
    while (int64_t{1} << order < points) ++order;
    return order;
}

template <class T> int oneShot(const Operands<T>& x) {
    Workspace<T> w;
    int status =
        open(w, orderFor(x.dstLen, 2), [](int bytes) { return (bytes + 3) / 4; });
    if (status != ZubStatusOk) return status;
    fill(w, x.longer, x.longerLen, w.a);
    fill(w, x.shorter, x.shorterLen, w.b);
    status = transform(w, w.a);
    if (status >= ZubStatusOk) status = transform(w, w.b);
    if (status >= ZubStatusOk) {
        status = convolve(w, w.a, w.b);
        Primitives<T>::copy(w.b, x.dst, x.dstLen);
    }
    close(w);
    return status;
}

template <class T> int overlapSave(const Operands<T>& x) {
    Workspace<T> w;
    int status = open(w, orderFor(2 * x.shorterLen, 1) + 1, [](int bytes) {
        return (bytes + int{sizeof(T)} - 1) / int{sizeof(T)} + 1;
    });
    if (status != ZubStatusOk) return status;
    const int taps = x.shorterLen, step = w.points - taps + 1;
    fill(w, x.shorter, taps, w.a);
    status = transform(w, w.a);
    for (int pos = 0; pos < x.dstLen && status >= ZubStatusOk; pos += step) {
        // Every block but the first reads the last inputs of the one before again.
        const int back = pos == 0 ? 0 : taps - 1;
        const int available = std::min(x.longerLen - pos + back, x.longerLen);
        fill(w, x.longer + pos - back, std::min(available, back + step), w.b);
        status = transform(w, w.b);
        if (status < ZubStatusOk) break;
        status = convolve(w, w.a, w.b);
        if (status < ZubStatusOk) break;
        Primitives<T>::copy(w.b + back, x.dst + pos, std::min(x.dstLen - pos, step));
    }
    close(w);
    return status;
}

/// dst grows by the convolution of a and b, tap after tap.
void addProducts(const double* a, int n, const double* b, int taps, double* dst) {
    for (int j = 0; j < taps; ++j) {
        const ext tap = b[j];
        for (int i = 0; i < n; ++i) dst[i + j] = round64(dst[i + j] + a[i] * tap);
    }
}

/// `taps` taps in one sweep; n is at least taps.
template <int taps> void sweep(const float* a, int n, const float* b, float* dst) {
    const auto one = [=](int k) {
        Single sum = valueOf(dst[k]);
        for (int j = std::max(0, k - n + 1); j <= std::min(taps - 1, k); ++j)
            sum = sum + valueOf(b[j]) * valueOf(a[k - j]);
        store(dst[k], sum);
    };
    int k = 0;
    for (; k < taps - 1; ++k) one(k);
    for (; k <= n - 4; k += 4) {
        __m128 sum = _mm_loadu_ps(dst + k);
#pragma GCC unroll 4
        for (int j = 0; j < taps; ++j)
            sum =
                _mm_add_ps(sum, _mm_mul_ps(_mm_set1_ps(b[j]), _mm_loadu_ps(a + k - j)));
        _mm_storeu_ps(dst + k, sum);
    }
    for (; k < n + taps - 1; ++k) one(k);
}

void ownConv_32f(const float* a, int n, const float* b, int taps, float* dst) {
    if (n < 8) {
        for (int j = 0; j < taps; ++j)
            for (int i = 0; i < n; ++i)
                store(dst[i + j], valueOf(dst[i + j]) + valueOf(a[i]) * valueOf(b[j]));
        return;
    }
    int j = 0;
    for (; j <= taps - 4; j += 4) sweep<4>(a, n, b + j, dst + j);
    switch (taps - j) {
    case 3:
        return sweep<3>(a, n, b + j, dst + j);
    case 2:
        return sweep<2>(a, n, b + j, dst + j);
    case 1:
        return sweep<1>(a, n, b + j, dst + j);
    default:
        return;
    }
}
void addProducts(const float* a, int n, const float* b, int taps, float* dst) {
    ownConv_32f(a, n, b, taps, dst);
}

/// Blocks of the longer array, one after another; each clears the outputs that no block
/// has reached before.
template <class T> int direct(const Operands<T>& x, int block) {
    const int overlap = x.shorterLen - 1;
    if (overlap > 0) Primitives<T>::zero(x.dst, overlap);
    for (int at = 0; at < x.longerLen; at += block) {
        const int count = std::min(block, x.longerLen - at);
        Primitives<T>::zero(x.dst + at + overlap, count);
        addProducts(x.longer + at, count, x.shorter, x.shorterLen, x.dst + at);
    }
    return ZubStatusOk;
}

template <class T>
int convolution(const T* src1, int len1, const T* src2, int len2, T* dst) {
    if (!src1 || !src2 || !dst) return ZubStatusNullPointer;
    if (len1 < 1 || len2 < 1) return ZubStatusSizeError;
    const int dstLen = len1 + len2 - 1;
    const Operands<T> x = len1 < len2
                              ? Operands<T>{src2, len2, src1, len1, dst, dstLen}
                              : Operands<T>{src1, len1, src2, len2, dst, dstLen};
    if (dstLen >= shortestTransformed && x.shorterLen >= fewestTaps)
        return x.longerLen / overlapRatio < x.shorterLen ? oneShot(x) : overlapSave(x);
    return direct(x, x.longerLen >= directBlock ? directBlock : x.longerLen);
}

} // namespace

int zubsConv_32f(const float* src1, int len1, const float* src2, int len2, float* dst) {
    return convolution(src1, len1, src2, len2, dst);
}
int zubsConv_64f(const double* src1, int len1, const double* src2, int len2,
                 double* dst) {
    return convolution(src1, len1, src2, len2, dst);
}
