// Cbrt and InvCbrt: special values and reports, every exponent, both routes.
#include <qorkes/qor.h>
#include <support/element.hpp>
#include <support/fpu.hpp>
#include <support/special_values.hpp>

#include <limits>

using namespace qorkes;
using namespace qorkes::test;

namespace {

TEST(Cbrt, SpecialValues) {
    expectSpecialValues<double>(_qordCbrt_HA, "",
                                {
                                    {0x0000000000000000, 0x0000000000000000, 0},
                                    {0x8000000000000000, 0x8000000000000000, 0},
                                    {0x7FF0000000000000, 0x7FF0000000000000, 0},
                                    {0xFFF0000000000000, 0xFFF0000000000000, 0},
                                    {0x7FF8000000000123, 0x7FF8000000000123, 0},
                                    {0xFFF0000000000001, 0xFFF8000000000001, 0},
                                    {0xC020000000000000, 0xC000000000000000, 0}, // -8
                                    {0x0000000000000001, 0x2990000000000000, 0},
                                    {0x8000000000000003, 0xA997137449123EF6, 0},
                                });
    expectSpecialValues<float>(_qorsCbrt_HA, "",
                               {
                                   {0x00000000, 0x00000000, 0},
                                   {0x80000000, 0x80000000, 0},
                                   {0x7F800000, 0x7F800000, 0},
                                   {0xFF800000, 0xFF800000, 0},
                                   {0x7FC00123, 0x7FC00123, 0},
                                   {0xFF800001, 0xFFC00001, 0},
                                   {0xC1D80000, 0xC0400000, 0}, // -27
                                   {0x00000001, 0x26A14518, 0},
                                   {0x80000004, 0xA7000000, 0}, // -2^-147
                               });
}

TEST(InvCbrt, SpecialValues) {
    expectSpecialValues<double>(_qordInvCbrt_HA, "_qordInvCbrt_HA",
                                {
                                    {0x0000000000000000, 0x7FF0000000000000, 2},
                                    {0x8000000000000000, 0xFFF0000000000000, 2},
                                    {0x7FF0000000000000, 0x0000000000000000, 0},
                                    {0xFFF0000000000000, 0x8000000000000000, 0},
                                    {0x7FF8000000000123, 0x7FF8000000000123, 0},
                                    {0xFFF0000000000001, 0xFFF8000000000001, 0},
                                    {0x3FC0000000000000, 0x4000000000000000, 0}, // 1/8
                                    {0x8000000000000001, 0xD650000000000000, 0},
                                    {0x0000000000000004, 0x564428A2F98D728B, 0},
                                });
    expectSpecialValues<float>(_qorsInvCbrt_HA, "_qorsInvCbrt_HA",
                               {
                                   {0x00000000, 0x7F800000, 2},
                                   {0x80000000, 0xFF800000, 2},
                                   {0x7F800000, 0x00000000, 0},
                                   {0xFF800000, 0x80000000, 0},
                                   {0x7FC00123, 0x7FC00123, 0},
                                   {0xFF800001, 0xFFC00001, 0},
                                   {0xBE000000, 0xC0000000, 0}, // -1/8
                                   {0x00000001, 0x584B2FF5, 0},
                                   {0x80000004, 0xD8000000, 0}, // -2^-147
                               });
}

/// The largest error over both signs of all exponents, in an array and beside elements
/// of the other route.
template <class T>
void expectAccurate(void (*kernel)(int, const T*, T*), const char* function,
                    double limit) {
    using Limits = std::numeric_limits<T>;
    const Range normal = {Limits::min(), Limits::max(), Sign::both};
    const Range denormal = {Limits::denorm_min(), Limits::min(), Sign::both};
    EXPECT_LE(largestError<T>(kernel, function, normal), limit);
    EXPECT_LE(largestError<T>(kernel, function, normal, T{0}), limit);
    EXPECT_LE(largestError<T>(kernel, function, denormal), limit);
    EXPECT_LE(largestError<T>(kernel, function, denormal, T{1}), limit);
}

TEST(Cbrt, IsAccurateOverTheWholeRange) {
    expectAccurate(_qordCbrt_HA, "Cbrt", 0.75);
    expectAccurate(_qorsCbrt_HA, "Cbrt", 0.68);
}

TEST(InvCbrt, IsAccurateOverTheWholeRange) {
    expectAccurate(_qordInvCbrt_HA, "InvCbrt", 0.66);
    expectAccurate(_qorsInvCbrt_HA, "InvCbrt", 0.92);
}

/// Every power of two and its neighbours, where pieces of the mantissa and remainders
/// of the exponent meet.
template <class T> std::vector<T> edgesOfExponents() {
    using Limits = std::numeric_limits<T>;
    std::vector<T> edges;
    for (int e = Limits::min_exponent - 1; e < Limits::max_exponent; ++e) {
        const T power = std::ldexp(T{1}, e);
        for (const T x : {power, std::nextafter(power, T{0}),
                          std::nextafter(power, Limits::infinity())})
            edges.insert(edges.end(), {x, -x});
    }
    return edges;
}

template <class T>
void expectAccurateAtEdges(void (*kernel)(int, const T*, T*), const char* function,
                           double limit) {
    Oracle oracle(function);
    const std::vector<T> a = edgesOfExponents<T>();
    std::vector<T> y(a.size());
    kernel(static_cast<int>(a.size()), a.data(), y.data());
    for (std::size_t i = 0; i < a.size(); ++i)
        ASSERT_LE(oracle.ulps(y[i], a[i]), limit) << a[i];
}

TEST(Cbrt, EveryExponentIsDividedByThree) {
    expectAccurateAtEdges(_qordCbrt_HA, "Cbrt", 0.75);
    expectAccurateAtEdges(_qorsCbrt_HA, "Cbrt", 0.68);
    expectAccurateAtEdges(_qordInvCbrt_HA, "InvCbrt", 0.66);
    expectAccurateAtEdges(_qorsInvCbrt_HA, "InvCbrt", 0.92);
}

/// A quiet NaN passes, a signaling one does not.
TEST(Cbrt, SignalingNaNRaisesInvalid) {
    double quiet, signaling, y;
    setBits(quiet, 0x7FF8000000000000);
    setBits(signaling, 0x7FF0000000000001);
    for (auto kernel : {_qordCbrt_HA, _qordInvCbrt_HA}) {
        EXPECT_FALSE(flagsRaised([&] { kernel(1, &quiet, &y); }) & invalidFlag);
        EXPECT_TRUE(flagsRaised([&] { kernel(1, &signaling, &y); }) & invalidFlag);
    }
}

} // namespace
