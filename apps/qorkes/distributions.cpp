#include "distributions.hpp"

#include "distribution_rows.hpp"

#include <algorithm>
#include <cstring>

namespace qorkes::catalogue {

namespace {

std::vector<Distribution> sorted(std::vector<Distribution> rows) {
    std::ranges::sort(rows, [](const Distribution& a, const Distribution& b) {
        return std::strcmp(a.name, b.name) < 0;
    });
    return rows;
}

} // namespace

std::span<const Distribution> distributions() {
    static const std::vector<Distribution> rows = [] {
        std::vector<Distribution> all = continuousDistributions();
        std::ranges::copy(discreteDistributions(), std::back_inserter(all));
        return sorted(all);
    }();
    return rows;
}

std::span<const Distribution> distributionsWithVectors() {
    static const std::vector<Distribution> rows = [] {
        std::vector<Distribution> all(distributions().begin(), distributions().end());
        all.push_back(gaussianMV());
        return sorted(all);
    }();
    return rows;
}

} // namespace qorkes::catalogue
