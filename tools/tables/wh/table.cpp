#include "table.hpp"

#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace wh {
namespace {

/// One member a line, its values in the order of its components.
template <class Text>
void write_array(std::ostream& out, const char* declaration,
                 const std::vector<Member>& members, Text text) {
    out << "\nconst " << declaration << "[4 * KesWHMembers] = {\n";
    for (const Member& member : members) {
        const char* before = "    ";
        for (std::size_t j = 0; j < components; ++j, before = " ")
            out << before << text(member, j) << ',';
        out << '\n';
    }
    out << "};\n";
}

std::string hexadecimal(double x) {
    char text[40];
    std::snprintf(text, sizeof text, "%a", x);
    return text;
}

} // namespace

void write_tables(const std::vector<Member>& members,
                  const std::filesystem::path& target) {
    std::ofstream out(target);
    out << "// Parameters of the WH family, one member a row and one component a "
           "column:\n"
           "// multipliers, moduli, and the double next to the reciprocal of each "
           "modulus.\n"
           "// Rule: the first modulus is the largest prime not used before, from "
        << largest_modulus
        << "\n// down; the others are the next primes whose (m - 1) / 2 are coprime to "
           "those\n"
           "// before them in the row; the multiplier is the largest primitive root of "
           "at\n"
           "// most "
        << largest_multiplier << " not used before in the row, and at least "
        << smallest_multiplier
        << ". Members 0 to 3,\n"
           "// 271 and 272 are fixed.\n"
           "// Generator: tools/tables/wh. Command:\n"
           "//   wh table "
        << target.filename().string() << '\n';
    write_array(out, "uint8_t _kes_WH_A", members,
                [](const Member& row, std::size_t j) { return row.multipliers[j]; });
    write_array(out, "uint32_t _kes_WH_M", members,
                [](const Member& row, std::size_t j) { return row.moduli[j]; });
    write_array(out, "double _kesdWH_IM_Tab", members,
                [](const Member& row, std::size_t j) {
                    return hexadecimal(1.0 / row.moduli[j]);
                });
    out.flush();
    if (!out) throw std::runtime_error("cannot write " + target.string());
}

} // namespace wh
