// zubs_rbMpy1_64f, zubs_rbMpy1_32f: an array times a number.
// zubsMulPerm_64f_I, zubsMulPerm_32f_I: a spectrum in Perm layout times another.
#include <signal/lanes.hpp>

using namespace qorkes;

namespace {

template <class T> QORKES_INLINE void multiplyOne(const T* x, T* y) {
    store(*y, valueOf(*x) * valueOf(*y));
}

void multiplyPairs(const double* x, double* y, int count) {
    for (int k = 0; k < 2 * count; k += 2) {
        const ext re = ext{x[k]} * y[k] - ext{x[k + 1]} * y[k + 1];
        const ext im = ext{x[k]} * y[k + 1] + ext{x[k + 1]} * y[k];
        y[k] = round64(re);
        y[k + 1] = round64(im);
    }
}

/// y = x * y for `count` complex numbers.
void ownps_Mpy2_32fc(const float* x, float* y, int count) {
    int k = 0;
    for (; k <= 2 * count - 8; k += 8)
        store<Layout::pairs>(y + k,
                             times<Direction::forward>(load<Layout::pairs>(x + k),
                                                       load<Layout::pairs>(y + k)));
    for (; k < 2 * count; k += 2) {
        const ComplexLanes a = gather(x + k, x + k, x + k, x + k);
        const ComplexLanes b = gather(y + k, y + k, y + k, y + k);
        const ComplexLanes product = times<Direction::forward>(a, b);
        _mm_storel_pi(reinterpret_cast<__m64*>(y + k),
                      _mm_unpacklo_ps(product.re, product.im));
    }
}
void multiplyPairs(const float* x, float* y, int count) {
    ownps_Mpy2_32fc(x, y, count);
}

template <class T> int multiplySpectra(const T* src, T* dst, int len) {
    if (!src || !dst) return ZubStatusNullPointer;
    if (len < 1) return ZubStatusSizeError;
    multiplyOne(src, dst);
    int alone = 1;
    if (len % 2 == 0) {
        multiplyOne(src + 1, dst + 1);
        alone = 2;
    }
    multiplyPairs(src + alone, dst + alone, (len - alone) / 2);
    return ZubStatusOk;
}

} // namespace

void zubs_rbMpy1_64f(double factor, double* data, int count) {
    for (int i = 0; i < count; ++i) data[i] = round64(ext{data[i]} * factor);
}

void zubs_rbMpy1_32f(float factor, float* data, int count) {
    const __m128 f = _mm_set1_ps(factor);
    int i = count;
    const auto one = [&] {
        --i;
        _mm_store_ss(data + i, _mm_mul_ss(_mm_load_ss(data + i), f));
    };
    while (i > 0 && (reinterpret_cast<uintptr_t>(data + i) & 15)) one();
    for (; i >= 8; i -= 8) {
        _mm_storeu_ps(data + i - 4, _mm_mul_ps(_mm_loadu_ps(data + i - 4), f));
        _mm_storeu_ps(data + i - 8, _mm_mul_ps(_mm_loadu_ps(data + i - 8), f));
    }
    while (i > 0) one();
}

int zubsMulPerm_64f_I(const double* src, double* dst, int len) {
    return multiplySpectra(src, dst, len);
}
int zubsMulPerm_32f_I(const float* src, float* dst, int len) {
    return multiplySpectra(src, dst, len);
}
