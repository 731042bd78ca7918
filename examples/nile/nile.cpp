// The yearly flow of the Nile at Aswan, 1871 to 1970: did it change after 1898?
//
// Reads nile.csv, takes square roots and logarithms with vector kernels, and finds by a
// two-sample bootstrap from a random stream how sure the change of the mean is. That
// year is where Cobb finds the change ("The problem of the Nile: conditional solution
// to a changepoint problem", Biometrika 65, 1978); the bootstrap is Efron's ("Bootstrap
// methods: another look at the jackknife", Annals of Statistics 7, 1979).
#include <qorkes/qorkes.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace {

using Series = std::vector<double>;

constexpr int firstYear = 1871, lastYearBefore = 1898;
constexpr int resamples = 10000;
constexpr uint32_t seed = 1898;

/// The volumes of a file of lines "year,volume" under a header.
Series readVolumes(const char* path) {
    std::ifstream file(path);
    std::string header;
    std::getline(file, header);
    Series volumes;
    int year;
    char comma;
    for (double volume; file >> year >> comma >> volume;) volumes.push_back(volume);
    return volumes;
}

double mean(const Series& x) {
    double sum = 0;
    for (const double value : x) sum += value;
    return sum / static_cast<double>(x.size());
}

/// The mean of the k-th powers of the distances from the mean.
double centralMoment(const Series& x, int k) {
    Series powers;
    for (const double value : x) powers.push_back(std::pow(value - mean(x), k));
    return mean(powers);
}

double quantile(Series x, double share) {
    std::sort(x.begin(), x.end());
    const double place = share * static_cast<double>(x.size() - 1);
    const auto below = static_cast<size_t>(place);
    const size_t above = std::min(below + 1, x.size() - 1);
    return x[below] + (place - static_cast<double>(below)) * (x[above] - x[below]);
}

void printDecades(const Series& flow) {
    for (size_t i = 0; i < flow.size(); i += 10) {
        const double level = mean({flow.begin() + static_cast<long>(i),
                                   flow.begin() + static_cast<long>(i) + 10});
        const int year = firstYear + static_cast<int>(i);
        const std::string bar(static_cast<size_t>(level / 25), '#');
        std::printf("  %d-%02d  %-46s %5.0f\n", year, (year + 9) % 100, bar.c_str(),
                    level);
    }
}

void printSummary(const char* name, const Series& x) {
    const double variance = centralMoment(x, 2);
    std::printf("  %-12s %8.2f %8.2f %8.2f %8.2f %8.2f %8.2f\n", name, mean(x),
                std::sqrt(variance * static_cast<double>(x.size()) /
                          static_cast<double>(x.size() - 1)),
                quantile(x, 0), quantile(x, 0.5), quantile(x, 1),
                centralMoment(x, 3) / std::pow(variance, 1.5));
}

/// The mean of as many elements of x as it has, drawn with replacement.
double meanOfResample(StreamState* stream, const Series& x) {
    Series u(x.size());
    const auto n = static_cast<int>(x.size());
    _kesdRngUniform(0, stream, n, u.data(), 0.0, static_cast<double>(n));
    for (double& place : u) place = x[static_cast<size_t>(place)];
    return mean(u);
}

/// What the change of the mean might have been, over many resamples of both periods.
Series bootstrapChanges(const Series& before, const Series& after) {
    StreamState* stream;
    __kesNewStreamEx(&stream, KesBrngMCG59, 1, &seed);
    Series changes(resamples);
    for (double& change : changes) {
        const double start = meanOfResample(stream, before);
        change = meanOfResample(stream, after) - start;
    }
    __kesDeleteStream(&stream);
    return changes;
}

} // namespace

int main(int argc, char** argv) {
    const Series flow = readVolumes(argc > 1 ? argv[1] : "examples/nile/nile.csv");
    if (flow.size() != 100) {
        std::fprintf(stderr, "usage: nile-demo NILE.CSV, the file of 100 years\n");
        return 2;
    }
    const auto n = static_cast<int>(flow.size());
    Series root(flow.size()), logarithm(flow.size());
    _qordSqrt_HA(n, flow.data(), root.data());
    _qordLn_HA(n, flow.data(), logarithm.data());

    const auto split = flow.begin() + (lastYearBefore - firstYear + 1);
    const Series before(flow.begin(), split), after(split, flow.end());
    const Series changes = bootstrapChanges(before, after);

    std::printf("The Nile at Aswan, 1871 to 1970: yearly flow in 1e8 cubic metres\n\n");
    printDecades(flow);
    std::printf("\n  %-12s %8s %8s %8s %8s %8s %8s\n", "", "mean", "st.dev.", "least",
                "median", "greatest", "skewness");
    printSummary("flow", flow);
    printSummary("square root", root);
    printSummary("logarithm", logarithm);
    std::printf("\n  mean until 1898     %8.1f   (%d years)\n"
                "  mean after 1898     %8.1f   (%d years)\n"
                "  change              %8.1f\n"
                "  95 per cent between %8.1f   and %.1f\n"
                "  (bootstrap of %d resamples, MCG59 stream with seed %u)\n",
                mean(before), static_cast<int>(before.size()), mean(after),
                static_cast<int>(after.size()), mean(after) - mean(before),
                quantile(changes, 0.025), quantile(changes, 0.975), resamples, seed);
    return 0;
}
