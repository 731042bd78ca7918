// Every distribution as data: what the program lists and draws from.
#pragma once

#include <qorkes/kes.h>

#include <span>

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
using Draw = int (*)(StreamState* stream, int n, T* r, const double* parameters);

struct Moments {
    double mean, deviation;
};

struct Distribution {
    const char* name;
    const char* description; // one line for a reader
    std::span<const Parameter> parameters;

    // What the distribution comes in; null where it does not.
    Draw<double> doubles;
    Draw<float> singles;
    Draw<int32_t> integers;
    Draw<uint32_t> words; // as many a number as the generator's word size says

    // Null where there is nothing to say.
    const char* (*fault)(const double* parameters); // why they do not go together
    Moments (*moments)(const double* parameters);
    double (*density)(double x, const double* parameters);
};

/// In alphabetical order.
std::span<const Distribution> distributions();

} // namespace qorkes::catalogue
