// The recurrence of the family, its tempering, and its characteristic polynomial.
//
// Source: M. Matsumoto, T. Nishimura, Mersenne Twister: a 623-dimensionally
// equidistributed uniform pseudo-random number generator, 1998.
#pragma once

#include <cstdint>
#include <vector>

#include "polynomial.hpp"

namespace mt2203 {

/// What distinguishes one member of the family from the others.
struct Member {
    std::uint32_t matrix, mask_b, mask_c;
    bool operator==(const Member&) const = default;
};

/// Bits of the masks that meet a bit of the shifted word.
inline constexpr std::uint32_t mask_b_reach = ~std::uint32_t(0) << 7;
inline constexpr std::uint32_t mask_c_reach = ~std::uint32_t(0) << 15;

/// `count` successive words of the recurrence, untempered, from a fixed state.
std::vector<std::uint32_t> raw_words(std::uint32_t matrix, int count);

/// Tempering up to where the masks come in, and the whole of it.
std::uint32_t temper_first(std::uint32_t y);
std::uint32_t temper(std::uint32_t y, const Member& member);

/// `count` successive outputs of a member.
std::vector<std::uint32_t> outputs(const Member& member, int count);

/// The characteristic polynomial, from the matrix word alone; of degree 2203 if the
/// word's top bit is set.
Polynomial characteristic_polynomial(std::uint32_t matrix);

} // namespace mt2203
