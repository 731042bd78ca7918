// qorkes-mapping: how far the approximate Poisson methods are from the exact law, as a
// table for a document.
#include "mapping_errors.hpp"

#include <support/document.hpp>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <string>

using namespace qorkes::test;

namespace {

constexpr int meansPerRow = 32;

std::string text(double mean) {
    char digits[20];
    std::snprintf(digits, sizeof digits, mean < 1e5 ? "%.7g" : "%.3g", mean);
    return digits;
}

std::string row(const char* method, MappingError (*errorOf)(double), double low,
                double high) {
    const MappingError error = largestError(errorOf, low, high, meansPerRow);
    char line[200];
    std::snprintf(line, sizeof line, "| %s | %s to %s | %.1e | %.1e | %.1e |\n", method,
                  text(low).c_str(), text(high).c_str(), error.totalVariation,
                  error.misplaced, error.farOff);
    return line;
}

std::string table() {
    std::string rows = "| Method | Means | Total variation | Not the quantile | Off by "
                       "more than one |\n|---|---|---|---|---|\n";
    rows += row("Poisson, method 1", errorOfMethod1, 0x1p-10, 1);
    for (double low = 1; low < 100; low *= 2)
        rows += row("Poisson, method 1", errorOfMethod1, low, std::min(2 * low, 100.0));
    rows += row("Poisson, method 1", errorOfMethod1, 100, 2000);
    rows += row("Poisson, method 1", errorOfMethod1, 2000, 20000);
    rows += row("PoissonV", errorOfVectorForm, 0x1p-10, 0x1p-4);
    for (double low = 0x1p-4; low < 8192; low *= 2)
        rows += row("PoissonV", errorOfVectorForm, low, 2 * low);
    return rows + row("PoissonV", errorOfVectorForm, 8192, 131072);
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app(
        "For each row of coefficients of the approximate Poisson methods, the "
        "largest total variation between their law and the exact one over a grid "
        "of means, the largest share of variates that are not the exact quantile "
        "of their normal, and of those off by more than one.");
    std::string document;
    app.add_option("--docs", document, "accuracy document to bring up to date")
        ->check(CLI::ExistingFile);
    CLI11_PARSE(app, argc, argv);
    try {
        const std::string rows = table();
        std::fputs(rows.c_str(), stdout);
        if (!document.empty()) qorkes::replaceSection(document, "mappings", rows);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "qorkes-mapping: %s\n", error.what());
        return 2;
    }
}
