#include "distributions.hpp"

#include "distribution_rows.hpp"

#include <algorithm>
#include <cstring>

namespace qorkes::catalogue {

std::span<const Distribution> distributions() {
    static const std::vector<Distribution> all = [] {
        std::vector<Distribution> rows = continuousDistributions();
        std::ranges::copy(discreteDistributions(), std::back_inserter(rows));
        std::ranges::sort(rows, [](const Distribution& a, const Distribution& b) {
            return std::strcmp(a.name, b.name) < 0;
        });
        return rows;
    }();
    return all;
}

} // namespace qorkes::catalogue
