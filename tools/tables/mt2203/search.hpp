// The search for the members that the file of rows lacks.
//
// Source: M. Matsumoto, T. Nishimura, Dynamic creation of pseudorandom number
// generators, 2000. An identifier in the low half of the matrix word keeps the members
// apart; the upper half is sought such that the period is full and good masks exist.
#pragma once

#include <filesystem>

namespace mt2203 {

/// Adds the missing rows, each as soon as it is found. It may be stopped at any time
/// and started again, and the rows come out the same.
void search(const std::filesystem::path& rows_path);

} // namespace mt2203
