#include "proof.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <set>
#include <stdexcept>
#include <string>

#include "arithmetic.hpp"

namespace wh {
namespace {

__extension__ using Wide = unsigned __int128;

void demand(bool holds, int member, const std::string& fault) {
    if (!holds)
        throw std::runtime_error("member " + std::to_string(member) + ": " + fault);
}

std::string decimal(Wide number) {
    std::string digits;
    do digits.insert(digits.begin(), static_cast<char>('0' + number % 10));
    while ((number /= 10) != 0);
    return digits;
}

/// 1 / m is f 2^-76 with f of 53 bits; correctly rounded, f m is within m / 2 of 2^76.
bool is_reciprocal(double reciprocal, std::uint32_t modulus) {
    const double scaled = std::ldexp(reciprocal, 76);
    const Wide product = static_cast<Wide>(scaled) * modulus, one = Wide{1} << 76;
    const Wide gap = product > one ? product - one : one - product;
    return scaled == std::floor(scaled) && scaled >= 0x1p52 && scaled < 0x1p53 &&
           2 * gap <= modulus;
}

void prove_component(int member, std::uint32_t a, std::uint32_t m) {
    demand(is_prime(m), member, "a modulus is not prime");
    demand(m >= smallest_modulus && m <= largest_modulus, member,
           "a modulus is out of range");
    demand(a >= smallest_multiplier && a <= largest_multiplier, member,
           "a multiplier is out of range");
    demand(is_primitive_root(a, m), member, "a multiplier is not a primitive root");
    demand(is_reciprocal(1.0 / m, m), member, "a reciprocal is not correctly rounded");
}

/// The least common multiple of the m - 1: each component has its full period.
Wide period(const Member& member) {
    Wide multiple = 1;
    for (const std::uint32_t m : member.moduli) {
        const auto common =
            std::gcd(m - 1, static_cast<std::uint32_t>(multiple % (m - 1)));
        multiple *= (m - 1) / common;
    }
    return multiple;
}

} // namespace

void prove(const std::vector<Member>& members) {
    std::printf("member  period\n");
    std::set<std::uint32_t> moduli;
    double least = HUGE_VAL, largest = 0;
    for (int i = 0; i < static_cast<int>(members.size()); ++i) {
        const Member& member = members[static_cast<std::size_t>(i)];
        Wide product = 1;
        for (std::size_t j = 0; j < components; ++j) {
            prove_component(i, member.multipliers[j], member.moduli[j]);
            demand(moduli.insert(member.moduli[j]).second, i,
                   "a modulus is that of another component");
            product *= member.moduli[j] - 1;
        }
        const std::set<std::uint32_t> multipliers(member.multipliers.begin(),
                                                  member.multipliers.end());
        demand(multipliers.size() == components, i, "two multipliers are equal");
        demand(8 * period(member) == product, i, "the (m - 1) / 2 are not coprime");
        const double bits = std::log2(static_cast<double>(period(member)));
        least = std::min(least, bits);
        largest = std::max(largest, bits);
        std::printf("%4d    %s = 2^%.4f\n", i, decimal(period(member)).c_str(), bits);
    }
    std::printf("%zu members proven: %zu different primes from %u to %u, periods "
                "2^%.4f to 2^%.4f\n",
                members.size(), moduli.size(), *moduli.begin(), *moduli.rbegin(), least,
                largest);
}

} // namespace wh
