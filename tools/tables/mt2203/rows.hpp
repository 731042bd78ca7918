// The members of the family: which are fixed, which identifiers the others have, the
// file that keeps those found, and the table made from it.
#pragma once

#include <filesystem>
#include <ostream>
#include <vector>

#include "masks.hpp"

namespace mt2203 {

inline constexpr int family_size = 1024;

/// A member that falls short of perfect equidistribution by more than this in total is
/// not taken. The fixed members reach 706 at most.
inline constexpr int largest_defect = 712;

/// The words of a member that is fixed, or null.
const Member* fixed_member(int member);

/// The low half of the matrix word, by which members differ. Those that are not fixed
/// take 0x0400 and upwards in turn, passing over what the fixed ones have.
std::uint32_t identifier(int member);

/// The rows of the file, members 0 and upwards in turn: member, matrix word, the masks
/// and the total defect. A last line that was not finished is left out.
std::vector<Tempered> read_rows(const std::filesystem::path& path);

/// Cuts off what `read_rows` leaves out, so that the file can be continued.
void drop_unfinished_line(const std::filesystem::path& path);

void write_row(std::ostream& out, int member, const Tempered& row);

/// Writes the rows, which must be complete, as initialisers for an array of 1024.
void write_table(const std::filesystem::path& rows_path,
                 const std::filesystem::path& target);

} // namespace mt2203
