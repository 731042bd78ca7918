// A stream seen from inside: its row in the registry, and the generator's state that
// follows the header.
#pragma once

#include <common/abi.hpp>
#include <qorkes/kes.h>

namespace qorkes {

static_assert(sizeof(StreamState) == 16, "the state record follows at byte 16");
static_assert(sizeof(void*) != 4 || sizeof(BrngRecord) == 36, "nine 32-bit words");

/// The methods of an InitStream.
constexpr int initialiseMethod = 0;
constexpr int leapfrogMethod = 1;
constexpr int skipAheadMethod = 2;

/// The row that the stream's identifier names; whether there is one is not looked at.
QORKES_INLINE const BrngRecord& rowOf(const StreamState* stream) {
    int row, offset;
    const BrngRecord* table = __kesGetBrngBaseOffset(stream->BrngId, &row, &offset);
    return table[row];
}

/// Allocates a stream of generator `brng`; its state is left to the caller.
QORKES_INLINE int allocateStream(StreamState** stream, int brng) {
    int row, offset;
    const BrngRecord* table = __kesGetBrngBaseOffset(brng, &row, &offset);
    return __kesAllocateStream(stream, table, brng, row, offset);
}

/// The generator's state record.
template <class State> QORKES_INLINE State& stateOf(StreamState* stream) {
    return *reinterpret_cast<State*>(stream + 1);
}

/// The list's head is a pointer kept in 64 bits, the upper ones copies of its sign.
QORKES_INLINE Chunk* headOf(const StreamState* stream) {
    return reinterpret_cast<Chunk*>(static_cast<intptr_t>(stream->Chunks));
}

/// Jumps of generators that have none.
QORKES_INLINE int noLeapfrog(StreamState*, int32_t, int32_t) {
    return KesStatusLeapfrogUnsupported;
}
QORKES_INLINE int noSkipAhead(StreamState*, int32_t) {
    return KesStatusSkipAheadUnsupported;
}

/// The shape of every InitStream: the three functions of a generator by method, each
/// returning a status.
template <auto initialise, auto leapfrog, auto skipAhead>
QORKES_INLINE int byMethod(int method, StreamState* stream, int n,
                           const uint32_t* params) {
    switch (method) {
    case initialiseMethod:
        return initialise(stream, n, params);
    case leapfrogMethod:
        return leapfrog(stream, n, static_cast<int32_t>(params[0]));
    case skipAheadMethod:
        return skipAhead(stream, n);
    default:
        return KesStatusBadMethod;
    }
}

} // namespace qorkes
