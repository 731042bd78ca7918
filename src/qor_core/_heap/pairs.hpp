// One element by a kernel of pairs.
#pragma once

#include <common/abi.hpp>

namespace qorkes {

/// `pairs(2, a, y)` on twice the element, which is none that it leaves out.
template <auto pairs, class T> QORKES_INLINE void asPair(const T& x, T& y) {
    const T twice[2] = {x, x};
    T results[2];
    pairs(2, twice, results);
    y = results[0];
}

} // namespace qorkes
