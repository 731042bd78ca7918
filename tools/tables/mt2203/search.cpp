#include "search.hpp"

#include <fstream>
#include <stdexcept>

#include "equidistribution.hpp"
#include "rows.hpp"
#include "sieve.hpp"

namespace mt2203 {
namespace {

constexpr std::uint32_t upper_halves = 0x8000;

/// The k-th upper half of a matrix word to be tried. The step is odd, so that each one
/// with the top bit set has its turn; the top bit gives the polynomial its degree.
std::uint32_t upper_half(std::uint32_t k) {
    return 0x8000 | ((0x2F81 + 0x5A3D * k) & (upper_halves - 1));
}

/// The first matrix word with the identifier that is primitive and takes good masks.
Tempered find_member(std::uint32_t id, const Sieve& sieve) {
    for (std::uint32_t k = 0; k < upper_halves; ++k) {
        const std::uint32_t matrix = upper_half(k) << 16 | id;
        if (!passes(sieve, matrix)) continue;
        const Modulus modulus = modulus_from(characteristic_polynomial(matrix));
        if (!irreducible(modulus)) continue;
        const Tempered found = find_masks(matrix, modulus);
        if (found.defect <= largest_defect) return found;
    }
    throw std::runtime_error("no upper half suits identifier " + std::to_string(id));
}

Tempered fixed_row(const Member& member) {
    const Modulus modulus = modulus_from(characteristic_polynomial(member.matrix));
    return {member, total_defect(dimensions(outputs(member, exponent), modulus))};
}

} // namespace

void search(const std::filesystem::path& rows_path) {
    drop_unfinished_line(rows_path);
    const int start = int(read_rows(rows_path).size());
    std::ofstream out(rows_path, std::ios::app);
    const Sieve sieve = make_sieve();
    for (int member = start; member < family_size; ++member) {
        const Member* fixed = fixed_member(member);
        write_row(out, member,
                  fixed != nullptr ? fixed_row(*fixed)
                                   : find_member(identifier(member), sieve));
        if (!out) throw std::runtime_error("cannot write to " + rows_path.string());
    }
}

} // namespace mt2203
