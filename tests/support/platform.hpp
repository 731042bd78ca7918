// What differs between the processors that the library is built for, as far as tests
// see it.
#pragma once

#include <cstdint>
#include <random>
#include <type_traits>

namespace qorkes::test {

/// No array of 2^31 bytes can be.
constexpr bool hasSmallAddresses = sizeof(void*) == 4;

/// By this type the bits of a double reach a parameter by value as they are: a 32-bit
/// compiler may load a double into the x87 unit on its way, which makes NaNs quiet.
using PassedDouble = std::conditional_t<hasSmallAddresses, std::uint64_t, double>;

/// std::mt19937, whose words have 64 bits on some processors, with words of 32.
using Random = std::mersenne_twister_engine<std::uint32_t, 32, 624, 397, 31, 0x9908B0DF,
                                            11, 0xFFFFFFFF, 7, 0x9D2C5680, 15,
                                            0xEFC60000, 18, 1812433253>;

} // namespace qorkes::test
