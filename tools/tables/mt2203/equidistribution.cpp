#include "equidistribution.hpp"

#include <algorithm>
#include <bit>
#include <utility>

namespace mt2203 {
namespace {

int pivot(const Vector& a) { return int(std::bit_width(a.back())) - 1; }

void trim(Vector& a) {
    while (!a.empty() && a.back() == 0) a.pop_back();
}

/// Cancels the pivot of `target` by that of `row`, which has no higher degree.
void cancel(Vector& target, const Vector& row) {
    std::uint32_t* const shifted = target.data() + (target.size() - row.size());
    for (std::size_t i = 0; i < row.size(); ++i) shifted[i] ^= row[i];
    trim(target);
}

/// Adds a row to a basis that has a free place for it. Of two rows with one pivot the
/// shorter stays, and the other goes on with a lower pivot or degree.
void insert(Basis& basis, Vector row) {
    for (;;) {
        Vector& place = basis[std::size_t(pivot(row))];
        if (place.size() > row.size() || place.empty()) std::swap(place, row);
        if (row.empty()) return;
        cancel(row, place);
    }
}

/// Lowers the degree of an image as far as the basis does it directly.
void reduce(const Basis& basis, Vector& image) {
    while (!image.empty()) {
        const Vector& row = basis[std::size_t(pivot(image))];
        if (row.size() > image.size()) return;
        cancel(image, row);
    }
}

/// A polynomial as a vector with the first coordinate only.
Vector vector_from(const Polynomial& a) {
    Vector vector(std::size_t(degree(a) + 1));
    for (std::size_t d = 0; d < vector.size(); ++d) vector[d] = coefficient(a, int(d));
    return vector;
}

} // namespace

/// The generating function of a sequence s, s_0 / t + s_1 / t^2 + ..., times the
/// modulus is a polynomial: its numerator.
std::array<Polynomial, word_bits> numerators(std::span<const std::uint32_t> words,
                                             const Modulus& modulus) {
    std::array<Polynomial, word_bits> result;
    for (int j = 0; j < word_bits; ++j) {
        Polynomial head{};
        for (std::size_t n = 0; n < std::size_t(exponent); ++n) {
            const std::size_t d = std::size_t(exponent) - 1 - n;
            head[d / 64] |= std::uint64_t(words[n] >> (word_bits - 1 - j) & 1)
                            << (d % 64);
        }
        const Product product = multiply(head, modulus.value);
        constexpr int skip = exponent / 64, bits = exponent % 64;
        for (std::size_t i = 0; i < poly_words; ++i)
            result[std::size_t(j)][i] =
                product[i + skip] >> bits | product[i + skip + 1] << (64 - bits);
    }
    return result;
}

Lattice open(const std::array<Polynomial, word_bits>& sequences, Set leading,
             const Modulus& modulus) {
    Polynomial bit{};
    for (std::size_t j = 0; j < word_bits; ++j)
        if ((leading >> j & 1) != 0) bit = sum(bit, sequences[j]);
    const Polynomial divisor = inverse(bit, modulus);

    Lattice lattice{{vector_from(modulus.value)}, {}};
    for (std::size_t j = 0; j < word_bits; ++j)
        lattice.images[j] =
            vector_from(least(multiply(sequences[j], divisor, modulus), modulus));
    return lattice;
}

/// The image of the new bit, with the bit itself as one more coordinate, is the one
/// relation that is needed beside those at hand.
Basis extended(const Lattice& lattice, Set bit) {
    Vector relation(1);
    for (std::size_t j = 0; j < word_bits; ++j) {
        if ((bit >> j & 1) == 0) continue;
        const Vector& image = lattice.images[j];
        relation.resize(std::max(relation.size(), image.size()));
        for (std::size_t d = 0; d < image.size(); ++d) relation[d] ^= image[d];
    }
    relation[0] |= Set(1) << lattice.relations.size();
    trim(relation);

    Basis basis = lattice.relations;
    basis.emplace_back();
    insert(basis, std::move(relation));
    return basis;
}

Lattice advance(const Lattice& lattice, Basis relations, int first) {
    Lattice next{std::move(relations), {}};
    for (std::size_t j = std::size_t(first); j < word_bits; ++j) {
        next.images[j] = lattice.images[j];
        reduce(next.relations, next.images[j]);
    }
    return next;
}

int dimension(const Basis& relations) {
    std::size_t least_size = relations.front().size();
    for (const Vector& row : relations) least_size = std::min(least_size, row.size());
    return int(least_size) - 1;
}

int defect(const Basis& relations) {
    return exponent / int(relations.size()) - dimension(relations);
}

std::array<int, word_bits> dimensions(std::span<const std::uint32_t> words,
                                      const Modulus& modulus) {
    std::array<int, word_bits> result;
    Lattice lattice = open(numerators(words, modulus), 1, modulus);
    result[0] = dimension(lattice.relations);
    for (int v = 2; v <= word_bits; ++v) {
        Basis basis = extended(lattice, Set(1) << (v - 1));
        result[std::size_t(v) - 1] = dimension(basis);
        lattice = advance(lattice, std::move(basis), v);
    }
    return result;
}

int total_defect(const std::array<int, word_bits>& dimensions) {
    int total = 0;
    for (int v = 1; v <= word_bits; ++v)
        total += exponent / v - dimensions[std::size_t(v) - 1];
    return total;
}

} // namespace mt2203
