// The jumps of a multiplicative generator, whose state is the next number to be
// delivered and the multiplier of a step.
#pragma once

#include <kes_sub_kernel/stream_record.hpp>

namespace qorkes {

/// powerOf(a, k) is a^k and multiply(x, y) is x y, both by the generator's modulus.
template <class State, auto powerOf, auto multiply> struct JumpsByPowers {
    QORKES_INLINE static int skipAhead(StreamState* stream, int32_t count) {
        auto& state = stateOf<State>(stream);
        state.Value = multiply(powerOf(state.Multiplier, count), state.Value);
        return KesStatusOk;
    }
    QORKES_INLINE static int leapfrog(StreamState* stream, int32_t stride, int32_t k) {
        auto& state = stateOf<State>(stream);
        skipAhead(stream, k);
        state.Multiplier = powerOf(state.Multiplier, stride);
        return KesStatusOk;
    }
};

} // namespace qorkes
