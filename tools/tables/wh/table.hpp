// The tables of the library: multipliers, moduli and their reciprocals.
#pragma once

#include <filesystem>
#include <vector>

#include "family.hpp"

namespace wh {

void write_tables(const std::vector<Member>& members,
                  const std::filesystem::path& target);

} // namespace wh
