// Polynomials over GF(2), and arithmetic modulo one of degree 2203.
//
// Products are carry-less, by the PCLMULQDQ instruction, which the host must have.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace mt2203 {

/// 2^2203 - 1 is a Mersenne prime, and the period of every member.
inline constexpr int exponent = 2203;
inline constexpr int poly_words = exponent / 64 + 1;

/// The coefficient of t^i is bit i % 64 of word i / 64. Residues modulo a polynomial
/// of degree 2203 need not be the least ones: `least` gives that.
using Polynomial = std::array<std::uint64_t, poly_words>;
using Product = std::array<std::uint64_t, 2 * poly_words>;

inline constexpr Polynomial one{1}, indeterminate{2};

/// Degree; -1 for the zero polynomial.
int degree(const Polynomial& a);

inline bool coefficient(const Polynomial& a, int i) {
    return (a[std::size_t(i) / 64] >> (i % 64) & 1) != 0;
}

Polynomial sum(const Polynomial& a, const Polynomial& b);

/// target += t^shift a; what passes the top of `target` is lost.
void add_shifted(Polynomial& target, const Polynomial& a, int shift);

Product multiply(const Polynomial& a, const Polynomial& b);

/// A modulus of degree 2203 whose next lower term is at least 64 degrees down, as the
/// recurrence's always is: the quotient of a division can then be read off word by
/// word.
struct Modulus {
    Polynomial value;
    /// The terms below t^2203, times t^37 so that t^2240, a word boundary, is congruent
    /// to them up to the factor t^37; highest word first.
    std::array<std::uint64_t, poly_words - 1> tail_reversed;
};

/// Whether `modulus_from` takes it.
bool has_gap(const Polynomial& value);
Modulus modulus_from(const Polynomial& value);

Polynomial multiply(const Polynomial& a, const Polynomial& b, const Modulus& modulus);
Polynomial square(const Polynomial& a, const Modulus& modulus);
Polynomial least(Polynomial a, const Modulus& modulus);

/// The inverse of `a`, which must be prime to the modulus.
Polynomial inverse(const Polynomial& a, const Modulus& modulus);

bool irreducible(const Modulus& modulus);

/// The monic polynomial of least degree whose recurrence the bits obey, by Berlekamp's
/// and Massey's algorithm (J. L. Massey, Shift-register synthesis and BCH decoding,
/// 1969). The bits, each 0 or 1, must number twice the degree, which must not exceed
/// 2203.
Polynomial minimal_polynomial(std::span<const std::uint8_t> bits);

} // namespace mt2203
