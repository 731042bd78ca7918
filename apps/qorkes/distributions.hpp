// Every distribution as data: what the program lists and draws from.
#pragma once

#include <qorkes/kes.h>

#include <span>
#include <vector>

namespace qorkes::catalogue {

/// The values that a parameter may have.
struct Range {
    const char* words; // "a number above 0"
    bool (*holds)(double value);
};

struct Parameter {
    const char* name;
    double preset; // the value if none is given
    const Range* range;
};

/// Draws n numbers; returns the stream's status.
template <class T>
using Draw = int (*)(int method, StreamState* stream, int n, T* r,
                     const double* parameters);

struct Moments {
    double mean, deviation; // infinite where they do not exist
};

struct Distribution {
    const char* name;
    const char* description; // one line for a reader
    std::span<const Parameter> parameters = {};
    std::span<const char* const> methods = {}; // what each does; empty for one alone

    // What the distribution comes in; null where it does not.
    Draw<double> doubles = nullptr;
    Draw<float> singles = nullptr;
    Draw<int32_t> integers = nullptr;
    Draw<uint32_t> words =
        nullptr; // as many a number as the generator's word size says

    // Null where there is nothing to say.
    const char* (*fault)(const double* parameters) = nullptr; // if they do not agree
    Moments (*moments)(const double* parameters) = nullptr;
    double (*density)(double x, const double* parameters) = nullptr;
    double (*probability)(double k, const double* parameters) = nullptr; // of integers
};

/// In alphabetical order.
std::span<const Distribution> distributions();

/// The same, and GaussianMV, whose parameters are lists: its row has none.
std::span<const Distribution> distributionsWithVectors();

/// Whether a row is that of GaussianMV, which gives vectors and has no entries here.
inline bool givesVectors(const Distribution& row) {
    return !row.doubles && !row.integers && !row.words;
}

} // namespace qorkes::catalogue
