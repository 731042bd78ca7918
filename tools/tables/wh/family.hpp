// The members of the family and the rule that gives them.
//
// A member joins four multiplicative generators x -> a x mod m with prime moduli just
// below 2^24: Wichmann and Hill, "Generating good pseudo-random numbers", Computational
// Statistics and Data Analysis 51, 2006, with a rule of our own for the parameters. The
// first modulus is the largest prime that no member has; the others are the next ones
// below it whose (m - 1) / 2 are coprime to those before them in the member, so that
// the period is the product of all m - 1 over 8. The multiplier is the largest
// primitive root of at most 127 that is not used before in the member; a prime for
// which that is below 112 is passed over.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace wh {

inline constexpr int family_size = 273;
inline constexpr int components = 4;

inline constexpr std::uint32_t largest_modulus = 16776971;
inline constexpr std::uint32_t smallest_modulus = 16718909;
inline constexpr std::uint32_t largest_multiplier = 127;
inline constexpr std::uint32_t smallest_multiplier = 112;

struct Member {
    std::array<std::uint32_t, components> multipliers, moduli;
    bool operator==(const Member&) const = default;
};

/// The words of a member that is fixed, or null.
const Member* fixed_member(int member);

/// All members in turn; throws if the primes run out.
std::vector<Member> find_members();

} // namespace wh
