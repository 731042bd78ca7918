// Every basic generator as data: what the program lists and draws from, and what tests
// and benchmarks run over.
#pragma once

#include <span>

namespace qorkes::catalogue {

struct Generator {
    const char* name;
    int identifier; // of member 0; the others follow
    int members;
    int dimensions; // of quasi-random points at most; 0: random numbers, from a seed
    const char* description; // one line for a reader
};

/// In the order of their identifiers.
std::span<const Generator> generators();

} // namespace qorkes::catalogue
