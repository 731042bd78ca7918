// Equidistribution of the leading bits of successive outputs.
//
// k(v) is the largest k for which the leading v bits of k successive outputs take all
// values equally often over the period. It is the least degree of a relation
//   p_1(t) z_1 + ... + p_v(t) z_v = 0
// among the sequences z_c of the output bits, t being the step to the next output: the
// length of the shortest vector of a lattice over GF(2)[t]. Source: R. Couture,
// P. L'Ecuyer, Lattice computations for random numbers, 2000. Here the lattice grows
// by one output bit at a time, its basis staying reduced: in weak Popov form
// (T. Mulders, A. Storjohann, On lattice reduction for polynomial matrices, 2003).
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "polynomial.hpp"

namespace mt2203 {

inline constexpr int word_bits = 32;

/// Polynomials p_1 to p_32 at once: bit c of element d is the coefficient of t^d in
/// p_(c+1). The last element is not zero.
using Vector = std::vector<std::uint32_t>;

/// Reduced: row c's highest coordinate of full degree is coordinate c.
using Basis = std::vector<Vector>;

/// The relations among the output bits chosen so far, and each of the sequences that
/// further output bits are made of as a combination of the chosen ones.
struct Lattice {
    Basis relations;
    std::array<Vector, word_bits> images;
};

/// Bit sequence j of a word is that of its bit 31 - j, so that sequences count from the
/// top; a set of them has bit j for sequence j, and stands for their sum.
using Set = std::uint32_t;

/// One polynomial for each bit sequence of `words`, in proportion to the sequences;
/// there must be 2203 words.
std::array<Polynomial, word_bits> numerators(std::span<const std::uint32_t> words,
                                             const Modulus& modulus);

/// The lattice whose one output bit is `leading`.
Lattice open(const std::array<Polynomial, word_bits>& sequences, Set leading,
             const Modulus& modulus);

/// The relations once `bit` has been added as a further output bit.
Basis extended(const Lattice& lattice, Set bit);

/// `lattice` with the relations that `extended` gave; sequences before `first` are not
/// carried on.
Lattice advance(const Lattice& lattice, Basis relations, int first);

/// k(v) for the v output bits that the basis is about.
int dimension(const Basis& relations);

/// By how much k(v) falls short of the 2203 / v that it could be.
int defect(const Basis& relations);

/// k(1) to k(32) of 2203 successive outputs.
std::array<int, word_bits> dimensions(std::span<const std::uint32_t> words,
                                      const Modulus& modulus);

/// Sum of floor(2203 / v) - k(v).
int total_defect(const std::array<int, word_bits>& dimensions);

} // namespace mt2203
