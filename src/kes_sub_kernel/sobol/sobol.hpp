// Sobol: the state, and the published tables of its first 40 dimensions.
#pragma once

#include <kes_sub_kernel/quasi.hpp>

namespace qorkes {

using SobolState = QuasiState<KesSobolDimensions>;
static_assert(sizeof(StreamState) + sizeof(SobolState) == 5472);

/// The start numbers, then the polynomials: one object, since the last dimension takes
/// its start numbers from behind their end. A program that refers to the exported
/// tables may have copies of them; their names are not used here.
constexpr int startsPerRow = 8;
constexpr int rowsOfSobolTables = KesSobolDimensions - 1;
extern const uint32_t sobolWords[rowsOfSobolTables * (startsPerRow + 1)];

/// The start numbers of dimension d, from 1 to 39.
QORKES_INLINE const uint32_t* sobolStarts(int d) {
    return sobolWords + d * startsPerRow;
}
/// The primitive polynomial of dimension d.
QORKES_INLINE uint32_t sobolPolynomial(int d) {
    return sobolWords[rowsOfSobolTables * startsPerRow + d - 1];
}

} // namespace qorkes
