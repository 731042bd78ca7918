#include "family.hpp"

#include <algorithm>
#include <functional>
#include <map>
#include <numeric>
#include <set>
#include <stdexcept>

#include "arithmetic.hpp"

namespace wh {
namespace {

const std::map<int, Member> fixed_members{
    {0, {{125, 117, 127, 126}, {16770647, 16770643, 16770623, 16770617}}},
    {1, {{127, 126, 125, 123}, {16770311, 16770283, 16770263, 16770209}}},
    {2, {{125, 119, 123, 126}, {16769807, 16769771, 16769749, 16769663}}},
    {3, {{123, 125, 122, 126}, {16769591, 16769537, 16769479, 16769387}}},
    {271, {{127, 124, 126, 118}, {16766831, 16766803, 16766459, 16766429}}},
    {272, {{126, 127, 125, 124}, {16766363, 16766359, 16766327, 16766231}}},
};

using Primes = std::set<std::uint32_t, std::greater<>>;

/// The primes of the range, from the top down, that no fixed member has.
Primes free_primes() {
    Primes primes;
    for (std::uint32_t n = largest_modulus; n >= smallest_modulus; n -= 2)
        if (is_prime(n)) primes.insert(n);
    for (const auto& [number, member] : fixed_members)
        for (const std::uint32_t modulus : member.moduli) primes.erase(modulus);
    return primes;
}

bool fits(std::uint32_t modulus, const std::vector<std::uint32_t>& row) {
    return std::ranges::all_of(row, [&](std::uint32_t other) {
        return std::gcd((modulus - 1) / 2, (other - 1) / 2) == 1;
    });
}

/// 0 if there is none.
std::uint32_t multiplier_for(std::uint32_t modulus,
                             const std::vector<std::uint32_t>& used) {
    for (std::uint32_t a = largest_multiplier; a >= smallest_multiplier; --a)
        if (std::ranges::find(used, a) == used.end() && is_primitive_root(a, modulus))
            return a;
    return 0;
}

/// Takes its moduli out of the primes.
Member next_member(Primes& primes) {
    std::vector<std::uint32_t> moduli, multipliers;
    for (auto prime = primes.begin(); moduli.size() < components;) {
        if (prime == primes.end()) throw std::runtime_error("the primes ran out");
        const std::uint32_t multiplier =
            fits(*prime, moduli) ? multiplier_for(*prime, multipliers) : 0;
        if (multiplier == 0) {
            ++prime;
            continue;
        }
        moduli.push_back(*prime);
        multipliers.push_back(multiplier);
        prime = primes.erase(prime);
    }
    Member member;
    std::ranges::copy(multipliers, member.multipliers.begin());
    std::ranges::copy(moduli, member.moduli.begin());
    return member;
}

} // namespace

const Member* fixed_member(int member) {
    const auto found = fixed_members.find(member);
    return found == fixed_members.end() ? nullptr : &found->second;
}

std::vector<Member> find_members() {
    Primes primes = free_primes();
    std::vector<Member> members;
    for (int i = 0; i < family_size; ++i) {
        const Member* fixed = fixed_member(i);
        members.push_back(fixed ? *fixed : next_member(primes));
    }
    return members;
}

} // namespace wh
