// Arithmetic of numbers below 2^24: primes, powers and orders.
#pragma once

#include <cstdint>

namespace wh {

bool is_prime(std::uint32_t n);

std::uint32_t power(std::uint32_t base, std::uint32_t exponent, std::uint32_t modulus);

/// Whether the powers of `a` run through all residues but 0 of a prime.
bool is_primitive_root(std::uint32_t a, std::uint32_t prime);

} // namespace wh
