#include "generators.hpp"

#include <qorkes/kes.h>

namespace qorkes::catalogue {
namespace {

// clang-format off
constexpr Generator rows[] = {
    {"MCG31M1", KesBrngMCG31M1, 1, 0, "x = 1132489760 x mod 2^31 - 1; period 2^31 - 2"},
    {"R250", KesBrngR250, 1, 0, "shift register of 250 words; period 2^250 - 1"},
    {"MRG32K3A", KesBrngMRG32K3A, 1, 0, "two recurrences of order 3; period about 2^191"},
    {"MCG59", KesBrngMCG59, 1, 0, "x = 13^13 x mod 2^59; period 2^57 for odd seeds"},
    {"WH", KesBrngWH, KesWHMembers, 0, "four x = a x mod m combined; period about 2^93"},
    {"Sobol", KesBrngSobol, 1, KesSobolDimensions, "quasi-random points in up to 40 dimensions"},
    {"Niederreiter", KesBrngNiederr, 1, KesNiederrDimensions, "quasi-random points in up to 318 dimensions"},
    {"MT19937", KesBrngMT19937, 1, 0, "Mersenne Twister of 624 words; period 2^19937 - 1"},
    {"MT2203", KesBrngMT2203, KesMt2203Members, 0, "Mersenne Twisters of 69 words; period 2^2203 - 1"},
};
// clang-format on

} // namespace

std::span<const Generator> generators() { return rows; }

} // namespace qorkes::catalogue
