// MRG32k3a: two recurrences of third order modulo two primes below 2^32, and the state
// of both.
#pragma once

#include <kes_sub_kernel/stream_record.hpp>

namespace qorkes {

struct Mrg32k3aState {
    uint32_t X[3]; // the last three terms of the first recurrence, oldest first
    uint32_t Y[3]; // of the second
};
static_assert(sizeof(StreamState) + sizeof(Mrg32k3aState) == 40);

/// Distances of the moduli from 2^32.
constexpr uint32_t gap1 = 209;
constexpr uint32_t gap2 = 22853;

constexpr uint32_t modulus1 = 0 - gap1; // m1
constexpr uint32_t modulus2 = 0 - gap2; // m2
static_assert(modulus1 == 4294967087 && modulus2 == 4294944443);

// Terms are a12 x[1] - a13 x[0] and a21 y[2] - a23 y[0].
constexpr uint32_t a12 = 1403580;
constexpr uint32_t a13 = 810728;
constexpr uint32_t a21 = 527612;
constexpr uint32_t a23 = 1370589;

/// The double next to 1 / m1, the width of one step of the words.
constexpr double stepOfMrg32k3a = 0x1.000000d10000bp-32;

} // namespace qorkes
