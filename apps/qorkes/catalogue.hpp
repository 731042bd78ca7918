// Every kernel of the vector subsystem as data: what the program lists and applies, and
// what error measurements, benchmarks and whole-catalogue tests run over.
#pragma once

#include <span>

namespace qorkes::catalogue {

/// The argument lists of kernels.
enum class Form { oneToOne, twoToOne, arrayAndScalar, oneToTwo };

/// An entry of any form; `form` of the function says which member holds.
template <class T> union Entry {
    void (*oneToOne)(int n, const T* a, T* y);
    void (*twoToOne)(int n, const T* a, const T* b, T* y);
    void (*arrayAndScalar)(int n, const T* a, T b, T* y);
    void (*oneToTwo)(int n, const T* a, T* y, T* z);

    constexpr Entry(void (*f)(int, const T*, T*)) : oneToOne(f) {}
    constexpr Entry(void (*f)(int, const T*, const T*, T*)) : twoToOne(f) {}
    constexpr Entry(void (*f)(int, const T*, T, T*)) : arrayAndScalar(f) {}
    constexpr Entry(void (*f)(int, const T*, T*, T*)) : oneToTwo(f) {}
};

template <class T> struct Kernel {
    const char* accuracy;  // HA, 50, 21, 11
    const char* symbol;    // the exported name
    const char* worker;    // the kernel that does the work
    const char* reportsAs; // the name in its reports
    Entry<T> entry;
};

struct Function {
    const char* name;
    const char* formula; // one line for a reader
    Form form;
    Kernel<double> doubles[2]; // HA, 50
    Kernel<float> singles[3];  // HA, 21, 11
};

/// In alphabetical order.
std::span<const Function> functions();

/// The function of this name, in any case; null if there is none.
const Function* find(const char* name);

} // namespace qorkes::catalogue
