// What both precisions compute with: doubles in extended registers of the x87 unit,
// floats in scalar SSE arithmetic, which rounds at each step.
#pragma once

#include <common/ext.hpp>

#include <xmmintrin.h>

namespace qorkes {

struct Single {
    __m128 lane;
};
QORKES_INLINE Single operator+(Single a, Single b) {
    return {_mm_add_ss(a.lane, b.lane)};
}
QORKES_INLINE Single operator-(Single a, Single b) {
    return {_mm_sub_ss(a.lane, b.lane)};
}
QORKES_INLINE Single operator*(Single a, Single b) {
    return {_mm_mul_ss(a.lane, b.lane)};
}

QORKES_INLINE ext valueOf(const double& x) { return x; }
QORKES_INLINE Single valueOf(const float& x) { return {_mm_load_ss(&x)}; }
QORKES_INLINE void store(float& y, Single x) { _mm_store_ss(&y, x.lane); }

} // namespace qorkes
