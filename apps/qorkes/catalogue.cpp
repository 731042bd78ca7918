#include "catalogue.hpp"

#include <qorkes/qor.h>

#include <strings.h>

namespace qorkes::catalogue {
namespace {

// One entry; precision is d or s.
#define KERNEL(precision, function, tag, worker, reportsAs)                            \
    {                                                                                  \
#tag, "_qor" #precision #function "_" #tag,                                    \
            "_qor" #precision #function "_" #worker, reportsAs,                        \
            _qor##precision##function##_##tag                                          \
    }

// Entries of one function in all precisions and accuracies.
#define KERNELS(function, d50, s21, s11)                                               \
    {KERNEL(d, function, HA, HA, "_qord" #function "_HA"),                             \
     KERNEL(d, function, 50, d50, "_qord" #function "_" #d50)},                        \
    {                                                                                  \
        KERNEL(s, function, HA, HA, "_qors" #function "_HA"),                          \
            KERNEL(s, function, 21, s21, "_qors" #function "_" #s21),                  \
            KERNEL(s, function, 11, s11, "_qors" #function "_" #s11)                   \
    }

// The same for functions whose reports come from their scalar code.
#define KERNELS_BY_SCALAR_CODE(function, d50, scalar50)                                \
    {KERNEL(d, function, HA, HA, "d" #function "_HA"),                                 \
     KERNEL(d, function, 50, d50, "d" #function "_" #scalar50)},                       \
    {                                                                                  \
        KERNEL(s, function, HA, HA, "s" #function "_HA"),                              \
            KERNEL(s, function, 21, 21, "s" #function "_LA"),                          \
            KERNEL(s, function, 11, 21, "s" #function "_LA")                           \
    }

// The last three columns of KERNELS name the kernel that does the work of double 50,
// float 21 and float 11.
// clang-format off
constexpr Function rows[] = {
    {"Acos", "acos(a)", Form::oneToOne, KERNELS(Acos, HA, 21, 21)},
    {"Acosh", "acosh(a)", Form::oneToOne, KERNELS(Acosh, HA, HA, HA)},
    {"Asin", "asin(a)", Form::oneToOne, KERNELS(Asin, HA, 21, 21)},
    {"Asinh", "asinh(a)", Form::oneToOne, KERNELS(Asinh, HA, HA, HA)},
    {"Atan", "atan(a)", Form::oneToOne, KERNELS(Atan, HA, 21, 21)},
    {"Atan2", "angle of the point (b, a)", Form::twoToOne, KERNELS(Atan2, HA, 21, 21)},
    {"Atanh", "atanh(a)", Form::oneToOne, KERNELS(Atanh, HA, HA, HA)},
    {"Cbrt", "a^(1/3)", Form::oneToOne, KERNELS(Cbrt, HA, HA, HA)},
    {"Cos", "cos(a)", Form::oneToOne, KERNELS_BY_SCALAR_CODE(Cos, HA, HA)},
    {"Cosh", "cosh(a)", Form::oneToOne, KERNELS(Cosh, HA, HA, HA)},
    {"Div", "a / b", Form::twoToOne, KERNELS(Div, HA, HA, HA)},
    {"Erf", "erf(a)", Form::oneToOne, KERNELS(Erf, HA, HA, HA)},
    {"Erfc", "1 - erf(a)", Form::oneToOne, KERNELS(Erfc, HA, HA, HA)},
    {"Exp", "e^a", Form::oneToOne, KERNELS(Exp, HA, HA, HA)},
    {"Inv", "1 / a", Form::oneToOne, KERNELS(Inv, HA, HA, HA)},
    {"InvCbrt", "a^(-1/3)", Form::oneToOne, KERNELS(InvCbrt, HA, HA, HA)},
    {"InvSqrt", "1 / sqrt(a)", Form::oneToOne, KERNELS(InvSqrt, HA, HA, HA)},
    {"Ln", "ln(a)", Form::oneToOne, KERNELS(Ln, HA, HA, HA)},
    {"Log10", "log10(a)", Form::oneToOne, KERNELS(Log10, HA, HA, HA)},
    {"Pow", "a^b", Form::twoToOne, KERNELS(Pow, 50, 21, 21)},
    {"Powx", "a^b, one b for all", Form::arrayAndScalar, KERNELS(Powx, HA, HA, HA)},
    {"Sin", "sin(a)", Form::oneToOne, KERNELS_BY_SCALAR_CODE(Sin, HA, HA)},
    {"SinCos", "sin(a), cos(a)", Form::oneToTwo, KERNELS_BY_SCALAR_CODE(SinCos, HA, HA)},
    {"Sinh", "sinh(a)", Form::oneToOne, KERNELS(Sinh, HA, HA, HA)},
    {"Sqrt", "sqrt(a)", Form::oneToOne, KERNELS(Sqrt, HA, HA, HA)},
    {"Tan", "tan(a)", Form::oneToOne, KERNELS_BY_SCALAR_CODE(Tan, 50, LA)},
    {"Tanh", "tanh(a)", Form::oneToOne, KERNELS(Tanh, HA, HA, HA)},
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
