// What Asinh, Acosh and Atanh of both precisions share: their elements in pairs, each
// by way of the argument of a logarithm.
//
// A function is a structure of
//
//     isForLogarithm(word)   whether an element is ordinary, told by its top 32 bits
//     argument(x)            of the logarithm, at least 1
//     isOdd                  whether the result has the sign of x
//     special(i, a, y)       stores and reports an element that is not ordinary
//
// and of what the logarithms of its precision need.
#pragma once

#include <qor_core/_heap/pairs.hpp>
#include <qor_core/frame.hpp>

namespace qorkes {

QORKES_INLINE uint32_t topWord(const double& x) { return highWord(x); }
QORKES_INLINE uint32_t topWord(const float& x) { return bitsOf(x); }

/// The arguments of the pairs before the first special one, up to a block of them;
/// returns how many elements these are.
template <class F, class T, class Slot>
QORKES_NOINLINE int storeArguments(int n, const T* a, Slot* slots) {
    const auto isForLogarithm = [=](int i) { return F::isForLogarithm(topWord(a[i])); };
    return takeOrdinary<2>(
        n, [=](int i) { return isForLogarithm(i) && isForLogarithm(i + 1); },
        [=](int i) {
            slots[i].take(F::argument(loaded(a[i])));
            slots[i + 1].take(F::argument(loaded(a[i + 1])));
        });
}

template <class F, auto logarithmPairs, class T>
QORKES_COLD void scalarInverse(int i, const T* a, T* y) {
    if (F::isForLogarithm(topWord(a[i])))
        asPair<logarithmPairs>(a[i], y[i]);
    else
        F::special(i, a, y);
}

template <class F, auto logarithmPairs, class T>
QORKES_INLINE void inversePairs(int n, const T* a, T* y) {
    const auto scalar = [=](int i) { scalarInverse<F, logarithmPairs>(i, a, y); };
    inRuns<2>(
        n, [=](int i) { return logarithmPairs(n - i, a + i, y + i); }, scalar);
}

} // namespace qorkes
