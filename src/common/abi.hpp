// What every source file of the library shares with its callers: fixed-width names
// and the attributes of functions. Entries themselves are marked for export where
// they are declared, in include/qorkes/.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qorkes {

using std::int32_t;
using std::int64_t;
using std::uint16_t;
using std::uint32_t;
using std::uint64_t;

} // namespace qorkes

/// One function of its own in the object: the compiler moves no arithmetic across
/// its call, which is what keeps computation inside a change of control word.
#define QORKES_NOINLINE [[gnu::noinline]]

/// A rare path: out of line, and away from the hot code.
#define QORKES_COLD [[gnu::noinline, gnu::cold]]

/// A step of a hot loop that must melt into it.
#define QORKES_INLINE [[gnu::always_inline]] inline

namespace qorkes {

/// The same pointer, of which the compiler knows no more than that: a loop then keeps
/// it in a register instead of forming the object's address anew for every use.
template <class T> QORKES_INLINE const T* inRegister(const T* p) {
    asm("" : "+r"(p));
    return p;
}

} // namespace qorkes
