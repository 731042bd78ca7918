// The proof of the rows, from the output that they give: it uses nothing of what the
// search took for granted about the matrix words and masks.
#pragma once

#include <filesystem>

namespace mt2203 {

/// Proves members `from` to `to` and prints k(1) to k(32) of each; throws at the first
/// one that fails.
void prove(const std::filesystem::path& rows_path, int from, int to);

} // namespace mt2203
