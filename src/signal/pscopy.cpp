// zubsZero_8u, zubsZero_32f, zubsZero_64f, zubsCopy_32f, zubsCopy_64f: bulk clear and
// copy.
//
// Three ways, by the number of bytes: through the cache; past it, by 8-byte
// non-temporal stores; and past it with the source pulled in page by page. Each aligns
// the destination by one unaligned move that overlaps the first aligned one, and leaves
// the source at whatever alignment that gives.
#include <common/abi.hpp>
#include <qorkes/zubs.h>

#include <cstring>
#include <type_traits>
#include <xmmintrin.h>

using namespace qorkes;

namespace {

// Where the ways change, in bytes.
constexpr size_t zeroPastCache = 20480;
constexpr size_t copyPastCache = 8192;
constexpr size_t copyWithPrefetch = 16384;

constexpr size_t pageSize = 4096;
constexpr size_t prefetchStep = 32;

/// Below this many bytes a copy is not worth splitting at pages.
constexpr size_t shortestPagedCopy = 20480;

/// Eight bytes at any address, in an MMX register.
using Quad [[gnu::may_alias, gnu::aligned(1)]] = __m64;

/// From p up to the next multiple of `boundary`; 0 on one.
QORKES_INLINE size_t missingTo(size_t boundary, const void* p) {
    return -reinterpret_cast<uintptr_t>(p) & (boundary - 1);
}

/// Moves of 16 and 8 bytes by SSE registers, shorter ones by whole registers.
template <size_t bytes> QORKES_INLINE void move(const char* s, char* d) {
    if constexpr (bytes == 16) {
        _mm_storeu_ps(reinterpret_cast<float*>(d),
                      _mm_loadu_ps(reinterpret_cast<const float*>(s)));
    } else if constexpr (bytes == 8) {
        _mm_storel_pi(
            reinterpret_cast<__m64*>(d),
            _mm_loadl_pi(_mm_setzero_ps(), reinterpret_cast<const __m64*>(s)));
    } else {
        std::memcpy(d, s, bytes);
    }
}

template <size_t bytes> QORKES_INLINE void clear(char* d) {
    if constexpr (bytes == 16)
        _mm_storeu_ps(reinterpret_cast<float*>(d), _mm_setzero_ps());
    else if constexpr (bytes == 8)
        _mm_storel_pi(reinterpret_cast<__m64*>(d), _mm_setzero_ps());
    else
        std::memset(d, 0, bytes);
}

template <size_t bytes> using Size = std::integral_constant<size_t, bytes>;

/// step(Size<bytes>, offset) for pieces of 16, 8, 4, 2 and 1 bytes that make up n.
template <class Step> QORKES_INLINE void inPieces(size_t n, Step step) {
    size_t i = 0;
    for (; n - i >= 16; i += 16) step(Size<16>{}, i);
    const auto ifPresent = [&](auto size) {
        if ((n & size) == 0) return;
        step(size, i);
        i += size;
    };
    ifPresent(Size<8>{});
    ifPresent(Size<4>{});
    ifPresent(Size<2>{});
    ifPresent(Size<1>{});
}
QORKES_INLINE void moveRest(const char* s, char* d, size_t n) {
    inPieces(n, [=](auto size, size_t i) { move<size>(s + i, d + i); });
}
QORKES_INLINE void clearRest(char* d, size_t n) {
    inPieces(n, [=](auto size, size_t i) { clear<size>(d + i); });
}

/// The body of a round of 64 bytes: all loads before the first store, which a store to
/// an address that looks alike in its low bits would otherwise hold up.
QORKES_INLINE void moveRound(const char* s, char* d) {
    const float* from = reinterpret_cast<const float*>(s);
    float* to = reinterpret_cast<float*>(d);
    const __m128 x0 = _mm_loadu_ps(from), x1 = _mm_loadu_ps(from + 4),
                 x2 = _mm_loadu_ps(from + 8), x3 = _mm_loadu_ps(from + 12);
    _mm_store_ps(to, x0);
    _mm_store_ps(to + 4, x1);
    _mm_store_ps(to + 8, x2);
    _mm_store_ps(to + 12, x3);
}

/// Orders streaming stores before what follows and gives the registers back to the x87
/// unit.
QORKES_INLINE void endStreaming() {
    _mm_sfence();
    _mm_empty();
}

/// Rounds of 64 bytes to a 16-byte boundary, and what is left before and after them.
template <class Round>
QORKES_INLINE void clearInRounds(char* d, size_t n, Round round) {
    if (n >= 64) {
        clear<16>(d);
        const size_t head = missingTo(16, d);
        d += head;
        n -= head;
        for (; n >= 64; n -= 64, d += 64) round(d);
    }
    clearRest(d, n);
}

QORKES_INLINE char* ownsZero_8u(char* d, size_t n) {
    clearInRounds(d, n, [](char* to) {
#pragma GCC unroll 8
        for (size_t i = 0; i < 64; i += 16)
            _mm_store_ps(reinterpret_cast<float*>(to + i), _mm_setzero_ps());
    });
    return d;
}

char* ownsZero_8u_A6(char* d, size_t n) {
    clearInRounds(d, n, [](char* to) {
#pragma GCC unroll 8
        for (size_t i = 0; i < 64; i += 8)
            _mm_stream_pi(reinterpret_cast<__m64*>(to + i), _mm_setzero_si64());
    });
    endStreaming();
    return d;
}

/// The same with a source.
template <class Round>
QORKES_INLINE void copyInRounds(const char* s, char* d, size_t n, Round round) {
    if (n >= 64) {
        const size_t head = missingTo(16, d);
        moveRest(s, d, head);
        s += head;
        d += head;
        n -= head;
        for (; n >= 64; n -= 64, s += 64, d += 64) round(s, d);
    }
    moveRest(s, d, n);
}

QORKES_INLINE void ownsCopy_8u(const char* s, char* d, size_t n) {
    copyInRounds(s, d, n, [](const char* from, char* to) { moveRound(from, to); });
}

/// Stores that nothing orders yet.
QORKES_INLINE void streamCopy(const char* s, char* d, size_t n) {
    copyInRounds(s, d, n, [](const char* from, char* to) {
#pragma GCC unroll 8
        for (size_t i = 0; i < 64; i += 8)
            _mm_stream_pi(reinterpret_cast<__m64*>(to + i),
                          *reinterpret_cast<const Quad*>(from + i));
    });
}

void ownsCopy_8u_A6(const char* s, char* d, size_t n) {
    streamCopy(s, d, n);
    endStreaming();
}

/// The read of the first and last byte brings the page into the translation buffer;
/// without it a prefetch may be dropped.
const char* ownsPrefetchnta_A6(const char* p, size_t n) {
    if (n == 0) return p;
    asm volatile("" ::"r"(p[0]), "r"(p[n - 1]));
    const char* const end = p + n;
    for (; p < end; p += prefetchStep) _mm_prefetch(p, _MM_HINT_NTA);
    return p;
}

void ownsPrefetchCopy_8u_A6(const char* s, char* d, size_t n) {
    for (; n > 0 && missingTo(8, d) > 0; --n) *d++ = *s++;
    if (n < shortestPagedCopy) return ownsCopy_8u_A6(s, d, n);
    const auto copyNext = [&](size_t bytes) {
        streamCopy(s, d, bytes);
        s += bytes;
        d += bytes;
        n -= bytes;
    };
    copyNext(missingTo(pageSize, s) & ~size_t{7});
    while (n >= pageSize) {
        ownsPrefetchnta_A6(s, pageSize);
        copyNext(pageSize);
    }
    copyNext(n);
    endStreaming();
}

template <class T> int zero(T* dst, int len) {
    if (!dst) return ZubStatusNullPointer;
    if (len < 1) return ZubStatusSizeError;
    const size_t bytes = static_cast<size_t>(len) * sizeof(T);
    char* const d = reinterpret_cast<char*>(dst);
    bytes < zeroPastCache ? ownsZero_8u(d, bytes) : ownsZero_8u_A6(d, bytes);
    return ZubStatusOk;
}

template <class T> int copy(const T* src, T* dst, int len) {
    if (!src || !dst) return ZubStatusNullPointer;
    if (len < 1) return ZubStatusSizeError;
    const size_t bytes = static_cast<size_t>(len) * sizeof(T);
    const char* const s = reinterpret_cast<const char*>(src);
    char* const d = reinterpret_cast<char*>(dst);
    if (bytes < copyPastCache)
        ownsCopy_8u(s, d, bytes);
    else if (bytes < copyWithPrefetch)
        ownsCopy_8u_A6(s, d, bytes);
    else
        ownsPrefetchCopy_8u_A6(s, d, bytes);
    return ZubStatusOk;
}

} // namespace

int zubsZero_8u(unsigned char* dst, int len) { return zero(dst, len); }
int zubsZero_32f(float* dst, int len) { return zero(dst, len); }
int zubsZero_64f(double* dst, int len) { return zero(dst, len); }
int zubsCopy_32f(const float* src, float* dst, int len) { return copy(src, dst, len); }
int zubsCopy_64f(const double* src, double* dst, int len) {
    return copy(src, dst, len);
}
