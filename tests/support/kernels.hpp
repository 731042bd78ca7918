// Kernels of the catalogue whatever their precision and argument list, for programs
// that run over all of them.
#pragma once

#include <catalogue.hpp>

#include <span>
#include <string>
#include <type_traits>

namespace qorkes {

template <class T>
std::span<const catalogue::Kernel<T>> kernelsOf(const catalogue::Function& f) {
    if constexpr (std::is_same_v<T, double>)
        return f.doubles;
    else
        return f.singles;
}

/// False for a kernel that is another name for the one that does the work.
template <class T> bool isOwnCode(const catalogue::Kernel<T>& kernel) {
    return std::string(kernel.symbol) == kernel.worker;
}

template <class T> constexpr const char* precisionName = "double";
template <> inline constexpr const char* precisionName<float> = "float";

/// One call of an entry of any form. A scalar second argument is b[0].
template <class T>
void call(catalogue::Form form, const catalogue::Entry<T>& entry, int n, const T* a,
          const T* b, T* y, T* z) {
    using enum catalogue::Form;
    switch (form) {
    case oneToOne:
        return entry.oneToOne(n, a, y);
    case twoToOne:
        return entry.twoToOne(n, a, b, y);
    case arrayAndScalar:
        return entry.arrayAndScalar(n, a, b[0], y);
    case oneToTwo:
        return entry.oneToTwo(n, a, y, z);
    }
}

} // namespace qorkes
