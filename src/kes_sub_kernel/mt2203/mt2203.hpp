// MT2203: Mersenne Twisters of 69 words. A member's parameters stand in its state, from
// seeding on.
#pragma once

#include <kes_sub_kernel/stream_record.hpp>
#include <kes_sub_kernel/twister.hpp>

namespace qorkes {

using Mt2203Shape = TwisterShape<69, 34, 0xFFFFFFE0, 12>;

struct Mt2203State {
    TwisterState<Mt2203Shape> twister;
    TwisterMasks masks;
};
static_assert(sizeof(StreamState) + sizeof(Mt2203State) == 308);

} // namespace qorkes
