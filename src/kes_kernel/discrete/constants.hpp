// Numbers that several tests of acceptance are made of.
#pragma once

#include <common/ext.hpp>

namespace qorkes {

constexpr double third = 0x1.5555555555555p-2;
static_assert(hasPattern(third, 0x3FD5555555555555));

/// Coefficients of Stirling's series for ln(x!), signs aside: 1/12, 1/360, 1/1260,
/// 1/1680, 1/1188.
namespace stirling {
constexpr double c0 = 0x1.5555555555555p-4;
constexpr double c1 = 0x1.6c16c16c16c17p-9;
constexpr double c2 = 0x1.a01a01a01a01ap-11;
constexpr double c3 = 0x1.3813813813814p-11;
constexpr double c4 = 0x1.b951e2b18ff23p-11;
static_assert(hasPattern(c0, 0x3FB5555555555555) && hasPattern(c1, 0x3F66C16C16C16C17));
static_assert(hasPattern(c2, 0x3F4A01A01A01A01A) && hasPattern(c3, 0x3F43813813813814));
static_assert(hasPattern(c4, 0x3F4B951E2B18FF23));
} // namespace stirling

} // namespace qorkes
