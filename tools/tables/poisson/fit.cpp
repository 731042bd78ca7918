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

struct Point {
    std::size_t mean; // its index
    Threshold threshold;
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
        for (std::size_t i = 0; i < points.size(); ++i) {
            const auto& [mean, threshold, weight] = points[i];
            errors[static_cast<Eigen::Index>(i)] =
                weight * threshold.mass *
                (problem.curve(all.data(), problem.means[mean], threshold.g) -
                 threshold.k);
        }
        return 0;
    }
};

std::vector<Point> pointsOf(const Problem& problem) {
    std::vector<Point> points;
    for (std::size_t i = 0; i < problem.means.size(); ++i)
        for (const Threshold& threshold : thresholds(problem.means[i], 1e-9L, 100))
            points.push_back({i, threshold});
    return points;
}

/// Left of the first threshold the curve must stay below 1: points where it comes near.
std::vector<Point> guards(const Problem& problem, const std::vector<Real>& all,
                          const std::vector<Point>& points) {
    constexpr Real level = 0.7L, step = 0.05L, room = 0.5L;
    std::vector<Point> added;
    for (const Point& point : points) {
        if (point.threshold.k != 1) continue;
        for (Real z = point.threshold.g - room; z > -6; z -= step)
            if (problem.curve(all.data(), problem.means[point.mean], z) > level)
                added.push_back({point.mean, {z, level, density(z) * step}, 3});
    }
    return added;
}

} // namespace

Solution fit(const Problem& problem) {
    std::vector<Point> points = pointsOf(problem);
    const std::size_t own = points.size();
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
        points.resize(own);
        std::vector<Real> misplaced(problem.means.size());
        for (Point& point : points) {
            const auto& [g, k, mass] = point.threshold;
            const Real share =
                mass *
                std::abs(problem.curve(all.data(), problem.means[point.mean], g) - k);
            misplaced[point.mean] += share;
            point.weight = share;
        }
        const Real worst = *std::max_element(misplaced.begin(), misplaced.end());
        if (worst < best.misplaced) best = {{all.begin(), all.end()}, worst};
        for (std::size_t i = 0; i < stress.size(); ++i)
            stress[i] *= std::sqrt(misplaced[i] / worst);
        for (Point& point : points)
            point.weight = stress[point.mean] *
                           std::pow(point.weight + worst * 1e-4L, exponent / 2);
        const auto more = guards(problem, all, points);
        points.insert(points.end(), more.begin(), more.end());
    }
    return best;
}

} // namespace poisson
