// A task seen from inside: the copies of the caller's arrays, and dense strides.
#pragma once

#include <common/abi.hpp>
#include <qorkes/kes.h>

#include <algorithm>

namespace qorkes {

static_assert(sizeof(void*) != 4 || sizeof(TaskRecord) == 248, "62 words of 32 bits");

/// Copies `count` words into the task's store and points the field at it; a null source
/// leaves a null field.
QORKES_INLINE void convgate_copy(int32_t* store, int32_t** field, const int32_t* source,
                                 int count) {
    *field = source ? store : nullptr;
    if (source) std::copy_n(source, count, store);
}

/// 1, and from there on the products of the shape's entries, which may be any. Nothing
/// for a rank below 1.
QORKES_INLINE const int32_t* convgate_stride(int32_t* stride, const int32_t* shape,
                                             int rank) {
    uint32_t next = 1;
    for (int d = 0; d < rank; ++d) {
        stride[d] = static_cast<int32_t>(next);
        next *= static_cast<uint32_t>(shape[d]);
    }
    return stride;
}

/// Calls a hook of the caller's. The alignment makes the compiler realign this frame,
/// and with it that of the hook, for callers that keep their stack to 4 bytes.
template <class Hook, class... Arguments>
QORKES_NOINLINE int callHook(Hook hook, Arguments... arguments) {
    alignas(16) volatile int status = hook(arguments...);
    return status;
}

} // namespace qorkes
