#include "functions.hpp"

#include <cfloat>
#include <cmath>
#include <stdexcept>
#include <string>

namespace qorkes::ulp {
namespace {

using enum Region::Kind;

constexpr Range below(double largest, Sign sign = Sign::both) {
    return {0x1p-40, largest, sign};
}
constexpr Range positive(double smallest, double largest) {
    return {smallest, largest, Sign::positive};
}
constexpr Range negative(double smallest, double largest) {
    return {smallest, largest, Sign::negative};
}
constexpr Range both(double smallest, double largest) {
    return {smallest, largest, Sign::both};
}

constexpr double doubleNormal = DBL_MIN, doubleLast = DBL_MAX, doubleLeast = 0x1p-1074;
constexpr double floatNormal = FLT_MIN, floatLast = FLT_MAX, floatLeast = 0x1p-149;

constexpr Range anyDouble = both(doubleNormal, doubleLast);
constexpr Range anyFloat = both(floatNormal, floatLast);
constexpr Range positiveDouble = positive(doubleNormal, doubleLast);
constexpr Range positiveFloat = positive(floatNormal, floatLast);
constexpr Range denormalDouble = both(doubleLeast, doubleNormal);
constexpr Range denormalFloat = both(floatLeast, floatNormal);
constexpr Range positiveDenormalDouble = positive(doubleLeast, doubleNormal);
constexpr Range positiveDenormalFloat = positive(floatLeast, floatNormal);
constexpr Range nearOne = positive(0.99, 1.01);

constexpr long double halfPi = 1.57079632679489661923L;

#define SCREEN(f) [](auto a, auto) { return std::f(a); }

std::vector<Region> rootRegions(Range normal, Range denormal) {
    return {{"normal arguments", normal},
            {"near 1", nearOne},
            {"denormal arguments", denormal}};
}

std::vector<Region> inverseSineRegions() {
    return {{"whole domain", below(1)},
            {"around 1/2", both(0.4, 0.6)},
            {"near 1", both(0.99, 1)}};
}

std::vector<Region> angleRegions(double largest) {
    return {{"up to pi", below(3.15)},
            {"up to 4e5", both(3.1, 4e5)},
            {"above 4e5", both(4e5, largest)}};
}

std::vector<Region> powerRegions(double normal, double least, double last) {
    return {
        {"bases from 1/4 to 4", positive(0.25, 4), both(0x1p-4, 60)},
        {"normal results", positive(normal, last), both(0x1p-8, 0x1p8), results},
        {"exponents from 2^8 to 2^20", positive(normal, last), both(0x1p8, 0x1p20),
         results},
        {"denormal results", positive(least, normal), both(0x1p-8, 0x1p8), results}};
}

long double baseFor(long double result, long double exponent) {
    return std::pow(result, 1 / exponent);
}

const FunctionRow rows[] = {
    {"Acos", SCREEN(acos), inverseSineRegions(), {}},
    {"Acosh",
     SCREEN(acosh),
     {{"near 1", positive(1, 1.125)}, {"above", positive(1.125, doubleLast)}},
     {{"near 1", positive(1, 1.125)}, {"above", positive(1.125, floatLast)}}},
    {"Asin", SCREEN(asin), inverseSineRegions(), {}},
    {"Asinh",
     SCREEN(asinh),
     {{"below 1", below(1)}, {"above 1", both(1, doubleLast)}},
     {{"below 1", below(1)}, {"above 1", both(1, floatLast)}}},
    {"Atan",
     SCREEN(atan),
     {{"below 1/4", below(0.25)},
      {"from 1/4 to 4", both(0.25, 4)},
      {"above 4", both(4, 0x1p70)}},
     {}},
    {"Atan2",
     [](auto a, auto b) { return std::atan2(a, b); },
     {{"moderate", both(0x1p-20, 0x1p20), both(0x1p-20, 0x1p20)},
      {"near pi", both(0x1p-20, 0x1p-4), negative(1, 2)},
      {"whole range", anyDouble, anyDouble}},
     {{"moderate", both(0x1p-20, 0x1p20), both(0x1p-20, 0x1p20)},
      {"near pi", both(0x1p-20, 0x1p-4), negative(1, 2)},
      {"whole range", anyFloat, anyFloat}}},
    {"Atanh",
     SCREEN(atanh),
     {{"below 1/2", below(0.5)}, {"above 1/2", both(0.5, 1)}},
     {}},
    {"Cbrt", SCREEN(cbrt), rootRegions(anyDouble, denormalDouble),
     rootRegions(anyFloat, denormalFloat)},
    {"Cos", SCREEN(cos), angleRegions(doubleLast), angleRegions(floatLast), halfPi},
    {"Cosh",
     SCREEN(cosh),
     {{"below 1", below(1)}, {"above 1", both(1, 710.4)}},
     {{"below 1", below(1)}, {"above 1", both(1, 89.4)}}},
    {"Div",
     [](auto a, auto b) { return a / b; },
     {{"divisors from 2^-30 to 2^30", anyDouble, both(0x1p-30, 0x1p30)},
      {"whole range", anyDouble, anyDouble},
      {"denormal results", denormalDouble, both(0x1p-30, 0x1p30), results}},
     {{"whole range", anyFloat, anyFloat},
      {"denormal results", denormalFloat, both(0x1p-30, 0x1p30), results}},
     0,
     [](long double result, long double b) { return result * b; }},
    {"Erf",
     SCREEN(erf),
     {{"up to 6", below(6)}, {"tiny", both(doubleLeast, 0x1p-1000)}},
     {{"up to 4", below(4)}, {"tiny", both(floatLeast, 0x1p-110)}}},
    {"Erfc",
     SCREEN(erfc),
     {{"negative", below(6, Sign::negative)},
      {"positive", below(26.54, Sign::positive)},
      {"denormal results", positive(26.55, 27.22)}},
     {{"negative", below(4, Sign::negative)},
      {"positive", below(9.19, Sign::positive)},
      {"denormal results", positive(9.2, 10.05)}}},
    {"Exp",
     SCREEN(exp),
     {{"normal results", below(708.39)},
      {"denormal results", negative(708.4, 745.13)},
      {"near overflow", positive(708, 709.7827)}},
     {{"normal results", below(87.33)},
      {"denormal results", negative(87.34, 103.97)},
      {"near overflow", positive(87, 88.7228)}}},
    {"Inv",
     [](auto a, auto) { return 1 / a; },
     {{"arguments from 2^-30 to 2^30", both(0x1p-30, 0x1p30)},
      {"whole range", anyDouble},
      {"denormal results", both(0x1p1022, doubleLast)}},
     {{"whole range", anyFloat}, {"denormal results", both(0x1p126, floatLast)}}},
    {"InvCbrt", [](auto a, auto) { return 1 / std::cbrt(a); },
     rootRegions(anyDouble, denormalDouble), rootRegions(anyFloat, denormalFloat)},
    {"InvSqrt", [](auto a, auto) { return 1 / std::sqrt(a); },
     rootRegions(positiveDouble, positiveDenormalDouble),
     rootRegions(positiveFloat, positiveDenormalFloat)},
    {"Ln", SCREEN(log), rootRegions(positiveDouble, positiveDenormalDouble),
     rootRegions(positiveFloat, positiveDenormalFloat)},
    {"Log10", SCREEN(log10), rootRegions(positiveDouble, positiveDenormalDouble),
     rootRegions(positiveFloat, positiveDenormalFloat)},
    {"Pow", [](auto a, auto b) { return std::pow(a, b); },
     powerRegions(doubleNormal, doubleLeast, doubleLast),
     powerRegions(floatNormal, floatLeast, floatLast), 0, baseFor},
    {"Powx", [](auto a, auto b) { return std::pow(a, b); },
     powerRegions(doubleNormal, doubleLeast, doubleLast),
     powerRegions(floatNormal, floatLeast, floatLast), 0, baseFor},
    {"Sin", SCREEN(sin), angleRegions(doubleLast), angleRegions(floatLast), halfPi},
    {"SinCos",
     SCREEN(sin),
     angleRegions(doubleLast),
     {{"up to pi", below(3.15)},
      {"up to 4e5", both(3.1, 4e5)},
      {"above 4e5, absolute", both(4e5, floatLast), {1, 1, Sign::positive}, absolute}},
     halfPi},
    {"Sinh",
     SCREEN(sinh),
     {{"below 1", below(1)}, {"above 1", both(1, 710.4)}},
     {{"below 1", below(1)}, {"above 1", both(1, 89.4)}}},
    {"Sqrt", SCREEN(sqrt), rootRegions(positiveDouble, positiveDenormalDouble),
     rootRegions(positiveFloat, positiveDenormalFloat)},
    {"Tan", SCREEN(tan), angleRegions(doubleLast), angleRegions(floatLast), halfPi},
    {"Tanh", SCREEN(tanh), {{"below 1", below(1)}, {"above 1", both(1, 20)}}, {}},
};

const FunctionRow& rowOf(std::string_view function) {
    for (const FunctionRow& row : rows)
        if (row.name == function) return row;
    throw std::invalid_argument("no row for " + std::string(function));
}

} // namespace

const FunctionRow& rowOf(std::string_view function, int output) {
    static const FunctionRow cosine = [] {
        FunctionRow row = rowOf("SinCos");
        row.screen = SCREEN(cos);
        return row;
    }();
    return output == 1 ? cosine : rowOf(function);
}

} // namespace qorkes::ulp
