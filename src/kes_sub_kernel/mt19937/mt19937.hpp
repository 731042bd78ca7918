// MT19937: the Mersenne Twister with its published parameters.
#pragma once

#include <kes_sub_kernel/stream_record.hpp>
#include <kes_sub_kernel/twister.hpp>

namespace qorkes {

using Mt19937Shape = TwisterShape<624, 397, 0x80000000, 11>;
using Mt19937State = TwisterState<Mt19937Shape>;
static_assert(sizeof(StreamState) + sizeof(Mt19937State) == 2516);

} // namespace qorkes
