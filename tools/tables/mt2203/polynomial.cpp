#include "polynomial.hpp"

#include <algorithm>
#include <bit>
#include <utility>

#include <immintrin.h>

namespace mt2203 {
namespace {

/// How far t^2203 lies below the word boundary t^2240.
constexpr int slack = 64 * poly_words - exponent;

__m128i load_word(const std::uint64_t* p) {
    return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
}

std::uint64_t low(__m128i x) { return std::uint64_t(_mm_cvtsi128_si64(x)); }

std::uint64_t high(__m128i x) { return std::uint64_t(_mm_extract_epi64(x, 1)); }

/// Carry-less sum of a[i] b[i].
__m128i dot(const std::uint64_t* a, const std::uint64_t* b, int count) {
    __m128i even = _mm_setzero_si128(), odd = even;
    int i = 0;
    for (; i + 1 < count; i += 2) {
        even = _mm_xor_si128(
            even, _mm_clmulepi64_si128(load_word(a + i), load_word(b + i), 0));
        odd = _mm_xor_si128(
            odd, _mm_clmulepi64_si128(load_word(a + i + 1), load_word(b + i + 1), 0));
    }
    if (i < count)
        even = _mm_xor_si128(
            even, _mm_clmulepi64_si128(load_word(a + i), load_word(b + i), 0));
    return _mm_xor_si128(even, odd);
}

/// Reduces modulo t^37 times the modulus, whose degree is a whole number of words.
/// Going down, word k of the product is final once the words above have been divided
/// out: each of them, times the tail, reaches at most the word below itself.
Polynomial fold(Product product, const Modulus& modulus) {
    constexpr int top = 2 * poly_words - 1;
    __m128i column = _mm_setzero_si128();
    for (int k = top; k >= 0; --k) {
        const int first = std::max(k + 1, poly_words);
        const int last = std::min(k + poly_words - 1, top);
        const __m128i next =
            dot(product.data() + first, modulus.tail_reversed.data() + (first - k - 1),
                last - first + 1);
        product[std::size_t(k)] ^= low(column) ^ high(next);
        column = next;
    }
    Polynomial residue;
    std::copy_n(product.begin(), poly_words, residue.begin());
    return residue;
}

} // namespace

int degree(const Polynomial& a) {
    for (int i = poly_words - 1; i >= 0; --i)
        if (const std::uint64_t word = a[std::size_t(i)])
            return 64 * i + 63 - std::countl_zero(word);
    return -1;
}

Polynomial sum(const Polynomial& a, const Polynomial& b) {
    Polynomial result;
    for (std::size_t i = 0; i < poly_words; ++i) result[i] = a[i] ^ b[i];
    return result;
}

void add_shifted(Polynomial& target, const Polynomial& a, int shift) {
    const auto skip = std::size_t(shift / 64);
    const int bits = shift % 64;
    for (std::size_t i = skip; i < poly_words; ++i) target[i] ^= a[i - skip] << bits;
    if (bits == 0) return;
    for (std::size_t i = skip + 1; i < poly_words; ++i)
        target[i] ^= a[i - skip - 1] >> (64 - bits);
}

Product multiply(const Polynomial& a, const Polynomial& b) {
    Polynomial reversed = b;
    std::reverse(reversed.begin(), reversed.end());
    Product product{};
    for (int k = 0; k < 2 * poly_words - 1; ++k) {
        const int first = std::max(0, k - poly_words + 1);
        const int last = std::min(k, poly_words - 1);
        const __m128i column =
            dot(a.data() + first, reversed.data() + (first + poly_words - 1 - k),
                last - first + 1);
        product[std::size_t(k)] ^= low(column);
        product[std::size_t(k) + 1] ^= high(column);
    }
    return product;
}

bool has_gap(const Polynomial& value) {
    Polynomial tail = value;
    tail.back() ^= std::uint64_t(1) << (exponent % 64);
    return degree(value) == exponent && degree(tail) <= exponent - 64;
}

Modulus modulus_from(const Polynomial& value) {
    Polynomial tail = value, shifted{};
    tail.back() = 0;
    add_shifted(shifted, tail, slack);
    Modulus modulus{value, {}};
    std::reverse_copy(shifted.begin(), shifted.end() - 1,
                      modulus.tail_reversed.begin());
    return modulus;
}

Polynomial multiply(const Polynomial& a, const Polynomial& b, const Modulus& modulus) {
    return fold(multiply(a, b), modulus);
}

Polynomial square(const Polynomial& a, const Modulus& modulus) {
    Product product;
    for (std::size_t i = 0; i < poly_words; ++i) {
        const __m128i word = load_word(&a[i]);
        const __m128i spread = _mm_clmulepi64_si128(word, word, 0);
        product[2 * i] = low(spread);
        product[2 * i + 1] = high(spread);
    }
    return fold(product, modulus);
}

Polynomial least(Polynomial a, const Modulus& modulus) {
    for (int d = degree(a); d >= exponent; d = degree(a))
        add_shifted(a, modulus.value, d - exponent);
    return a;
}

/// Euclid's algorithm, keeping u = a x + (..) m and v = a y + (..) m.
Polynomial inverse(const Polynomial& a, const Modulus& modulus) {
    Polynomial u = least(a, modulus), v = modulus.value, x = one, y{};
    int degree_u = degree(u), degree_v = exponent;
    while (degree_u > 0) {
        if (degree_u < degree_v) {
            std::swap(u, v);
            std::swap(x, y);
            std::swap(degree_u, degree_v);
        }
        add_shifted(u, v, degree_u - degree_v);
        add_shifted(x, y, degree_u - degree_v);
        degree_u = degree(u);
    }
    return x;
}

/// t^(2^2203) = t says that the modulus has no repeated factor and that the degree of
/// each factor divides the prime 2203. Linear factors, t and t + 1, could make up no
/// more than degree 2, so there is one factor, of degree 2203.
bool irreducible(const Modulus& modulus) {
    Polynomial power = indeterminate;
    for (int i = 0; i < exponent; ++i) power = square(power, modulus);
    return least(power, modulus) == indeterminate;
}

/// `connection` and `previous` are connection polynomials; `window` holds the latest
/// bits, newest first, so that a discrepancy is one inner product.
Polynomial minimal_polynomial(std::span<const std::uint8_t> bits) {
    Polynomial connection = one, previous = one, window{};
    int length = 0, age = 1;
    for (int n = 0; n < int(bits.size()); ++n, ++age) {
        Polynomial moved{bits[std::size_t(n)]};
        add_shifted(moved, window, 1);
        window = moved;
        std::uint64_t inner = 0;
        for (std::size_t i = 0; i < poly_words; ++i) inner ^= connection[i] & window[i];
        if (std::popcount(inner) % 2 == 0) continue;
        const Polynomial before = connection;
        add_shifted(connection, previous, age);
        if (2 * length > n) continue;
        length = n + 1 - length;
        previous = before;
        age = 0;
    }
    Polynomial reversed{};
    for (int i = 0; i <= length; ++i)
        if (coefficient(connection, length - i))
            reversed[std::size_t(i) / 64] |= std::uint64_t(1) << (i % 64);
    return reversed;
}

} // namespace mt2203
