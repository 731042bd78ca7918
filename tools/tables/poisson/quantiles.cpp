#include "quantiles.hpp"

#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/poisson.hpp>

namespace poisson {
namespace {

using boost::math::complement;
const boost::math::normal_distribution<Real> normal;

Real thresholdOf(const boost::math::poisson_distribution<Real>& law, Real k) {
    const Real below = cdf(law, k - 1);
    return below < 0.5L ? quantile(normal, below)
                        : quantile(complement(normal, cdf(complement(law, k - 1))));
}

} // namespace

std::vector<Threshold> thresholds(Real mean, Real tail, int most) {
    const boost::math::poisson_distribution<Real> law(mean);
    const Real reach = -quantile(normal, tail) * std::sqrt(mean);
    Real first = std::max<Real>(1, std::floor(mean - reach));
    while (cdf(law, first - 1) < tail) ++first;
    Real last = first;
    const Real jump = std::max<Real>(1, std::floor(reach / 50));
    while (cdf(complement(law, last - 1)) > tail) last += jump;
    const Real step = std::max<Real>(1, std::ceil((last - first) / most));
    std::vector<Threshold> all;
    for (Real k = first; k < last; k += step)
        all.push_back(
            {thresholdOf(law, k), k, step * (pdf(law, k) + pdf(law, k - 1)) / 2});
    return all;
}

Real density(Real z) { return pdf(normal, z); }

} // namespace poisson
