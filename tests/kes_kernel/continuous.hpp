// The continuous distributions one variate at a time, from the library's own kernels.
#pragma once

#include "scripted.hpp"

#include <common/ext.hpp>
#include <distributions.hpp>
#include <kes_kernel/kernels.hpp>
#include <support/compare.hpp>

#include <string>

namespace qorkes::test {

/// Variates of a distribution of the catalogue; returns the stream's status.
template <class T>
int variates(const std::string& name, int method, const Stream& stream, int n, T* r,
             const std::vector<double>& parameters) {
    for (const auto& row : catalogue::distributions())
        if (row.name == name) {
            if constexpr (std::is_same_v<T, double>)
                return row.doubles(method, stream.get(), n, r, parameters.data());
            else
                return row.singles(method, stream.get(), n, r, parameters.data());
        }
    throw std::logic_error("no distribution " + name);
}
template <class T>
std::vector<T> variates(const std::string& name, int method, const Stream& stream,
                        int n, const std::vector<double>& parameters) {
    std::vector<T> r(static_cast<std::size_t>(n));
    EXPECT_EQ(variates(name, method, stream, n, r.data(), parameters), KesStatusOk);
    return r;
}

/// The uniforms of a stream one by one, and what goes from a normal number to the next.
template <class T> struct Uniforms {
    const Stream& stream;
    bool isLast = false;    // variate of a call
    bool isCarried = false; // the cosine value below
    T cosineValue{};

    T next(T a = 0, T b = 1) {
        T x;
        EXPECT_EQ(draw<T>(stream, 1, &x, {a, b}), KesStatusOk);
        return x;
    }
};

inline void storeRounded(double& r, ext x) { r = round64(x); }
/// By way of memory: the compiler makes one float operation of a sum or product of
/// floats that is rounded, and its result may stay wide.
inline void storeRounded(float& r, ext x) {
    const volatile float rounded = round32(x);
    r = rounded;
}

inline double scaled(double x, double factor, double shift) {
    return round64(ext{x} * factor + shift);
}
inline float scaled(float x, float factor, float shift) {
    float r;
    storeRounded(r, ext{x} * factor);
    storeRounded(r, ext{r} + shift);
    return r;
}

template <class T> constexpr T halfPi = T(1.57079632679489661923L);

/// The angle; tangents are taken of all together, since they share divisions.
template <class T> T plainCauchy(Uniforms<T>& source, const T*) {
    return source.next(-halfPi<T>, halfPi<T>);
}
template <class T> void finishCauchy(std::vector<T>& r, const T* p) {
    quickTangent(static_cast<int>(r.size()), r.data(), r.data());
    for (T& x : r) x = scaled(x, p[1], p[0]);
}

template <class T> T plainExponential(Uniforms<T>& source, const T* p) {
    const T x = scaled(logarithmOf(source.next()), -p[1], p[0]);
    return std::is_same_v<T, float> && !(x > p[0]) ? p[0] : x;
}

template <class T> T plainGumbel(Uniforms<T>& source, const T* p) {
    const T standard[] = {0, 1};
    return scaled(logarithmOf(plainExponential(source, standard)), p[1], p[0]);
}

template <class T> T plainLaplace(Uniforms<T>& source, const T* p) {
    const T distance = logarithmOf(source.next());
    return scaled(distance, source.next() > T(0.5) ? p[1] : -p[1], p[0]);
}

template <class T> T plainRayleigh(Uniforms<T>& source, const T* p) {
    return scaled(squareRootOf(-logarithmOf(source.next())), p[1], p[0]);
}

template <class T> T plainWeibull(Uniforms<T>& source, const T* p) {
    T x = -logarithmOf(source.next()), exponent;
    storeRounded(exponent, ext{1} / p[0]);
    power(1, &x, exponent, &x);
    return scaled(x, p[2], p[1]);
}

/// Both values of a pair of uniforms, by the kernel that gives sines and cosines or by
/// those that give one of them; they may differ in the last place.
template <class T> struct Pair { T sine, cosine; };
template <class T> Pair<T> pairOf(T u, T v, bool together) {
    T angle, sine, cosine;
    storeRounded(angle, ext{v} * (4 * halfPi<T>));
    if (together) {
        quickSineCosine(1, &angle, &sine, &cosine);
    } else {
        quickSine(1, &angle, &sine);
        quickCosine(1, &angle, &cosine);
    }
    const ext distance = squareRootOf(-2 * logarithmOf(u));
    storeRounded(sine, distance * sine);
    storeRounded(cosine, distance * cosine);
    return {sine, cosine};
}

/// Standard normal numbers by methods 0 and 1.
template <class T> T standard0(Uniforms<T>& source, const T*) {
    const T u = source.next();
    return pairOf(u, source.next(), false).sine;
}
template <class T> T standard1(Uniforms<T>& source, const T*) {
    source.isCarried = !source.isCarried;
    if (!source.isCarried) return source.cosineValue;
    const T u = source.next();
    const Pair<T> pair = pairOf(u, source.next(), !source.isLast);
    source.cosineValue = pair.cosine;
    return pair.sine;
}

template <class T> T plainGaussian0(Uniforms<T>& source, const T* p) {
    return scaled(standard0(source, p), p[1], p[0]);
}
template <class T> T plainGaussian1(Uniforms<T>& source, const T* p) {
    return scaled(standard1(source, p), p[1], p[0]);
}
template <class T> T plainLognormal(Uniforms<T>& source, const T* p) {
    return scaled(exponentialOf(plainGaussian1(source, p)), p[3], p[2]);
}

} // namespace qorkes::test
