// _qordsqrt_scalar and _qorssqrt_scalar: one square root, without a report and without
// a frame: they compute at the precision and rounding in force.
//
// double: quadratic and Newton step as in the vector kernel. float: sqrt(m) from a
// quadratic on each of 64 pieces, scaled by its power of two and, for an odd exponent,
// by sqrt(2); no Newton step.
//
//   +-0, +infinity        the argument
//   positive denormal     scaled, rounded once
//   NaN                   the same NaN, quiet
//   negative, -infinity   0x7FF8A5A55A5A5A5A and 0xFFC00000
#include <qor_core/_heap/root_tables.hpp>
#include <qorkes/qor.h>

using namespace qorkes;

namespace {

#include "_qor_sqrt_scalar_tables.inc"
constexpr RootTable dsqrt_dwA(dsqrt_dwA0, dsqrt_dwA1, dsqrt_dwA2);

constexpr float floatDenormalScale = 0x1p+26f;
constexpr float floatInverseOfRootScale = 0x1p-13f;
constexpr uint32_t floatDefaultNaN = 0xFFC00000;

double _qordSqrt_Finite(const double& x) {
    const RootArgument argument = rootArgument(x);
    double root = round64(argument.mantissa * twiceInverseRoot(dsqrt_dwA, argument));
    addToHighWord(root, rootExponent(argument.high));
    return root;
}

double _qordSqrt_Deno(double x) {
    const double scaled = round64(ext{x} * denormalScale);
    return round64(ext{_qordSqrt_Finite(scaled)} * inverseOfRootScale);
}

double _qordSqrt_Spec(double x) {
    if (isNaN(x)) return quietNaN(x);
    if (isZero(x) || highWord(x) == doubleInfinityHigh) return x;
    setWords(x, rootNaNHigh, rootNaNLow);
    return x;
}

/// 2^floor(e/2) for the exponent e of a positive normal float.
ext halfExponent(uint32_t bits) {
    float power;
    setBits(power, ((bits + 0x3F800000) >> 1) & 0x7F800000);
    return power;
}

ext finiteRoot(const float& x) {
    const uint32_t bits = bitsOf(x);
    const uint32_t i = (bits & 0x7E0000) >> 17;
    float mantissa;
    setBits(mantissa, (bits & 0x7FFFFF) | 0x3F800000);
    const ext m = mantissa;
    const ext root = (dwA2[i] * m + dwA1[i]) * m + dwA0[i];
    const bool isOdd = (bits >> 23 & 1) == 0;
    return root * halfExponent(bits) * (isOdd ? sqrtTwo : 1.0);
}

float _qorsSqrt_Deno(float x) {
    const float scaled = round32(ext{x} * floatDenormalScale);
    return round32(finiteRoot(scaled) * floatInverseOfRootScale);
}

float _qorsSqrt_Spec(float x) {
    const uint32_t bits = bitsOf(x);
    if (bits > signBit && bits <= (signBit | floatInfinity)) {
        setBits(x, floatDefaultNaN);
        return x;
    }
    return round32(ext{x} + x);
}

} // namespace

double _qordsqrt_scalar(double x) {
    const uint32_t high = highWord(x);
    if (isPositiveNormal(high)) return _qordSqrt_Finite(x);
    if (high < doubleInfinityHigh && !isZero(x)) return _qordSqrt_Deno(x);
    return _qordSqrt_Spec(x);
}

float _qorssqrt_scalar(float x) {
    const uint32_t bits = bitsOf(x);
    if (isPositiveNormalFloat(bits)) return round32(finiteRoot(x));
    if (bits != 0 && bits < 0x00800000u) return _qorsSqrt_Deno(x);
    return _qorsSqrt_Spec(x);
}
