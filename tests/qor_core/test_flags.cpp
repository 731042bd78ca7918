// Exceptions that kernels raise, as their callers may test them.
#include "accuracy.hpp"

#include <support/fpu.hpp>

#include <common/bits.hpp>

using namespace qorkes;
using namespace qorkes::test;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double quiet = std::numeric_limits<double>::quiet_NaN();

/// By its pattern, which the unit does not see before the kernel. That a denormal
/// result was loaded again says something of the compiler alone.
unsigned flagsOf(const char* kernel, uint64_t pattern) {
    double x, y;
    setBits(x, pattern);
    const Reports unreported;
    return flagsRaised([&] { kernelNamed<double>(kernel)(1, &x, &y); }) & ~denormalFlag;
}

TEST(Flags, OfSingleArguments) {
    const struct {
        const char* kernel;
        double argument;
        unsigned flags;
    } rows[] = {{"Erf", 1, inexactFlag},
                {"Erf", 6, inexactFlag},
                {"Erf", -infinity, 0},
                {"Erfc", -5.9, inexactFlag},
                {"Erfc", infinity, 0},
                {"Erfc", -infinity, 0},
                {"Erfc", 26.55, underflowFlag},
                {"Sinh", 800, overflowFlag},
                {"Sqrt", quiet, 0},
                {"InvSqrt", quiet, 0},
                {"Cbrt", quiet, 0},
                {"InvCbrt", quiet, 0}};
    for (const auto& [kernel, argument, flags] : rows) {
        const bool isOutOfRange = flags & (overflowFlag | underflowFlag);
        const unsigned expected = flags | (isOutOfRange ? unsigned{inexactFlag} : 0);
        EXPECT_EQ(flagsOf(kernel, bitsOf(argument)), expected)
            << kernel << ' ' << argument;
    }
    for (const char* kernel : {"Sqrt", "InvSqrt", "Cbrt", "InvCbrt"})
        EXPECT_TRUE(flagsOf(kernel, 0x7FF0000000000001) & invalidFlag) << kernel;
}

/// A caller may have unmasked what ordinary arguments do not raise.
TEST(Flags, OrdinaryRootsRaiseInexactAlone) {
    const std::vector<double> a(19, 3);
    const std::vector<float> s(19, 3);
    std::vector<double> y(19);
    std::vector<float> t(19);
    for (int n = 0; n <= 19; ++n) {
        const auto roots = [&] {
            _qordSqrt_HA(n, a.data(), y.data());
            _qordInvSqrt_HA(n, a.data(), y.data());
            _qorsSqrt_HA(n, s.data(), t.data());
            _qorsInvSqrt_HA(n, s.data(), t.data());
        };
        EXPECT_EQ(flagsRaised(roots) & ~inexactFlag, 0u) << n;
    }
}

// The float logarithms bring back the unit as it was before a report, the double ones
// what matters of it: flags that a handler raises stay there.
TEST(Flags, RaisedInAReportOfALogarithm) {
    const double a = -1;
    const float b = -1;
    double y;
    float z;
    Reports reports;
    reports.then = [](QorErrorRecord&) {
        asm volatile("fld1\n\tfldz\n\tfdivrp\n\tfstp %st(0)");
        return 0;
    };
    constexpr unsigned both = invalidFlag | divideByZeroFlag;
    EXPECT_EQ(flagsRaised([&] { _qordLn_HA(1, &a, &y); }) & both, both);
    EXPECT_EQ(flagsRaised([&] { _qorsLn_HA(1, &b, &z); }) & both, invalidFlag);
}

/// Underflow is a flag and no report until the result is 0.
TEST(Flags, DenormalResultsOfErfcAreNotReported) {
    const double x[] = {26.55, 26.7, 27.2};
    const float s[] = {9.2f, 10.0f, 10.05f};
    double y[3];
    float t[3];
    const Reports reports;
    _qordErfc_HA(3, x, y);
    _qorsErfc_HA(3, s, t);
    EXPECT_TRUE(reports.seen.empty());
    EXPECT_EQ(std::fpclassify(y[2]), FP_SUBNORMAL);
    EXPECT_EQ(std::fpclassify(t[1]), FP_SUBNORMAL);
}

} // namespace
