// What the rows for signal primitives and tasks work on.
#pragma once

#include <qorkes/zubs.h>

#include <memory>
#include <random>

namespace qorkes::bench {

/// An aligned array of random numbers, 16 bytes longer than asked for.
template <class T> using Array = std::shared_ptr<T[]>;
template <class T> Array<T> randomArray(int n) {
    Array<T> x(static_cast<T*>(zubsMalloc_8u(n * int{sizeof(T)} + 16)), zubsFree);
    std::minstd_rand generator(1);
    std::uniform_real_distribution<T> uniform(-1, 1);
    for (int i = 0; i < n; ++i) x[i] = uniform(generator);
    return x;
}

} // namespace qorkes::bench
