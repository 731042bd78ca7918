#include "arithmetic.hpp"

namespace wh {

bool is_prime(std::uint32_t n) {
    if (n < 4) return n > 1;
    if (n % 2 == 0) return false;
    for (std::uint32_t divisor = 3; divisor * divisor <= n; divisor += 2)
        if (n % divisor == 0) return false;
    return true;
}

std::uint32_t power(std::uint32_t base, std::uint32_t exponent, std::uint32_t modulus) {
    std::uint64_t result = 1, square = base;
    for (; exponent != 0; exponent /= 2) {
        if (exponent % 2 == 1) result = result * square % modulus;
        square = square * square % modulus;
    }
    return static_cast<std::uint32_t>(result);
}

/// The order divides p - 1, and is p - 1 unless it divides (p - 1) / q for a prime q.
bool is_primitive_root(std::uint32_t a, std::uint32_t prime) {
    const auto reaches_one = [&](std::uint32_t divisor) {
        return power(a, (prime - 1) / divisor, prime) == 1;
    };
    std::uint32_t rest = prime - 1;
    for (std::uint32_t q = 2; q * q <= rest; ++q) {
        if (rest % q != 0) continue;
        if (reaches_one(q)) return false;
        while (rest % q == 0) rest /= q;
    }
    return a % prime != 0 && (rest == 1 || !reaches_one(rest));
}

} // namespace wh
