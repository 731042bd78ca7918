#include "generators.hpp"

#include <qorkes/kes.h>

namespace qorkes::catalogue {
namespace {

// clang-format off
constexpr Generator rows[] = {
    {"MCG31M1", KesBrngMCG31M1, 1, "x = 1132489760 x mod 2^31 - 1; period 2^31 - 2"},
    {"R250", KesBrngR250, 1, "shift register of 250 words; period 2^250 - 1"},
    {"MRG32K3A", KesBrngMRG32K3A, 1, "two recurrences of order 3; period about 2^191"},
    {"MCG59", KesBrngMCG59, 1, "x = 13^13 x mod 2^59; period 2^57 for odd seeds"},
    {"MT19937", KesBrngMT19937, 1, "Mersenne Twister of 624 words; period 2^19937 - 1"},
    {"MT2203", KesBrngMT2203, KesMt2203Members, "Mersenne Twisters of 69 words; period 2^2203 - 1"},
};
// clang-format on

} // namespace

std::span<const Generator> generators() { return rows; }

} // namespace qorkes::catalogue
