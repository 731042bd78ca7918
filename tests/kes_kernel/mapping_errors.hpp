// How far the normal mappings of Poisson are from its exact law. A mean's mapping is
// followed over all floats that a standard normal can be, by bisection between those
// where its value changes, so that its own roundings count.
#pragma once

#include <kes_kernel/discrete/poisson/normal_mapping.hpp>
#include <kes_kernel/discrete/poissonv/vector_mapping.hpp>

#include <gsl/gsl_cdf.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace qorkes::test {

struct MappingError {
    double totalVariation = 0; // between the laws
    double misplaced = 0; // share of normals whose variate is not the exact quantile
    double farOff = 0;    // share of those where it differs by more than one
};

inline MappingError largerOf(const MappingError& a, const MappingError& b) {
    return {std::max(a.totalVariation, b.totalVariation),
            std::max(a.misplaced, b.misplaced), std::max(a.farOff, b.farOff)};
}

/// Takes the values of a mapping piece by piece of the normal's (or uniform's)
/// distribution function.
class Comparison {
public:
    explicit Comparison(double mean) {
        for (unsigned k = 0; k <= mean + 12 * std::sqrt(mean) + 40; ++k)
            below_.push_back(gsl_cdf_poisson_P(k, mean));
        found_.resize(below_.size());
    }

    void add(int k, double from, double to) {
        const int last = static_cast<int>(below_.size()) - 1;
        found_[static_cast<std::size_t>(std::clamp(k, 0, last))] += to - from;
        error_.misplaced += to - from - common(from, to, upTo(k - 1), upTo(k));
        error_.farOff += to - from - common(from, to, upTo(k - 2), upTo(k + 1));
    }

    MappingError error() const {
        MappingError result = error_;
        for (std::size_t k = 0; k < found_.size(); ++k)
            result.totalVariation +=
                std::fabs(found_[k] - (below_[k] - (k ? below_[k - 1] : 0))) / 2;
        return result;
    }

private:
    double upTo(int k) const {
        if (k < 0) return 0;
        return static_cast<std::size_t>(k) < below_.size()
                   ? below_[static_cast<std::size_t>(k)]
                   : 1;
    }
    static double common(double a, double b, double c, double d) {
        return std::max(0.0, std::min(b, d) - std::max(a, c));
    }

    std::vector<double> below_, found_;
    MappingError error_;
};

/// Adds the pieces of [a, b] of one value each; a and b have the values ka and kb.
template <class Variate>
void addPieces(Comparison& comparison, const Variate& variate, float a, int ka, float b,
               int kb) {
    const float middle = round32((ext{a} + b) / 2);
    if (ka == kb || !(a < middle && middle < b)) {
        comparison.add(ka, gsl_cdf_ugaussian_P(a), gsl_cdf_ugaussian_P(b));
        return;
    }
    const int k = variate(middle);
    addPieces(comparison, variate, a, ka, middle, k);
    addPieces(comparison, variate, middle, k, b, kb);
}

template <class Variate> MappingError errorOverNormals(double mean, Variate&& variate) {
    constexpr float reach = 8;
    constexpr int cells = 512;
    Comparison comparison(mean);
    float z = -reach;
    int k = variate(z);
    for (int i = 1; i <= cells; ++i) {
        const float next = round32(-reach + 2 * ext{reach} * i / cells);
        const int value = variate(next);
        addPieces(comparison, variate, z, k, next, value);
        z = next;
        k = value;
    }
    return comparison.error();
}

/// Variates are the numbers of partial sums of exp(mean) below a uniform from
/// [0, end).
inline MappingError errorOfSums(double mean, double end) {
    Comparison comparison(mean);
    double sum = 1, term = 1, from = 0;
    for (int k = 0; k <= 10 && from < 1; ++k) {
        const double to = std::min(1.0, sum / end);
        comparison.add(k, from, to);
        from = to;
        term *= mean / (k + 1);
        sum += term;
    }
    if (from < 1) comparison.add(11, from, 1);
    return comparison.error();
}

inline MappingError errorOfMethod1(double mean) {
    using namespace normal_mapping;
    const auto value = [](__m128 y) { return _mm_cvttss_si32(y); };
    if (mean < 1) return errorOfSums(mean, Small(mean).end);
    if (mean < largeMean)
        return errorOverNormals(mean, [&, map = Middle(mean)](float z) {
            return value(map(_mm_set_ss(z)));
        });
    return errorOverNormals(mean, [&, map = Large(mean)](float z) {
        return value(map(
            timesPlus(_mm_set_ss(z), _mm_set_ss(map.deviation), _mm_set_ss(map.mean))));
    });
}

inline MappingError errorOfVectorForm(double mean) {
    using namespace vector_mapping;
    if (mean < leastMapped)
        return errorOfSums(mean, round64(polynomial<3>(exponentialRow, mean)));
    const double root = std::sqrt(mean);
    return errorOverNormals(mean, [=](float z) { return mapped(z, mean, root); });
}

/// The largest over means from `low` to just below `high`, both among them.
inline MappingError largestError(MappingError (*errorOf)(double mean), double low,
                                 double high, int means) {
    MappingError largest;
    for (int i = 0; i <= means; ++i) {
        const double mean = i < means ? low * std::pow(high / low, double(i) / means)
                                      : std::nextafter(high, low);
        largest = largerOf(largest, errorOf(mean));
    }
    return largest;
}

} // namespace qorkes::test
