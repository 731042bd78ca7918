// What a program would call without this library: for every function of the catalogue a
// loop over the C library's function, or over the plain expression where it has none.
// Each result is stored, so it is of type T whatever register it came in.
#pragma once

#include <cmath>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qorkes {

/// One function on arrays; a scalar second argument is b[0].
template <class T> struct KernelPeer {
    const char* function; // of the catalogue
    const char* name;
    void (*loop)(int n, const T* a, const T* b, T* y, T* z);
};

// Internal linkage: a program may hold these loops several times, compiled for
// different units, and none of them may stand in for another.
namespace {

/// y[i] = op(a[i], b[i]) with a captureless `op`.
template <class T, class Op>
KernelPeer<T> mapping(const char* function, const char* name, Op) {
    return {function, name, [](int n, const T* a, const T* b, T* y, T*) {
                for (int i = 0; i < n; ++i) y[i] = Op{}(a[i], b[i]);
            }};
}

template <class T, class Op>
KernelPeer<T> mappingWithScalar(const char* function, const char* name, Op) {
    return {function, name, [](int n, const T* a, const T* b, T* y, T*) {
                for (int i = 0; i < n; ++i) y[i] = Op{}(a[i], *b);
            }};
}

inline void sineAndCosine(double x, double& y, double& z) { sincos(x, &y, &z); }
inline void sineAndCosine(float x, float& y, float& z) { sincosf(x, &y, &z); }

template <class T> void sineAndCosineLoop(int n, const T* a, const T*, T* y, T* z) {
#ifdef __FAST_MATH__ // then each of them has a vector function; both together have none
    for (int i = 0; i < n; ++i) y[i] = std::sin(a[i]);
    for (int i = 0; i < n; ++i) z[i] = std::cos(a[i]);
#else
    for (int i = 0; i < n; ++i) sineAndCosine(a[i], y[i], z[i]);
#endif
}

#define CALL(f) [](T x, T) { return std::f(x); }

template <class T>
const KernelPeer<T> kernelPeers[] = {
    mapping<T>("Acos", "acos", CALL(acos)),
    mapping<T>("Acosh", "acosh", CALL(acosh)),
    mapping<T>("Asin", "asin", CALL(asin)),
    mapping<T>("Asinh", "asinh", CALL(asinh)),
    mapping<T>("Atan", "atan", CALL(atan)),
    mapping<T>("Atan2", "atan2", [](T x, T y) { return std::atan2(x, y); }),
    mapping<T>("Atanh", "atanh", CALL(atanh)),
    mapping<T>("Cbrt", "cbrt", CALL(cbrt)),
    mapping<T>("Cos", "cos", CALL(cos)),
    mapping<T>("Cosh", "cosh", CALL(cosh)),
    mapping<T>("Div", "a / b", [](T x, T y) { return x / y; }),
    mapping<T>("Erf", "erf", CALL(erf)),
    mapping<T>("Erfc", "erfc", CALL(erfc)),
    mapping<T>("Exp", "exp", CALL(exp)),
    mapping<T>("Inv", "1 / a", [](T x, T) { return 1 / x; }),
    mapping<T>("InvCbrt", "1 / cbrt", [](T x, T) { return 1 / std::cbrt(x); }),
    mapping<T>("InvSqrt", "1 / sqrt", [](T x, T) { return 1 / std::sqrt(x); }),
    mapping<T>("Ln", "log", CALL(log)),
    mapping<T>("Log10", "log10", CALL(log10)),
    mapping<T>("Pow", "pow", [](T x, T y) { return std::pow(x, y); }),
    mappingWithScalar<T>("Powx", "pow", [](T x, T y) { return std::pow(x, y); }),
    mapping<T>("Sin", "sin", CALL(sin)),
    {"SinCos", "sincos", sineAndCosineLoop<T>},
    mapping<T>("Sinh", "sinh", CALL(sinh)),
    mapping<T>("Sqrt", "sqrt", CALL(sqrt)),
    mapping<T>("Tan", "tan", CALL(tan)),
    mapping<T>("Tanh", "tanh", CALL(tanh)),
};

#undef CALL

} // namespace

template <class T>
const KernelPeer<T>& peerOf(std::span<const KernelPeer<T>> peers,
                            std::string_view function) {
    for (const KernelPeer<T>& peer : peers)
        if (peer.function == function) return peer;
    throw std::logic_error("a kernel without a peer: " + std::string(function));
}

} // namespace qorkes
