// qorkes-bench: times every row of the tables in kernels.cpp, streams.cpp,
// distributions.cpp and signal.cpp.
//
// One round times our entry, the x87 peer and the SSE2 peer, each for about a
// millisecond, and gives a ratio for each peer. The rounds of a row are spread over
// several passes through the table, since what else a machine does comes in bursts of
// seconds. Reported are the median over the rounds and the range of their middle eight
// tenths.
#include "driver.hpp"

#include <support/document.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <iostream>

using namespace qorkes;
using namespace qorkes::bench;

namespace {

constexpr double measuredSeconds = 1e-3;
constexpr int sizes[] = {1000, 100000};
constexpr int passes = 5;
constexpr double longestSeconds =
    0.2; // of a peer on one array; longer ones are left out

using Work = std::function<void()>;

/// Time that this thread had on a processor, which leaves out the turns of others.
double threadSeconds() {
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double secondsFor(const Work& work, int repetitions) {
    const double start = threadSeconds();
    for (int i = 0; i < repetitions; ++i) work();
    return threadSeconds() - start;
}

/// Work with the number of repetitions that take about a millisecond.
struct Timed {
    const Work& work;
    int repetitions = 1;

    explicit Timed(const Work& w) : work(w) {
        while (secondsFor(work, repetitions) < measuredSeconds / 2) repetitions *= 2;
    }
    double seconds() const { return secondsFor(work, repetitions) / repetitions; }
};

/// The ratios of all rounds.
struct Ratios {
    std::vector<double> rounds;

    double at(double quantile) const {
        std::vector<double> sorted = rounds;
        std::ranges::sort(sorted);
        const auto last = static_cast<double>(sorted.size() - 1);
        return sorted[static_cast<std::size_t>(quantile * last + 0.5)];
    }
    double median() const { return at(0.5); }
};

struct Result {
    Ratios x87, sse2;

    /// Against the faster build of the peer.
    const Ratios& ratios() const { return x87.median() < sse2.median() ? x87 : sse2; }
};

/// Returns the time of the slower build of the peer.
double measure(const Contest& contest, int rounds, Result& result) {
    const Timed ours(contest.ours), x87(contest.x87), sse2(contest.sse2);
    for (int i = 0; i < rounds; ++i) {
        const double base = ours.seconds();
        result.x87.rounds.push_back(x87.seconds() / base);
        result.sse2.rounds.push_back(sse2.seconds() / base);
    }
    return std::max(x87.seconds(), sse2.seconds());
}

struct MeasuredRow {
    Row row;
    Result results[std::size(sizes)] = {};

    void measureSizes(int rounds) {
        double each = 0;
        for (std::size_t i = 0; i < std::size(sizes); ++i)
            if (each * sizes[i] < longestSeconds)
                each = measure(row.prepare(sizes[i]), rounds, results[i]) / sizes[i];
    }
};

template <class... Args> std::string format(const char* pattern, Args... args) {
    char text[200];
    std::snprintf(text, sizeof text, pattern, args...);
    return text;
}

std::string line(const std::string& ours, const std::string& arguments,
                 const std::string& peer, const std::string (&cells)[4]) {
    return format("| %-18s | %-30s | %-17s | %-22s | %-12s | %-22s | %-12s |\n",
                  ours.c_str(), arguments.c_str(), peer.c_str(), cells[0].c_str(),
                  cells[1].c_str(), cells[2].c_str(), cells[3].c_str());
}

std::string heading() {
    std::string rule = line("", "", "", {"", "", "", ""});
    std::ranges::replace(rule, ' ', '-');
    return line("ours", "arguments", "peer",
                {"n = 1000", "x87, SSE2", "n = 100000", "x87, SSE2"}) +
           rule;
}

std::string withRange(const Ratios& ratios) {
    return format("%.2f (%.2f to %.2f)", ratios.median(), ratios.at(0.1),
                  ratios.at(0.9));
}

std::string lineOf(const MeasuredRow& measured) {
    std::string cells[4];
    std::string* cell = cells;
    for (const Result& result : measured.results) {
        if (result.x87.rounds.empty()) break;
        *cell++ = withRange(result.ratios());
        *cell++ = format("%.2f, %.2f", result.x87.median(), result.sse2.median());
    }
    return line(measured.row.ours, measured.row.arguments, measured.row.peer, cells);
}

std::vector<MeasuredRow> rowsWith(const std::string& part) {
    std::vector<MeasuredRow> rows;
    for (const auto& table : {kernelRows(), streamRows(), distributionRows()})
        for (const Row& row : table)
            if (row.ours.find(part) != std::string::npos) rows.push_back({row});
    return rows;
}

std::string sizedLine(const SizedRow& row, const std::string& scalar,
                      const std::string& simd) {
    return format("| %-18s | %-17s | %-6s | %-19s | %-19s |\n", row.ours.c_str(),
                  row.size.c_str(), row.peer.c_str(), scalar.c_str(), simd.c_str());
}

std::string sizedHeading() {
    std::string rule = sizedLine({}, "", "");
    std::ranges::replace(rule, ' ', '-');
    return "\n" + sizedLine({"ours", "size", "peer", {}}, "scalar", "SIMD") + rule;
}

std::string sizedLine(const SizedRow& row, int rounds) {
    Result result;
    measure(row.prepare(), rounds, result);
    return sizedLine(row, withRange(result.x87), withRange(result.sse2));
}

std::string setUpLine(const SetUp& setUp) {
    const Timed timed(setUp.make);
    return format("\n%s is made in %.2f ms.\n", setUp.ours.c_str(),
                  1e3 * timed.seconds());
}

std::string machine() {
    std::ifstream info("/proc/cpuinfo");
    std::string text, model = "unknown";
    while (std::getline(info, text))
        if (text.starts_with("model name")) model = text.substr(text.find(':') + 2);
    return "Processor: " + model + ". Compiler: gcc " __VERSION__ ".\n\n";
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app(
        "Times Qorkes and its peers alternately: peer's time divided by ours.");
    std::string filter, document;
    int rounds = 20;
    auto* part =
        app.add_option("--filter", filter, "only rows whose name has this part");
    app.add_option("--rounds", rounds, "rounds for each row in each of five passes")
        ->check(CLI::PositiveNumber);
    app.add_option("--docs", document, "performance document to bring up to date")
        ->check(CLI::ExistingFile)
        ->excludes(part);
    CLI11_PARSE(app, argc, argv);

    std::vector<MeasuredRow> rows = rowsWith(filter);
    for (int pass = 1; pass < passes; ++pass)
        for (MeasuredRow& row : rows) row.measureSizes(rounds);

    std::string table;
    const auto add = [&](const std::string& text) {
        std::cout << text << std::flush;
        table += text;
    };
    add(machine() + heading());
    for (MeasuredRow& row : rows) {
        row.measureSizes(rounds);
        add(lineOf(row));
    }
    add(sizedHeading());
    for (const SizedRow& row : signalRows())
        if (row.ours.find(filter) != std::string::npos)
            add(sizedLine(row, passes * rounds));
    if (const SetUp setUp = largestSetUp();
        setUp.ours.find(filter) != std::string::npos)
        add(setUpLine(setUp));
    if (!document.empty()) replaceSection(document, "ratios", table);
}
