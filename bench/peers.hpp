// Loops over what a program would call without this library. peers.cpp is built twice,
// into a shared object each: the 32-bit one for x87 and for SSE2 arithmetic, the 64-bit
// one for SSE2 element by element and for the vector functions of the C library.
#pragma once

#include <support/kernel_peers.hpp>

#include <cstdint>
#include <span>

namespace qorkes::bench {

/// Fills y from a generator that lives as long as the program: with its raw words, with
/// real numbers from [0, 1), or with variates of a distribution.
template <class T> struct StreamPeer {
    const char* name;
    void (*fill)(int n, T* y);
};

/// Of quasi-random points, by all that are timed.
constexpr int quasiDimensions = 10;
/// Sums by their definition, of all places of the full result. A grid has two
/// dimensions, the first varying fastest.
template <class T> struct SumPeer {
    void (*convolveLines)(const T* x, int nx, const T* y, int ny, T* z);
    void (*correlateLines)(const T* x, int nx, const T* y, int ny, T* z);
    void (*convolveGrids)(const T* x, const int* nx, const T* y, const int* ny, T* z);
};

struct Peers {
    std::span<const KernelPeer<double>> doubles;
    std::span<const KernelPeer<float>> singles;
    std::span<const StreamPeer<std::uint32_t>> words;
    std::span<const StreamPeer<double>> uniformDoubles;
    std::span<const StreamPeer<float>> uniformSingles;
    std::span<const StreamPeer<double>> points; // of quasiDimensions components each
    std::span<const StreamPeer<double>> drawnDoubles;
    std::span<const StreamPeer<float>> drawnSingles;
    std::span<const StreamPeer<std::int32_t>> drawnIntegers;
    SumPeer<double> doubleSums;
    SumPeer<float> singleSums;
};

// In the same order.
Peers narrowPeers();
Peers widePeers();

} // namespace qorkes::bench
