#include "driver.hpp"

namespace qorkes::bench {

std::vector<Row> streamRows() { return {}; }

} // namespace qorkes::bench
