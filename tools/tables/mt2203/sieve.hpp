// Which characteristic polynomials have a factor of low degree: most of them, and this
// tells it far faster than the test for irreducibility does.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace mt2203 {

/// The characteristic polynomial modulo one irreducible polynomial. It is affine in the
/// bits of the matrix word.
struct Remainder {
    std::uint32_t constant;
    std::array<std::uint32_t, 32> of_bit;
};

/// One remainder for each irreducible polynomial up to degree 16.
using Sieve = std::vector<Remainder>;

Sieve make_sieve();

/// Whether none of the irreducible polynomials divides the characteristic polynomial.
bool passes(const Sieve& sieve, std::uint32_t matrix);

} // namespace mt2203
