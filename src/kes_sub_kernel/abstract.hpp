// Abstract streams: numbers that a caller produces, by way of a circular buffer of his.
// A draw delivers what is unread there and calls the caller's function for the rest.
// What the three kinds share is here; each kind maps the buffer's numbers in its own
// way.
#pragma once

#include <kes_sub_kernel/stream_record.hpp>

#include <algorithm>

namespace qorkes {

/// The caller's function, for a buffer of elements of this type.
template <class Element>
using UpdateOf = int (*)(StreamState* stream, int* n, Element* buffer, int* nmin,
                         int* nmax, int* idx);

/// How much of the buffer is unread, and where that is.
struct AbstractCounts {
    int32_t Size;  // elements of the buffer
    int32_t Index; // of the next number to be delivered
    int32_t Free;  // elements without an undelivered number
};

template <class Real> struct RealAbstractState : AbstractCounts {
    Real Low, High; // the range of the buffer's numbers
    Real* Buffer;
    UpdateOf<Real> Update;
};

/// The seed words of a real kind.
template <class Real> struct RealAbstractBlock {
    const int* n;
    Real* buffer;
    const Real *a, *b;
    UpdateOf<Real> update;
};

/// The method `initialise` of a real kind.
template <class Real>
QORKES_INLINE int initialiseRealAbstract(StreamState* stream, int,
                                         const uint32_t* params) {
    const auto& block = *reinterpret_cast<const RealAbstractBlock<Real>*>(params);
    stateOf<RealAbstractState<Real>>(stream) = {
        {*block.n, 0, *block.n}, *block.a, *block.b, block.buffer, block.update};
    return KesStatusOk;
}

/// Makes a stream of an abstract kind. The count of seed words is read by no one.
template <class Block>
QORKES_INLINE int newAbstractStream(StreamState** stream, int brng,
                                    BrngInitStream initStream, const Block& block) {
    const int status = allocateStream(stream, brng);
    if (status < 0) return status;
    constexpr int count = 2 * sizeof(Block) / sizeof(void*);
    return initStream(initialiseMethod, *stream, count,
                      reinterpret_cast<const uint32_t*>(&block));
}

/// The constructor of a real kind. An unordered comparison does not refuse.
template <class Real>
QORKES_INLINE int newRealAbstractStream(StreamState** stream, int brng,
                                        BrngInitStream initStream, int n, Real* buffer,
                                        Real a, Real b, UpdateOf<Real> update) {
    if (n == 0 || !buffer || !update || a >= b) return KesStatusBadArgument;
    return newAbstractStream(stream, brng, initStream,
                             RealAbstractBlock<Real>{&n, buffer, &a, &b, update});
}

/// n numbers to r, by `deliver(r, from, count)` for each piece of the buffer.
template <class State, class Element, class Deliver>
QORKES_INLINE int drawAbstract(StreamState* stream, int n, Element* r,
                               Deliver&& deliver) {
    auto& state = stateOf<State>(stream);
    Element* const buffer = state.Buffer;
    if (!buffer) return KesStatusNullPointer;
    if (n < 1) return KesStatusOk;
    // The caller's function may change these, and not the stream: that is written at
    // the end, so that a failure leaves it as it was.
    int size = state.Size, index = state.Index, free = state.Free;
    // The alignment makes the compiler realign this frame, and with it that of Update,
    // for callers that keep their stack to 4 bytes.
    alignas(16) int nmin;
    const auto take = [&](int count) {
        free += count;
        while (count > 0) {
            const int upToEnd = std::min(count, size - index);
            deliver(r, buffer + index, upToEnd);
            r += upToEnd;
            count -= upToEnd;
            index = (index + upToEnd) % size;
        }
    };

    const int unread = size - free;
    int write = (index + unread) % size;
    int owed = n;
    if (unread > 0) {
        const int count = std::min(n, unread);
        take(count);
        owed -= count;
    }
    while (owed > 0) {
        nmin = std::min(free, owed);
        const int count = state.Update(stream, &size, buffer, &nmin, &free, &write);
        if (count < 0 || count > free) return KesStatusBadUpdate;
        if (count == 0) return KesStatusNoNumbers;
        write = (write + count) % size;
        free -= count;
        const int taken = std::min(owed, count);
        take(taken);
        owed -= taken;
    }
    state.Index = index;
    state.Free = free;
    return KesStatusOk;
}

} // namespace qorkes
