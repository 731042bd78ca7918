#include "proof.hpp"

#include <algorithm>
#include <cstdio>
#include <set>
#include <span>
#include <stdexcept>
#include <string>

#include "equidistribution.hpp"
#include "rows.hpp"

namespace mt2203 {
namespace {

void demand(bool holds, int member, const std::string& fault) {
    if (!holds)
        throw std::runtime_error("member " + std::to_string(member) + ": " + fault);
}

void prove_words(int member, const Tempered& row) {
    const Member& words = row.member;
    if (const Member* fixed = fixed_member(member)) {
        demand(words == *fixed, member, "departs from its fixed words");
        return;
    }
    demand((words.matrix & 0xFFFF) == identifier(member), member, "wrong identifier");
    demand(words.matrix >> 31 == 1, member, "the matrix word's top bit is clear");
    demand((words.mask_b & ~mask_b_reach) == 0, member, "mask b has idle bits");
    demand((words.mask_c & ~mask_c_reach) == 0, member, "mask c has idle bits");
    demand(row.defect <= largest_defect, member, "the defect is too large");
}

/// The minimal polynomial of the output's top bit has degree 2203, the dimension of the
/// state, so it is the characteristic polynomial. Being irreducible it is primitive,
/// since 2^2203 - 1 is prime.
Modulus prove_period(int member, const std::vector<std::uint32_t>& words) {
    std::vector<std::uint8_t> bits(words.size());
    std::transform(words.begin(), words.end(), bits.begin(),
                   [](std::uint32_t y) { return std::uint8_t(y >> 31); });
    const Polynomial minimal = minimal_polynomial(bits);
    demand(has_gap(minimal), member, "the output does not follow the recurrence");
    const Modulus modulus = modulus_from(minimal);
    demand(irreducible(modulus), member, "the period is not full");
    return modulus;
}

void prove_row(int member, const Tempered& row) {
    prove_words(member, row);
    const auto words = outputs(row.member, 2 * exponent);
    const Modulus modulus = prove_period(member, words);
    const auto k = dimensions(std::span(words).first(exponent), modulus);
    demand(total_defect(k) == row.defect, member, "the defect is not the recorded one");
    std::printf("%4d  0x%08X  %d ", member, row.member.matrix, row.defect);
    for (const int dimension : k) std::printf(" %d", dimension);
    std::printf("\n");
}

void print_summary(std::span<const Tempered> rows) {
    int sum = 0, least = rows.front().defect, largest = least;
    for (const Tempered& row : rows) {
        sum += row.defect;
        least = std::min(least, row.defect);
        largest = std::max(largest, row.defect);
    }
    std::printf("%zu members proven: irreducible, identifiers different, "
                "defects %d to %d, mean %.1f\n",
                rows.size(), least, largest, double(sum) / double(rows.size()));
}

} // namespace

void prove(const std::filesystem::path& rows_path, int from, int to) {
    const auto rows = read_rows(rows_path);
    if (from > to || to >= int(rows.size()))
        throw std::runtime_error("no members " + std::to_string(from) + " to " +
                                 std::to_string(to) + " in " + rows_path.string() +
                                 ", which has " + std::to_string(rows.size()));
    std::printf("member  matrix  defect  k(1) .. k(32)\n");
    std::set<std::uint32_t> identifiers;
    for (int member = from; member <= to; ++member) {
        const Tempered& row = rows[std::size_t(member)];
        prove_row(member, row);
        demand(identifiers.insert(row.member.matrix & 0xFFFF).second, member,
               "the identifier is that of an earlier member");
    }
    print_summary(std::span(rows).subspan(std::size_t(from), identifiers.size()));
}

} // namespace mt2203
