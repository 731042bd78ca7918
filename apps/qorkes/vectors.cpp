#include "vectors.hpp"

#include "arguments.hpp"
#include "distributions.hpp"
#include "failure.hpp"
#include "output.hpp"
#include "picture.hpp"
#include "summary.hpp"
#include "text.hpp"

#include <algorithm>
#include <cmath>

namespace qorkes {
namespace {

using catalogue::Distribution;
using Values = std::vector<double>;

// ---- The law ------------------------------------------------------------------------

struct Law {
    Values means;
    Values covariances; // row by row

    size_t dimension() const { return means.size(); }
    double covariance(size_t i, size_t j) const {
        return covariances[i * dimension() + j];
    }
    double deviation(size_t i) const { return std::sqrt(covariance(i, i)); }
    double correlation(size_t i, size_t j) const {
        return covariance(i, j) / (deviation(i) * deviation(j));
    }
};

Values valuesIn(const std::string& setting, const std::string& list) {
    Values numbers;
    for (const std::string& text : split(list, ',')) {
        const auto number = parseReal<double>(text);
        if (!number || !std::isfinite(*number))
            fail(setting + ": '" + text + "' is not a finite number");
        numbers.push_back(*number);
    }
    return numbers;
}

Values identityOf(size_t n) {
    Values matrix(n * n);
    for (size_t i = 0; i < n; ++i) matrix[i * n + i] = 1;
    return matrix;
}

/// Two independent standard normal numbers, unless the settings say otherwise.
Law lawOf(const std::vector<std::string>& settings) {
    Law law;
    for (const std::string& setting : settings) {
        const auto [name, list] = cutAt(setting, '=');
        if (name != "a" && name != "covariance")
            failChoice("parameter of gaussianmv", name, {"a", "covariance"});
        (name == "a" ? law.means : law.covariances) =
            valuesIn(setting, list.value_or(""));
    }
    if (law.means.empty()) {
        const auto count = static_cast<double>(law.covariances.size());
        law.means.resize(count > 0 ? static_cast<size_t>(std::sqrt(count)) : 2);
    }
    const size_t n = law.dimension();
    if (law.covariances.empty()) law.covariances = identityOf(n);
    if (law.covariances.size() != n * n)
        fail("gaussianmv: covariance must give a square matrix, row by row, of as many "
             "rows as a has means");
    return law;
}

/// The lower triangular factor of the covariances, row by row (Cholesky).
Values factorOf(const Law& law) {
    const size_t n = law.dimension();
    Values factor(n * n);
    for (size_t i = 0; i < n; ++i) {
        double* row = &factor[i * n];
        for (size_t j = 0; j <= i; ++j) {
            const double* other = &factor[j * n];
            long double rest = law.covariance(i, j);
            for (size_t k = 0; k < j; ++k)
                rest -= static_cast<long double>(row[k]) * other[k];
            const bool isRight =
                i == j ? rest > 0 : law.covariance(i, j) == law.covariance(j, i);
            if (!isRight)
                fail("gaussianmv: covariance must be symmetric and positive definite");
            row[j] = static_cast<double>(i == j ? std::sqrt(rest) : rest / other[j]);
        }
    }
    return factor;
}

// ---- The sample ---------------------------------------------------------------------

template <class T> struct Entry;
template <> struct Entry<double> { static constexpr auto draw = _kesdRngGaussianMV; };
template <> struct Entry<float> { static constexpr auto draw = _kessRngGaussianMV; };

template <class T>
std::vector<T> drawn(const Law& law, const Values& factor, int method, int count,
                     StreamState* stream) {
    const std::vector<T> means(law.means.begin(), law.means.end());
    const std::vector<T> rows(factor.begin(), factor.end());
    std::vector<T> numbers(static_cast<size_t>(count) * law.dimension());
    if (count > 0)
        check(Entry<T>::draw(method, stream, count, numbers.data(),
                             static_cast<int>(law.dimension()), KesMatrixStorageFull,
                             means.data(), rows.data()),
              stream, "gaussianmv");
    return numbers;
}

/// The first numbers of all vectors, their second ones, and so on.
template <class T>
std::vector<Values> componentsOf(const std::vector<T>& numbers, size_t dimension) {
    std::vector<Values> components(dimension);
    for (size_t i = 0; i < numbers.size(); ++i)
        components[i % dimension].push_back(static_cast<double>(numbers[i]));
    return components;
}

double correlationOf(const Values& x, const Values& y) {
    const auto meanOf = [](const Values& sample) {
        long double sum = 0;
        for (const double value : sample) sum += value;
        return sum / static_cast<long double>(sample.size());
    };
    const long double meanX = meanOf(x), meanY = meanOf(y);
    long double xx = 0, xy = 0, yy = 0;
    for (size_t i = 0; i < x.size(); ++i) {
        const long double dx = x[i] - meanX, dy = y[i] - meanY;
        xx += dx * dx;
        xy += dx * dy;
        yy += dy * dy;
    }
    return static_cast<double>(xy / std::sqrt(xx * yy));
}

std::string correlationRows(const Law& law, const std::vector<Values>& components) {
    std::string rows;
    for (size_t i = 0; i < components.size(); ++i)
        for (size_t j = 0; j < i; ++j) {
            const double exact = law.correlation(i, j);
            rows += summaryRow("correlation " + std::to_string(j + 1) + ", " +
                                   std::to_string(i + 1),
                               correlationOf(components[j], components[i]), &exact);
        }
    return rows;
}

/// Each component is a normal number by itself; the correlations say the rest.
template <class T>
void describe(const Drawing& options, const Law& law, const std::vector<T>& numbers) {
    const auto& gaussian =
        rowNamed("DISTRIBUTION", "gaussian", catalogue::distributions());
    std::vector<Values> components = componentsOf(numbers, law.dimension());
    const std::string correlations = correlationRows(law, components);
    std::string text;
    std::vector<Panel> panels;
    for (size_t i = 0; i < components.size(); ++i) {
        const std::string caption = "component " + std::to_string(i + 1);
        const Values parameters = {law.means[i], law.deviation(i)};
        std::ranges::sort(components[i]);
        text += caption + '\n' + summary(components[i], gaussian, parameters.data());
        text += '\n';
        panels.push_back(
            {caption + ": ", std::move(components[i]), gaussian, parameters});
    }
    if (!options.picture.empty()) writePicture(options.picture, panels);
    if (options.summary) writeOut(text + correlations);
}

} // namespace

void writeVectors(const Drawing& options, const Distribution& distribution,
                  const std::function<StreamState*()>& open) {
    const Law law = lawOf(options.parameters);
    const Values factor = factorOf(law);
    const auto dimension = static_cast<int64_t>(law.dimension());
    const auto count = static_cast<int>(countOf(options, dimension));
    const int method = methodOf(distribution, options.method);
    const auto write = [&]<class T>(const std::vector<T>& numbers) {
        if (isDescribed(options))
            describe(options, law, numbers);
        else
            writeNumbers(numbers, static_cast<int>(dimension), options.binary);
    };
    if (isSingle(options.precision))
        write(drawn<float>(law, factor, method, count, open()));
    else
        write(drawn<double>(law, factor, method, count, open()));
}

} // namespace qorkes
