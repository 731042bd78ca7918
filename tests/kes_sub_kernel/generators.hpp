// Every generator as a row: what the properties that all of them share run over.
#pragma once

#include <qorkes/kes.h>

#include <ostream>
#include <vector>

namespace qorkes::test {

/// How a real number comes from a word w and a range: each figure is the number of bits
/// that a value is rounded to, 64 where it stays extended.
///
///     S = (b - a) * step;  w * S + a
struct Rounding {
    int width; // b - a
    int scale; // S, after the product has been rounded to 64
    int word;  // w
    int work;  // the product and the sum
    int store; // the result, once more
};

struct Generator {
    const char* name;
    int brng;
    std::vector<uint32_t> seed;
    int boundary;           // draws are split around this count
    bool leapfrogs;         // k of n delivers every n-th number
    std::vector<int> skips; // counts that skip-ahead takes; empty: it is refused
    double step;            // of the real slots; 0: they are of another form
    Rounding doubles, singles;
};

inline std::ostream& operator<<(std::ostream& out, const Generator& generator) {
    return out << generator.name;
}

// clang-format off
inline const std::vector<Generator> generators = {
    {"MCG31M1", KesBrngMCG31M1, {777},              2, true, {0, 1, 2, 3, 1000, 65537},
     0x1.00000002p-31, {64, 53, 64, 64, 53}, {24, 24, 24, 24, 24}},

    {"MCG59",   KesBrngMCG59,   {0x12345679, 0xABC}, 2, true, {0, 1, 2, 3, 1000, 65537},
     0x1p-59,          {64, 64, 64, 64, 53}, {64, 64, 64, 64, 24}},

    {"R250",    KesBrngR250,    {20001},            250, false, {},
     0x1p-32,          {64, 64, 64, 64, 53}, {64, 64, 64, 64, 24}},

    {"MRG32K3A", KesBrngMRG32K3A, {1, 22, 333, 4444, 55555, 666666}, 3, false,
     {0, 1, 2, 3, 1000, 65537},
     0x1.000000d10000bp-32, {64, 53, 64, 64, 53}, {64, 53, 64, 64, 24}},

    {"MT19937", KesBrngMT19937, {0x123, 0x234, 0x345, 0x456}, 624, false, {},
     0x1p-32,          {64, 53, 64, 64, 53}, {64, 53, 64, 64, 24}},

    {"MT2203", KesBrngMT2203, {0x123, 0x234, 0x345}, 69, false, {},
     0x1p-32,          {64, 53, 64, 64, 53}, {64, 53, 64, 64, 24}},

    {"MT2203member1023", KesBrngMT2203 + 1023, {}, 69, false, {},
     0x1p-32,          {64, 53, 64, 64, 53}, {64, 53, 64, 64, 24}},

    {"WH", KesBrngWH, {777, 888, 999}, 128, true, {0, 1, 2, 3, 1000, 65537},
     0,                {}, {}},

    {"WHmember272", 276, {1, 2, 3, 4}, 5, true, {0, 1, 2, 3, 1000, 65537},
     0,                {}, {}},

    {"Sobol", KesBrngSobol, {7},        7, false, {1, 2, 3, 1000, 65537},
     0x1p-32,          {64, 64, 64, 64, 53}, {64, 64, 64, 64, 24}},

    {"SobolIn40Dimensions", 277, {40},  40, false, {1, 2, 39, 40, 1000, 65537},
     0x1p-32,          {64, 64, 64, 64, 53}, {64, 64, 64, 64, 24}},

    {"Niederreiter", KesBrngNiederr, {}, 2, false, {1, 2, 3, 1000, 65537},
     0x1p-32,          {64, 64, 64, 64, 53}, {64, 64, 64, 64, 24}},

    // Skips from inside a point that end there: others are not what draws give.
    {"NiederreiterIn318Dimensions", 278, {318}, 318, false, {1, 2, 3, 316},
     0x1p-32,          {64, 64, 64, 64, 53}, {64, 64, 64, 64, 24}},
};
// clang-format on

} // namespace qorkes::test
