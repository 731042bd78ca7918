// The distributions of whole numbers, in alphabetical order.
#include "distribution_rows.hpp"

namespace qorkes::catalogue {

std::vector<Distribution> discreteDistributions() {
    return {
        {
            .name = "bits",
            .description = "the generator's own words",
            .words = drawBy<_kesiRngUniformBits>,
        },
    };
}

} // namespace qorkes::catalogue
