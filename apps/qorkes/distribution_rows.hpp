// What the rows of distributions are made of, and where they stand.
#pragma once

#include "distributions.hpp"

#include <cmath>
#include <utility>

namespace qorkes::catalogue {

std::vector<Distribution> continuousDistributions();
std::vector<Distribution> discreteDistributions();
Distribution gaussianMV();

inline constexpr Range anyNumber = {"a finite number",
                                    [](double x) { return std::isfinite(x); }};
inline constexpr Range positive = {"a finite number above 0",
                                   [](double x) { return x > 0 && std::isfinite(x); }};

/// Of distributions whose first parameters are the ends of an interval.
inline const char* faultOfEnds(const double* p) {
    return p[0] < p[1] ? nullptr : "a must be below b";
}

/// An entry of the library, its parameters taken from an array.
template <auto entry> struct Entry;
template <class T, class... P, int (*entry)(int, StreamState*, int, T*, P...)>
struct Entry<entry> {
    static int draw(int method, StreamState* stream, int n, T* r, const double* p) {
        return [=]<size_t... i>(std::index_sequence<i...>) {
            return entry(method, stream, n, r, static_cast<P>(p[i])...);
        }
        (std::index_sequence_for<P...>{});
    }
};
template <auto entry> constexpr auto drawBy = Entry<entry>::draw;

} // namespace qorkes::catalogue
