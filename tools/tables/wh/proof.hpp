// The proof of the members, which takes nothing for granted that the rule was to give.
#pragma once

#include <vector>

#include "family.hpp"

namespace wh {

/// Proves that all moduli are different primes of the range, that the multipliers of a
/// member differ and are primitive roots, that the (m - 1) / 2 of a member are coprime
/// and that reciprocals are correctly rounded; prints the period of each member. Throws
/// at the first fault.
void prove(const std::vector<Member>& members);

} // namespace wh
