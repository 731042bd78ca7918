// qorkes-mapping: how far the approximate Poisson methods are from the exact law, as a
// table for a document.
#include "mapping_errors.hpp"

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

void print(const char* method, MappingError (*errorOf)(double), double low,
           double high) {
    const MappingError error = largestError(errorOf, low, high, meansPerRow);
    std::printf("| %s | %s to %s | %.1e | %.1e | %.1e |\n", method, text(low).c_str(),
                text(high).c_str(), error.totalVariation, error.misplaced,
                error.farOff);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char**) {
    if (argc > 1) {
        std::fputs(
            "usage: qorkes-mapping\n\n"
            "Prints, for each row of coefficients of the approximate Poisson\n"
            "methods, the largest total variation between their law and the "
            "exact\none over a grid of means, the largest share of variates that "
            "are not\nthe exact quantile of their normal, and of those off by "
            "more than one.\n",
            stderr);
        return 2;
    }
    std::puts("| Method | Means | Total variation | Not the quantile | Off by more "
              "than one |\n|---|---|---|---|---|");
    print("Poisson, method 1", errorOfMethod1, 0x1p-10, 1);
    for (double low = 1; low < 100; low *= 2)
        print("Poisson, method 1", errorOfMethod1, low, std::min(2 * low, 100.0));
    print("Poisson, method 1", errorOfMethod1, 100, 2000);
    print("Poisson, method 1", errorOfMethod1, 2000, 20000);
    print("PoissonV", errorOfVectorForm, 0x1p-10, 0x1p-4);
    for (double low = 0x1p-4; low < 8192; low *= 2)
        print("PoissonV", errorOfVectorForm, low, 2 * low);
    print("PoissonV", errorOfVectorForm, 8192, 131072);
}
