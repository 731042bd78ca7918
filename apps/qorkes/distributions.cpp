#include "distributions.hpp"

#include <cmath>

namespace qorkes::catalogue {
namespace {

constexpr Range anyNumber = {"a finite number",
                             [](double x) { return std::isfinite(x); }};

int drawBits(StreamState* stream, int n, uint32_t* r, const double*) {
    return _kesiRngUniformBits(0, stream, n, r);
}

namespace uniform {
constexpr Parameter parameters[] = {{"a", 0, &anyNumber}, {"b", 1, &anyNumber}};
int doubles(StreamState* stream, int n, double* r, const double* p) {
    return _kesdRngUniform(0, stream, n, r, p[0], p[1]);
}
int singles(StreamState* stream, int n, float* r, const double* p) {
    return _kessRngUniform(0, stream, n, r, static_cast<float>(p[0]),
                           static_cast<float>(p[1]));
}
const char* fault(const double* p) {
    return p[0] < p[1] ? nullptr : "a must be below b";
}
Moments moments(const double* p) {
    return {(p[0] + p[1]) / 2, (p[1] - p[0]) / std::sqrt(12.0)};
}
double density(double x, const double* p) {
    return x < p[0] || x > p[1] ? 0 : 1 / (p[1] - p[0]);
}
} // namespace uniform

// clang-format off
constexpr Distribution rows[] = {
    {"bits", "the generator's own words", {},
     nullptr, nullptr, nullptr, drawBits, nullptr, nullptr, nullptr},
    {"uniform", "real numbers in [a, b)", uniform::parameters,
     uniform::doubles, uniform::singles, nullptr, nullptr,
     uniform::fault, uniform::moments, uniform::density},
};
// clang-format on

} // namespace

std::span<const Distribution> distributions() { return rows; }

} // namespace qorkes::catalogue
