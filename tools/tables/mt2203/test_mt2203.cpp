#include <algorithm>
#include <array>
#include <bitset>
#include <fstream>
#include <random>
#include <set>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

#include "equidistribution.hpp"
#include "rows.hpp"
#include "sieve.hpp"

namespace mt2203 {
namespace {

struct Known {
    int member, defect;
};

constexpr std::array<Known, 7> known{
    {{0, 699}, {1, 700}, {2, 700}, {3, 701}, {5, 702}, {1022, 705}, {1023, 706}}};

Modulus modulus_of(std::uint32_t matrix) {
    return modulus_from(characteristic_polynomial(matrix));
}

Polynomial random_residue(std::mt19937_64& random) {
    Polynomial a;
    for (std::uint64_t& word : a) word = random();
    return a;
}

/// a b modulo the modulus, one bit of b at a time.
Polynomial slow_product(const Polynomial& a, const Polynomial& b,
                        const Modulus& modulus) {
    const Polynomial step = least(a, modulus);
    Polynomial result{};
    for (int i = 64 * poly_words - 1; i >= 0; --i) {
        Polynomial doubled{};
        add_shifted(doubled, result, 1);
        if (coefficient(b, i)) add_shifted(doubled, step, 0);
        result = least(doubled, modulus);
    }
    return result;
}

/// Whether the leading v bits of k successive outputs are equidistributed, by the rank
/// of their map. The 2203 shifts of one sequence stand for a basis of the states.
bool equidistributed(const std::vector<std::uint32_t>& words, int v, int k) {
    using Row = std::bitset<exponent + word_bits>;
    std::vector<Row> echelon(std::size_t(v * k));
    std::size_t rank = 0;
    for (std::size_t shift = 0; shift < std::size_t(exponent); ++shift) {
        Row row;
        for (int i = 0; i < v * k; ++i)
            row[std::size_t(i)] =
                (words[shift + std::size_t(i / v)] >> (31 - i % v) & 1) != 0;
        for (std::size_t i = row._Find_first(); i < echelon.size();
             i = row._Find_first()) {
            if (echelon[i].none()) {
                echelon[i] = row;
                ++rank;
            }
            row ^= echelon[i];
            if (row.none()) break;
        }
    }
    return rank == echelon.size();
}

TEST(Polynomial, AgreesWithBitwiseArithmetic) {
    std::mt19937_64 random(1);
    const Modulus modulus = modulus_of(0xAF81055F);
    for (int i = 0; i < 5; ++i) {
        const Polynomial a = random_residue(random), b = random_residue(random);
        EXPECT_EQ(least(multiply(a, b, modulus), modulus), slow_product(a, b, modulus));
        EXPECT_EQ(least(square(a, modulus), modulus), slow_product(a, a, modulus));
        EXPECT_EQ(slow_product(a, inverse(a, modulus), modulus), one);
    }
}

TEST(Polynomial, ModulusNeedsItsDegreeAndGap) {
    Polynomial value = characteristic_polynomial(0xAF81055F);
    EXPECT_TRUE(has_gap(value));
    add_shifted(value, one, exponent - 63);
    EXPECT_FALSE(has_gap(value));
    EXPECT_FALSE(has_gap(one));
}

TEST(CharacteristicPolynomial, IsTheMinimalPolynomialOfTheOutput) {
    for (const Known& row : known) {
        const Member& member = *fixed_member(row.member);
        std::vector<std::uint8_t> bits;
        for (const std::uint32_t y : outputs(member, 2 * exponent))
            bits.push_back(std::uint8_t(y & 1));
        EXPECT_EQ(minimal_polynomial(bits), characteristic_polynomial(member.matrix));
    }
}

TEST(Sieve, RefusesReducibleWordsOnly) {
    const Sieve sieve = make_sieve();
    for (const Known& row : known) {
        const std::uint32_t matrix = fixed_member(row.member)->matrix;
        EXPECT_TRUE(irreducible(modulus_of(matrix)));
        EXPECT_TRUE(passes(sieve, matrix));
    }
    int refused = 0;
    for (std::uint32_t matrix = 0xAF810560; matrix < 0xAF8105A0; ++matrix)
        if (!passes(sieve, matrix)) {
            ++refused;
            EXPECT_FALSE(irreducible(modulus_of(matrix)));
        }
    EXPECT_GT(refused, 50);
}

TEST(Equidistribution, GivesTheDefectsOfTheFixedMembers) {
    for (const Known& row : known) {
        const Member& member = *fixed_member(row.member);
        const auto k = dimensions(outputs(member, exponent), modulus_of(member.matrix));
        EXPECT_EQ(total_defect(k), row.defect) << "member " << row.member;
    }
}

TEST(Equidistribution, AgreesWithTheRankOfTheOutput) {
    const Member& member = *fixed_member(0);
    const auto words = outputs(member, 2 * exponent);
    const auto k =
        dimensions(std::span(words).first(exponent), modulus_of(member.matrix));
    for (const int v : {1, 2, 3, 11, 16, 17, 32}) {
        const int dimension = k[std::size_t(v) - 1];
        EXPECT_TRUE(equidistributed(words, v, dimension)) << "v = " << v;
        EXPECT_FALSE(equidistributed(words, v, dimension + 1)) << "v = " << v;
    }
}

TEST(Masks, HaveTheDefectThatTheirOutputShows) {
    const std::uint32_t matrix = fixed_member(0)->matrix;
    const Modulus modulus = modulus_of(matrix);
    const Tempered found = find_masks(matrix, modulus);
    EXPECT_EQ(found.member.mask_b & ~mask_b_reach, 0u);
    EXPECT_EQ(found.member.mask_c & ~mask_c_reach, 0u);
    EXPECT_EQ(total_defect(dimensions(outputs(found.member, exponent), modulus)),
              found.defect);
    EXPECT_LE(found.defect, largest_defect);
}

TEST(Rows, IdentifiersAscendAndDiffer) {
    std::set<std::uint32_t> all;
    for (int member = 0; member < family_size; ++member) all.insert(identifier(member));
    EXPECT_EQ(all.size(), std::size_t(family_size));
    EXPECT_EQ(identifier(4), 0x0400u);
    EXPECT_EQ(identifier(6), 0x0401u);
    EXPECT_EQ(identifier(40), 0x0423u);
    EXPECT_EQ(identifier(41), 0x0425u);
}

TEST(Rows, FileIsContinuedBehindItsLastFinishedLine) {
    const auto path = std::filesystem::path(testing::TempDir()) / "mt2203_rows.txt";
    const Tempered first{*fixed_member(0), 699};
    {
        std::ofstream out(path);
        write_row(out, 0, first);
        out << "1 0x832604E1 0x66AD";
    }
    EXPECT_EQ(read_rows(path).size(), 1u);
    drop_unfinished_line(path);
    {
        std::ofstream out(path, std::ios::app);
        write_row(out, 1, {*fixed_member(1), 700});
    }
    const auto rows = read_rows(path);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].member, first.member);
    EXPECT_EQ(rows[0].defect, first.defect);
    EXPECT_EQ(rows[1].member, *fixed_member(1));

    for (const char* wrong : {"3 0x1 0x2 0x3 700\n", "2 0x1 0x2\n", "2 1 2 3 4 5\n"}) {
        std::ofstream(path) << "0 0x1 0x2 0x3 700\n1 0x1 0x2 0x3 700\n" << wrong;
        EXPECT_THROW(read_rows(path), std::runtime_error) << wrong;
    }
    std::filesystem::remove(path);
}

} // namespace
} // namespace mt2203
