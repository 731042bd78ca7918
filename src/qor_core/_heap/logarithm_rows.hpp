// What a double-precision logarithm by table stands on, to any base: the logarithm of c
// = 1 + i/256, the mantissa cut to its top 8 bits, the exponent as a number, and the
// rest of the mantissa.
#pragma once

#include <common/bits.hpp>
#include <common/pattern.hpp>

namespace qorkes {

struct alignas(32) LogarithmRow {
    double high, low; // log c
    double recip;     // 1/c
};

/// Rows from a table of three columns, each in a place of 32 bytes. `unit` is that of
/// the rests, a power of two.
struct LogarithmRows {
    LogarithmRow row[256];

    constexpr LogarithmRows(const double (&table)[256][3], double unit = 1) : row{} {
        for (int i = 0; i < 256; ++i)
            row[i] = {table[i][0], table[i][1], table[i][2] * unit};
    }
};

/// k as a number for each exponent field: a load, where the conversion of an integer
/// takes time of the adder.
struct Exponents {
    float k[2048];

    constexpr Exponents() : k{} {
        for (int i = 0; i < 2048; ++i) k[i] = static_cast<float>(i - 1023);
    }
};
constexpr Exponents exponents;

/// Stores 1 + m - c of two arguments: without their top 8 bits the mantissas stand for
/// that. By one aligned store, from which the unit loads without waiting.
QORKES_INLINE void storeRests(double* rests, const double* x) {
    static constexpr DoublePattern kept{0xFFF, 0xFFFFFFFF}, one{0x3FF00000, 0};
    const __m128 pair = _mm_loadu_ps(reinterpret_cast<const float*>(x));
    _mm_store_ps(reinterpret_cast<float*>(rests),
                 _mm_or_ps(_mm_and_ps(pair, kept.load()), one.load()));
}

} // namespace qorkes
