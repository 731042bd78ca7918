// qorkes-bench: times every row of the tables in kernels.cpp, streams.cpp,
// distributions.cpp, signal.cpp and tasks.cpp.
//
// One round times our entry and both builds of the peer, each for about a millisecond,
// and gives a ratio for each peer. The rounds of a row are spread over several passes
// through the table, since what else a machine does comes in bursts of seconds.
// Reported are the median over the rounds and the range of their middle eight tenths.
//
// Two builds of our own cannot run in one process. So one leaves the fastest time of
// each row in a file, and the other adds a column of that time divided by its own
// fastest.
#include "driver.hpp"
#include "fastest.hpp"

#include <support/document.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <iostream>
#include <span>

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
    Ratios narrow, wide;
    double fastest = INFINITY; // of our times, seconds

    /// Against the faster build of the peer.
    const Ratios& ratios() const {
        return narrow.median() < wide.median() ? narrow : wide;
    }
};

/// Returns the time of the slower build of the peer.
double measure(const Contest& contest, int rounds, Result& result) {
    const Timed ours(contest.ours), narrow(contest.narrow), wide(contest.wide);
    for (int i = 0; i < rounds; ++i) {
        const double base = ours.seconds();
        result.fastest = std::min(result.fastest, base);
        result.narrow.rounds.push_back(narrow.seconds() / base);
        result.wide.rounds.push_back(wide.seconds() / base);
    }
    return std::max(narrow.seconds(), wide.seconds());
}

struct MeasuredRow {
    Row row;
    std::array<Result, std::size(sizes)> results = {};

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

/// Our fastest times, and those of the other build where its file was read.
struct Builds {
    FastestTimes ours, others;

    /// Notes ours. Returns the other's divided by it, as text.
    std::string note(const std::string& key, double seconds) {
        bench::note(ours, key, seconds);
        const auto other = others.find(key);
        return other == others.end() ? "" : format("%.2f", other->second / seconds);
    }
    /// Adds the last column, if there is one.
    void addTo(std::vector<std::string>& cells, const std::string& cell) const {
        if (!others.empty()) cells.push_back(cell);
    }
};

using Cells = std::vector<std::string>;

std::string line(std::span<const int> widths, const Cells& cells) {
    std::string text;
    for (std::size_t i = 0; i < cells.size(); ++i)
        text += format("| %-*s ", widths[i], cells[i].c_str());
    return text + "|\n";
}

std::string heading(std::span<const int> widths, Cells cells, const Builds& builds) {
    builds.addTo(cells, "32-bit / 64-bit");
    std::string rule = line(widths, Cells(cells.size()));
    std::ranges::replace(rule, ' ', '-');
    return line(widths, cells) + rule;
}

std::string withRange(const Ratios& ratios) {
    return format("%.2f (%.2f to %.2f)", ratios.median(), ratios.at(0.1),
                  ratios.at(0.9));
}

constexpr int widths[] = {18, 30, 17, 22, 12, 22, 12, 15};

std::string heading(const Builds& builds) {
    const char* const both = QORKES_NARROW ", " QORKES_WIDE;
    return heading(widths,
                   {"ours", "arguments", "peer", "n = 1000", both, "n = 100000", both},
                   builds);
}

std::string lineOf(const MeasuredRow& measured, Builds& builds) {
    const Row& row = measured.row;
    Cells cells = {row.ours, row.arguments, row.peer};
    std::string ratios;
    for (std::size_t i = 0; i < std::size(sizes); ++i) {
        const Result& result = measured.results[i];
        const bool wasRun = !result.narrow.rounds.empty();
        cells.push_back(wasRun ? withRange(result.ratios()) : "");
        cells.push_back(
            wasRun ? format("%.2f, %.2f", result.narrow.median(), result.wide.median())
                   : "");
        if (!wasRun) continue;
        ratios += (i > 0 ? ", " : "") + builds.note(row.ours + ", " + row.arguments +
                                                        ", " + std::to_string(sizes[i]),
                                                    result.fastest);
    }
    builds.addTo(cells, ratios);
    return line(widths, cells);
}

std::vector<MeasuredRow> rowsWith(const std::string& part) {
    std::vector<MeasuredRow> rows;
    for (const auto& table : {kernelRows(), streamRows(), distributionRows()})
        for (const Row& row : table)
            if (row.ours.find(part) != std::string::npos) rows.push_back({row});
    return rows;
}

constexpr int sizedWidths[] = {18, 17, 6, 19, 19, 15};

std::string sizedHeading(const Builds& builds) {
    return "\n" +
           heading(sizedWidths, {"ours", "size", "peer", "scalar", "SIMD"}, builds);
}

std::string lineOf(const SizedRow& row, int rounds, Builds& builds) {
    Result result;
    measure(row.prepare(), rounds, result);
    Cells cells = {row.ours, row.size, row.peer, withRange(result.narrow),
                   withRange(result.wide)};
    builds.addTo(cells, builds.note(row.ours + ", " + row.size, result.fastest));
    return line(sizedWidths, cells);
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
    return format("Processor: %s. Compiler: gcc " __VERSION__ ", %d-bit.\n\n",
                  model.c_str(), int{8 * sizeof(void*)});
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app(
        "Times Qorkes and its peers alternately: peer's time divided by ours.");
    std::string filter, document, times, against;
    int rounds = 8;
    auto* part =
        app.add_option("--filter", filter, "only rows whose name has this part");
    app.add_option("--rounds", rounds, "rounds for each row in each of five passes")
        ->check(CLI::PositiveNumber);
    app.add_option("--docs", document, "performance document to bring up to date")
        ->check(CLI::ExistingFile)
        ->excludes(part);
    app.add_option("--times", times, "file for the fastest time of each row, seconds");
    app.add_option("--against", against, "such a file of the 32-bit build")
        ->check(CLI::ExistingFile);
    CLI11_PARSE(app, argc, argv);

    std::vector<MeasuredRow> rows = rowsWith(filter);
    for (int pass = 1; pass < passes; ++pass)
        for (MeasuredRow& row : rows) row.measureSizes(rounds);

    Builds builds;
    if (!against.empty()) builds.others = readTimes(against);
    std::string table;
    const auto add = [&](const std::string& text) {
        std::cout << text << std::flush;
        table += text;
    };
    add(machine() + heading(builds));
    for (MeasuredRow& row : rows) {
        row.measureSizes(rounds);
        add(lineOf(row, builds));
    }
    add(sizedHeading(builds));
    for (const auto& sized : {signalRows(), taskRows()})
        for (const SizedRow& row : sized)
            if (row.ours.find(filter) != std::string::npos)
                add(lineOf(row, passes * rounds, builds));
    if (const SetUp setUp = largestSetUp();
        setUp.ours.find(filter) != std::string::npos)
        add(setUpLine(setUp));
    if (!times.empty()) write(builds.ours, times);
    if (!document.empty())
        replaceSection(document, sizeof(void*) == 8 ? "ratios 64" : "ratios", table);
}
