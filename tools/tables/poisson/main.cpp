// Fits the curves that make Poisson variates of normal ones, and writes their tables.
//
//   poisson method1 <target>   method 1 of Poisson
//   poisson vector <target>    PoissonV
//
// The share of variates that a row misplaces, at the worst of the means it was fitted
// to, goes to standard error.
#include <cmath>
#include <cstdio>
#include <exception>
#include <fstream>
#include <numbers>
#include <string>

#include <CLI/CLI.hpp>
#include <Eigen/LU>

#include "fit.hpp"

namespace poisson {
namespace {

constexpr Real pi = std::numbers::pi_v<Real>;

/// Chebyshev's points of an interval.
std::vector<Real> pointsIn(Real a, Real b, int n) {
    std::vector<Real> points;
    for (int i = 0; i < n; ++i)
        points.push_back((a + b) / 2 -
                         (b - a) / 2 * std::cos(pi * (2 * i + 1) / (2 * n)));
    return points;
}

/// The exponential function's interpolation at Chebyshev's points of [0, b], constant
/// term first. At 0 it stays just below 1.
std::vector<double> exponential(Real b, int degree) {
    const auto x = pointsIn(0, b, degree + 1);
    Eigen::Matrix<Real, Eigen::Dynamic, Eigen::Dynamic> powers(degree + 1, degree + 1);
    Eigen::Matrix<Real, Eigen::Dynamic, 1> values(degree + 1);
    for (int i = 0; i <= degree; ++i) {
        const Real at = x[static_cast<std::size_t>(i)];
        values[i] = std::exp(at);
        for (int j = 0; j <= degree; ++j) powers(i, j) = std::pow(at, j);
    }
    const auto solution = powers.fullPivLu().solve(values).eval();
    return {solution.begin(), solution.end()};
}

/// A row that begins with these values; the rest starts from `start`.
Problem problem(Curve curve, std::vector<Real> means, std::vector<Real> start,
                const std::vector<double>& fixed = {}) {
    Problem result{
        curve, std::move(means), {fixed.begin(), fixed.end()}, std::move(start)};
    result.fixed.resize(result.start.size());
    return result;
}

std::vector<double> fitted(const char* name, const Problem& row) {
    const Solution solution = fit(row);
    std::fprintf(stderr, "%-12s %.2Le misplaced\n", name, solution.misplaced);
    return solution.coefficients;
}

std::string binade(int exponent) { return "2^" + std::to_string(exponent); }

/// Starts are the quantiles by Cornish and Fisher's expansion, to its second term.

std::vector<double> largeMeanRow() {
    std::vector<Real> means, start(23);
    for (const Real w : pointsIn(0.00003L, 0.01L, 13)) means.push_back(1 / w);
    start[13] = 1 / 6.0L;
    start[18] = -1 / 72.0L;
    return fitted(
        "from 100 on",
        problem(largeMean, means, start,
                {-0.6666957198, -0.01941020862, -0.001288719308, 0.001645153709,
                 -0.05580667628, -0.000975814817, -0.005534854444, 0.00519830812}));
}

std::vector<double> middleMeanRow(int exponent) {
    const Real low = std::ldexp(1.0L, exponent), root = std::sqrt(low);
    std::vector<Real> start(23);
    start[0] = low - 2 / 3.0L;
    start[1] = low;
    start[3] = root;
    start[4] = 0.47L * root;
    start[5] = -0.06L * root;
    start[7] = 1;
    start[11] = 1 / (6 * root);
    start[12] = -0.04L / root;
    start[15] = -1 / (72 * low);
    return fitted(
        binade(exponent).c_str(),
        problem(middleMean, pointsIn(low, std::min(2 * low, 100.0L), 11), start));
}

constexpr int lastVectorRow = 17; // serves all greater means too

std::vector<double> vectorMeanRow(int row) {
    const Real low = std::ldexp(1.0L, row - 4), root = std::sqrt(low);
    std::vector<Real> start(20);
    start[0] = -2 / 3.0L;
    start[4] = 1;
    start[8] = 1 / (6 * root);
    start[9] = -0.04L / root;
    std::vector<Real> means = pointsIn(low, 2 * low, 11);
    for (int octave = 1; row == lastVectorRow && octave < 4; ++octave)
        for (const Real mean : pointsIn(low, 2 * low, 11))
            means.push_back(std::ldexp(mean, octave));
    std::vector<double> fixed;
    if (row == 0)
        fixed = {-0.7784668838132114, 0.029461530258082718, -0.06517070906207373,
                 0.0036449873888969348, 1.6205362989562542};
    return fitted(binade(row - 4).c_str(), problem(vectorMean, means, start, fixed));
}

struct Table {
    std::string description, name;
    std::vector<double> values;

    void add(const std::vector<double>& more) {
        values.insert(values.end(), more.begin(), more.end());
    }
};

Table method1() {
    Table table{"100, the least mean of the first row; that row, in powers of the\n"
                "// inverse mean; 7 rows for the binades of the mean from 1 to 128; a\n"
                "// polynomial for exp on [0, 1]. Entries 1 to 8 are fixed.",
                "_kesiPoissonPoisnormD",
                {100}};
    table.add(largeMeanRow());
    for (int exponent = 0; exponent < 7; ++exponent) table.add(middleMeanRow(exponent));
    table.add(exponential(1, 7));
    return table;
}

Table vectorForm() {
    Table table{
        "a polynomial for exp on [0, 1/16]; 1 / sqrt(2); 18 rows for the\n"
        "// binades of the mean from 1/16 on, the last one for all from 8192 on.\n"
        "// Entries 5 to 9 are fixed.",
        "_kesdPoissonTab", exponential(0.0625L, 3)};
    table.add({0x1.6a09e667f3bcdp-1});
    for (int row = 0; row <= lastVectorRow; ++row) table.add(vectorMeanRow(row));
    return table;
}

void write(const Table& table, const std::string& command, const std::string& target) {
    std::string text =
        "// " + table.name + ": " + table.description +
        "\n//\n// Rows are fitted to the quantiles of the Poisson distribution for the "
        "least\n// probability that is misplaced, by weighted least squares.\n//\n"
        "// Printed by tools/tables/poisson (" +
        command +
        ");\n"
        "// scripts/tables poisson writes it again.\n\n"
        "constexpr double " +
        table.name + "[" + std::to_string(table.values.size()) + "] = {";
    for (std::size_t i = 0; i < table.values.size(); ++i) {
        char number[40];
        std::snprintf(number, sizeof number, "%s%a,", i % 4 ? " " : "\n    ",
                      table.values[i]);
        text += number;
    }
    std::ofstream out(target);
    if (!(out << text << "\n};\n").flush())
        throw std::runtime_error("cannot write " + target);
}

} // namespace
} // namespace poisson

int main(int argc, char** argv) {
    CLI::App app{"Tables that make Poisson variates of normal ones"};
    app.require_subcommand(1);
    std::string target;
    const auto command = [&](const char* name, const char* what, auto table) {
        CLI::App* sub = app.add_subcommand(name, what);
        sub->add_option("target", target, "file to write")->required();
        sub->callback([=, &target] { poisson::write(table(), name, target); });
    };
    command("method1", "the table of method 1 of Poisson", poisson::method1);
    command("vector", "the table of PoissonV", poisson::vectorForm);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& fault) {
        return app.exit(fault) == 0 ? 0 : 2;
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "poisson: %s\n", fault.what());
        return 2;
    }
}
