#include "sieve.hpp"

#include <algorithm>
#include <bit>

#include "twister.hpp"

namespace mt2203 {
namespace {

/// Each further degree would double the number of remainders and refuse fewer words.
constexpr int largest_degree = 16;

/// Polynomials of low degree are words: bit i is the coefficient of t^i.
int degree(std::uint32_t a) { return int(std::bit_width(a)) - 1; }

std::uint32_t remainder(std::uint32_t a, std::uint32_t divisor) {
    for (int d = degree(a); d >= degree(divisor); d = degree(a))
        a ^= divisor << (d - degree(divisor));
    return a;
}

std::uint32_t remainder(const Polynomial& a, std::uint32_t divisor) {
    const int top = degree(divisor);
    std::uint32_t r = 0;
    for (int i = exponent; i >= 0; --i) {
        r = r << 1 | std::uint32_t(coefficient(a, i));
        r ^= (r >> top & 1) * divisor;
    }
    return r;
}

std::vector<std::uint32_t> irreducibles() {
    std::vector<std::uint32_t> found;
    const auto divisible = [&found](std::uint32_t a) {
        for (const std::uint32_t factor : found) {
            if (2 * degree(factor) > degree(a)) return false;
            if (remainder(a, factor) == 0) return true;
        }
        return false;
    };
    for (std::uint32_t a = 2; degree(a) <= largest_degree; ++a)
        if (!divisible(a)) found.push_back(a);
    return found;
}

} // namespace

Sieve make_sieve() {
    const Polynomial constant = characteristic_polynomial(0);
    std::array<Polynomial, 32> of_bit;
    for (std::size_t i = 0; i < of_bit.size(); ++i)
        of_bit[i] = sum(constant, characteristic_polynomial(1u << i));

    Sieve sieve;
    for (const std::uint32_t divisor : irreducibles()) {
        Remainder& entry = sieve.emplace_back();
        entry.constant = remainder(constant, divisor);
        for (std::size_t i = 0; i < of_bit.size(); ++i)
            entry.of_bit[i] = remainder(of_bit[i], divisor);
    }
    return sieve;
}

bool passes(const Sieve& sieve, std::uint32_t matrix) {
    return std::none_of(sieve.begin(), sieve.end(), [matrix](const Remainder& entry) {
        std::uint32_t value = entry.constant;
        for (std::uint32_t bits = matrix; bits != 0; bits &= bits - 1)
            value ^= entry.of_bit[std::size_t(std::countr_zero(bits))];
        return value == 0;
    });
}

} // namespace mt2203
