// The search for tempering masks that equidistribute the output of a matrix word.
//
// The masks are decided from the output's top bit downwards, with k(v) of the bits
// decided so far as the guide. Source: M. Matsumoto, Y. Kurita, Twisted GFSR generators
// II, 1994, whose backtracking is here a beam: the best partial masks go on together.
#pragma once

#include "twister.hpp"

namespace mt2203 {

struct Tempered {
    Member member;
    int defect;
};

/// The best masks found for a matrix word, whose characteristic polynomial is given and
/// is irreducible.
Tempered find_masks(std::uint32_t matrix, const Modulus& modulus);

} // namespace mt2203
