#include "catalogue.hpp"

#include <qorkes/qor.h>

#include <strings.h>

namespace qorkes::catalogue {
namespace {

// Entries of one function in all precisions and accuracies.
#define KERNELS(function, d50, s21, s11)                                               \
    {{"HA", "_qord" #function "_HA", "_qord" #function "_HA", _qord##function##_HA},   \
     {"50", "_qord" #function "_50", "_qord" #function "_" #d50,                       \
      _qord##function##_50}},                                                          \
    {                                                                                  \
        {"HA", "_qors" #function "_HA", "_qors" #function "_HA",                       \
         _qors##function##_HA},                                                        \
            {"21", "_qors" #function "_21", "_qors" #function "_" #s21,                \
             _qors##function##_21},                                                    \
            {"11", "_qors" #function "_11", "_qors" #function "_" #s11,                \
             _qors##function##_11},                                                    \
    }

// The last three columns name the kernel that does the work of double 50, float 21 and
// float 11.
// clang-format off
constexpr Function rows[] = {
    {"Div", "a / b", Form::twoToOne, KERNELS(Div, HA, HA, HA)},
    {"Exp", "e^a", Form::oneToOne, KERNELS(Exp, HA, HA, HA)},
    {"Inv", "1 / a", Form::oneToOne, KERNELS(Inv, HA, HA, HA)},
    {"InvSqrt", "1 / sqrt(a)", Form::oneToOne, KERNELS(InvSqrt, HA, HA, HA)},
    {"Ln", "ln(a)", Form::oneToOne, KERNELS(Ln, HA, HA, HA)},
    {"Log10", "log10(a)", Form::oneToOne, KERNELS(Log10, HA, HA, HA)},
    {"Sqrt", "sqrt(a)", Form::oneToOne, KERNELS(Sqrt, HA, HA, HA)},
};
// clang-format on

} // namespace

std::span<const Function> functions() { return rows; }

const Function* find(const char* name) {
    for (const Function& function : rows)
        if (strcasecmp(function.name, name) == 0) return &function;
    return nullptr;
}

} // namespace qorkes::catalogue
