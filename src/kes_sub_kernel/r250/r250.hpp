// R250: every word is the exclusive or of the words 250 and 147 before it, in a
// register of 250 words that is replaced in turn.
#pragma once

#include <kes_sub_kernel/stream_record.hpp>

namespace qorkes {

constexpr int sizeOfR250 = 250;
constexpr int lagOfR250 = 103; // from the replaced word to the one it is combined with

struct R250State {
    uint32_t Table[sizeOfR250];
    int32_t Index1; // of the word to be replaced next
    int32_t Index2; // of the word it is combined with
};
static_assert(sizeof(StreamState) + sizeof(R250State) == 1024);

} // namespace qorkes
