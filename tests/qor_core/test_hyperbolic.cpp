#include <common/ext.hpp>
#include <support/element.hpp>
#include <support/fpu.hpp>

using namespace qorkes;
using namespace qorkes::test;

namespace {

#include <qor_core/_heap/_qor_dhyp_tables.inc>
#include <qor_core/_heap/_qor_shyp_tables.inc>
#include <qor_core/tanh/qor_a6_dtanh_tables.inc>

static_assert(hypTabFine[0] == 1 && hypTabMid[0] == 1 && hypTabCoarse[0] == 1);
static_assert(ldPow2Table[32] == hypTabCoarse[16]);

template <class T> constexpr Bits<T> signOf = Bits<T>{1} << (8 * sizeof(T) - 1);

template <class T> struct Kernel {
    const char* function;
    const char* name;
    void (*entry)(int n, const T* a, T* y);
    T ordinary;
    bool isOdd;
};

constexpr Kernel<double> dSinh = {"Sinh", "_qordSinh_HA", _qordSinh_HA, 1, true};
constexpr Kernel<double> dCosh = {"Cosh", "_qordCosh_HA", _qordCosh_HA, 1, false};
constexpr Kernel<double> dTanh = {"Tanh", "_qordTanh_HA", _qordTanh_HA, 1, true};
constexpr Kernel<float> sSinh = {"Sinh", "_qorsSinh_HA", _qorsSinh_HA, 1, true};
constexpr Kernel<float> sCosh = {"Cosh", "_qorsCosh_HA", _qorsCosh_HA, 1, false};
constexpr Kernel<float> sTanh = {"Tanh", "_qorsTanh_HA", _qorsTanh_HA, 1, true};
constexpr Kernel<double> dAsinh = {"Asinh", "_qordAsinh_HA", _qordAsinh_HA, 1, true};
constexpr Kernel<double> dAcosh = {"Acosh", "_qordAcosh_HA", _qordAcosh_HA, 2, false};
constexpr Kernel<double> dAtanh = {"Atanh", "_qordAtanh_HA", _qordAtanh_HA, 0.5, true};
constexpr Kernel<float> sAsinh = {"Asinh", "_qorsAsinh_HA", _qorsAsinh_HA, 1, true};
constexpr Kernel<float> sAcosh = {"Acosh", "_qorsAcosh_HA", _qorsAcosh_HA, 2, false};
constexpr Kernel<float> sAtanh = {"Atanh", "_qorsAtanh_HA", _qorsAtanh_HA, 0.5, true};

/// The argument and its negative.
template <class T>
void expectCase(const Kernel<T>& kernel, const Expected<T>& expected) {
    SCOPED_TRACE(kernel.name);
    expectElement<T>(kernel.entry, kernel.name, kernel.ordinary, expected);
    Expected<T> negative = expected;
    negative.argument ^= signOf<T>;
    if (kernel.isOdd) *negative.result ^= signOf<T>;
    expectElement<T>(kernel.entry, kernel.name, kernel.ordinary, negative);
}

/// The value, correctly rounded, of arguments for which the kernel gives that.
template <class T>
void expectRounded(const Kernel<T>& kernel, std::initializer_list<Bits<T>> arguments) {
    Oracle oracle(kernel.function);
    for (const Bits<T> bits : arguments) {
        T x;
        setBits(x, bits);
        expectCase(kernel, {bits, bitsOf(oracle.rounded(x)), {}});
    }
}

template <class T>
double error(const Kernel<T>& kernel, double smallest, double largest,
             Sign sign = Sign::both) {
    return largestError<T>(kernel.entry, kernel.function, {smallest, largest, sign});
}

TEST(DoubleHyperbolics, LimitsAndSpecialValues) {
    constexpr uint64_t infinity = 0x7FF0000000000000, one = 0x3FF0000000000000;
    for (const Kernel<double>& kernel : {dSinh, dCosh}) {
        expectRounded(kernel,
                      {0x0000000000000000, 0x0000000000000001, 0x4024000000000000});
        expectCase(kernel, {0x408633CE8FB9F87E, infinity, QOR_STATUS_OVERFLOW});
        expectCase(kernel, {0x7FEFFFFFFFFFFFFF, infinity, QOR_STATUS_OVERFLOW});
        expectCase(kernel, {infinity, infinity, {}});
    }
    // The last arguments before the limit have finite values.
    for (const Kernel<double>& kernel : {dSinh, dCosh})
        for (const double x : {0x1.633ce8fb9f87dp+9, 0x1.633cdffffffffp+9, 0x1.63p+9}) {
            double y;
            kernel.entry(1, &x, &y);
            EXPECT_LE(Oracle(kernel.function).ulps(y, x), 1.0) << x;
        }
    // NaNs stay as they are, and so does their sign.
    for (const uint64_t nan :
         {uint64_t{0x7FF0000000000001}, uint64_t{0xFFF8000000000123}}) {
        expectElement<double>(_qordSinh_HA, "", 1.0, {nan, nan, {}});
        expectElement<double>(_qordCosh_HA, "", 1.0, {nan, nan, {}});
    }
    expectRounded(dTanh, {0x0000000000000000, 0x0000000000000001, 0x000FFFFFFFFFFFFF,
                          0x0010000000000000, 0x3F60624DFFFFFFFF, 0x4033FFFFFFFFFFFF});
    for (const uint64_t x :
         {uint64_t{0x4034000000000000}, infinity, uint64_t{0x7FF0000000000001}})
        expectCase(dTanh, {x, one, {}});
    expectCase(dTanh, {0x7FF4000000000001, 0x7FFC000000000001, {}});
}

TEST(FloatHyperbolics, LimitsAndSpecialValues) {
    constexpr uint32_t infinity = 0x7F800000, one = 0x3F800000;
    for (const Kernel<float>& kernel : {sSinh, sCosh}) {
        expectRounded(kernel,
                      {0x00000000, 0x00000001, 0x399D4952, 0x41200000, 0x42B2D4FC});
        expectCase(kernel, {0x42B2D4FD, infinity, QOR_STATUS_OVERFLOW});
        expectCase(kernel, {0x7F7FFFFF, infinity, QOR_STATUS_OVERFLOW});
        expectCase(kernel, {infinity, infinity, {}});
        for (const uint32_t nan : {0x7F800001u, 0xFFC00123u})
            expectElement<float>(kernel.entry, "", 1.0f, {nan, nan | 0x400000, {}});
    }
    expectCase(sSinh, {0x399D4951, 0x399D4951, {}}); // the last that is its own result
    expectRounded(sTanh, {0x00000000, 0x00000001, 0x00800000, 0x00800001, 0x3A83126E,
                          0x411FFFFF});
    for (const uint32_t x : {0x41200000u, infinity}) expectCase(sTanh, {x, one, {}});
    expectCase(sTanh, {0x7F800001, 0x7FC00001, {}});
}

TEST(Hyperbolics, OverflowRaisesItsException) {
    const double x = 800;
    double y;
    const Reports unreported;
    EXPECT_TRUE(flagsRaised([&] { _qordSinh_HA(1, &x, &y); }) & 0x08);
}

TEST(InverseHyperbolics, LimitsAndSpecialValues) {
    constexpr uint64_t infinity = 0x7FF0000000000000, ones = 0x7FFFFFFFFFFFFFFF;
    constexpr uint32_t sInfinity = 0x7F800000, sOnes = 0x7FFFFFFF;

    // Both sides of the first argument for the logarithm, and both ends.
    expectRounded(dAsinh, {0x0000000000000000, 0x0000000000000001, 0x3F5FFFFFFFFFFFFF,
                           0x3F60000000000000, 0x7FEFFFFFFFFFFFFF, infinity});
    expectRounded(sAsinh, {0x00000000, 0x00000001, 0x31FFFFFF, 0x32000000, 0x7F7FFFFF,
                           sInfinity});
    for (const uint64_t nan :
         {uint64_t{0x7FF0000000000001}, uint64_t{0x7FF8000000000123}})
        expectCase(dAsinh, {nan, nan, {}});
    for (const uint32_t nan : {0x7F800001u, 0x7FC00123u})
        expectCase(sAsinh, {nan, nan, {}});

    expectRounded(dAtanh, {0x0000000000000000, 0x0000000000000001, 0x3F4FFFFFFFFFFFFF,
                           0x3F50000000000000, 0x3FEFFFFFFFFFFFFF});
    expectRounded(sAtanh, {0x00000000, 0x00000001, 0x317FFFFF, 0x31800000, 0x3F7FFFFF});
    expectCase(dAtanh, {0x3FF0000000000000, infinity, QOR_STATUS_SING});
    expectCase(sAtanh, {0x3F800000, sInfinity, QOR_STATUS_SING});
    for (const uint64_t x : {uint64_t{0x3FF0000000000001}, infinity})
        expectCase(dAtanh, {x, ones, QOR_STATUS_ERRDOM});
    for (const uint32_t x : {0x3F800001u, sInfinity})
        expectCase(sAtanh, {x, sOnes, QOR_STATUS_ERRDOM});
    expectCase(dAtanh, {0x7FF0000000000001, ones, {}});
    expectCase(sAtanh, {0x7F800001, sOnes, {}});

    const auto expectDouble = [](const Expected<double>& expected) {
        expectElement<double>(dAcosh.entry, dAcosh.name, dAcosh.ordinary, expected);
    };
    const auto expectFloat = [](const Expected<float>& expected) {
        expectElement<float>(sAcosh.entry, sAcosh.name, sAcosh.ordinary, expected);
    };
    Oracle oracle("Acosh");
    for (const double x :
         {1.0, 0x1.001ffffffffffp+0, 0x1.002p+0, 0x1.fffffffffffffp+1023})
        expectDouble({bitsOf(x), bitsOf(oracle.rounded(x)), {}});
    for (const float x : {1.0f, 0x1.000002p+0f, 0x1.fffffep+127f})
        expectFloat({bitsOf(x), bitsOf(oracle.rounded(x)), {}});
    for (const uint64_t x : {infinity, uint64_t{0x7FF0000000000001}})
        expectDouble({x, x, {}});
    for (const uint32_t x : {sInfinity, 0x7F800001u}) expectFloat({x, x, {}});
    for (const double x : {0x1.fffffffffffffp-1, 0.5, 0.0, -0.0, -2.0, -HUGE_VAL})
        expectDouble({bitsOf(x), ones, QOR_STATUS_ERRDOM});
    for (const float x : {0x1.fffffep-1f, 0.5f, 0.0f, -0.0f, -2.0f, -HUGE_VALF})
        expectFloat({bitsOf(x), sOnes, QOR_STATUS_ERRDOM});
    expectDouble({0xFFF0000000000001, ones, {}});
    expectFloat({0xFF800001, sOnes, {}});
}

// Worst where a formula takes over and where the reduction's error is that of a far
// argument.
TEST(Hyperbolics, Errors) {
    for (const Kernel<double>& kernel : {dSinh, dCosh}) {
        EXPECT_LE(error(kernel, 0x1p-40, 0x1.fp-11), 0.51) << kernel.function;
        EXPECT_LE(error(kernel, 0x1.fp-11, 0.01), 1.0) << kernel.function;
        EXPECT_LE(error(kernel, 0.01, 16), 0.58) << kernel.function;
        EXPECT_LE(error(kernel, 16, 709.7), 0.82) << kernel.function;
        EXPECT_LE(error(kernel, 709.7, 710.47), 1.0) << kernel.function;
    }
    EXPECT_LE(error(dTanh, 1e-300, 0.002), 0.51);
    EXPECT_LE(error(dTanh, 0.002, 0.02), 0.85);
    EXPECT_LE(error(dTanh, 0.02, 20), 0.56);
    EXPECT_LE(error(dAsinh, 1e-300, 0x1p-9), 0.51);
    EXPECT_LE(error(dAsinh, 0x1p-9, 0x1p-6), 0.95);
    EXPECT_LE(error(dAsinh, 0x1p-6, 1e308), 0.72);
    EXPECT_LE(error(dAcosh, 1, 1.001, Sign::positive), 0.85);
    EXPECT_LE(error(dAcosh, 1.001, 1e308, Sign::positive), 0.60);
    EXPECT_LE(error(dAtanh, 1e-300, 0x1p-10), 0.51);
    EXPECT_LE(error(dAtanh, 0x1p-10, 0x1p-6), 0.85);
    EXPECT_LE(error(dAtanh, 0x1p-6, 0.9999), 0.62);
    EXPECT_LE(error(sAsinh, 1e-30, 1e38), 1.05);
    EXPECT_LE(error(sAcosh, 1, 1.01, Sign::positive), 1.05);
    EXPECT_LE(error(sAcosh, 1.01, 1e38, Sign::positive), 1.05);
    EXPECT_LE(error(sAtanh, 1e-30, 0.9999), 1.05);
    EXPECT_LE(error(sSinh, 1e-20, 89.4), 0.60);
    EXPECT_LE(error(sCosh, 1e-20, 89.4), 0.75);
    EXPECT_LE(error(sTanh, 1e-30, 10), 0.85);
}

} // namespace
