// The state of an abstract stream of integers.
#pragma once

#include <kes_sub_kernel/abstract.hpp>

namespace qorkes {

struct IntegerAbstractState : AbstractCounts {
    uint32_t* Buffer;
    UpdateIntegers Update;
};
static_assert(sizeof(void*) != 4 ||
              sizeof(StreamState) + sizeof(IntegerAbstractState) == 36);

} // namespace qorkes
