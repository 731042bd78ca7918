// Error against argument, or against the result in a region drawn by results: the
// largest error in each of some equal parts of the region's first range.
#pragma once

#include "functions.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>

namespace qorkes::ulp {

/// Numbers of both signs count together. A range that spans binades, or is far away,
/// is divided evenly in the logarithm.
class Profile {
public:
    explicit Profile(const Region& region)
        : byResult_(region.kind == Region::Kind::results),
          isLogarithmic_(region.a.largest > 16 * region.a.smallest ||
                         region.a.smallest > 0x1p64),
          low_(position(region.a.smallest)),
          width_((position(region.a.largest) - low_) / parts) {
        largest_.fill(-1);
    }

    /// Passes over results outside the range.
    void take(double a, double result, double ulps) {
        const double x = byResult_ ? result : a;
        const double part = std::floor((position(std::fabs(x)) - low_) / width_);
        if (!(part >= 0 && part <= parts)) return;
        double& largest = largest_[std::min(static_cast<std::size_t>(part), parts - 1)];
        largest = std::max(largest, ulps);
    }

    /// What magnitude stands in the first column of points().
    std::string axis() const {
        const std::string quantity = byResult_ ? "result" : "argument";
        return isLogarithmic_ ? "log2 " + quantity : quantity;
    }

    /// A line for each part from which a number was taken: its middle and the largest
    /// error. A blank line where parts are missing.
    std::string points() const {
        std::string text;
        for (std::size_t i = 0; i < parts; ++i) {
            if (largest_[i] < 0) {
                if (i > 0 && largest_[i - 1] >= 0) text += '\n';
                continue;
            }
            char line[60];
            std::snprintf(line, sizeof line, "%.7g %.4f\n",
                          low_ + (static_cast<double>(i) + 0.5) * width_, largest_[i]);
            text += line;
        }
        return text;
    }

private:
    static constexpr std::size_t parts = 64;

    double position(double magnitude) const {
        return isLogarithmic_ ? std::log2(magnitude) : magnitude;
    }

    bool byResult_, isLogarithmic_;
    double low_, width_;
    std::array<double, parts> largest_;
};

} // namespace qorkes::ulp
