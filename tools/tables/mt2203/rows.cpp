#include "rows.hpp"

#include <algorithm>
#include <fstream>
#include <iomanip>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>

namespace mt2203 {
namespace {

const std::map<int, Member> fixed_members{
    {0, {0xAF81055F, 0xDD7EEF80, 0xEFD78000}},
    {1, {0x832604E1, 0x66AD7F80, 0xEBD58000}},
    {2, {0x92F70739, 0x656D7780, 0xEFC50000}},
    {3, {0x8B75046E, 0x76957780, 0xEFC48000}},
    {5, {0x8C920424, 0x66AD7F80, 0xEFD68424}},
    {1022, {0xB9D00987, 0xD2F4EF80, 0xEFB78000}},
    {1023, {0xE1B6093F, 0x9D326E80, 0xEFD58000}},
};

struct Hex {
    std::uint32_t word;
};

std::ostream& operator<<(std::ostream& out, Hex hex) {
    return out << "0x" << std::hex << std::uppercase << std::setfill('0')
               << std::setw(8) << hex.word << std::dec;
}

std::string content(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    if (in.peek() != std::ifstream::traits_type::eof()) text << in.rdbuf();
    return text.str();
}

/// How much of the text is finished lines.
std::size_t finished_size(const std::string& text) { return text.rfind('\n') + 1; }

} // namespace

const Member* fixed_member(int member) {
    const auto found = fixed_members.find(member);
    return found == fixed_members.end() ? nullptr : &found->second;
}

std::uint32_t identifier(int member) {
    if (const Member* fixed = fixed_member(member)) return fixed->matrix & 0xFFFF;
    std::set<std::uint32_t> taken;
    for (const auto& [number, fixed] : fixed_members)
        taken.insert(fixed.matrix & 0xFFFF);
    std::uint32_t id = 0x03FF;
    for (int i = 0; i <= member; ++i) {
        if (fixed_member(i) != nullptr) continue;
        do ++id;
        while (taken.contains(id));
    }
    return id;
}

std::vector<Tempered> read_rows(const std::filesystem::path& path) {
    const std::string text = content(path);
    std::istringstream lines(text.substr(0, finished_size(text)));
    std::vector<Tempered> rows;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream fields(line);
        std::size_t member = 0;
        Tempered row{};
        fields >> member >> std::hex >> row.member.matrix >> row.member.mask_b >>
            row.member.mask_c >> std::dec >> row.defect;
        if (!fields || !(fields >> std::ws).eof() || member != rows.size())
            throw std::runtime_error(
                path.string() + ": line " + std::to_string(rows.size() + 1) +
                " is not the row of member " + std::to_string(rows.size()));
        rows.push_back(row);
    }
    return rows;
}

void drop_unfinished_line(const std::filesystem::path& path) {
    if (std::filesystem::exists(path))
        std::filesystem::resize_file(path, finished_size(content(path)));
}

void write_row(std::ostream& out, int member, const Tempered& row) {
    out << member << ' ' << Hex{row.member.matrix} << ' ' << Hex{row.member.mask_b}
        << ' ' << Hex{row.member.mask_c} << ' ' << row.defect << std::endl;
}

void write_table(const std::filesystem::path& rows_path,
                 const std::filesystem::path& target) {
    const auto rows = read_rows(rows_path);
    if (rows.size() != family_size)
        throw std::runtime_error(
            rows_path.string() + " has " + std::to_string(rows.size()) +
            " members of " + std::to_string(family_size) + ": run the search first");
    std::ofstream out(target);
    out << "// Parameters of the MT2203 family, one member a row: matrix word,\n"
           "// tempering mask for the shift by 7, tempering mask for the shift by 15.\n"
           "// Rule: dynamic creation (Matsumoto, Nishimura, 2000); the low halves of\n"
           "// the matrix words differ; the total defect of equidistribution is at\n"
           "// most "
        << largest_defect
        << "; members 0 to 3, 5, 1022 and 1023 are fixed.\n"
           "// Generator: tools/tables/mt2203. Command:\n"
           "//   mt2203 table "
        << target.filename().string() << '\n';
    for (const Tempered& row : rows)
        out << '{' << Hex{row.member.matrix} << ", " << Hex{row.member.mask_b} << ", "
            << Hex{row.member.mask_c} << "},\n";
    out.flush();
    if (!out) throw std::runtime_error("cannot write " + target.string());
}

} // namespace mt2203
