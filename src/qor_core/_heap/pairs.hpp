// One element by a kernel of pairs.
#pragma once

#include <common/abi.hpp>

namespace qorkes {

/// `pairs(2, a, y)` on twice the element; returns how many of the two it has done.
template <auto pairs, class T> QORKES_INLINE int asPair(const T& x, T& y) {
    const T twice[2] = {x, x};
    T results[2];
    const int done = pairs(2, twice, results);
    if (done != 0) y = results[0];
    return done;
}

} // namespace qorkes
