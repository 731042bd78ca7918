// qorkes-golden: prints the library's numbers, or compares them with those of a file.
// Rows whose last bits are the processor's own are compared where it computes as the
// one that wrote the file.
#include "golden.hpp"

#include <CLI/CLI.hpp>

#include <fstream>
#include <iostream>
#include <map>

namespace {

using namespace qorkes;

std::string unitLine() { return "unit: " + digestOfUnit(); }

std::string lineOf(const GoldenRow& row) {
    return row.name + ": " + row.numbers + (row.usesUnit ? " unit" : "");
}

std::vector<GoldenRow> goldenRows() {
    std::vector<GoldenRow> rows;
    addKernels(rows);
    addStreams(rows);
    addSignals(rows);
    return rows;
}

void print() {
    std::cout << unitLine() << '\n';
    for (const GoldenRow& row : goldenRows()) std::cout << lineOf(row) << '\n';
}

/// What a file says of the unit, and its lines by the names in them.
struct Golden {
    std::string unit;
    std::map<std::string, std::string> lines;

    explicit Golden(const std::string& path) {
        std::ifstream in(path);
        if (!std::getline(in, unit)) throw std::runtime_error("cannot read " + path);
        for (std::string line; std::getline(in, line);)
            lines[line.substr(0, line.find(": "))] = line;
    }
    /// The line of a row, which then is not expected any more.
    std::string take(const std::string& name) {
        const auto node = lines.extract(name);
        return node ? node.mapped() : "nothing";
    }
};

/// Every line of the file must be there again, and no other.
int check(const std::string& path) {
    Golden golden(path);
    const bool isSameUnit = golden.unit == unitLine();
    int compared = 0, differences = 0, left = 0;
    const auto differ = [&](const std::string& was, const std::string& is) {
        std::cout << "was " << was << "\nis  " << is << '\n';
        ++differences;
    };
    for (const GoldenRow& row : goldenRows()) {
        const std::string was = golden.take(row.name), is = lineOf(row);
        if (was != is && row.usesUnit && !isSameUnit) {
            ++left;
            continue;
        }
        ++compared;
        if (was != is) differ(was, is);
    }
    for (const auto& [name, line] : golden.lines) differ(line, "nothing");
    std::cout << compared << " rows compared, " << differences << " differ";
    if (left > 0)
        std::cout << "; " << left << " are this processor's own and were left out";
    std::cout << '\n';
    return differences == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app{"The library's numbers: first results and digests"};
    std::string path;
    app.add_option("--check", path, "compare with this file")->check(CLI::ExistingFile);
    CLI11_PARSE(app, argc, argv);
    if (!path.empty()) return check(path);
    print();
}
