// Niederreiter's sequence in base 2: the state.
#pragma once

#include <kes_sub_kernel/quasi.hpp>

namespace qorkes {

using NiederrState = QuasiState<KesNiederrDimensions>;
static_assert(sizeof(StreamState) + sizeof(NiederrState) == 43280);

} // namespace qorkes
