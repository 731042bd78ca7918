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

std::vector<std::string> linesOf(const std::string& path) {
    std::ifstream in(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    if (lines.empty()) throw std::runtime_error("cannot read " + path);
    return lines;
}

/// Every line of the file must be there again, and no other.
int check(const std::string& path) {
    const std::vector<std::string> wanted = linesOf(path);
    const bool isSameUnit = wanted[0] == unitLine();
    const std::vector<GoldenRow> rows = goldenRows();
    int differences = 0, left = 0;
    for (std::size_t i = 0; i < std::max(rows.size(), wanted.size() - 1); ++i) {
        const std::string line = i < rows.size() ? lineOf(rows[i]) : "nothing";
        const std::string old = i + 1 < wanted.size() ? wanted[i + 1] : "nothing";
        if (line == old) continue;
        if (!isSameUnit && i < rows.size() && rows[i].usesUnit) {
            ++left;
            continue;
        }
        std::cout << "was " << old << "\nis  " << line << '\n';
        ++differences;
    }
    std::cout << rows.size() - static_cast<std::size_t>(left) << " rows compared, "
              << differences << " differ";
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
