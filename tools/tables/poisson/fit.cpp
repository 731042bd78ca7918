#include "fit.hpp"

#include <algorithm>
#include <cmath>

#include <unsupported/Eigen/NonLinearOptimization>
#include <unsupported/Eigen/NumericalDiff>

namespace poisson {
namespace {

using Vector = Eigen::Matrix<Real, Eigen::Dynamic, 1>;

constexpr int rounds = 60;
constexpr Real exponent = -0.7L; // of the misplaced mass in a point's weight
constexpr Real boundWeight = 5;

/// Where the curve has to meet a value, or not to exceed it.
struct Point {
    std::size_t mean; // its index
    Threshold threshold;
    bool isBound = false;
    Real weight = 1;
};

/// All coefficients, the fixed ones among them.
std::vector<Real> completed(const Problem& problem, const Vector& fitted) {
    std::vector<Real> all;
    Eigen::Index next = 0;
    for (const auto& value : problem.fixed)
        all.push_back(value ? Real{*value} : fitted[next++]);
    return all;
}

/// By how much the curve misses a point.
Real missOf(const Problem& problem, const std::vector<Real>& all, const Point& point) {
    const auto& [g, k, mass] = point.threshold;
    const Real miss = problem.curve(all.data(), problem.means[point.mean], g) - k;
    return point.isBound ? std::max<Real>(0, miss) : miss;
}

/// Weighted errors of the curve, as Eigen's method wants them.
struct Residuals {
    using Scalar = Real;
    using InputType = Vector;
    using ValueType = Vector;
    using JacobianType = Eigen::Matrix<Real, Eigen::Dynamic, Eigen::Dynamic>;
    enum { InputsAtCompileTime = Eigen::Dynamic, ValuesAtCompileTime = Eigen::Dynamic };

    const Problem& problem;
    const std::vector<Point>& points;
    Eigen::Index free;

    Eigen::Index inputs() const { return free; }
    Eigen::Index values() const { return static_cast<Eigen::Index>(points.size()); }
    int operator()(const Vector& fitted, Vector& errors) const {
        const auto all = completed(problem, fitted);
        for (std::size_t i = 0; i < points.size(); ++i)
            errors[static_cast<Eigen::Index>(i)] = points[i].weight *
                                                   points[i].threshold.mass *
                                                   missOf(problem, all, points[i]);
        return 0;
    }
};

/// Left of the first threshold the curve must stay below 1.
void addBounds(std::vector<Point>& points, std::size_t mean, Real first) {
    constexpr Real level = 0.7L, step = 0.1L, room = 0.5L, reach = -5.5L;
    for (Real z = first - room; z > reach; z -= step)
        points.push_back({mean, {z, level, density(z) * step}, true});
}

std::vector<Point> pointsOf(const Problem& problem) {
    std::vector<Point> points;
    for (std::size_t i = 0; i < problem.means.size(); ++i) {
        const auto all = thresholds(problem.means[i], 1e-9L, 100);
        for (const Threshold& threshold : all) points.push_back({i, threshold});
        if (all[0].k == 1) addBounds(points, i, all[0].g);
    }
    return points;
}

/// The mass misplaced, by the curve's slope; all of a bound's where that is exceeded.
Real shareOf(const Problem& problem, const std::vector<Real>& all, const Point& point) {
    const Real miss = missOf(problem, all, point), mass = point.threshold.mass;
    return point.isBound ? (miss > 1 - point.threshold.k ? mass : 0)
                         : mass * std::abs(miss);
}

} // namespace

Solution fit(const Problem& problem) {
    std::vector<Point> points = pointsOf(problem);
    Eigen::Index free = 0;
    Vector fitted(static_cast<Eigen::Index>(problem.fixed.size()));
    for (std::size_t i = 0; i < problem.fixed.size(); ++i)
        if (!problem.fixed[i]) fitted[free++] = problem.start[i];
    fitted.conservativeResize(free);

    Solution best{{}, 1e9L};
    std::vector<Real> stress(problem.means.size(), 1);
    for (int round = 0; round < rounds; ++round) {
        Residuals residuals{problem, points, free};
        Eigen::NumericalDiff<Residuals, Eigen::Central> differentiated(residuals);
        Eigen::LevenbergMarquardt<decltype(differentiated), Real> method(
            differentiated);
        method.parameters.maxfev = round == 0 ? 300 : 12;
        method.minimize(fitted);

        const auto all = completed(problem, fitted);
        std::vector<Real> misplaced(problem.means.size());
        for (const Point& point : points)
            misplaced[point.mean] += shareOf(problem, all, point);
        const Real worst = *std::max_element(misplaced.begin(), misplaced.end());
        if (worst < best.misplaced) best = {{all.begin(), all.end()}, worst};
        for (std::size_t i = 0; i < stress.size(); ++i)
            stress[i] *= std::sqrt(misplaced[i] / worst);
        for (Point& point : points)
            point.weight =
                stress[point.mean] *
                (point.isBound ? boundWeight * std::pow(worst * 1e-2L, exponent / 2)
                               : std::pow(shareOf(problem, all, point) + worst * 1e-4L,
                                          exponent / 2));
    }
    return best;
}

} // namespace poisson
