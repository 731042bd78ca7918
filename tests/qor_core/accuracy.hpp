// The error of a kernel with one argument, by its name without prefix: "Exp" is the one
// of high accuracy, "Acos_21" a cheaper one.
//
//     EXPECT_LE(largestError("Exp", draw<double>(range, 10000, 5)), 0.52);
#pragma once

#include <support/kernels.hpp>
#include <support/oracle.hpp>
#include <support/reports.hpp>
#include <support/samples.hpp>

#include <algorithm>

namespace qorkes::test {

template <class T> struct NamedKernel {
    const catalogue::Function& function;
    const catalogue::Kernel<T>& kernel;

    void operator()(int n, const T* a, T* y) const { kernel.entry.oneToOne(n, a, y); }
};

template <class T> NamedKernel<T> kernelNamed(std::string name) {
    if (name.find('_') == std::string::npos) name += "_HA";
    for (const catalogue::Function& function : catalogue::functions())
        for (const catalogue::Kernel<T>& kernel : kernelsOf<T>(function))
            if (kernel.symbol + 5 == name) return {function, kernel};
    throw std::invalid_argument(name);
}

/// Of kernel(n, a, y), in units in the last place; `step` of 2 leaves every second
/// element out.
template <class T, class Kernel>
double largestError(const Kernel& kernel, const char* function, const std::vector<T>& a,
                    std::size_t step = 1) {
    Oracle oracle(function);
    std::vector<T> y(a.size());
    const Reports unreported;
    kernel(static_cast<int>(a.size()), a.data(), y.data());
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); i += step)
        largest = std::max(largest, oracle.ulps(y[i], a[i]));
    return largest;
}

template <class T>
double largestError(const std::string& name, const std::vector<T>& a,
                    std::size_t step = 1) {
    const NamedKernel<T> kernel = kernelNamed<T>(name);
    return largestError(kernel, kernel.function.name, a, step);
}

/// Over a range with every second element the same, and left out.
template <class T>
double largestErrorBeside(T other, const std::string& name, const Range& range) {
    std::vector<T> a = draw<T>(range, 10000, 5);
    for (std::size_t i = 1; i < a.size(); i += 2) a[i] = other;
    return largestError(name, a, 2);
}

} // namespace qorkes::test
